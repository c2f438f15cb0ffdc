// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CImageView2DCommandMoveGeometry.h>

#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <utility>

CImageView2DCommandMoveGeometry::CImageView2DCommandMoveGeometry(CImageView2DCtrl* pCtrl, ObjectPtr pObject,
                                                                 const QPointF& oldPoint,
                                                                 const QPointF& newPoint, double dx,
                                                                 double dy, const GeometryPtr& pBefore)
    : CImageView2DCommandChangeShape(pCtrl, std::move(pObject), pBefore), m_ptOld(oldPoint),
      m_ptNew(newPoint), m_dx(dx), m_dy(dy)
{
}

CImageView2DCommandMoveGeometry::~CImageView2DCommandMoveGeometry() = default;

void CImageView2DCommandMoveGeometry::Do(CImageView2DCtrl& ctrl, const ObjectPtr& pObject)
{
    ctrl.MoveDrawableObject(pObject, m_dx, m_dy, m_ptNew);
}

void CImageView2DCommandMoveGeometry::Revert(CImageView2DCtrl& ctrl, const ObjectPtr& pObject)
{
    ctrl.MoveDrawableObject(pObject, m_dx, m_dy, m_ptOld);
}
