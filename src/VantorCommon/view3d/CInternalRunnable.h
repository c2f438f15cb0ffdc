// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/thread/IVRunnable.h>

#include <QRunnable>
#include <functional>

class CImageView2DModel;
class CImageView3DModel;

/// Loads the current image of a list into a 3D model, on a thread of a pool (which deletes it) or of its own.
/// Neither model is owned; both must outlive the object.
class VANTORCOMMON_EXPORT CInternalRunnable : public QRunnable, public IVRunnable
{
public:
    /// @param pModel3D  gets the mesh; may be null
    /// @param pModel2D  has the image; may be null
    /// @param funcGone  called once by the destructor, on its thread, whether run() was called or not
    CInternalRunnable(CImageView3DModel* pModel3D, CImageView2DModel* pModel2D,
                      std::function<void()> funcGone = {});
    ~CInternalRunnable() override;

    /// Builds the mesh of the image that is current at the call.
    void run() override;

private:
    CImageView3DModel* m_pModel3D;
    CImageView2DModel* m_pModel2D;
    std::function<void()> m_funcGone;
};
