// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CGeometry.h>

namespace Vantor::Geometry
{

/// An ordered list of geometries, usually points. It is a container, not a shape; one list is used
/// by one thread at a time.
class VANTOR_EXPORT CPointList
{
public:
    /// Appends an entry; a null pointer is ignored.
    void Add(std::shared_ptr<CGeometry> geometry);
    /// Appends a point.
    void Add(const CPoint<double>& point);
    /// Removes all entries.
    void Clear() { m_vctGeometries.clear(); }
    /// The number of entries.
    int Size() const { return static_cast<int>(m_vctGeometries.size()); }
    /// The entry at the index, null when it is out of range.
    std::shared_ptr<CGeometry> At(int index) const;

private:
    std::vector<std::shared_ptr<CGeometry>> m_vctGeometries;
};

} // namespace Vantor::Geometry
