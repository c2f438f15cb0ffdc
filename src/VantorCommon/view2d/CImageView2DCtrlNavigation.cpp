// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlNavigation_p.h>

#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cstdlib>

namespace
{
constexpr int kStepsPerView = 10; // a key or a notch of the wheel pans by the view divided by this
constexpr int kNotch = 120;       // of a wheel, in its units

/// Where an image begins that a key moves by a step, but not beyond its end.
int MovedBegin(int nBegin, int nSize, int nRoom, int nDirection)
{
    const int nStep = std::max(1, nRoom / kStepsPerView);
    if (nDirection < 0)
        return std::max(nBegin, std::min(nBegin + nStep, 0));
    return nDirection == 0 ? nBegin : std::min(nBegin, std::max(nBegin - nStep, nRoom - nSize));
}
} // namespace

void CImageView2DCtrlNavigation::Watch()
{
    m_context.pView->installEventFilter(this);
}

bool CImageView2DCtrlNavigation::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // Null for the last events of a view, which arrive when only its QWidget base still exists.
    if (!qobject_cast<CImageView2D*>(pWatched) || !m_context.pView)
        return false;
    switch (pEvent->type()) {
    case QEvent::KeyPress:
        return PressKey(static_cast<QKeyEvent&>(*pEvent));
    case QEvent::KeyRelease:
        return static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Space &&
               !static_cast<QKeyEvent*>(pEvent)->isAutoRepeat() && PressSpace(false);
    case QEvent::Wheel:
        return m_context.sOptions.bWheelPages && Turn(static_cast<QWheelEvent&>(*pEvent));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return Press(static_cast<QMouseEvent&>(*pEvent));
    case QEvent::MouseMove:
        return Drag(static_cast<QMouseEvent&>(*pEvent));
    case QEvent::MouseButtonRelease:
        if (m_button == Qt::NoButton || static_cast<QMouseEvent*>(pEvent)->button() != m_button)
            return false;
        EndDrag();
        return true;
    case QEvent::FocusOut:
    case QEvent::Hide:
        PressSpace(false);
        EndDrag();
        return false;
    default:
        return false;
    }
}

bool CImageView2DCtrlNavigation::PressKey(const QKeyEvent& event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    if (event.key() == Qt::Key_Space && m_context.sOptions.bPanAnywhere)
        return PressSpace(true);
    return m_context.sOptions.bViewKeys && PressArrow(event.key());
}

bool CImageView2DCtrlNavigation::PressSpace(bool bDown)
{
    if (m_bSpace == bDown)
        return bDown;
    m_bSpace = bDown;
    ShowCursor();
    return true;
}

/// An arrow key or one of the keys for pages.
bool CImageView2DCtrlNavigation::PressArrow(int nKey)
{
    switch (nKey) {
    case Qt::Key_PageUp:
        m_context.pCtrl->slot_Previous();
        return true;
    case Qt::Key_PageDown:
        m_context.pCtrl->slot_Next();
        return true;
    case Qt::Key_Left:
        if (!PanBy({-1, 0}))
            m_context.pCtrl->slot_Previous();
        return true;
    case Qt::Key_Right:
        if (!PanBy({1, 0}))
            m_context.pCtrl->slot_Next();
        return true;
    case Qt::Key_Up:
        return PanBy({0, -1});
    case Qt::Key_Down:
        return PanBy({0, 1});
    default:
        return false;
    }
}

/// @return whether the image is larger than the view in this direction
bool CImageView2DCtrlNavigation::PanBy(const QPoint& direction)
{
    CImageView2D& view = *m_context.pView;
    const QRect place = view.GetViewPort();
    if (direction.x() != 0 ? place.width() <= view.width() : place.height() <= view.height())
        return false;
    view.MovePointTo(QPointF(),
                     QPointF(MovedBegin(place.left(), place.width(), view.width(), direction.x()),
                             MovedBegin(place.top(), place.height(), view.height(), direction.y())));
    return true;
}

/// Touchpads turn by parts of a notch, which add up.
bool CImageView2DCtrlNavigation::Turn(const QWheelEvent& event)
{
    if (event.modifiers().testFlag(Qt::ControlModifier))
        return false;
    const QPoint turned = event.angleDelta();
    const bool bSideways = event.modifiers().testFlag(Qt::ShiftModifier) || turned.y() == 0;
    const int nTurned = turned.y() != 0 ? turned.y() : turned.x();
    if ((nTurned > 0) != (m_nTurned > 0))
        m_nTurned = 0;
    m_nTurned += std::clamp(nTurned, -kStepsPerView * kNotch, kStepsPerView * kNotch);
    for (; std::abs(m_nTurned) >= kNotch; m_nTurned -= m_nTurned > 0 ? kNotch : -kNotch) {
        const int nStep = m_nTurned > 0 ? -1 : 1;
        if (bSideways)
            PanBy({nStep, 0});
        else
            Scroll(nStep);
    }
    return true;
}

/// @param nStep  1: down, -1: up
void CImageView2DCtrlNavigation::Scroll(int nStep)
{
    CImageView2D& view = *m_context.pView;
    const QRect before = view.GetViewPort();
    const bool bLarger = PanBy({0, nStep});
    if (bLarger && view.GetViewPort() != before)
        return;
    const int nNext = m_context.pModel ? m_context.pModel->GetCurrentIndex() + nStep : -1;
    if (nNext < 0 || nNext >= m_context.pModel->GetImageCount()) {
        if (!bLarger)
            nStep > 0 ? m_context.pCtrl->slot_Next() : m_context.pCtrl->slot_Previous();
        return;
    }
    m_context.pModel->SetCurrentIndex(nNext);
    const QRect place = view.GetViewPort();
    if (place.height() > view.height())
        view.MovePointTo(QPointF(), QPointF(place.left(), nStep > 0 ? 0 : view.height() - place.height()));
}

bool CImageView2DCtrlNavigation::Press(const QMouseEvent& event)
{
    const bool bMiddle = event.button() == Qt::MiddleButton && event.buttons() == Qt::MiddleButton;
    const bool bPans = bMiddle || (event.button() == Qt::LeftButton && m_bSpace);
    if (!m_context.sOptions.bPanAnywhere || !bPans)
        return false;
    Q_EMIT m_context.pView->signal_Active();
    m_button = event.button();
    m_grabbed = m_context.pView->MapToImage(event.localPos());
    ShowCursor();
    return true;
}

bool CImageView2DCtrlNavigation::Drag(const QMouseEvent& event)
{
    if (m_button == Qt::NoButton)
        return m_bSpace && Hover(event);
    if (event.buttons().testFlag(m_button))
        m_context.pView->MovePointTo(m_grabbed, event.localPos());
    else // the release went elsewhere
        EndDrag();
    return true;
}

/// The readout goes on; what the mode does with the mouse, such as another cursor, waits.
bool CImageView2DCtrlNavigation::Hover(const QMouseEvent& event)
{
    QPointF point = m_context.pView->MapToImage(event.localPos());
    Q_EMIT m_context.pView->signal_ChangeMousePosition(point);
    return true;
}

void CImageView2DCtrlNavigation::EndDrag()
{
    if (m_button == Qt::NoButton)
        return;
    m_button = Qt::NoButton;
    ShowCursor();
}

void CImageView2DCtrlNavigation::ShowCursor()
{
    if (m_button != Qt::NoButton)
        m_context.pView->setCursor(Qt::ClosedHandCursor);
    else if (m_bSpace)
        m_context.pView->setCursor(Qt::OpenHandCursor);
    else
        m_context.pView->slot_ChangeViewMode();
}
