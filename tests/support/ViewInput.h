// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

/// Mouse and wheel of a widget in a shown window, as the window system would send them. A press or a release
/// away from the last position is preceded by a move.
namespace ViewInput
{
inline QPoint InWindow(QWidget& widget, const QPoint& pos)
{
    return widget.mapTo(widget.window(), pos);
}

inline void Press(QWidget& widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mousePress(widget.window()->windowHandle(), button, {}, InWindow(widget, pos));
}

inline void Move(QWidget& widget, const QPoint& pos)
{
    QTest::mouseMove(widget.window()->windowHandle(), InWindow(widget, pos));
}

inline void Release(QWidget& widget, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseRelease(widget.window()->windowHandle(), button, {}, InWindow(widget, pos));
}

/// One turn of the wheel; whether the widget took it.
inline bool Wheel(QWidget& widget, const QPointF& pos, int nDelta)
{
    QWheelEvent event(pos, QPointF(widget.mapToGlobal(pos.toPoint())), QPoint(), QPoint(0, nDelta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    event.setAccepted(true);
    static_cast<QObject&>(widget).event(&event); // sendEvent does not report who took a wheel event
    return event.isAccepted();
}
} // namespace ViewInput
