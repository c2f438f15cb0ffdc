// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/job/CJobs.h>

#include <QImage>
#include <QPointer>
#include <memory>

class CImageLevels;
class QWidget;

namespace Vantor::Algorithms
{
class CImage;
}

/// The image of a 2D view below one pixel of the screen per pixel of the image, as a picture of which every
/// pixel is the mean of what it covers. The picture is kept from frame to frame; a pan adds to it.
///
/// Little is averaged at once. For more a job of the view makes the picture; meanwhile there is a picture
/// made of the half-size levels, whose edges are less exact, or none before these have been made. GUI thread.
class CReducedImage
{
public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// The view is painted again when the picture gets better; it owns this.
    explicit CReducedImage(QWidget* pView);
    ~CReducedImage();
    CReducedImage(const CReducedImage&) = delete;
    CReducedImage& operator=(const CReducedImage&) = delete;

    /// The image that is shown; another one drops all that there is of the one before it.
    void SetImage(const ImagePtr& pImage);
    /// Drops the picture, until it is asked for again.
    void Drop();
    /// Sees to it that the picture has a part, in pixels of a picture of the whole image of the given size.
    /// @param image  over the pixels of the image; of a format for BoxReduction
    /// @return whether it has; otherwise the view is painted again when it has
    bool Provide(const QImage& image, const QSize& size, const QRect& part);
    const QImage& Picture() const { return m_sNow.picture; }
    QPoint Origin() const { return m_sNow.part.topLeft(); } ///< of the picture in that of the whole image

private:
    struct SPicture {
        QSize size; ///< of the whole image
        QRect part; ///< where the picture stands in it
        QImage picture;
        bool bExact = false; ///< nothing is made of levels
    };

    SPicture Make(const QImage& image, const QSize& size, const QRect& part);
    bool Fill(SPicture& sPicture, const QImage& image, const QRect& rect);
    void Improve(const QImage& image);
    void NeedLevels(const QImage& image);
    void Cancel();

    QWidget* const m_pView;
    ImagePtr m_pImage;
    SPicture m_sNow;
    SPicture m_sWanted; ///< what the job makes, without its picture
    CJobs::JobPtr m_pJob;
    std::shared_ptr<CImageLevels> m_pLevels;
    QMetaObject::Connection m_levelsMade;
};
