// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class CJob;

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

    /// A change of the current image, see CImageView2DCtrl::EditImage.
    struct SEdit {
        QString strTitle;
        QString strFailure;
        CImageView2DCtrl::ImageEdit edit;
    };
    void Edit(const SEdit& edit);
    /// Gives up the edits that have not ended.
    void CancelJobs();

    /// @{
    /// A quarter turn, as an undoable step; or signal_Failed.
    void RotateLeft();
    void RotateRight();
    /// @}

private:
    /// What became of a copy.
    struct SEdited {
        ImagePtr pImage;
        SImageChange sChange;
        std::string strReason; ///< of a failure
    };

    static SEdited EditCopy(const ImagePtr& pImage, const SEdit& edit);
    void ShowEdited(const SEdited& edited, const SEdit& edit);
    void StartNext();
    void Rotate(double dblAngle, SImageChange::EKind eKind);

    const SImageView2DCtrlContext& m_context;
    std::deque<SEdit> m_waiting;  ///< for the job that edits
    std::shared_ptr<CJob> m_pJob; ///< edits, or null
};
