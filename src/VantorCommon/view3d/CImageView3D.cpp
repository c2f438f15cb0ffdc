// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3D.h>

#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/view2d/SharedIcon_p.h>
#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/ImageView3DObjects_p.h>
#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <QMenu>
#include <QMouseEvent>
#include <QOpenGLDebugLogger>
#include <algorithm>

namespace
{
constexpr double kDegreesPerPixel = 0.1;
constexpr double kDegreesPerWheelUnit = 0.01; // a notch is 120 units
constexpr int kSize = 200;
constexpr int kMinimumSize = 50;

/// GL returns null on an error.
const char* TextOf(const GLubyte* pText)
{
    return pText ? reinterpret_cast<const char*>(pText) : "unknown";
}
} // namespace

CImageView3D::CImageView3D(CImageView3DModel* pModel, QWidget* pParent)
    : CImageView3DBase(pParent), m_pModel(pModel)
{
    setFocusPolicy(Qt::StrongFocus);
    m_pMenu = new QMenu(this);
    m_pMenu->addAction(SharedIcon("2D.png"), QStringLiteral("Switch To 2D View"), this,
                       &CImageView3D::signal_Switch3DTo2D);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &CImageView3D::slot_ShowContextMenu);
    if (!m_pModel)
        return;
    connect(m_pModel.data(), &CImageView3DModel::signal_LoadFinished, this, &CImageView3D::slot_LoadFinished);
    connect(m_pModel.data(), &CImageView3DModel::signal_ChangeTransformMatrix, this,
            &CImageView3D::slot_ChangeTransformMatrix);
}

CImageView3D::~CImageView3D()
{
    DestroyGL();
}

QSize CImageView3D::sizeHint() const
{
    return QSize(kSize, kSize);
}

QSize CImageView3D::minimumSizeHint() const
{
    return QSize(kMinimumSize, kMinimumSize);
}

void CImageView3D::rotatedBy(int, int, int)
{
    update();
}

void CImageView3D::setClearColor(const QColor&)
{
    update();
}

void CImageView3D::setVisible(bool visible)
{
    CImageView3DBase::setVisible(visible);
    if (!visible)
        return;
    InitImageView3DGL();
    AskForImage();
    Q_EMIT signal_Active3DView();
}

/// When the window, not setVisible, shows the view, the image may have changed while it was hidden.
void CImageView3D::showEvent(QShowEvent* pEvent)
{
    CImageView3DBase::showEvent(pEvent);
    if (pEvent->spontaneous())
        return;
    AskForImageLater();
    CheckContextLater();
}

void CImageView3D::ContextMissing()
{
    Q_EMIT signal_Failed(QStringLiteral("The 3D view needs OpenGL 3.3, which this system does not offer."));
}

void CImageView3D::AskForImageLater()
{
    m_bImageWanted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_bImageWanted)
                AskForImage();
        },
        Qt::QueuedConnection);
}

void CImageView3D::AskForImage()
{
    m_bImageWanted = false;
    Q_EMIT signal_ChangeCurrentImage();
}

void CImageView3D::initializeGL()
{
    if (!IsDesktopOpenGL())
        return;
    FollowContext();
    InitLog();
    InitImageView3DGL();
    InitMatrix();
    AskForImageLater();
}

void CImageView3D::InitLog()
{
    if (!isValid())
        return;
    const CCurrentContext current(*this);
    CLogger::Write(DEBUG, "OpenGL version: %s, %s", TextOf(glGetString(GL_VERSION)),
                   TextOf(glGetString(GL_SHADING_LANGUAGE_VERSION)));
    delete m_pDebugLogger;
    m_pDebugLogger = nullptr;
    if (!context()->hasExtension(QByteArrayLiteral("GL_KHR_debug")))
        return;
    m_pDebugLogger = new QOpenGLDebugLogger(this);
    if (!m_pDebugLogger->initialize())
        return;
    connect(m_pDebugLogger, &QOpenGLDebugLogger::messageLogged, this,
            &CImageView3D::slot_OpenGLMessageLogged);
    m_pDebugLogger->startLogging(QOpenGLDebugLogger::AsynchronousLogging);
}

void CImageView3D::slot_OpenGLMessageLogged(const QOpenGLDebugMessage& debugMessage)
{
    CLogger::Write(DEBUG, "OpenGL: %s", debugMessage.message().toUtf8().constData());
}

void CImageView3D::InitMatrix()
{
    if (!m_pModel)
        return;
    const CImageView3DModel& model = *m_pModel;
    m_matModel.setToIdentity();
    m_matModel.rotate(model.GetRotateX(), 1, 0, 0);
    m_matModel.rotate(model.GetRotateY(), 0, 1, 0);
    m_matModel.rotate(model.GetRotateZ(), 0, 0, 1);
    m_matModel.translate(model.GetTranslateX(), model.GetTranslateY(), model.GetTranslateZ());
    m_matModel.scale(model.GetScaleX(), model.GetScaleY(), model.GetScaleZ());
    m_matView.setToIdentity();
    m_matView.lookAt({model.GetCameraPositionX(), model.GetCameraPositionY(), model.GetCameraPositionZ()},
                     {model.GetCameraCenterX(), model.GetCameraCenterY(), model.GetCameraCenterZ()},
                     {model.GetCameraUpX(), model.GetCameraUpY(), model.GetCameraUpZ()});
    SetProjection(width(), height());
    update();
}

void CImageView3D::SetProjection(int nWidth, int nHeight)
{
    m_matProjection.setToIdentity();
    if (!m_pModel)
        return;
    m_matProjection.perspective(m_pModel->GetFOV(), float(nWidth) / float(std::max(1, nHeight)),
                                m_pModel->GetNear(), m_pModel->GetFar());
}

void CImageView3D::resizeGL(int nWidth, int nHeight)
{
    const CCurrentContext current(*this);
    glViewport(0, 0, nWidth, nHeight);
    SetProjection(nWidth, nHeight);
}

/// The base class would paint at once, and the window paints again; a large mesh should be painted once.
void CImageView3D::resizeEvent(QResizeEvent* pEvent)
{
    m_bResizing = true;
    CImageView3DBase::resizeEvent(pEvent);
    m_bResizing = false;
    update();
}

void CImageView3D::slot_ChangeImage()
{
}

void CImageView3D::slot_Timmer()
{
    update();
}

void CImageView3D::slot_ChangeTransformMatrix()
{
    InitMatrix();
}

void CImageView3D::slot_ShowContextMenu(const QPoint& pos)
{
    m_pMenu->popup(mapToGlobal(pos));
}

void CImageView3D::mousePressEvent(QMouseEvent* pEvent)
{
    CImageView3DBase::mousePressEvent(pEvent);
    Q_EMIT signal_Active3DView();
}

void CImageView3D::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!IsDragged() || !m_pModel)
        return;
    const QPoint ptStep = TakeDragStep(*pEvent);
    Q_EMIT signal_ChangeRotateX(double(m_pModel->GetRotateX()) - ptStep.y() * kDegreesPerPixel);
    Q_EMIT signal_ChangeRotateY(double(m_pModel->GetRotateY()) + ptStep.x() * kDegreesPerPixel);
}

void CImageView3D::wheelEvent(QWheelEvent* pEvent)
{
    pEvent->accept();
    if (m_pModel)
        Q_EMIT signal_ChangeFOV(double(m_pModel->GetFOV()) - pEvent->angleDelta().y() * kDegreesPerWheelUnit);
}
