// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <utility>

CImageView2DCommandAddGeometry::CImageView2DCommandAddGeometry(
    CImageView2DCtrl* pCtrl, std::shared_ptr<CImageView2DDrawableObject> pObject)
    : m_pCtrl(pCtrl), m_pObject(std::move(pObject))
{
}

CImageView2DCommandAddGeometry::~CImageView2DCommandAddGeometry() = default;

void CImageView2DCommandAddGeometry::exec()
{
    if (m_pCtrl && m_pObject)
        m_pCtrl->AddDrawableObject(m_pObject);
}

void CImageView2DCommandAddGeometry::undo()
{
    if (m_pCtrl && m_pObject)
        m_pCtrl->DeleteDrawableObject(m_pObject);
}
