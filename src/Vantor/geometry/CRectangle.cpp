// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CRectangle.h>

#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>

namespace Vantor::Geometry
{

bool CRectangle::Contains(const CPoint<double>& point) const
{
    const CPoint<double> a = topLeft();
    const CPoint<double> b = bottomRight();
    return point.x() >= std::min(a.x(), b.x()) && point.x() <= std::max(a.x(), b.x()) &&
           point.y() >= std::min(a.y(), b.y()) && point.y() <= std::max(a.y(), b.y());
}

std::vector<SPixelRun> CRectangle::GetPixelRuns(int width, int height) const
{
    const CPoint<double> a = topLeft();
    const CPoint<double> b = bottomRight();
    const int nBegin = FirstCentreFrom(std::min(a.x(), b.x()), width);
    const int nEnd = FirstCentreFrom(std::max(a.x(), b.x()), width);
    const int nLastRow = FirstCentreFrom(std::max(a.y(), b.y()), height);
    std::vector<SPixelRun> vctRuns;
    if (nBegin >= nEnd)
        return vctRuns;
    for (int nRow = FirstCentreFrom(std::min(a.y(), b.y()), height); nRow < nLastRow; ++nRow)
        vctRuns.push_back({nRow, nBegin, nEnd});
    return vctRuns;
}

std::vector<SOutline> CRectangle::GetOutline() const
{
    if (GetType() != EGeometryType_Rectangle)
        return {};
    const CPoint<double> other = bottomRight();
    return {{EOutlineForm_Box, {{x(), y()}, {other.x(), other.y()}}}};
}

std::shared_ptr<CGeometry> CRectangle::Clone() const
{
    return std::make_shared<CRectangle>(*this);
}

} // namespace Vantor::Geometry
