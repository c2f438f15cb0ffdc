// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CLine.h>

namespace Vantor::Geometry
{

/// The room of a scale bar (kind 9): a level segment, at whose left end the bar begins and beyond whose right
/// end it never reaches. It has no outline: how long the bar is depends on the calibration of the image and
/// on the zoom. Its handles are the two ends, which keep the same height.
class VANTOR_EXPORT CScaleBar : public CLine
{
public:
    CScaleBar() = default;
    /// From the left or the right end to the other; the height is that of the first one.
    CScaleBar(const CPoint<double>& start, const CPoint<double>& end)
        : CLine(start, CPoint<double>(end.x(), start.y()))
    {
    }

    EGeometryType GetType() const override { return EGeometryType_ScaleBar; }
    /// Both ends get the height of the handle's new place.
    bool MoveHandle(const CPoint<double>& handle, const CPoint<double>& to) override;
    std::vector<SOutline> GetOutline() const override { return {}; }
    std::shared_ptr<CGeometry> Clone() const override;
};

} // namespace Vantor::Geometry
