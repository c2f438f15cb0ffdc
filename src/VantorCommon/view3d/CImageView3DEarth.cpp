// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <QDebug>
#include <QMouseEvent>
#include <QOpenGLShaderProgram>
#include <QOpenGLTexture>
#include <QOpenGLVertexArrayObject>
#include <QTimer>
#include <QtMath>
#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
constexpr float kRadius = 1.0F;
constexpr unsigned int kSectors = 360;
constexpr unsigned int kStacks = 180;
constexpr int kRepaintInterval = 16; // ms
constexpr float kDegreesPerPixel = 0.1F;
constexpr float kDegreesPerWheelUnit = 0.01F;
constexpr float kMaxPitch = 89.0F;
constexpr float kNear = 0.1F;
constexpr float kFar = 100.0F;
constexpr int kPosition = 0; // the attributes of the shader
constexpr int kNormal = 1;
constexpr int kTextureCoordinate = 2;
} // namespace

struct CImageView3DEarth::SObjects {
    std::unique_ptr<QOpenGLShaderProgram> pProgram;
    QOpenGLBuffer vertices{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer indices{QOpenGLBuffer::IndexBuffer};
    QOpenGLVertexArrayObject array;
    std::unique_ptr<QOpenGLTexture> pTexture;
};

void __InternalCreateEarth(std::vector<_SVertex>& vctVertices, std::vector<unsigned int>& vctIndices,
                           float radius, unsigned int sectorCount, unsigned int stackCount)
{
    vctVertices.clear();
    vctIndices.clear();
    if (sectorCount == 0 || stackCount == 0)
        return;
    const double dblSectorStep = 2 * M_PI / sectorCount;
    const double dblStackStep = M_PI / stackCount;
    const float fInverse = 1.0F / radius;
    for (unsigned int i = 0; i <= stackCount; ++i) {
        const double dblStack = M_PI / 2 - i * dblStackStep;
        const double dblRing = radius * std::cos(dblStack);
        const float z = static_cast<float>(radius * std::sin(dblStack));
        for (unsigned int j = 0; j <= sectorCount; ++j) {
            const double dblSector = j * dblSectorStep - M_PI;
            const float x = static_cast<float>(dblRing * std::cos(dblSector));
            const float y = static_cast<float>(dblRing * std::sin(dblSector));
            vctVertices.push_back({x, y, z, x * fInverse, y * fInverse, z * fInverse,
                                   float(j) / float(sectorCount), float(i) / float(stackCount)});
        }
    }
    for (unsigned int i = 0; i < stackCount; ++i) {
        unsigned int k1 = i * (sectorCount + 1);
        unsigned int k2 = k1 + sectorCount + 1;
        for (unsigned int j = 0; j < sectorCount; ++j, ++k1, ++k2) {
            if (i != 0)
                vctIndices.insert(vctIndices.end(), {k1, k2, k1 + 1});
            if (i != stackCount - 1)
                vctIndices.insert(vctIndices.end(), {k1 + 1, k2, k2 + 1});
        }
    }
}

CImageView3DEarth::CImageView3DEarth(QWidget* parent) : CImageView3DBase(parent), m_pTimer(new QTimer(this))
{
    m_pTimer->setInterval(kRepaintInterval);
    connect(m_pTimer, &QTimer::timeout, this, &CImageView3DEarth::slot_Timmer);
}

CImageView3DEarth::~CImageView3DEarth()
{
    DestroyGL();
}

void CImageView3DEarth::DestroyGL()
{
    DestroyObjects(*this, m_pObjects);
}

void CImageView3DEarth::initializeGL()
{
    DestroyGL();
    if (!HasUsableContext(*this))
        return;
    FollowContext();
    CreateObjects();
}

void CImageView3DEarth::CreateObjects()
{
    m_pObjects = std::make_unique<SObjects>();
    m_pObjects->pProgram.reset(__InternalCreateProgram(QStringLiteral(":/OpenGL/earth_vertex.vert"),
                                                       QStringLiteral(":/OpenGL/earth_frag.frag")));
    __InternalCreateEarth(m_vctVertices, m_vctIndices, kRadius, kSectors, kStacks);
    UploadSphere();
    qDebug() << " Vector: " << m_vctVertices.size();
    qDebug() << " Indices: " << m_vctIndices.size();
    LoadTexture();
}

void CImageView3DEarth::UploadSphere()
{
    m_pObjects->array.create();
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->array);
    FillBuffer(m_pObjects->vertices, m_vctVertices.data(), m_vctVertices.size() * sizeof(_SVertex));
    FillBuffer(m_pObjects->indices, m_vctIndices.data(), m_vctIndices.size() * sizeof(unsigned int));
    const auto attribute = [this](int nIndex, int nFloats, std::size_t nOffset) {
        glEnableVertexAttribArray(GLuint(nIndex));
        glVertexAttribPointer(GLuint(nIndex), nFloats, GL_FLOAT, GL_FALSE, sizeof(_SVertex),
                              reinterpret_cast<const void*>(nOffset));
    };
    attribute(kPosition, 3, offsetof(_SVertex, x));
    attribute(kNormal, 3, offsetof(_SVertex, nx));
    attribute(kTextureCoordinate, 2, offsetof(_SVertex, s));
}

/// The rows keep the picture's order: its first one, the north pole, is t = 0.
void CImageView3DEarth::LoadTexture()
{
    const QImage image(QStringLiteral(":/OpenGL/8081_earthmap4k.jpg"));
    if (image.isNull())
        return;
    m_pObjects->pTexture = std::make_unique<QOpenGLTexture>(image, QOpenGLTexture::GenerateMipMaps);
    QOpenGLTexture& texture = *m_pObjects->pTexture;
    texture.setMinMagFilters(QOpenGLTexture::LinearMipMapLinear, QOpenGLTexture::Linear);
    texture.setWrapMode(QOpenGLTexture::DirectionS, QOpenGLTexture::Repeat);
    texture.setWrapMode(QOpenGLTexture::DirectionT, QOpenGLTexture::ClampToEdge);
}

void CImageView3DEarth::resizeGL(int nWidth, int nHeight)
{
    if (m_pObjects)
        glViewport(0, 0, nWidth, nHeight);
}

void CImageView3DEarth::paintGL()
{
    if (!m_pObjects)
        return;
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!m_pObjects->pProgram || !m_pObjects->pTexture)
        return;
    glEnable(GL_DEPTH_TEST);
    QMatrix4x4 view;
    view.lookAt(m_cameraPosition, m_cameraPosition + m_cameraFront, m_cameraUp);
    QMatrix4x4 projection;
    projection.perspective(m_fFOV, float(width()) / float(std::max(1, height())), kNear, kFar);
    QOpenGLShaderProgram& program = *m_pObjects->pProgram;
    program.bind();
    program.setUniformValue("model", QMatrix4x4());
    program.setUniformValue("view", view);
    program.setUniformValue("projection", projection);
    m_pObjects->pTexture->bind(0);
    program.setUniformValue("qt_Texture0", 0);
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->array);
    glDrawElements(GL_TRIANGLES, int(m_vctIndices.size()), GL_UNSIGNED_INT, nullptr);
    m_pObjects->pTexture->release(0);
    program.release();
    qDebug() << "Paint OpenGl";
}

void CImageView3DEarth::slot_Timmer()
{
    update();
}

void CImageView3DEarth::SetSteadyRepaint(bool bSteady)
{
    m_bSteady = bSteady;
    if (bSteady && isVisible())
        m_pTimer->start();
    else
        m_pTimer->stop();
}

void CImageView3DEarth::showEvent(QShowEvent* pEvent)
{
    CImageView3DBase::showEvent(pEvent);
    if (m_bSteady)
        m_pTimer->start();
    CheckContextLater();
}

void CImageView3DEarth::hideEvent(QHideEvent* pEvent)
{
    m_pTimer->stop();
    CImageView3DBase::hideEvent(pEvent);
}

void CImageView3DEarth::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!IsDragged())
        return;
    const QPoint ptStep = TakeDragStep(*pEvent);
    m_fYaw -= float(ptStep.x()) * kDegreesPerPixel;
    m_fPitch = std::clamp(m_fPitch + float(ptStep.y()) * kDegreesPerPixel, -kMaxPitch, kMaxPitch);
    const float fYaw = qDegreesToRadians(m_fYaw);
    const float fPitch = qDegreesToRadians(m_fPitch);
    m_cameraFront =
        QVector3D(std::cos(fYaw) * std::cos(fPitch), std::sin(fPitch), std::sin(fYaw) * std::cos(fPitch))
            .normalized();
    update();
}

void CImageView3DEarth::wheelEvent(QWheelEvent* pEvent)
{
    pEvent->accept();
    m_fFOV -= float(pEvent->angleDelta().y()) * kDegreesPerWheelUnit;
    update();
}
