// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/ImageGround_p.h>
#include <VantorCommon/view2d/ReducedImage_p.h>

#include <memory>

namespace ImageBlit
{
struct SPlace;
}

/// How a 2D view paints its image and what is around and behind it: pixel by pixel, or below one pixel of the
/// screen per pixel of the image as a mean, if that is wanted. The view owns it. GUI thread.
class CImagePainter
{
public:
    explicit CImagePainter(QWidget* pView) : m_pView(pView) {}

    /// See SCenterOptions; both are off at first.
    void SetOptions(bool bSmoothReduction, bool bCheckerboard);
    /// The image that the view shows; null without one.
    void SetImage(const CReducedImage::ImagePtr& pImage);
    /// Paints ground and image with a painter in widget pixels.
    /// @param image  over the pixels of the view's image
    void Paint(QPainter& painter, const QImage& image, const ImageBlit::SPlace& place);

private:
    bool PaintReduced(QPainter& painter, const QImage& image, const ImageBlit::SPlace& place,
                      const CImageGround& ground);

    QWidget* const m_pView;
    CReducedImage::ImagePtr m_pImage;
    bool m_bCheckerboard = false;
    std::unique_ptr<CReducedImage> m_pReduced; ///< null without smooth reduction
};
