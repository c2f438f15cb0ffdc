// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QOpenGLBuffer>
#include <QOpenGLContext>
#include <QOpenGLWidget>
#include <QSurfaceFormat>
#include <cstddef>
#include <memory>

/// What the shaders need: OpenGL 3.3 core, a depth buffer, and a context that reports its errors.
QSurfaceFormat OpenGLFormat();

/// Whether the widget has a context that can run the shaders.
bool HasUsableContext(const QOpenGLWidget& widget);

/// Lets the widget's window carry OpenGL; to be called before the widget is shown. Windows can by themselves,
/// unless the host has set Qt::AA_ForceRasterWidgets, which spares it half the time and the memory of its
/// start: then the system's window is exchanged for one that can, once, and disappears for a moment. Where
/// there is no OpenGL it stays.
void PrepareWindow(QOpenGLWidget& widget);

/// Logs that there is no such context, and lays a label that says so over the widget; once per widget.
void ShowNotSupported(QOpenGLWidget& widget);

/// Creates a buffer and fills it; the vertex array that is bound remembers an index buffer.
bool FillBuffer(QOpenGLBuffer& buffer, const void* pData, std::size_t nBytes);

/// Makes a widget's context current for a scope, unless it is already.
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
