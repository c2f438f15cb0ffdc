// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CLine.h>

#include <array>

namespace Vantor::Geometry
{

/// An arrow (kind 8): a segment with an open head at its end: two strokes, each a fifth of its length, lean
/// back by 30 degrees. Its handles are those of the segment.
class VANTOR_EXPORT CArrow : public CLine
{
public:
    CArrow() = default;
    /// From the tail to the tip; both may be the same point.
    CArrow(const CPoint<double>& start, const CPoint<double>& end) : CLine(start, end) {}

    /// Where the two strokes of the head end, away from the tip; on the tip when the arrow has no length.
    std::array<CPoint<double>, 2> GetBarbs() const;

    EGeometryType GetType() const override { return EGeometryType_Arrow; }
    /// Around segment and head.
    CRectangle GetBoundingRectangle() const override;
    std::vector<SOutline> GetOutline() const override;
    /// On the segment or a stroke of the head, as with a line.
    bool Contains(const CPoint<double>& point) const override;
    /// The pixels of the segment and of the two strokes of the head.
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::shared_ptr<CGeometry> Clone() const override;
};

} // namespace Vantor::Geometry
