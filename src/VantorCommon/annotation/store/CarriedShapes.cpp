// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/CarriedShapes_p.h>

#include <VantorCommon/annotation/store/AnnotationDocument_p.h>

#include <utility>

namespace
{
bool IsSame(const SShapeData& a, const SShapeData& b)
{
    return a.vctNumbers == b.vctNumbers && a.strText == b.strText;
}
} // namespace

void CCarriedShapes::Do(CImageView2DGeometryModel& model)
{
    if (m_map.IsIdentity())
        return;
    m_vctLeft = model.GetObjects();
    for (const ObjectPtr& pObject : m_vctLeft) {
        const SShapeKind* pKind = ShapeKinds::Of(*pObject);
        if (!pKind || !pKind->write || !pKind->move) {
            model.DeleteObject(pObject);
            continue;
        }
        SShapes& shapes = m_shapes[pObject];
        const SShapeData now = pKind->write(*pObject);
        if (shapes.before.vctNumbers.empty() || !IsSame(shapes.before, now)) {
            shapes.before = shapes.after = now;
            pKind->move(shapes.after, m_map);
        }
        AnnotationDocument::ChangeShape(*pObject, shapes.after);
    }
}

/// What has come or changed since goes back by the inverse.
void CCarriedShapes::Undo(CImageView2DGeometryModel& model)
{
    if (m_map.IsIdentity())
        return;
    for (const ObjectPtr& pObject : model.GetObjects()) {
        const SShapeKind* pKind = ShapeKinds::Of(*pObject);
        if (!pKind || !pKind->write || !pKind->move)
            continue;
        SShapeData now = pKind->write(*pObject);
        const auto it = m_shapes.find(pObject);
        if (it != m_shapes.end() && IsSame(it->second.after, now))
            now = it->second.before;
        else
            pKind->move(now, m_map.Inverse());
        AnnotationDocument::ChangeShape(*pObject, now);
    }
    const auto vctOrder = std::exchange(m_vctLeft, {});
    for (auto it = vctOrder.rbegin(); it != vctOrder.rend(); ++it)
        if (m_shapes.count(*it) == 0)
            model.RestoreObjects({*it});
    model.SetOrder(vctOrder);
}
