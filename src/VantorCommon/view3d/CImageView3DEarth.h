// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view3d/CImageView3DBase.h>

#include <QVector3D>
#include <memory>
#include <vector>

class QTimer;

/// A vertex of the globe: position, normal, texture coordinate (s to the east, t to the south).
struct _SVertex {
    /// @{
    /// Position.
    float x, y, z;
    /// @}
    /// @{
    /// Normal, of length 1.
    float nx, ny, nz;
    /// @}
    /// @{
    /// Texture coordinate, 0 to 1.
    float s, t;
    /// @}
};
static_assert(sizeof(_SVertex) == 32);

/// Fills the lists with a sphere about the origin, its poles on the z axis: rings from the north pole to the
/// south, each from longitude -180 degrees eastwards, with the seam doubled, so (sectors + 1) (stacks + 1)
/// vertices; three indices per triangle, one triangle per sector at the poles and two elsewhere. Does nothing
/// for no sectors or no stacks. Normals are undefined for a radius of 0.
VANTORCOMMON_EXPORT void __InternalCreateEarth(std::vector<_SVertex>& vctVertices,
                                               std::vector<unsigned int>& vctIndices, float radius,
                                               unsigned int sectorCount, unsigned int stackCount);

/// A textured globe under a camera that looks around freely: dragging turns it, the wheel zooms. Without
/// OpenGL 3.3 the view shows a label and does nothing else. GUI thread only.
class VANTORCOMMON_EXPORT CImageView3DEarth : public CImageView3DBase
{
    Q_OBJECT

public:
    /// Starts at yaw -90, pitch 0 and a field of view of 45 degrees. Repaints every 16 ms while it is
    /// visible.
    explicit CImageView3DEarth(QWidget* parent = nullptr);
    ~CImageView3DEarth() override;

    /// Whether the globe repaints every 16 ms while it is visible (true, the initial value), or only when its
    /// picture changes, which takes no time while nothing moves.
    void SetSteadyRepaint(bool bSteady);

    /// @{
    /// The camera: its fixed position, (0, 0, 3), in radii of the globe; the direction in which it looks and
    /// its up direction, both of length 1.
    QVector3D GetCameraPosition() const { return m_cameraPosition; }
    QVector3D GetCameraFront() const { return m_cameraFront; }
    QVector3D GetCameraUp() const { return m_cameraUp; }
    /// @}
    float GetYaw() const { return m_fYaw; }     ///< degrees
    float GetPitch() const { return m_fPitch; } ///< degrees, -89 to 89
    float GetFOV() const { return m_fFOV; }     ///< degrees

public Q_SLOTS:
    /// Repaints.
    void slot_Timmer();

protected:
    /// @{
    /// Qt calls these with the context current: they make sphere and texture, paint them, and set the
    /// viewport.
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int nWidth, int nHeight) override;
    /// @}
    /// @{
    /// A drag changes yaw and pitch by 0.1 degrees a pixel, the wheel the field of view by 1.2 a notch;
    /// hiding stops the repainting.
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;
    /// @}

private:
    struct SObjects;

    void CreateObjects();
    void UploadSphere();
    void LoadTexture();
    void DestroyGL() override;

    std::unique_ptr<SObjects> m_pObjects; ///< null without a context
    QTimer* m_pTimer;
    bool m_bSteady = true;
    std::vector<_SVertex> m_vctVertices;
    std::vector<unsigned int> m_vctIndices;
    QVector3D m_cameraPosition{0.0F, 0.0F, 3.0F};
    QVector3D m_cameraFront{0.0F, 0.0F, -1.0F};
    QVector3D m_cameraUp{0.0F, 1.0F, 0.0F};
    float m_fYaw = -90.0F;
    float m_fPitch = 0.0F;
    float m_fFOV = 45.0F;
};
