// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view3d/CImageView3D.h>

#include <QOpenGLBuffer>
#include <QOpenGLShaderProgram>
#include <QOpenGLTexture>
#include <QOpenGLVertexArrayObject>

/// The OpenGL objects of a 3D view, made and destroyed together while their context is current.
struct CImageView3D::SObjects {
    std::unique_ptr<QOpenGLShaderProgram> pMeshProgram;
    std::unique_ptr<QOpenGLShaderProgram> pAxisProgram;
    std::unique_ptr<QOpenGLShaderProgram> pReferenceProgram;
    QOpenGLBuffer meshVertices{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer meshIndices{QOpenGLBuffer::IndexBuffer};
    QOpenGLVertexArrayObject meshArray;
    QOpenGLBuffer axisVertices{QOpenGLBuffer::VertexBuffer};
    QOpenGLVertexArrayObject axisArray;
    QOpenGLBuffer referenceVertices{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer referenceIndices{QOpenGLBuffer::IndexBuffer};
    QOpenGLVertexArrayObject referenceArray;
    std::unique_ptr<QOpenGLTexture> pTexture; ///< for a texture; the view makes none
};
