// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QObject>
#include <QPointF>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

/// Moving about in a 2D view: SCenterOptions::bPanAnywhere, bViewKeys and bWheelPages. What means nothing to
/// it goes on to the view.
class CImageView2DCtrlNavigation : public QObject
{
public:
    explicit CImageView2DCtrlNavigation(const SImageView2DCtrlContext& context) : m_context(context) {}

    /// Starts watching the view. Filters that are installed later come first.
    void Watch();

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool PressKey(const QKeyEvent& event);
    bool PressSpace(bool bDown);
    bool PressArrow(int nKey);
    bool PanBy(const QPoint& direction);
    bool Turn(const QWheelEvent& event);
    void Scroll(int nStep);
    bool Press(const QMouseEvent& event);
    bool Drag(const QMouseEvent& event);
    bool Hover(const QMouseEvent& event);
    void EndDrag();
    void ShowCursor();

    const SImageView2DCtrlContext& m_context;
    bool m_bSpace = false;
    int m_nTurned = 0;                       ///< of the wheel, less than a notch
    Qt::MouseButton m_button = Qt::NoButton; ///< that pans
    QPointF m_grabbed;                       ///< the image point that follows the mouse
};
