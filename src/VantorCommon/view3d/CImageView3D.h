// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view3d/CImageView3DBase.h>

#include <QMatrix4x4>
#include <QPointer>
#include <memory>
#include <vector>

class CImageView3DModel;
class QMenu;
class QOpenGLDebugLogger;
class QOpenGLDebugMessage;
class QOpenGLShaderProgram;

/// Compiles and links a program from two files; the context must be current. Returns null on failure and logs
/// the reason. The caller owns the result.
VANTORCOMMON_EXPORT QOpenGLShaderProgram* __InternalCreateProgram(QString strVertexFile,
                                                                  QString strFragmentFile);

/// Shows the height field of a 3D model with coloured axes (x red, y green, z blue) and a grey frame in the
/// ground plane. Dragging asks by signals for another rotation, the wheel for another field of view; the view
/// never changes the model, which it does not own.
///
/// Each time it is shown or gets another context, the view makes new OpenGL objects and asks for the mesh
/// again. Without OpenGL 3.3 it only shows a label. GUI thread.
class VANTORCOMMON_EXPORT CImageView3D : public CImageView3DBase
{
    Q_OBJECT

public:
    /// The parent owns the view; the model may be null.
    CImageView3D(CImageView3DModel* pModel, QWidget* pParent);
    ~CImageView3D() override;

    /// Becoming visible makes new OpenGL objects, asks for the image and emits signal_Active3DView.
    void setVisible(bool visible) override;
    QSize sizeHint() const override;        ///< 200 x 200 pixels
    QSize minimumSizeHint() const override; ///< 50 x 50 pixels

    /// @{
    /// Only repaint; the arguments are not used.
    void rotatedBy(int nX, int nY, int nZ);
    void setClearColor(const QColor& color);
    /// @}

    /// Destroys the OpenGL objects with the mesh and makes new ones; does nothing without a valid context.
    void InitImageView3DGL();
    /// Logs the version and starts logging the driver's messages.
    void InitLog();
    /// Computes the three matrices from the model.
    void InitMatrix();
    /// Shows no height field until the next one arrives.
    void ClearMesh();

Q_SIGNALS:
    /// The view was shown or pressed, so its panel belongs in the dock.
    void signal_Active3DView();
    /// The view has no mesh and asks for the current image.
    void signal_ChangeCurrentImage();
    /// @{
    /// The new value for the model, in degrees: a drag turns by 0.1 a pixel, the wheel changes the field of
    /// view by 1.2 a notch. The view does not limit it.
    void signal_ChangeRotateX(double dblAngle);
    void signal_ChangeRotateY(double dblAngle);
    void signal_ChangeFOV(double dblValue);
    /// @}
    /// The view became visible but cannot paint; the reason, one line in English.
    void signal_Failed(const QString& strMessage);
    /// "Switch To 2D View" in the menu.
    void signal_Switch3DTo2D();

public Q_SLOTS:
    /// Does nothing.
    void slot_ChangeImage();
    /// Repaints.
    void slot_Timmer();
    /// Moves the newest mesh out of the model and uploads it.
    void slot_LoadFinished();
    /// Calls InitMatrix, which repaints.
    void slot_ChangeTransformMatrix();
    /// Logs a message of the driver.
    void slot_OpenGLMessageLogged(const QOpenGLDebugMessage& debugMessage);
    /// Opens the menu at a point in widget pixels. Does not block.
    void slot_ShowContextMenu(const QPoint& pos);

protected:
    /// @{
    /// Qt calls these with the context current: they make the objects, paint axes, frame and mesh, and set
    /// the viewport.
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int nWidth, int nHeight) override;
    /// @}
    /// @{
    /// Drag and wheel emit the signals above. A resize paints once, not twice; a view that is shown with its
    /// window asks for the image.
    void resizeEvent(QResizeEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    /// @}

private:
    struct SObjects;

    void DestroyGL() override;
    void ContextMissing() override;
    void CreateAxes();
    void CreateReference();
    bool Upload(const std::vector<float>& vctVertices, const std::vector<unsigned int>& vctIndices);
    void SetMatrices(QOpenGLShaderProgram& program);
    void SetProjection(int nWidth, int nHeight);
    void PaintAxes();
    void PaintReference();
    void PaintMesh();
    /// Asks for the image after the pending events, unless setVisible does so first.
    void AskForImageLater();
    void AskForImage();

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
