// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CPointList.h>

#include <Vantor/geometry/CPoint.h>

namespace Vantor::Geometry
{

void CPointList::Add(std::shared_ptr<CGeometry> geometry)
{
    if (geometry)
        m_vctGeometries.push_back(std::move(geometry));
}

void CPointList::Add(const CPoint<double>& point)
{
    m_vctGeometries.push_back(std::make_shared<CPoint<double>>(point));
}

std::shared_ptr<CGeometry> CPointList::At(int index) const
{
    if (index < 0 || index >= Size())
        return nullptr;
    return m_vctGeometries[static_cast<std::size_t>(index)];
}

} // namespace Vantor::Geometry
