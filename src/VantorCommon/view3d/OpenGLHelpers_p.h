// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QOpenGLBuffer>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QSurfaceFormat>
#include <cstddef>
#include <memory>

/// The format that the shaders need: OpenGL 3.3 core, a depth buffer, and a context that reports its errors.
QSurfaceFormat OpenGLFormat();

/// Whether the widget has a context that can run the shaders.
bool HasUsableContext(const QOpenGLWidget& widget);

/// Whether windows get OpenGL only when they need it (Qt::AA_ForceRasterWidgets). A 3D view then joins its
/// window when it is first shown: Wayland's windows, among others, paint nothing without OpenGL as soon as
/// they have such a widget, be it hidden.
bool StartsWithoutOpenGL();

/// Prepares the widget's window for OpenGL; call it before the widget is shown. Windows are ready by default,
/// unless the host has set Qt::AA_ForceRasterWidgets, which saves it half the time and the memory of its
/// start: then this replaces the system's window once by one with OpenGL, and the window disappears for a
/// moment. Without OpenGL the window stays.
void PrepareWindow(QOpenGLWidget& widget);

/// Logs that there is no such context, and shows a label that says so over the widget; once per widget.
void ShowNotSupported(QOpenGLWidget& widget);

/// Creates a buffer and fills it; the bound vertex array remembers an index buffer.
bool FillBuffer(QOpenGLBuffer& buffer, const void* pData, std::size_t nBytes);

/// Makes a widget's context current for a scope, unless it already is.
class CCurrentContext
{
public:
    explicit CCurrentContext(QOpenGLWidget& widget)
        : m_widget(widget), m_bWasCurrent(QOpenGLContext::currentContext() == widget.context())
    {
        if (!m_bWasCurrent)
            m_widget.makeCurrent();
    }
    ~CCurrentContext()
    {
        if (!m_bWasCurrent)
            m_widget.doneCurrent();
    }
    CCurrentContext(const CCurrentContext&) = delete;
    CCurrentContext& operator=(const CCurrentContext&) = delete;

private:
    QOpenGLWidget& m_widget;
    const bool m_bWasCurrent;
};

/// Destroys the OpenGL objects of a widget, if there are any, with its context current.
template <class Objects> void DestroyObjects(QOpenGLWidget& widget, std::unique_ptr<Objects>& pObjects)
{
    if (!pObjects)
        return;
    const CCurrentContext current(widget);
    pObjects.reset();
}
