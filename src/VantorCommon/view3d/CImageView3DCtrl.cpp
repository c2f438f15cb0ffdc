// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CImageView3DCtrl.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/PutIntoDock_p.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/CInternalRunnable.h>
#include <VantorCommon/view3d/ImageView3DParameters_p.h>

#include <algorithm>
#include <cfloat>

namespace
{
using C = CImageView3DCtrl;

/// In the order of EImageView3DParameter.
constexpr void (C::*kSlots[])(double) = {
    &C::slot_ChangeRotateX,
    &C::slot_ChangeRotateY,
    &C::slot_ChangeRotateZ,
    &C::slot_TranslateX,
    &C::slot_TranslateY,
    &C::slot_TranslateZ,
    &C::slot_ScaleX,
    &C::slot_ScaleY,
    &C::slot_ScaleZ,
    &C::slot_ChangeCameraPositionX,
    &C::slot_ChangeCameraPositionY,
    &C::slot_ChangeCameraPositionZ,
    &C::slot_ChangeCameraCenterX,
    &C::slot_ChangeCameraCenterY,
    &C::slot_ChangeCameraCenterZ,
    &C::slot_ChangeCameraUpX,
    &C::slot_ChangeCameraUpY,
    &C::slot_ChangeCameraUpZ,
    &C::slot_ChangeFOV,
    &C::slot_ChangeNear,
    &C::slot_ChangeFar,
};
static_assert(sizeof(kSlots) / sizeof(kSlots[0]) == EImageView3DParameter_Count);
} // namespace

CImageView3DCtrl::CImageView3DCtrl(CImageView3DModel* pModel3D, CImageView2DModel* pModel2D,
                                   CImageView3D* pView, CToolBoxDockView*,
                                   CPropertyDockView* pPropertyDockView, CStatusBarDockView*)
    : m_pModel3D(pModel3D), m_pModel2D(pModel2D), m_pView(pView), m_pPropertyDockView(pPropertyDockView)
{
    ConnectPanel();
    if (m_pModel3D)
        connect(m_pModel3D.data(), &CImageView3DModel::signal_Failed, this, &C::signal_Failed);
    if (m_pModel2D)
        connect(m_pModel2D.data(), &CImageView2DModel::signal_ChangeCurrentImage, this,
                &C::slot_ChangeCurrentImage);
    if (!m_pView)
        return;
    using V = CImageView3D;
    const auto on = [this](auto pSignal, auto pSlot) { connect(m_pView.data(), pSignal, this, pSlot); };
    on(&V::signal_Active3DView, &C::slot_Active3DView);
    on(&V::signal_ChangeCurrentImage, &C::slot_ChangeCurrentImage);
    on(&V::signal_ChangeRotateX, &C::slot_ChangeRotateX);
    on(&V::signal_ChangeRotateY, &C::slot_ChangeRotateY);
    on(&V::signal_ChangeFOV, &C::slot_ChangeFOV);
    on(&V::signal_Failed, &C::signal_Failed);
}

CImageView3DCtrl::~CImageView3DCtrl()
{
    if (m_bBuilding)
        CJobs::Get().CancelAndWait(this);
    delete m_pPropertyView;
}

void CImageView3DCtrl::ConnectPanel()
{
    m_pPropertyView = new CImageView3DPropertyView(m_pModel3D, nullptr);
    for (int i = 0; i < EImageView3DParameter_Count; ++i)
        connect(m_pPropertyView.data(), ImageView3D::kParameters[i].pSignal, this, kSlots[i]);
}

bool CImageView3DCtrl::Undo()
{
    return false;
}

bool CImageView3DCtrl::Redo()
{
    return false;
}

void CImageView3DCtrl::slot_Active3DView()
{
    PutIntoDock(m_pPropertyDockView, m_pPropertyView);
}

void CImageView3DCtrl::slot_ChangeCurrentImage()
{
    if (!m_pModel3D || !m_pModel2D || !m_pView || !m_pView->isVisible())
        return;
    const auto pImage = m_pModel2D->GetCurrentImage();
    const bool bHasImage = pImage && pImage->GetWidth() > 0;
    if (!bHasImage) {
        m_pModel3D->ClearBufferData();
        m_pView->ClearMesh();
    }
    if (m_bBuilding)
        m_bBuildAgain = true;
    else if (bHasImage)
        StartBuild();
}

void CImageView3DCtrl::StartBuild()
{
    m_bBuilding = true;
    const auto pBuild = std::make_shared<CInternalRunnable>(m_pModel3D, m_pModel2D);
    CJobs::Get().Start(this, {}, [this, pBuild](Vantor::CProgress&) -> CJob::Finish {
        pBuild->run();
        return [this] { BuildEnded(); };
    });
}

void CImageView3DCtrl::BuildEnded()
{
    m_bBuilding = false;
    if (!m_bBuildAgain)
        return;
    m_bBuildAgain = false;
    slot_ChangeCurrentImage();
}

void CImageView3DCtrl::SetParameter(int nParameter, double dblValue)
{
    if (m_pModel3D)
        m_pModel3D->SetParameter(static_cast<EImageView3DParameter>(nParameter),
                                 static_cast<float>(std::clamp(dblValue, -double(FLT_MAX), double(FLT_MAX))));
}

void CImageView3DCtrl::slot_ChangeRotateX(double dblAngle)
{
    SetParameter(EImageView3DParameter_RotateX, dblAngle);
}

void CImageView3DCtrl::slot_ChangeRotateY(double dblAngle)
{
    SetParameter(EImageView3DParameter_RotateY, dblAngle);
}

void CImageView3DCtrl::slot_ChangeRotateZ(double dblAngle)
{
    SetParameter(EImageView3DParameter_RotateZ, dblAngle);
}

void CImageView3DCtrl::slot_TranslateX(double dblTrans)
{
    SetParameter(EImageView3DParameter_TranslateX, dblTrans);
}

void CImageView3DCtrl::slot_TranslateY(double dblTrans)
{
    SetParameter(EImageView3DParameter_TranslateY, dblTrans);
}

void CImageView3DCtrl::slot_TranslateZ(double dblTrans)
{
    SetParameter(EImageView3DParameter_TranslateZ, dblTrans);
}

void CImageView3DCtrl::slot_ScaleX(double dblValue)
{
    SetParameter(EImageView3DParameter_ScaleX, dblValue);
}

void CImageView3DCtrl::slot_ScaleY(double dblValue)
{
    SetParameter(EImageView3DParameter_ScaleY, dblValue);
}

void CImageView3DCtrl::slot_ScaleZ(double dblValue)
{
    SetParameter(EImageView3DParameter_ScaleZ, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraPositionX(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraPositionX, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraPositionY(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraPositionY, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraPositionZ(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraPositionZ, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraCenterX(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraCenterX, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraCenterY(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraCenterY, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraCenterZ(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraCenterZ, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraUpX(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraUpX, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraUpY(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraUpY, dblValue);
}

void CImageView3DCtrl::slot_ChangeCameraUpZ(double dblValue)
{
    SetParameter(EImageView3DParameter_CameraUpZ, dblValue);
}

void CImageView3DCtrl::slot_ChangeFOV(double dblValue)
{
    SetParameter(EImageView3DParameter_FOV, dblValue);
}

void CImageView3DCtrl::slot_ChangeNear(double dblValue)
{
    SetParameter(EImageView3DParameter_Near, dblValue);
}

void CImageView3DCtrl::slot_ChangeFar(double dblValue)
{
    SetParameter(EImageView3DParameter_Far, dblValue);
}
