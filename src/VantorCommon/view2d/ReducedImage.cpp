// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ReducedImage_p.h>

#include <VantorCommon/view2d/BoxReduction_p.h>
#include <VantorCommon/view2d/ImageLevels_p.h>

#include <QPainter>
#include <QRegion>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace
{
constexpr double kPixelsAtOnce = 2e6; // of the image, averaged while the view waits
constexpr double kStepOfLevels = 2.0; // image pixels per pixel of the picture; below it levels save little

QImage Empty(const QImage& image, const QSize& size)
{
    return QImage(size, static_cast<QImage::Format>(BoxReduction::FormatFor(image)));
}

void Copy(const QImage& from, const QPoint& pos, QImage& to)
{
    QPainter painter(&to);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(pos, from);
}
} // namespace

CReducedImage::CReducedImage(QWidget* pView) : m_pView(pView)
{
}

CReducedImage::~CReducedImage()
{
    SetImage(nullptr);
}

void CReducedImage::SetImage(const ImagePtr& pImage)
{
    if (pImage == m_pImage)
        return;
    Drop();
    QObject::disconnect(m_levelsMade);
    m_pLevels.reset();
    m_pImage = pImage;
}

void CReducedImage::Drop()
{
    Cancel();
    m_sNow = SPicture();
}

void CReducedImage::Cancel()
{
    if (m_pJob)
        CJobs::Get().Cancel(std::exchange(m_pJob, nullptr));
    m_sWanted = SPicture();
}

bool CReducedImage::Provide(const QImage& image, const QSize& size, const QRect& part)
{
    if (m_sNow.size != size || !m_sNow.part.contains(part)) {
        m_sNow = Make(image, size, part);
        if (m_sNow.bExact)
            Cancel();
    }
    if (!m_sNow.bExact && (m_sWanted.size != size || !m_sWanted.part.contains(part))) {
        m_sWanted = {size, part, QImage(), true};
        Improve(image);
        NeedLevels(image);
    }
    return !m_sNow.picture.isNull();
}

/// A picture that takes over what the last one has; without a picture if it could not be made at once.
CReducedImage::SPicture CReducedImage::Make(const QImage& image, const QSize& size, const QRect& part)
{
    SPicture sPicture = {size, part, Empty(image, part.size()), true};
    QRegion missing(part);
    if (m_sNow.size == size && !m_sNow.picture.isNull() && m_sNow.part.intersects(part)) {
        Copy(m_sNow.picture, m_sNow.part.topLeft() - part.topLeft(), sPicture.picture);
        missing -= m_sNow.part;
        sPicture.bExact = m_sNow.bExact;
    }
    for (const QRect& rect : missing)
        if (sPicture.picture.isNull() || !Fill(sPicture, image, rect))
            return SPicture();
    return sPicture;
}

/// Makes a part of a picture, exactly if that costs little, and of a level otherwise.
bool CReducedImage::Fill(SPicture& sPicture, const QImage& image, const QRect& rect)
{
    const double dblStepX = double(image.width()) / sPicture.size.width();
    const double dblStepY = double(image.height()) / sPicture.size.height();
    const double dblStep = std::min(dblStepX, dblStepY);
    const double dblPixels = dblStepX * dblStepY * rect.width() * rect.height();
    const QImage* pSource = &image;
    int nLevel = 0;
    if (dblStep >= kStepOfLevels && dblPixels > kPixelsAtOnce) {
        nLevel = static_cast<int>(std::lround(std::log2(dblStep)));
        pSource = m_pLevels ? m_pLevels->Get(nLevel) : nullptr;
        sPicture.bExact = false;
    }
    return pSource &&
           BoxReduction::Reduce(*pSource, {QSizeF(image.size()) / std::ldexp(1.0, nLevel), sPicture.size},
                                rect, sPicture.picture, sPicture.part.topLeft());
}

/// Makes the wanted picture in the background.
void CReducedImage::Improve(const QImage& image)
{
    SJob sJob;
    sJob.strKind = QStringLiteral("reduced image");
    const auto work = [this, image, pImage = m_pImage, s = m_sWanted](Vantor::CProgress&) mutable {
        s.picture = Empty(image, s.part.size());
        if (s.picture.isNull() ||
            !BoxReduction::Reduce(image, {QSizeF(image.size()), s.size}, s.part, s.picture, s.part.topLeft()))
            return CJob::Finish();
        return CJob::Finish([this, s] {
            m_pJob.reset();
            m_sNow = s;
            m_pView->update();
        });
    };
    m_pJob = CJobs::Get().Start(m_pView, sJob, work);
}

void CReducedImage::NeedLevels(const QImage& image)
{
    if (m_pLevels)
        return;
    m_pLevels = CImageLevels::Of(m_pImage);
    m_levelsMade = QObject::connect(m_pLevels.get(), &CImageLevels::signal_Made, m_pView, [this] {
        if (!m_sNow.bExact)
            m_pView->update();
    });
    m_pLevels->Make(image);
}
