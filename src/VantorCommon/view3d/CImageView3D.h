// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QMatrix4x4>
#include <QOpenGLFunctions>
#include <QOpenGLWidget>
#include <QPointer>
#include <memory>
#include <vector>

class CImageView3DModel;
class QMenu;
class QOpenGLDebugLogger;
class QOpenGLDebugMessage;
class QOpenGLShaderProgram;

/// Compiles and links a program from two files; the context must be current. Null when that fails, with the
/// reason in the log. The caller owns the result.
VANTORCOMMON_EXPORT QOpenGLShaderProgram* __InternalCreateProgram(QString strVertexFile,
                                                                  QString strFragmentFile);

/// Shows the height field of a 3D model with coloured axes (x red, y green, z blue) and a grey frame in the
/// ground plane. Dragging asks for another rotation, the wheel for another field of view; the view itself
/// never changes the model, which is not owned.
///
/// The OpenGL objects are made anew each time the view is shown and whenever it gets another context; the
/// mesh is asked for again then. Without OpenGL 3.3 the view shows a label and does nothing else. GUI thread.
class VANTORCOMMON_EXPORT CImageView3D : public QOpenGLWidget, private QOpenGLFunctions
{
    Q_OBJECT

public:
    CImageView3D(CImageView3DModel* pModel, QWidget* pParent);
    ~CImageView3D() override;

    void setVisible(bool visible) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    /// Both only repaint.
    void rotatedBy(int nX, int nY, int nZ);
    void setClearColor(const QColor& color);

    /// Drops the OpenGL objects, the mesh among them, and makes new ones; nothing without a valid context.
    void InitImageView3DGL();
    /// Logs the version and starts the logging of the driver's messages.
    void InitLog();
    /// Computes the three matrices from the model.
    void InitMatrix();
    /// Shows no height field until the next one is loaded.
    void ClearMesh();

Q_SIGNALS:
    void signal_Active3DView();
    /// The view has nothing to show and wants the current image.
    void signal_ChangeCurrentImage();
    void signal_ChangeRotateX(double dblAngle);
    void signal_ChangeRotateY(double dblAngle);
    void signal_ChangeFOV(double dblValue);
    void signal_Switch3DTo2D();

public Q_SLOTS:
    /// Does nothing.
    void slot_ChangeImage();
    void slot_Timmer();
    /// Takes the newest mesh from the model and uploads it.
    void slot_LoadFinished();
    void slot_ChangeTransformMatrix();
    void slot_OpenGLMessageLogged(const QOpenGLDebugMessage& debugMessage);
    void slot_ShowContextMenu(const QPoint& pos);

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int nWidth, int nHeight) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

private:
    struct SObjects;

    void DestroyGL();
    void CreateAxes();
    void CreateReference();
    bool Upload(const std::vector<float>& vctVertices, const std::vector<unsigned int>& vctIndices);
    void SetMatrices(QOpenGLShaderProgram& program);
    void SetProjection(int nWidth, int nHeight);
    void PaintAxes();
    void PaintReference();
    void PaintMesh();
    /// Asks for the image after the events at hand, unless setVisible does it first.
    void AskForImageLater();
    void AskForImage();
    void CheckContext();
    bool IsDesktopOpenGL() const;

    bool m_bPressed = false;
    int m_nMouseX = 0;
    int m_nMouseY = 0;
    std::unique_ptr<SObjects> m_pObjects; ///< null without a context
    QMatrix4x4 m_matModel;
    QMatrix4x4 m_matView;
    QMatrix4x4 m_matProjection;
    QMenu* m_pMenu = nullptr;
    QOpenGLDebugLogger* m_pDebugLogger = nullptr;
    QPointer<CImageView3DModel> m_pModel;
    int m_nVertexFloats = 0;
    int m_nIndices = 0;
    bool m_bImageWanted = false;
    bool m_bResizing = false;
};
