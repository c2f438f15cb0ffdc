// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QMutex>
#include <array>
#include <cstddef>
#include <memory>
#include <mutex>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

/// The parameters of the 3D view: angles in degrees, lengths in units of the mesh (the image is 1 x 1). The
/// comment of each gives its initial value.
enum EImageView3DParameter : int {
    EImageView3DParameter_RotateX,         ///< -73
    EImageView3DParameter_RotateY,         ///< 0
    EImageView3DParameter_RotateZ,         ///< 19
    EImageView3DParameter_TranslateX,      ///< 0
    EImageView3DParameter_TranslateY,      ///< 0
    EImageView3DParameter_TranslateZ,      ///< 0
    EImageView3DParameter_ScaleX,          ///< 1
    EImageView3DParameter_ScaleY,          ///< 1
    EImageView3DParameter_ScaleZ,          ///< 1
    EImageView3DParameter_CameraPositionX, ///< 0
    EImageView3DParameter_CameraPositionY, ///< 0
    EImageView3DParameter_CameraPositionZ, ///< 5
    EImageView3DParameter_CameraCenterX,   ///< 0.5
    EImageView3DParameter_CameraCenterY,   ///< 0.5
    EImageView3DParameter_CameraCenterZ,   ///< 0
    EImageView3DParameter_CameraUpX,       ///< 0
    EImageView3DParameter_CameraUpY,       ///< 1
    EImageView3DParameter_CameraUpZ,       ///< 0
    EImageView3DParameter_FOV,             ///< 22, the vertical field of view
    EImageView3DParameter_Near,            ///< 0.1
    EImageView3DParameter_Far,             ///< 100
    EImageView3DParameter_Count            ///< the number of parameters
};

/// The height of a pixel: its grey value, 0 to 255. Bytes 0, 1, 2 of 3 or 4 channels are red, green, blue,
/// weighted as in ITU-R BT.709. 0 for a null address and for channel counts other than 1, 3, 4.
VANTORCOMMON_EXPORT float __InternalGetGrayValue(const unsigned char* pPixel, int nChannel);

/// An image as a coloured height field (a triangle mesh over its pixel grid) and the parameters of its view.
///
/// The parameters belong to the GUI thread. LoadImage may run on any thread: it builds in buffers of its own
/// and passes them on when they are complete, so that the GUI thread never waits for a build.
class VANTORCOMMON_EXPORT CImageView3DModel : public CBaseModel
{
    Q_OBJECT

public:
    /// Starts without a mesh, with the initial parameters.
    CImageView3DModel();
    ~CImageView3DModel() override;

    /// Stores a value and emits signal_ChangeTransformMatrix when it differs from the stored one (by more
    /// than the core's tolerance for floats). Refuses values that are not finite.
    void SetParameter(EImageView3DParameter eParameter, float fValue);
    /// The stored value; the parameter is one of the enumeration, not its count.
    float GetParameter(EImageView3DParameter eParameter) const { return m_arrParameters[eParameter]; }

    // clang-format off
    /// @{
    /// Call SetParameter and GetParameter for one parameter.
    void SetRotateX(float fValue) { SetParameter(EImageView3DParameter_RotateX, fValue); }
    void SetRotateY(float fValue) { SetParameter(EImageView3DParameter_RotateY, fValue); }
    void SetRotateZ(float fValue) { SetParameter(EImageView3DParameter_RotateZ, fValue); }
    void SetTranslateX(float fValue) { SetParameter(EImageView3DParameter_TranslateX, fValue); }
    void SetTranslateY(float fValue) { SetParameter(EImageView3DParameter_TranslateY, fValue); }
    void SetTranslateZ(float fValue) { SetParameter(EImageView3DParameter_TranslateZ, fValue); }
    void SetScaleX(float fValue) { SetParameter(EImageView3DParameter_ScaleX, fValue); }
    void SetScaleY(float fValue) { SetParameter(EImageView3DParameter_ScaleY, fValue); }
    void SetScaleZ(float fValue) { SetParameter(EImageView3DParameter_ScaleZ, fValue); }
    void SetCameraPositionX(float fValue) { SetParameter(EImageView3DParameter_CameraPositionX, fValue); }
    void SetCameraPositionY(float fValue) { SetParameter(EImageView3DParameter_CameraPositionY, fValue); }
    void SetCameraPositionZ(float fValue) { SetParameter(EImageView3DParameter_CameraPositionZ, fValue); }
    void SetCameraCenterX(float fValue) { SetParameter(EImageView3DParameter_CameraCenterX, fValue); }
    void SetCameraCenterY(float fValue) { SetParameter(EImageView3DParameter_CameraCenterY, fValue); }
    void SetCameraCenterZ(float fValue) { SetParameter(EImageView3DParameter_CameraCenterZ, fValue); }
    void SetCameraUpX(float fValue) { SetParameter(EImageView3DParameter_CameraUpX, fValue); }
    void SetCameraUpY(float fValue) { SetParameter(EImageView3DParameter_CameraUpY, fValue); }
    void SetCameraUpZ(float fValue) { SetParameter(EImageView3DParameter_CameraUpZ, fValue); }
    void SetFOV(float fValue) { SetParameter(EImageView3DParameter_FOV, fValue); }
    void SetNear(float fValue) { SetParameter(EImageView3DParameter_Near, fValue); }
    void SetFar(float fValue) { SetParameter(EImageView3DParameter_Far, fValue); }

    float GetRotateX() const { return GetParameter(EImageView3DParameter_RotateX); }
    float GetRotateY() const { return GetParameter(EImageView3DParameter_RotateY); }
    float GetRotateZ() const { return GetParameter(EImageView3DParameter_RotateZ); }
    float GetTranslateX() const { return GetParameter(EImageView3DParameter_TranslateX); }
    float GetTranslateY() const { return GetParameter(EImageView3DParameter_TranslateY); }
    float GetTranslateZ() const { return GetParameter(EImageView3DParameter_TranslateZ); }
    float GetScaleX() const { return GetParameter(EImageView3DParameter_ScaleX); }
    float GetScaleY() const { return GetParameter(EImageView3DParameter_ScaleY); }
    float GetScaleZ() const { return GetParameter(EImageView3DParameter_ScaleZ); }
    float GetCameraPositionX() const { return GetParameter(EImageView3DParameter_CameraPositionX); }
    float GetCameraPositionY() const { return GetParameter(EImageView3DParameter_CameraPositionY); }
    float GetCameraPositionZ() const { return GetParameter(EImageView3DParameter_CameraPositionZ); }
    float GetCameraCenterX() const { return GetParameter(EImageView3DParameter_CameraCenterX); }
    float GetCameraCenterY() const { return GetParameter(EImageView3DParameter_CameraCenterY); }
    float GetCameraCenterZ() const { return GetParameter(EImageView3DParameter_CameraCenterZ); }
    float GetCameraUpX() const { return GetParameter(EImageView3DParameter_CameraUpX); }
    float GetCameraUpY() const { return GetParameter(EImageView3DParameter_CameraUpY); }
    float GetCameraUpZ() const { return GetParameter(EImageView3DParameter_CameraUpZ); }
    float GetFOV() const { return GetParameter(EImageView3DParameter_FOV); }
    float GetNear() const { return GetParameter(EImageView3DParameter_Near); }
    float GetFar() const { return GetParameter(EImageView3DParameter_Far); }
    /// @}
    // clang-format on

    /// Builds the mesh of an image: per pixel, rows from the top, position (x / w, (h - 1 - row) / h,
    /// grey x 0.1 / 255) and colour (0 to 1), then two triangles per square of four pixels. Builds run one
    /// after another.
    ///
    /// Emits progress 0, 10, 30, 100, 0, then signal_LoadFinished. No image: does nothing. An empty image:
    /// progress 0 only. Not enough memory: one log line and progress back at 0. Both keep the former mesh. An
    /// image over the limit of SetBufferLimit: progress 0, one log line, and an empty mesh. Deliberate: a
    /// pixel of two channels has no colour, so its vertex has three floats instead of six.
    void LoadImage(std::shared_ptr<Vantor::Algorithms::CImage> pImage);

    /// @{
    /// The newest mesh, until somebody takes it. The getters do not lock: only the thread that takes the mesh
    /// may call them, while no build runs. Sizes count floats and indices.
    const float* GetVerticesBuffer() const { return m_vctVertices.data(); }
    int GetVerticesSize() const { return static_cast<int>(m_vctVertices.size()); }
    const unsigned int* GetIndicesBuffer() const { return m_vctIndices.data(); }
    int GetIndicesSize() const { return static_cast<int>(m_vctIndices.size()); }
    /// @}

    /// Moves the newest mesh out, on any thread; the sizes are 0 afterwards. Returns false and changes
    /// nothing when somebody has already taken or cleared it.
    bool TakeBuffers(std::vector<float>& vctVertices, std::vector<unsigned int>& vctIndices);
    /// Empties both buffers, keeping their capacity.
    void ClearBufferData();

    /// @{
    /// The most bytes that both buffers of a mesh may take, for the whole process; 2 GiB at first. Any
    /// thread.
    static void SetBufferLimit(std::size_t nBytes);
    static std::size_t GetBufferLimit();
    /// @}

Q_SIGNALS:
    /// Never emitted: the progress runs to 100.
    void signal_ChangeProgressMaxRange(int nMaxRange);
    /// Progress of a build, 0 to 100; emitted on the thread of the build.
    void signal_ChangeProgressValue(int nValue);
    /// A mesh, perhaps an empty one, is ready; emitted on the thread of the build.
    void signal_LoadFinished();
    /// The build of a mesh failed; the reason, one line in English. Emitted on the thread of the build.
    void signal_Failed(const QString& strMessage);
    /// A parameter has changed.
    void signal_ChangeTransformMatrix();

private:
    void Fail(const QString& strWhat, const Vantor::Algorithms::CImage& image);
    void Build(const Vantor::Algorithms::CImage& image);
    void HandOver(std::vector<float>& vctVertices, std::vector<unsigned int>& vctIndices);

    [[maybe_unused]] int m_nReserved = 1; ///< reserved; nobody reads it
    std::vector<float> m_vctVertices;
    std::vector<unsigned int> m_vctIndices;
    std::array<float, EImageView3DParameter_Count> m_arrParameters;
    QMutex m_mutex; ///< held for a whole build
    /// Guards the two buffers and the flag while they are passed on, and nothing else.
    std::mutex m_handOverMutex;
    bool m_bFresh = false; ///< the buffers hold a mesh that nobody has taken
};
