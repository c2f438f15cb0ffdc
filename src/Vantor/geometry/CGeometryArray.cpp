// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CGeometryArray.h>

#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>

namespace Vantor::Geometry
{

namespace
{
/// Whether the shape covers nothing and lies nowhere: a polygon without vertices, an array of such.
bool IsEmpty(const CGeometry& geometry)
{
    if (const auto* pPolygon = dynamic_cast<const CPolygon*>(&geometry))
        return pPolygon->GetVertices().empty();
    if (const auto* pArray = dynamic_cast<const CGeometryArray*>(&geometry)) {
        for (int i = 0; i < pArray->Size(); ++i) {
            if (!IsEmpty(*pArray->At(i)))
                return false;
        }
        return true;
    }
    return false;
}
} // namespace

void CGeometryArray::Add(std::shared_ptr<CGeometry> geometry)
{
    if (!geometry || geometry.get() == this)
        return;
    const auto* pArray = dynamic_cast<const CGeometryArray*>(geometry.get());
    if (pArray && pArray->Holds(this))
        return;
    m_vctMembers.push_back(std::move(geometry));
}

bool CGeometryArray::Holds(const CGeometry* geometry) const
{
    return std::any_of(m_vctMembers.begin(), m_vctMembers.end(), [geometry](const auto& member) {
        const auto* pArray = dynamic_cast<const CGeometryArray*>(member.get());
        return member.get() == geometry || (pArray && pArray->Holds(geometry));
    });
}

std::shared_ptr<CGeometry> CGeometryArray::At(int index) const
{
    if (index < 0 || index >= Size())
        return nullptr;
    return m_vctMembers[static_cast<std::size_t>(index)];
}

CRectangle CGeometryArray::GetBoundingRectangle() const
{
    CBounds bounds;
    for (const auto& member : m_vctMembers) {
        if (!IsEmpty(*member))
            bounds.Include(member->GetBoundingRectangle());
    }
    return bounds.GetRectangle();
}

void CGeometryArray::MoveTopLeftTo(const CPoint<double>& point)
{
    if (!IsFinite(point))
        return;
    const CRectangle box = GetBoundingRectangle();
    // Read all places before anything moves: a member may stand in the array twice.
    std::vector<CPoint<double>> vctPlaces;
    for (const auto& member : m_vctMembers) {
        const CRectangle place = member->GetBoundingRectangle();
        vctPlaces.emplace_back((place.x() - box.x()) + point.x(), (place.y() - box.y()) + point.y());
    }
    for (std::size_t i = 0; i < m_vctMembers.size(); ++i)
        m_vctMembers[i]->MoveTopLeftTo(vctPlaces[i]);
}

int CGeometryArray::GetPoints(CPointList& outline, CPointList& handles) const
{
    outline.Clear();
    handles.Clear();
    for (const auto& member : m_vctMembers) {
        CPointList memberOutline;
        CPointList unused;
        member->GetPoints(memberOutline, unused);
        for (int i = 0; i < memberOutline.Size(); ++i)
            outline.Add(memberOutline.At(i));
    }
    return 0;
}

bool CGeometryArray::Contains(const CPoint<double>& point) const
{
    return std::any_of(m_vctMembers.begin(), m_vctMembers.end(),
                       [&point](const auto& member) { return member->Contains(point); });
}

std::vector<SPixelRun> CGeometryArray::GetPixelRuns(int width, int height) const
{
    std::vector<SPixelRun> vctRuns;
    for (const auto& member : m_vctMembers) {
        const std::vector<SPixelRun> vctMember = member->GetPixelRuns(width, height);
        vctRuns.insert(vctRuns.end(), vctMember.begin(), vctMember.end());
    }
    return UnionOf(std::move(vctRuns));
}

std::shared_ptr<CGeometry> CGeometryArray::Clone() const
{
    auto pClone = std::make_shared<CGeometryArray>();
    for (const auto& member : m_vctMembers)
        pClone->m_vctMembers.push_back(member->Clone());
    return pClone;
}

} // namespace Vantor::Geometry
