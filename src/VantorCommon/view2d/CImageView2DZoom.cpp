// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The zoom and the place of CImageView2D.
#include <VantorCommon/view2d/CImageView2D.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/view2d/CImageView2DGotoDlg.h>
#include <VantorCommon/view2d/Saturate_p.h>
#include <VantorCommon/view2d/ZoomState_p.h>

#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace
{
constexpr double kZoomPerDelta = 0.001;
constexpr double kMinZoom = 0.1;

/// An integer so small that the sum of two does not overflow.
int ClampCoordinate(double dblValue)
{
    constexpr int kMax = 1 << 30;
    return std::clamp(TruncateToInt(dblValue), -kMax, kMax);
}

/// By how many pixels the pan must change so that a stretch, in widget pixels, lies within 0 .. dblRoom;
/// centres a longer one. The view shows whole pixels of the pan.
double PanInto(double dblBegin, double dblEnd, double dblRoom, double dblZoom)
{
    if (dblEnd - dblBegin > dblRoom)
        return std::trunc((dblRoom - dblBegin - dblEnd) * 0.5 / dblZoom);
    if (dblBegin < 0.0)
        return std::ceil(-dblBegin / dblZoom);
    return std::floor(std::min(0.0, dblRoom - dblEnd) / dblZoom);
}
} // namespace

void CImageView2D::CalculateViewPort()
{
    const SZoomState& zoom = *m_pZoom;
    const QSizeF fitted = QSizeF(m_image.size()).scaled(QSizeF(size()), Qt::KeepAspectRatio);
    const double z = zoom.dblZoom;
    const int x0 = TruncateToInt(width() * 0.5 - fitted.width() * 0.5 + zoom.dblPanX);
    const int y0 = TruncateToInt(height() * 0.5 - fitted.height() * 0.5 + zoom.dblPanY);
    const int dx = TruncateToInt(zoom.dblWheelX - (zoom.dblAnchorX - x0) * z - x0);
    const int dy = TruncateToInt(zoom.dblWheelY - (zoom.dblAnchorY - y0) * z - y0);
    const int nWidth = ClampCoordinate(fitted.width() * z + 0.5);
    const int nHeight = ClampCoordinate(fitted.height() * z + 0.5);
    SetViewPort(QRect(ClampCoordinate(double(x0) + dx), ClampCoordinate(double(y0) + dy), nWidth, nHeight));
    if (m_image.width() != 0)
        SetWindow(QRect(0, 0, m_image.width(), m_image.height()));
    m_pLayer->SetWindow(Window());
    m_pLayer->SetViewPort(ViewPort());
}

void CImageView2D::Repaint()
{
    CalculateViewPort();
    update();
}

void CImageView2D::ZoomFit()
{
    *m_pZoom = SZoomState();
    Repaint();
}

void CImageView2D::BringIntoView(const QRectF& part)
{
    // Twice, because the first time may be a pixel short where the pan changes its sign.
    for (int i = 0; i < 2; ++i) {
        const QRectF box = MapToWidget(part.normalized());
        m_pZoom->dblPanX += PanInto(box.left(), box.right(), width(), m_pZoom->dblZoom);
        m_pZoom->dblPanY += PanInto(box.top(), box.bottom(), height(), m_pZoom->dblZoom);
        Repaint();
    }
}

void CImageView2D::slot_ZoomFit()
{
    ZoomFit();
}

QRect CImageView2D::GetViewPort() const
{
    return ViewPort();
}

double CImageView2D::GetSizePixel() const
{
    return Window().width() == 0 ? 0.0 : double(ViewPort().width()) / Window().width();
}

void CImageView2D::slot_Goto()
{
    if (!m_pImage)
        return;
    const QPointer<CImageView2DGotoDlg> pDialog = new CImageView2DGotoDlg(this);
    pDialog->SetMinimumX(0);
    pDialog->SetMaximumX(m_pImage->GetWidth() - 1);
    pDialog->SetMinimumY(0);
    pDialog->SetMaximumY(m_pImage->GetHeight() - 1);
    const bool bAccepted = pDialog->exec() == QDialog::Accepted;
    if (!pDialog) // the view was destroyed while the dialog was open
        return;
    if (bAccepted) {
        // Deliberate: the position becomes the pan unchanged, whatever the zoom.
        m_pZoom->dblPanX = -pDialog->GetX();
        m_pZoom->dblPanY = -pDialog->GetY();
        Repaint();
    }
    delete pDialog;
}

void CImageView2D::Pan(const QPoint& pos)
{
    m_pZoom->dblPanX += (pos.x() - m_nLastX) / m_pZoom->dblZoom;
    m_pZoom->dblPanY += (pos.y() - m_nLastY) / m_pZoom->dblZoom;
    m_nLastX = pos.x();
    m_nLastY = pos.y();
    Repaint();
}

void CImageView2D::wheelEvent(QWheelEvent* pEvent)
{
    SZoomState& zoom = *m_pZoom;
    const double dblNew = zoom.dblZoom + zoom.dblZoom * pEvent->angleDelta().y() * kZoomPerDelta;
    // Deliberate: there is no upper bound; only values that are not finite are refused.
    if (!(dblNew > kMinZoom) || !std::isfinite(dblNew)) {
        pEvent->ignore();
        return;
    }
    const QPointF pos = pEvent->position();
    zoom.dblAnchorX += (pos.x() - zoom.dblWheelX) / zoom.dblZoom;
    zoom.dblAnchorY += (pos.y() - zoom.dblWheelY) / zoom.dblZoom;
    zoom.dblWheelX = pos.x();
    zoom.dblWheelY = pos.y();
    zoom.dblZoom = dblNew;
    Repaint();
}
