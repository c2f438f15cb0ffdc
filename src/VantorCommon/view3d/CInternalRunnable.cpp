// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view3d/CInternalRunnable.h>

#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

CInternalRunnable::CInternalRunnable(CImageView3DModel* pModel3D, CImageView2DModel* pModel2D,
                                     std::function<void()> funcGone)
    : m_pModel3D(pModel3D), m_pModel2D(pModel2D), m_funcGone(std::move(funcGone))
{
}

CInternalRunnable::~CInternalRunnable()
{
    if (m_funcGone)
        m_funcGone();
}

void CInternalRunnable::run()
{
    if (m_pModel3D && m_pModel2D)
        m_pModel3D->LoadImage(m_pModel2D->GetCurrentImage());
}
