// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CImageView2DCommandChangeShape.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <utility>

using namespace Vantor::Geometry;

namespace
{
using ObjectPtr = CImageView2DCommandChangeShape::ObjectPtr;
using GeometryPtr = CImageView2DCommandChangeShape::GeometryPtr;

bool SameHandles(const CGeometry& a, const CGeometry& b)
{
    CPointList outline;
    CPointList handlesA;
    CPointList handlesB;
    a.GetPoints(outline, handlesA);
    b.GetPoints(outline, handlesB);
    if (handlesA.Size() != handlesB.Size())
        return false;
    for (int i = 0; i < handlesA.Size(); ++i) {
        const auto pA = std::dynamic_pointer_cast<CPoint<double>>(handlesA.At(i));
        const auto pB = std::dynamic_pointer_cast<CPoint<double>>(handlesB.At(i));
        if (!pA || !pB || *pA != *pB)
            return false;
    }
    return true;
}

// Whether position and form are exactly the same. The boundary distinguishes circles and arrays, which have
// no handles.
bool SameShape(const GeometryPtr& pA, const GeometryPtr& pB)
{
    if (!pA || !pB)
        return false;
    const CRectangle a = pA->GetBoundingRectangle();
    const CRectangle b = pB->GetBoundingRectangle();
    return pA->GetType() == pB->GetType() && a.topLeft() == b.topLeft() && a.width() == b.width() &&
           a.height() == b.height() && SameHandles(*pA, *pB);
}
} // namespace

CImageView2DCommandChangeShape::CImageView2DCommandChangeShape(CImageView2DCtrl* pCtrl, ObjectPtr pObject,
                                                               const GeometryPtr& pBefore)
    : m_pCtrl(pCtrl), m_pObject(std::move(pObject)), m_pBefore(pBefore ? pBefore->Clone() : nullptr),
      m_pAfter(pBefore && m_pObject ? m_pObject->CloneShape() : nullptr), m_bDoneLive(pBefore != nullptr)
{
}

CImageView2DCommandChangeShape::~CImageView2DCommandChangeShape() = default;

void CImageView2DCommandChangeShape::exec()
{
    if (!m_pCtrl || !m_pObject || std::exchange(m_bDoneLive, false))
        return;
    const GeometryPtr pFormer = m_pObject->CloneShape();
    if (m_pAfter && SameShape(pFormer, m_pBefore)) {
        m_pObject->RestoreShape(*m_pAfter);
        return;
    }
    const bool bFirst = !m_pAfter;
    Do(*m_pCtrl, m_pObject);
    m_pAfter = m_pObject->CloneShape();
    // If the first exec() changes nothing, the gesture made the change live, and the state before it is
    // unknown here.
    m_pBefore = bFirst && SameShape(pFormer, m_pAfter) ? nullptr : pFormer;
}

void CImageView2DCommandChangeShape::undo()
{
    if (!m_pCtrl || !m_pObject)
        return;
    const GeometryPtr pFormer = m_pObject->CloneShape();
    if (m_pBefore && SameShape(pFormer, m_pAfter)) {
        m_pObject->RestoreShape(*m_pBefore);
        return;
    }
    Revert(*m_pCtrl, m_pObject);
    m_pBefore = m_pObject->CloneShape();
    m_pAfter = pFormer;
}
