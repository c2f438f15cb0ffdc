// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The painting half of CImageView2D: the image, the crosshair, the grid and the pixel values.
#include <VantorCommon/view2d/CImageView2D.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/ImageBlit_p.h>
#include <VantorCommon/view2d/ImagePainter_p.h>
#include <VantorCommon/view2d/PixelStamps_p.h>
#include <VantorCommon/view2d/ZoomState_p.h>

#include <QPainter>
#include <algorithm>

namespace
{
const QColor kLineColor(0, 100, 255, 255);
constexpr double kSourceMargin = 4.0; // image pixels
constexpr double kGridScale = 50.0;   // widget pixels per image pixel
constexpr double kValueMargin = 5.0;  // widget pixels
const QColor kRed(255, 0, 0);
const QColor kGreen(0, 255, 0);
const QColor kBlue(0, 0, 255);
const QColor kWhite(255, 255, 255);
const QColor kWaitColor(90, 90, 90);

QPen LinePen()
{
    return QPen(QBrush(kLineColor), 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

/// Limits one side of a rectangle to 0 .. dblLimit.
void ClampSide(double& dblBegin, double& dblSize, double dblLimit)
{
    if (dblBegin < 0.0) {
        dblSize += dblBegin;
        dblBegin = 0.0;
    }
    if (dblBegin + dblSize >= dblLimit)
        dblSize = dblLimit - dblBegin;
}

/// The visible part of an image, with a margin, limited to the image; the scale is widget pixels per image
/// pixel.
QRectF VisibleImageRect(const QSize& image, const QSize& widget, const QPoint& viewPort, double dblScaleX,
                        double dblScaleY)
{
    double dblLeft = (viewPort.x() < 0 ? -double(viewPort.x()) : 0.0) / dblScaleX - kSourceMargin;
    double dblTop = (viewPort.y() < 0 ? -double(viewPort.y()) : 0.0) / dblScaleY - kSourceMargin;
    double dblWidth = widget.width() / dblScaleX + 2 * kSourceMargin;
    double dblHeight = widget.height() / dblScaleY + 2 * kSourceMargin;
    ClampSide(dblLeft, dblWidth, image.width());
    ClampSide(dblTop, dblHeight, image.height());
    return QRectF(dblLeft, dblTop, dblWidth, dblHeight);
}

void UseWidgetPixels(QPainter& painter, const QRect& rect)
{
    painter.setViewport(rect);
    painter.setWindow(rect);
}

void DrawGrid(const CImageView2D& view, QPainter& painter, const QRectF& source)
{
    painter.setPen(LinePen());
    const double dblRight = source.left() + source.width();
    const double dblBottom = source.top() + source.height();
    for (int y = static_cast<int>(source.top()); y <= dblBottom; ++y)
        painter.drawLine(view.MapToWidget(QPointF(source.left(), y)), view.MapToWidget(QPointF(dblRight, y)));
    for (int x = static_cast<int>(source.left()); x <= dblRight; ++x)
        painter.drawLine(view.MapToWidget(QPointF(x, source.top())), view.MapToWidget(QPointF(x, dblBottom)));
}
} // namespace

void CImageView2D::SetImageLook(bool bSmoothReduction, bool bCheckerboard)
{
    m_pPainter->SetOptions(bSmoothReduction, bCheckerboard);
}

void CImageView2D::Paint(QPainter& painter)
{
    RebuildPaintList();
    QMutexLocker locker(&m_mutexImage);
    UseWidgetPixels(painter, rect());
    const bool bImage = m_pImage && m_image.width() != 0 && !ViewPort().isEmpty();
    const double dblScaleX = bImage ? double(ViewPort().width()) / m_image.width() : 0.0;
    const double dblScaleY = bImage ? double(ViewPort().height()) / m_image.height() : 0.0;
    const QRectF source =
        bImage ? VisibleImageRect(m_image.size(), size(), ViewPort().topLeft(), dblScaleX, dblScaleY)
               : QRectF();
    m_pPainter->Paint(painter, m_image, {rect(), ViewPort(), Window(), source});
    UseWidgetPixels(painter, rect());
    if (IsWaiting())
        DrawWaiting(painter);
    if (m_bDragging)
        DrawCrosshair(painter);
    if (bImage && dblScaleX >= kGridScale && dblScaleY >= kGridScale) {
        DrawGrid(*this, painter, source);
        DrawPixelValues(painter, source, dblScaleY);
    }
}

/// An empty sheet in place of an image whose pixels are still to come.
void CImageView2D::DrawWaiting(QPainter& painter)
{
    const QRect sheet = ViewPort() & rect();
    painter.fillRect(sheet, Qt::white);
    painter.setPen(kWaitColor);
    painter.drawText(sheet, Qt::AlignCenter, QStringLiteral("Rendering the page ..."));
}

/// At a position, in widget pixels; null: hides it.
void CImageView2D::ShowCrosshair(const QPoint* pPos)
{
    m_bDragging = pPos != nullptr;
    if (!pPos)
        return SetMarks({});
    m_pZoom->dblCrossX = pPos->x();
    m_pZoom->dblCrossY = pPos->y();
    SetMarks({QRect(0, pPos->y() - 1, QWIDGETSIZE_MAX, 3), QRect(pPos->x() - 1, 0, 3, QWIDGETSIZE_MAX)});
}

void CImageView2D::DrawCrosshair(QPainter& painter)
{
    painter.setPen(LinePen());
    painter.drawLine(QPointF(0.0, m_pZoom->dblCrossY), QPointF(width(), m_pZoom->dblCrossY));
    painter.drawLine(QPointF(m_pZoom->dblCrossX, 0.0), QPointF(m_pZoom->dblCrossX, height()));
}

void CImageView2D::DrawPixelValues(QPainter& painter, const QRectF& source, double dblScaleY)
{
    const unsigned char* const* pRows = std::as_const(*m_pImage).GetRows();
    const std::size_t* pOffsets = m_pImage->GetColumnOffsets();
    const double dblRight = source.left() + source.width();
    const double dblBottom = source.top() + source.height();
    m_pStamps->Begin(painter, *this);
    for (int y = static_cast<int>(source.top()); y < dblBottom; ++y)
        for (int x = static_cast<int>(source.left()); x < dblRight; ++x)
            WriteValues(pRows[y] + pOffsets[x], m_pImage->GetChannel(), x, y, dblScaleY);
}

void CImageView2D::DrawPixelValue(QPainter& painter, const unsigned char* pPixel, int nChannels, int x, int y,
                                  double, double dblScaleY)
{
    m_pStamps->Begin(painter, *this);
    if (pPixel)
        WriteValues(pPixel, nChannels, x, y, dblScaleY);
}

void CImageView2D::WriteValues(const unsigned char* pPixel, int nChannels, int x, int y, double dblScaleY)
{
    const int nLine = m_pStamps->LineHeight();
    const double dblBlock = double(nLine) * nChannels;
    if (dblBlock + kValueMargin > dblScaleY)
        return;
    const double f = dblBlock / dblScaleY;
    const QRectF box = MapToWidget(QRectF(x + 0.25, y + (1 - f) * 0.5, 0.5, f));
    if (nChannels == 1) {
        m_pStamps->Write(box, Qt::AlignCenter, kWhite, pPixel[0]);
    } else if (nChannels == 3) {
        m_pStamps->Write(box, Qt::AlignHCenter | Qt::AlignTop, kRed, pPixel[0]);
        m_pStamps->Write(box, Qt::AlignCenter, kGreen, pPixel[1]);
        m_pStamps->Write(box, Qt::AlignHCenter | Qt::AlignBottom, kBlue, pPixel[2]);
    } else if (nChannels == 4) {
        const QColor colors[] = {kRed, kGreen, kBlue, kWhite};
        for (int k = 0; k < nChannels; ++k)
            m_pStamps->Write(QRectF(box.left(), box.top() + k * nLine, box.width(), nLine), Qt::AlignHCenter,
                             colors[k], pPixel[k]);
    }
}
