// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPoint.h>

namespace Vantor::Geometry
{

class CLine;

/// A closed polygon (kind 6), its vertices in drawing order; the inside is even-odd.
class VANTOR_EXPORT CPolygon : public CGeometry
{
public:
    /// Appends the edge's start and end as vertices. It repeats neither the last vertex nor, at the end, the
    /// first one.
    void AddEdge(const CLine& edge);
    /// Replaces the vertices by the points of the list, unchanged, and skips all entries but CPoints.
    /// @return 0
    int SetPoints(const CPointList& points);
    /// Replaces the vertices, unchanged.
    void SetVertices(std::vector<CPoint<double>> vertices) { m_vctVertices = std::move(vertices); }

    /// In drawing order; the edge from the last one back to the first is not repeated.
    const std::vector<CPoint<double>>& GetVertices() const { return m_vctVertices; }

    EGeometryType GetType() const override { return EGeometryType_Polygon; }
    CRectangle GetBoundingRectangle() const override;
    void MoveTopLeftTo(const CPoint<double>& point) override;
    int GetPoints(CPointList& outline, CPointList& handles) const override;
    bool MoveHandle(const CPoint<double>& handle, const CPoint<double>& to) override;
    /// A polygon, also of one vertex or of none.
    std::vector<SOutline> GetOutline() const override;
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::shared_ptr<CGeometry> Clone() const override;

private:
    std::vector<CPoint<double>> m_vctVertices;
};

} // namespace Vantor::Geometry
