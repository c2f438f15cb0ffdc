// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QPoint>

/// The base of the widgets that paint with OpenGL 3.3: context, window and mouse. A derived class makes its
/// OpenGL objects in initializeGL, after FollowContext, and drops them in DestroyGL. Without OpenGL 3.3 the
/// widget shows a label that says so. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DBase : public QOpenGLWidget, protected QOpenGLFunctions
{
    Q_OBJECT

public:
    /// The parent owns the widget.
    explicit CImageView3DBase(QWidget* pParent);
    /// A derived class drops its objects in its own destructor.
    ~CImageView3DBase() override;

    /// Lets the window carry OpenGL first, where the host has started without.
    void setVisible(bool bVisible) override;

protected:
    /// Whether Qt's OpenGL is the one of desktops, which the shaders are written for.
    static bool IsDesktopOpenGL();
    /// Resolves the functions of the new context. DestroyGL is called before this context goes.
    void FollowContext();
    /// Drops the OpenGL objects, if there are any; safe at any time.
    virtual void DestroyGL() = 0;
    /// After the events at hand: lays the label over a visible widget whose context cannot run the shaders,
    /// and calls ContextMissing.
    void CheckContextLater();
    /// The widget cannot show anything. Does nothing in the base.
    virtual void ContextMissing();

    /// @{
    /// Any button begins and ends a drag.
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    /// @}
    /// Whether a drag is under way.
    bool IsDragged() const { return m_bPressed; }
    /// How far the mouse went since the last call or the press, in widget pixels.
    QPoint TakeDragStep(const QMouseEvent& event);

private:
    void CheckContext();

    bool m_bPressed = false;
    QPoint m_ptMouse;
};
