// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QPoint>

/// The base of the widgets that paint with OpenGL 3.3: context, window and mouse. A derived class makes its
/// OpenGL objects in initializeGL, after FollowContext, and destroys them in DestroyGL. Without OpenGL 3.3
/// the widget shows a label that says so. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DBase : public QOpenGLWidget, protected QOpenGLFunctions
{
    Q_OBJECT

public:
    /// The parent owns the widget.
    explicit CImageView3DBase(QWidget* pParent);
    /// A derived class destroys its objects in its own destructor.
    ~CImageView3DBase() override;

    /// First prepares the window for OpenGL, if the host has started without it.
    void setVisible(bool bVisible) override;

protected:
    /// Whether Qt uses desktop OpenGL, for which the shaders are written.
    static bool IsDesktopOpenGL();
    /// Resolves the functions of the new context, and calls DestroyGL before that context is destroyed.
    void FollowContext();
    /// Destroys the OpenGL objects, if there are any; safe at any time.
    virtual void DestroyGL() = 0;
    /// After the pending events: shows the label over a visible widget whose context cannot run the shaders,
    /// and calls ContextMissing.
    void CheckContextLater();
    /// Called when the widget cannot paint. The base does nothing.
    virtual void ContextMissing();

    /// @{
    /// Any button starts and ends a drag.
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    /// @}
    /// Whether a drag is in progress.
    bool IsDragged() const { return m_bPressed; }
    /// How far the mouse moved since the last call or the press, in widget pixels.
    QPoint TakeDragStep(const QMouseEvent& event);

private:
    void CheckContext();

    bool m_bPressed = false;
    QPoint m_ptMouse;
};
