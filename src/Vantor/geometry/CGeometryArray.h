// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CGeometry.h>

namespace Vantor::Geometry
{

/// A composite of shapes (kind 7). It shares its members with whoever added them; Clone copies them.
class VANTOR_EXPORT CGeometryArray : public CGeometry
{
public:
    /// Appends a member. Ignores a null pointer, the array itself and an array that holds it at any depth, so
    /// that arrays never form a ring.
    void Add(std::shared_ptr<CGeometry> geometry);
    /// The number of members, those of nested arrays not counted.
    int Size() const { return static_cast<int>(m_vctMembers.size()); }
    /// The member at the index, null when it is out of range.
    std::shared_ptr<CGeometry> At(int index) const;

    EGeometryType GetType() const override { return EGeometryType_GeometryArray; }
    /// Around all members that are not empty.
    CRectangle GetBoundingRectangle() const override;
    /// Moves the shared members themselves and keeps their places relative to each other.
    void MoveTopLeftTo(const CPoint<double>& point) override;
    /// The outline is that of the members, one after another; there are no handles.
    int GetPoints(CPointList& outline, CPointList& handles) const override;
    /// Deliberate: empty, and no frame; an array is a region and is not shown.
    std::vector<SOutline> GetOutline() const override { return {}; }
    bool HasFrame() const override { return false; }
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::shared_ptr<CGeometry> Clone() const override;

private:
    bool Holds(const CGeometry* geometry) const;

    std::vector<std::shared_ptr<CGeometry>> m_vctMembers;
};

} // namespace Vantor::Geometry
