// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <memory>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

/// The image list of a 2D controller, and the operations on whole images. An operation that removes an image
/// drops the annotations, too. Without a model nothing happens.
class CImageView2DCtrlImages
{
public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    explicit CImageView2DCtrlImages(const SImageView2DCtrlContext& context) : m_context(context) {}

    /// Null without one.
    ImagePtr Current() const;
    /// Appends an image; annotations stay. @return whether there was a model
    bool Push(ImagePtr pImage);

    /// @{
    /// These have no undo.
    void CloseCurrent();
    void ReplaceAll(const std::vector<ImagePtr>& vctImages);
    void Replace(ImagePtr pImage, int nIndex);
    void ReplaceCurrent(ImagePtr pImage, EAnnotationsGone eReason);
    /// @}

    /// @{
    /// A quarter turn, as an undoable step; or signal_Failed.
    void RotateLeft();
    void RotateRight();
    /// @}

private:
    void Rotate(double dblAngle);

    const SImageView2DCtrlContext& m_context;
};
