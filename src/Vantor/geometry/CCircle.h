// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPoint.h>

namespace Vantor::Geometry
{

/// A circle (kind 3), given by its centre and radius. It has no handles.
class VANTOR_EXPORT CCircle : public CGeometry
{
public:
    CCircle() = default;
    /// A negative radius counts as its absolute value.
    CCircle(const CPoint<double>& centre, double radius);

    const CPoint<double>& center() const { return m_centre; } ///< the middle
    double radius() const { return m_dblRadius; }             ///< in pixels, 0 or more

    EGeometryType GetType() const override { return EGeometryType_Circle; }
    CRectangle GetBoundingRectangle() const override;
    void MoveTopLeftTo(const CPoint<double>& point) override;
    /// The outline is the four corners of the bounding rectangle; there are no handles.
    int GetPoints(CPointList& outline, CPointList& handles) const override;
    /// Deliberate: empty; a circle is shown by its frame alone. What is drawn as a circle is a CEllipse.
    std::vector<SOutline> GetOutline() const override { return {}; }
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::shared_ptr<CGeometry> Clone() const override;

private:
    CPoint<double> m_centre;
    double m_dblRadius = 0.0;
};

} // namespace Vantor::Geometry
