// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CImageView2DCommandResizeGeometry.h>

#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <utility>

CImageView2DCommandResizeGeometry::CImageView2DCommandResizeGeometry(CImageView2DCtrl* pCtrl,
                                                                     ObjectPtr pObject, const QPointF& p1,
                                                                     const QPointF& p2, const QPointF& p3,
                                                                     const GeometryPtr& pBefore)
    : CImageView2DCommandChangeShape(pCtrl, std::move(pObject), pBefore), m_p1(p1), m_p2(p2), m_p3(p3)
{
}

CImageView2DCommandResizeGeometry::~CImageView2DCommandResizeGeometry() = default;

void CImageView2DCommandResizeGeometry::Do(CImageView2DCtrl& ctrl, const ObjectPtr& pObject)
{
    ctrl.ResizeDrawableObject(pObject, m_p1, m_p2, m_p3);
}

void CImageView2DCommandResizeGeometry::Revert(CImageView2DCtrl& ctrl, const ObjectPtr& pObject)
{
    ctrl.ResizeDrawableObject(pObject, m_p2, m_p1, m_p3);
}
