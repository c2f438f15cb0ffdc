// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPoint.h>

namespace Vantor::Geometry
{

/// A straight segment (kind 1).
class VANTOR_EXPORT CLine : public CGeometry
{
public:
    CLine() = default;
    /// From start to end; both may be the same point.
    CLine(const CPoint<double>& start, const CPoint<double>& end) : m_start(start), m_end(end) {}

    /// @{
    /// The two ends, in the order of drawing.
    const CPoint<double>& start() const { return m_start; }
    const CPoint<double>& end() const { return m_end; }
    void SetStart(const CPoint<double>& start) { m_start = start; }
    void SetEnd(const CPoint<double>& end) { m_end = end; }
    /// @}
    /// Euclidean length in pixels.
    double GetLength() const { return m_start.GetDistance(m_end); }

    EGeometryType GetType() const override { return EGeometryType_Line; }
    CRectangle GetBoundingRectangle() const override;
    void MoveTopLeftTo(const CPoint<double>& point) override;
    int GetPoints(CPointList& outline, CPointList& handles) const override;
    bool MoveHandle(const CPoint<double>& handle, const CPoint<double>& to) override;
    std::vector<SOutline> GetOutline() const override;
    bool HasFrame() const override { return false; }
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::shared_ptr<CGeometry> Clone() const override;

private:
    CPoint<double> m_start;
    CPoint<double> m_end;
};

} // namespace Vantor::Geometry
