// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImagePainter_p.h>

#include <VantorCommon/view2d/ImageBlit_p.h>

#include <QPainter>
#include <QWidget>
#include <cmath>

namespace
{
/// Pixels of the painter's device per widget pixel; 0 if it turns, shears or stretches.
double DeviceScale(const QPainter& painter)
{
    const QTransform& transform = painter.deviceTransform();
    const bool bEven = transform.type() <= QTransform::TxScale && transform.m11() == transform.m22();
    return bEven ? transform.m11() : 0.0;
}

QRect Scaled(const QRect& rect, double dblScale)
{
    return QRectF(rect.x() * dblScale, rect.y() * dblScale, rect.width() * dblScale, rect.height() * dblScale)
        .toRect();
}

bool IsReduction(const QSize& image, const QSize& picture)
{
    return picture.width() <= image.width() && picture.height() <= image.height() && picture != image;
}
} // namespace

void CImagePainter::SetOptions(bool bSmoothReduction, bool bCheckerboard)
{
    if (!bSmoothReduction)
        m_pReduced.reset();
    else if (!m_pReduced)
        m_pReduced = std::make_unique<CReducedImage>(m_pView);
    m_bCheckerboard = bCheckerboard;
    SetImage(m_pImage);
    m_pView->update();
}

void CImagePainter::SetImage(const CReducedImage::ImagePtr& pImage)
{
    m_pImage = pImage;
    if (m_pReduced)
        m_pReduced->SetImage(pImage);
}

void CImagePainter::Paint(QPainter& painter, const QImage& image, const ImageBlit::SPlace& place)
{
    const CImageGround ground(m_bCheckerboard && image.hasAlphaChannel());
    if (PaintReduced(painter, image, place, ground) || ImageBlit::Paint(painter, image, place, ground))
        return;
    ground.Fill(painter, place.widget, place.source.isEmpty() ? QRect() : place.viewPort);
    if (place.source.isEmpty())
        return;
    painter.setViewport(place.viewPort);
    painter.setWindow(place.window);
    painter.drawImage(place.source, image, place.source);
}

bool CImagePainter::PaintReduced(QPainter& painter, const QImage& image, const ImageBlit::SPlace& place,
                                 const CImageGround& ground)
{
    if (!m_pReduced || place.source.isEmpty())
        return false;
    const double dblScale = DeviceScale(painter);
    const QRect whole = Scaled(place.viewPort, dblScale); // in device pixels
    const QRect shown = whole & Scaled(place.widget, dblScale);
    if (dblScale <= 0.0 || !IsReduction(image.size(), whole.size())) {
        m_pReduced->Drop();
        return false;
    }
    if (shown.isEmpty() || !m_pReduced->Provide(image, whole.size(), shown.translated(-whole.topLeft())))
        return false;
    if (image.hasAlphaChannel())
        ground.Fill(painter, place.widget, place.viewPort);
    else
        CImageGround::FillAround(painter, place.widget, place.viewPort);
    painter.save();
    painter.scale(1.0 / dblScale, 1.0 / dblScale);
    painter.drawImage(whole.topLeft() + m_pReduced->Origin(), m_pReduced->Picture());
    painter.restore();
    return true;
}
