// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <VantorCommon/log/CLogger.h>

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>
#include <QWindow>
#include <climits>

namespace
{
constexpr int kMajor = 3;
constexpr int kMinor = 3;
constexpr int kDepthBits = 24;
} // namespace

QSurfaceFormat OpenGLFormat()
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(kMajor, kMinor);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(kDepthBits);
    format.setOption(QSurfaceFormat::DebugContext);
    return format;
}

bool HasUsableContext(const QOpenGLWidget& widget)
{
    return widget.isValid() && widget.context()->format().version() >= qMakePair(kMajor, kMinor) &&
           !widget.context()->isOpenGLES();
}

namespace
{
/// Creates the system's window, if it does not exist yet. For a window with a parent, the globe's, Qt would
/// also create system windows for that parent's children, and these would stay without OpenGL.
void CreateHandle(const QWidget& window)
{
    const bool bBefore = QCoreApplication::testAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    QCoreApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    window.winId();
    QCoreApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings, bBefore);
}

/// Shows the dialogs above the window again, because a new system window does not know them.
void ShowDialogsAgain(const QWidget& window)
{
    for (QWidget* pDialog : QApplication::topLevelWidgets()) {
        const QWidget* pParent = pDialog->parentWidget();
        if (!pDialog->isVisible() || !pParent || pParent->window() != &window)
            continue;
        pDialog->hide();
        pDialog->show();
    }
}
} // namespace

bool StartsWithoutOpenGL()
{
    return QCoreApplication::testAttribute(Qt::AA_ForceRasterWidgets);
}

void PrepareWindow(QOpenGLWidget& widget)
{
    QOpenGLContext context;
    if (!StartsWithoutOpenGL() || !context.create())
        return;
    QWidget& window = *widget.window();
    CreateHandle(window);
    QWindow& handle = *window.windowHandle();
    if (handle.surfaceType() != QSurface::RasterSurface)
        return;
    const bool bVisible = window.isVisible();
    const QRect geometry = window.geometry();
    const QPointer<QWidget> pFocus = window.focusWidget();
    if (bVisible)
        window.hide();
    handle.destroy();
    handle.setSurfaceType(QSurface::RasterGLSurface);
    handle.create();
    if (!bVisible)
        return;
    if (!window.isMaximized() && !window.isFullScreen())
        window.setGeometry(geometry);
    window.show();
    ShowDialogsAgain(window);
    if (pFocus)
        pFocus->setFocus();
}

void ShowNotSupported(QOpenGLWidget& widget)
{
    if (widget.layout())
        return;
    CLogger::Write(WARNING, "OpenGL %d.%d is not available", kMajor, kMinor);
    auto* pLayout = new QVBoxLayout(&widget);
    pLayout->addWidget(new QLabel(QStringLiteral("System doesnot support OpenGL"), &widget));
}

bool FillBuffer(QOpenGLBuffer& buffer, const void* pData, std::size_t nBytes)
{
    if (nBytes > INT_MAX || !buffer.create() || !buffer.bind())
        return false;
    buffer.setUsagePattern(QOpenGLBuffer::StaticDraw);
    buffer.allocate(pData, static_cast<int>(nBytes));
    return true;
}
