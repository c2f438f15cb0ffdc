// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CArrow.h>

#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>
#include <utility>

namespace Vantor::Geometry
{

namespace
{
/// A fifth of the arrow along and across it, turned by 30 degrees.
constexpr double kAlong = 0.2 * 0.8660254037844387;
constexpr double kAcross = 0.2 * 0.5;
} // namespace

std::array<CPoint<double>, 2> CArrow::GetBarbs() const
{
    const double dx = end().x() - start().x();
    const double dy = end().y() - start().y();
    const double x = end().x() - kAlong * dx;
    const double y = end().y() - kAlong * dy;
    return {CPoint<double>(x + kAcross * dy, y - kAcross * dx),
            CPoint<double>(x - kAcross * dy, y + kAcross * dx)};
}

CRectangle CArrow::GetBoundingRectangle() const
{
    CBounds bounds;
    bounds.Include(CLine::GetBoundingRectangle());
    for (const CPoint<double>& barb : GetBarbs())
        bounds.Include(barb.x(), barb.y());
    return bounds.GetRectangle();
}

std::vector<SOutline> CArrow::GetOutline() const
{
    const auto barbs = GetBarbs();
    return {{EOutlineForm_Chain, {{start().x(), start().y()}, {end().x(), end().y()}}},
            {EOutlineForm_Chain,
             {{barbs[0].x(), barbs[0].y()}, {end().x(), end().y()}, {barbs[1].x(), barbs[1].y()}}}};
}

bool CArrow::Contains(const CPoint<double>& point) const
{
    const auto barbs = GetBarbs();
    return CLine::Contains(point) || std::any_of(barbs.begin(), barbs.end(), [&](const auto& barb) {
               return CLine(barb, end()).Contains(point);
           });
}

std::vector<SPixelRun> CArrow::GetPixelRuns(int width, int height) const
{
    std::vector<SPixelRun> vctRuns = CLine::GetPixelRuns(width, height);
    for (const CPoint<double>& barb : GetBarbs()) {
        const std::vector<SPixelRun> vctStroke = CLine(barb, end()).GetPixelRuns(width, height);
        vctRuns.insert(vctRuns.end(), vctStroke.begin(), vctStroke.end());
    }
    return UnionOf(std::move(vctRuns));
}

std::shared_ptr<CGeometry> CArrow::Clone() const
{
    return std::make_shared<CArrow>(*this);
}

} // namespace Vantor::Geometry
