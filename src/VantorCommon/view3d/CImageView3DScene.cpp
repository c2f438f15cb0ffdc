// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// The drawing of the 3D view: its OpenGL objects, their upload and their painting.
#include <VantorCommon/view3d/CImageView3D.h>

#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/ImageView3DObjects_p.h>
#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <QThreadPool>
#include <algorithm>
#include <utility>
#include <vector>

namespace
{
constexpr int kPosition = 0; // the attributes of the shaders
constexpr int kColour = 1;
constexpr int kPositionFloats = 3;
constexpr int kVertexFloats = 6;
constexpr int kColourOffset = kPositionFloats * int(sizeof(float));
constexpr float kBackground = 0.2F;
const QVector3D kReferenceColour(0.5F, 0.5F, 0.5F);

/// Three axes of length 1, two vertices each, then an arrowhead at each tip: the tip lies at 1.01, the other
/// corners 0.01 beside the axis. Deliberate: the buffer is larger than the drawn part.
constexpr float kAxisVertices[180] = {
    0,     0,     0,     1,     0,     0, 0,      0,      0, 0, 1, 0, 0, 0, 0, 0, 0, 1, // lines
    1.01F, 0,     0,     1,     0.01F, 0, 1,      -0.01F, 0,                            // x
    0,     1.01F, 0,     0.01F, 1,     0, -0.01F, 1,      0,                            // y
    0,     0,     1.01F, 0.01F, 0,     1, -0.01F, 0,      1,                            // z
};
static_assert(sizeof(kAxisVertices) == 720);
constexpr int kAxisHeads = 6; // the first vertex of the arrowheads

/// A frame in the ground plane, of four bars: outer edge at -1 and 2, kBar wide.
constexpr float kMin = -1.0F;
constexpr float kMax = 2.0F;
constexpr float kBar = 0.02F;
constexpr float kReferenceVertices[] = {
    kMin,        kMin,        0, kMax,        kMin,        0,
    kMax,        kMin + kBar, 0, kMin,        kMin + kBar, 0, // bottom
    kMin,        kMax - kBar, 0, kMax,        kMax - kBar, 0,
    kMax,        kMax,        0, kMin,        kMax,        0, // top
    kMin,        kMin,        0, kMin + kBar, kMin,        0,
    kMin + kBar, kMax,        0, kMin,        kMax,        0, // left
    kMax - kBar, kMin,        0, kMax,        kMin,        0,
    kMax,        kMax,        0, kMax - kBar, kMax,        0, // right
};
static_assert(sizeof(kReferenceVertices) == 192);
constexpr unsigned int kReferenceIndices[] = {
    0, 1, 2, 0, 2, 3, 4, 5, 6, 4, 6, 7, 8, 9, 10, 8, 10, 11, 12, 13, 14, 12, 14, 15,
};
static_assert(sizeof(kReferenceIndices) == 96);
constexpr int kReferenceIndexCount = sizeof(kReferenceIndices) / sizeof(kReferenceIndices[0]);

/// Whether every index has a vertex. The last triangle of a mesh contains its largest index.
bool HasAllVertices(const std::vector<float>& vctVertices, const std::vector<unsigned int>& vctIndices)
{
    if (vctIndices.size() < 3)
        return true;
    return *std::max_element(vctIndices.end() - 3, vctIndices.end()) < vctVertices.size() / kVertexFloats;
}

/// Frees a buffer on another thread, because the system needs as long to release its pages as for the upload.
template <typename T> void FreeElsewhere(std::vector<T>&& vctBuffer)
{
    QThreadPool::globalInstance()->start([vctDropped = std::move(vctBuffer)] {});
}

bool Compile(QOpenGLShader& shader, const QString& strFile)
{
    if (shader.compileSourceFile(strFile))
        return true;
    CLogger::Write(ERROR, "OpenGL: %s does not compile: %s", strFile.toUtf8().constData(),
                   shader.log().toUtf8().constData());
    return false;
}
} // namespace

QOpenGLShaderProgram* __InternalCreateProgram(QString strVertexFile, QString strFragmentFile)
{
    QOpenGLShader vertexShader(QOpenGLShader::Vertex);
    QOpenGLShader fragmentShader(QOpenGLShader::Fragment);
    if (!Compile(vertexShader, strVertexFile) || !Compile(fragmentShader, strFragmentFile))
        return nullptr;
    auto pProgram = std::make_unique<QOpenGLShaderProgram>();
    if (pProgram->addShader(&vertexShader) && pProgram->addShader(&fragmentShader) && pProgram->link())
        return pProgram.release();
    CLogger::Write(ERROR, "OpenGL: %s does not link: %s", strVertexFile.toUtf8().constData(),
                   pProgram->log().toUtf8().constData());
    return nullptr;
}

void CImageView3D::DestroyGL()
{
    ClearMesh();
    DestroyObjects(*this, m_pObjects);
}

void CImageView3D::ClearMesh()
{
    m_nVertexFloats = 0;
    m_nIndices = 0;
    update();
}

void CImageView3D::InitImageView3DGL()
{
    DestroyGL();
    if (!HasUsableContext(*this))
        return;
    const CCurrentContext current(*this);
    m_pObjects = std::make_unique<SObjects>();
    const auto create = [](const char* pVertex, const char* pFragment) {
        const QString strFolder = QStringLiteral(":/OpenGL/");
        return std::unique_ptr<QOpenGLShaderProgram>(__InternalCreateProgram(
            strFolder + QString::fromLatin1(pVertex), strFolder + QString::fromLatin1(pFragment)));
    };
    m_pObjects->pMeshProgram = create("vertex_shader.vert", "frag_shader.frag");
    m_pObjects->pAxisProgram = create("axis_vertex.vert", "axis_frag.frag");
    m_pObjects->pReferenceProgram = create("axis_vertex.vert", "axis_frag.frag");
    if (!m_pObjects->pMeshProgram || !m_pObjects->pAxisProgram || !m_pObjects->pReferenceProgram)
        Q_EMIT signal_Failed(
            QStringLiteral("The driver refuses the shaders of the 3D view; the log tells why."));
    m_pObjects->meshArray.create();
    m_pObjects->meshVertices.create();
    m_pObjects->meshIndices.create();
    CreateAxes();
    CreateReference();
}

void CImageView3D::CreateAxes()
{
    m_pObjects->axisArray.create();
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->axisArray);
    FillBuffer(m_pObjects->axisVertices, kAxisVertices, sizeof(kAxisVertices));
    glEnableVertexAttribArray(kPosition);
    glVertexAttribPointer(kPosition, kPositionFloats, GL_FLOAT, GL_FALSE, kPositionFloats * sizeof(float),
                          nullptr);
}

void CImageView3D::CreateReference()
{
    m_pObjects->referenceArray.create();
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->referenceArray);
    FillBuffer(m_pObjects->referenceVertices, kReferenceVertices, sizeof(kReferenceVertices));
    FillBuffer(m_pObjects->referenceIndices, kReferenceIndices, sizeof(kReferenceIndices));
    glEnableVertexAttribArray(kPosition);
    glVertexAttribPointer(kPosition, kPositionFloats, GL_FLOAT, GL_FALSE, kPositionFloats * sizeof(float),
                          nullptr);
}

void CImageView3D::slot_LoadFinished()
{
    if (!m_pModel)
        return;
    if (!m_pObjects) {
        m_pModel->ClearBufferData(); // nothing can show it
        return;
    }
    if (!m_pObjects->meshArray.isCreated() || !m_pObjects->meshVertices.isCreated() ||
        !m_pObjects->meshIndices.isCreated())
        return;
    std::vector<float> vctVertices;
    std::vector<unsigned int> vctIndices;
    if (!m_pModel->TakeBuffers(vctVertices, vctIndices))
        return; // an earlier call has taken this mesh already
    const CCurrentContext current(*this);
    CLogger::Write(DEBUG, "Start upload data to gpu");
    CLogger::Write(DEBUG, "OpenGL Error: %d", static_cast<int>(glGetError()));
    const bool bUploaded = Upload(vctVertices, vctIndices);
    m_nVertexFloats = static_cast<int>(vctVertices.size());
    m_nIndices = static_cast<int>(vctIndices.size());
    CLogger::Write(DEBUG, "OpenGL vertices: %d, indices: %d", m_nVertexFloats, m_nIndices);
    if (!bUploaded || !HasAllVertices(vctVertices, vctIndices))
        ClearMesh();
    FreeElsewhere(std::move(vctVertices));
    FreeElsewhere(std::move(vctIndices));
    update();
    CLogger::Write(DEBUG, "Set Image OpenGL");
}

bool CImageView3D::Upload(const std::vector<float>& vctVertices, const std::vector<unsigned int>& vctIndices)
{
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->meshArray);
    const bool bUploaded =
        FillBuffer(m_pObjects->meshVertices, vctVertices.data(), vctVertices.size() * sizeof(float)) &&
        FillBuffer(m_pObjects->meshIndices, vctIndices.data(), vctIndices.size() * sizeof(unsigned int));
    constexpr int kStride = kVertexFloats * int(sizeof(float));
    glEnableVertexAttribArray(kPosition);
    glVertexAttribPointer(kPosition, kPositionFloats, GL_FLOAT, GL_FALSE, kStride, nullptr);
    glEnableVertexAttribArray(kColour);
    glVertexAttribPointer(kColour, kPositionFloats, GL_FLOAT, GL_FALSE, kStride,
                          reinterpret_cast<const void*>(std::intptr_t(kColourOffset)));
    const int nError = static_cast<int>(glGetError());
    CLogger::Write(DEBUG, "OpenGL Error: %d", nError);
    return bUploaded && nError == GL_NO_ERROR;
}

void CImageView3D::SetMatrices(QOpenGLShaderProgram& program)
{
    program.setUniformValue("model", m_matModel);
    program.setUniformValue("view", m_matView);
    program.setUniformValue("projection", m_matProjection);
}

void CImageView3D::paintGL()
{
    if (!m_pObjects || m_bResizing)
        return;
    glClearColor(kBackground, kBackground, kBackground, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (!m_pObjects->pAxisProgram)
        return;
    PaintAxes();
    if (!m_pObjects->pReferenceProgram)
        return;
    PaintReference();
    if (m_pObjects->pMeshProgram)
        PaintMesh();
}

void CImageView3D::PaintAxes()
{
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    QOpenGLShaderProgram& program = *m_pObjects->pAxisProgram;
    program.bind();
    SetMatrices(program);
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->axisArray);
    for (int i = 0; i < 3; ++i) {
        program.setUniformValue("uColor", QVector3D(i == 0, i == 1, i == 2));
        glDrawArrays(GL_LINES, 2 * i, 2);
        glDrawArrays(GL_TRIANGLES, kAxisHeads + 3 * i, 3);
    }
    program.release();
}

void CImageView3D::PaintReference()
{
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    QOpenGLShaderProgram& program = *m_pObjects->pReferenceProgram;
    program.bind();
    SetMatrices(program);
    program.setUniformValue("uColor", kReferenceColour);
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->referenceArray);
    glDrawElements(GL_TRIANGLES, kReferenceIndexCount, GL_UNSIGNED_INT, nullptr);
    program.release();
}

void CImageView3D::PaintMesh()
{
    QOpenGLShaderProgram& program = *m_pObjects->pMeshProgram;
    program.bind();
    SetMatrices(program);
    const QOpenGLVertexArrayObject::Binder binder(&m_pObjects->meshArray);
    glDrawElements(GL_TRIANGLES, m_nIndices, GL_UNSIGNED_INT, nullptr);
    program.release();
}
