// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3DBase.h>

#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <QMouseEvent>
#include <utility>

CImageView3DBase::CImageView3DBase(QWidget* pParent) : QOpenGLWidget(pParent)
{
    setFormat(OpenGLFormat());
    if (!IsDesktopOpenGL())
        ShowNotSupported(*this);
}

CImageView3DBase::~CImageView3DBase()
{
    if (context())
        disconnect(context(), nullptr, this, nullptr);
}

bool CImageView3DBase::IsDesktopOpenGL()
{
    return QOpenGLContext::openGLModuleType() == QOpenGLContext::LibGL;
}

void CImageView3DBase::setVisible(bool bVisible)
{
    if (bVisible)
        PrepareWindow(*this);
    QOpenGLWidget::setVisible(bVisible);
}

void CImageView3DBase::FollowContext()
{
    initializeOpenGLFunctions();
    // Moving the widget into another window destroys its context.
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &CImageView3DBase::DestroyGL);
}

void CImageView3DBase::CheckContextLater()
{
    QMetaObject::invokeMethod(this, &CImageView3DBase::CheckContext, Qt::QueuedConnection);
}

/// A widget without a size has no context yet, and needs none.
void CImageView3DBase::CheckContext()
{
    if (!isVisible() || size().isEmpty() || HasUsableContext(*this))
        return;
    ShowNotSupported(*this);
    ContextMissing();
}

void CImageView3DBase::ContextMissing()
{
}

void CImageView3DBase::mousePressEvent(QMouseEvent* pEvent)
{
    m_ptMouse = pEvent->pos();
    m_bPressed = true;
}

void CImageView3DBase::mouseReleaseEvent(QMouseEvent*)
{
    m_bPressed = false;
}

QPoint CImageView3DBase::TakeDragStep(const QMouseEvent& event)
{
    return event.pos() - std::exchange(m_ptMouse, event.pos());
}
