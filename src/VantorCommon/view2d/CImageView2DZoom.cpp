// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The zoom and the place of CImageView2D.
#include <VantorCommon/view2d/CImageView2D.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/view2d/CImageView2DGotoDlg.h>
#include <VantorCommon/view2d/MiniMap_p.h>
#include <VantorCommon/view2d/Saturate_p.h>
#include <VantorCommon/view2d/ViewMark_p.h>
#include <VantorCommon/view2d/ZoomBox_p.h>
#include <VantorCommon/view2d/ZoomState_p.h>

#include <QResizeEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
constexpr double kZoomPerDelta = 0.001;
constexpr double kMinZoom = 0.1;
constexpr double kSmallestZoom = 0.001; // widget pixels per image pixel
constexpr double kLargestZoom = 1000.0;

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

QSizeF FittedSize(const QSize& image, const QSize& widget)
{
    return QSizeF(image).scaled(QSizeF(widget), Qt::KeepAspectRatio);
}

/// A value whose distance from nFrom is truncated to that of nTo, also when it is a little wrong.
double SafelyBehind(int nTo, int nFrom)
{
    return nTo == nFrom ? nTo : nTo + (nTo > nFrom ? 0.25 : -0.25);
}
} // namespace

QPoint CImageView2D::SZoomState::Origin(const QSizeF& fitted, const QSize& widget) const
{
    return {TruncateToInt(widget.width() * 0.5 - fitted.width() * 0.5 + dblPanX),
            TruncateToInt(widget.height() * 0.5 - fitted.height() * 0.5 + dblPanY)};
}

void CImageView2D::SZoomState::ZoomAbout(const QPointF& pos, double dblNew)
{
    dblAnchorX += (pos.x() - dblWheelX) / dblZoom;
    dblAnchorY += (pos.y() - dblWheelY) / dblZoom;
    dblWheelX = pos.x();
    dblWheelY = pos.y();
    dblZoom = dblNew;
}

void CImageView2D::SZoomState::PutTopLeft(const QPoint& topLeft, const QPoint& origin, const QPointF& pos)
{
    dblWheelX = pos.x();
    dblWheelY = pos.y();
    dblAnchorX = origin.x() + (pos.x() - SafelyBehind(topLeft.x(), origin.x())) / dblZoom;
    dblAnchorY = origin.y() + (pos.y() - SafelyBehind(topLeft.y(), origin.y())) / dblZoom;
}

bool CImageView2D::SZoomState::IsFitted() const
{
    return dblZoom == 1.0 && dblPanX == 0.0 && dblPanY == 0.0 && dblAnchorX == dblWheelX &&
           dblAnchorY == dblWheelY;
}

void CImageView2D::CalculateViewPort()
{
    const SZoomState& zoom = *m_pZoom;
    const QSizeF fitted = FittedSize(ImageSize(), size());
    const double z = zoom.dblZoom;
    const QPoint origin = zoom.Origin(fitted, size());
    const int x0 = origin.x();
    const int y0 = origin.y();
    const int dx = TruncateToInt(zoom.dblWheelX - (zoom.dblAnchorX - x0) * z - x0);
    const int dy = TruncateToInt(zoom.dblWheelY - (zoom.dblAnchorY - y0) * z - y0);
    const int nWidth = ClampCoordinate(fitted.width() * z + 0.5);
    const int nHeight = ClampCoordinate(fitted.height() * z + 0.5);
    SetViewPort(QRect(ClampCoordinate(double(x0) + dx), ClampCoordinate(double(y0) + dy), nWidth, nHeight));
    if (ImageSize().width() != 0)
        SetWindow(QRect(QPoint(0, 0), ImageSize()));
    m_pLayer->SetWindow(Window());
    m_pLayer->SetViewPort(ViewPort());
    if (m_pPlace->pMark)
        m_pPlace->pMark->Follow();
    if (m_pPlace->pMiniMap)
        m_pPlace->pMiniMap->Follow(m_image, ViewPort());
    const double dblZoom = ImageSize().width() == 0 ? 0.0 : fitted.width() * z / ImageSize().width();
    if (dblZoom == m_pPlace->dblZoom)
        return;
    m_pPlace->dblZoom = dblZoom;
    Q_EMIT signal_ChangeZoom();
}

void CImageView2D::Repaint()
{
    CalculateViewPort();
    update();
}

void CImageView2D::Moved()
{
    Repaint();
    Q_EMIT signal_ChangePlace();
}

void CImageView2D::ZoomFit()
{
    *m_pZoom = SZoomState();
    Moved();
}

double CImageView2D::GetZoom() const
{
    return m_pPlace->dblZoom;
}

void CImageView2D::SetZoom(double dblZoom, const QPointF& fixed)
{
    const double dblFit = FittedSize(ImageSize(), size()).width() / ImageSize().width();
    if (ImageSize().isEmpty() || !(dblFit > 0.0) || !(dblZoom > 0.0) || !std::isfinite(dblZoom))
        return;
    m_pZoom->ZoomAbout(fixed, std::clamp(dblZoom, kSmallestZoom, kLargestZoom) / dblFit);
    Moved();
}

void CImageView2D::MovePointTo(const QPointF& point, const QPointF& pos)
{
    if (ImageSize().isEmpty() || ViewPort().isEmpty())
        return;
    const QPointF corner = pos - (MapToWidget(point) - QPointF(ViewPort().topLeft()));
    const QPoint topLeft(ClampCoordinate(std::round(corner.x())), ClampCoordinate(std::round(corner.y())));
    m_pZoom->PutTopLeft(topLeft, m_pZoom->Origin(FittedSize(ImageSize(), size()), size()), pos);
    Moved();
}

void CImageView2D::CenterOn(const QPointF& point)
{
    MovePointTo(point, QRectF(rect()).center());
}

void CImageView2D::FitWidth()
{
    if (ImageSize().isEmpty())
        return;
    const double dblZoom = double(width()) / ImageSize().width();
    const double dblRows = height() / dblZoom; // in view
    const double dblFirst = std::min(MapToImage(QPointF()).y(), ImageSize().height() - dblRows);
    SetZoom(dblZoom, QPointF());
    MovePointTo(QPointF(0.0, dblRows < ImageSize().height() ? std::max(0.0, dblFirst)
                                                            : (ImageSize().height() - dblRows) * 0.5),
                QPointF());
}

void CImageView2D::ZoomTo(const QRectF& part)
{
    const QRectF box = part.normalized();
    SetZoom(std::min(width() / std::max(1.0, box.width()), height() / std::max(1.0, box.height())),
            QPointF());
    CenterOn(box.center());
}

bool CImageView2D::IsFitted() const
{
    return m_pZoom->IsFitted();
}

void CImageView2D::StartZoomBox()
{
    delete m_pPlace->pZoomBox;
    if (!ImageSize().isEmpty())
        m_pPlace->pZoomBox = new CZoomBox(this);
}

void CImageView2D::SetMark(const QPointF& point)
{
    if (ImageSize().isEmpty())
        return;
    if (!m_pPlace->pMark)
        m_pPlace->pMark = new CViewMark(this);
    m_pPlace->pMark->Show(point);
}

void CImageView2D::ClearMark()
{
    if (m_pPlace->pMark)
        m_pPlace->pMark->hide();
}

void CImageView2D::SetMiniMap(bool bShown)
{
    if (bShown == (m_pPlace->pMiniMap != nullptr))
        return;
    delete std::exchange(m_pPlace->pMiniMap, bShown ? new CMiniMap(this) : nullptr);
    Repaint();
}

void CImageView2D::SetPlaceOptions(bool bKeepPlace, bool bGotoCentres)
{
    m_pPlace->bKeep = bKeepPlace;
    m_pPlace->bGotoCentres = bGotoCentres;
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
    Q_EMIT signal_ChangePlace();
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
    const QPointF pixel(pDialog->GetX() + 0.5, pDialog->GetY() + 0.5);
    if (bAccepted && m_pPlace->bGotoCentres) {
        CenterOn(pixel);
        SetMark(pixel);
    } else if (bAccepted) {
        // Deliberate: the position becomes the pan unchanged, whatever the zoom.
        m_pZoom->dblPanX = -pDialog->GetX();
        m_pZoom->dblPanY = -pDialog->GetY();
        Moved();
    }
    delete pDialog;
}

void CImageView2D::Pan(const QPoint& pos)
{
    m_pZoom->dblPanX += (pos.x() - m_nLastX) / m_pZoom->dblZoom;
    m_pZoom->dblPanY += (pos.y() - m_nLastY) / m_pZoom->dblZoom;
    m_nLastX = pos.x();
    m_nLastY = pos.y();
    Moved();
}

/// Keeps the zoom and the point in the middle, unless the image is fitted.
void CImageView2D::resizeEvent(QResizeEvent* pEvent)
{
    CImageView2DDrawableWidget::resizeEvent(pEvent);
    const double dblZoom = GetZoom();
    const QPointF middle = MapToImage(QRectF(QPointF(), QSizeF(pEvent->oldSize())).center());
    const bool bKeep = m_pPlace->bKeep && dblZoom > 0.0 && !IsFitted() && !pEvent->oldSize().isEmpty();
    m_pLayer->setGeometry(0, 0, width(), height());
    Repaint();
    if (bKeep) {
        SetZoom(dblZoom, QPointF());
        CenterOn(middle);
    }
}

void CImageView2D::wheelEvent(QWheelEvent* pEvent)
{
    const double dblOld = m_pZoom->dblZoom;
    const double dblNew = dblOld + dblOld * pEvent->angleDelta().y() * kZoomPerDelta;
    // Deliberate: there is no upper bound; only values that are not finite are refused. SetZoom may have gone
    // below the lower bound, and the wheel leads back.
    if ((!(dblNew > kMinZoom) && !(dblNew > dblOld)) || !std::isfinite(dblNew)) {
        pEvent->ignore();
        return;
    }
    m_pZoom->ZoomAbout(pEvent->position(), dblNew);
    Moved();
}
