// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CEllipse.h>

#include <Vantor/geometry/GeometryMath_p.h>

#include <cmath>

namespace Vantor::Geometry
{

double CEllipse::radiusA() const
{
    return std::abs(width() * 0.5);
}

double CEllipse::radiusB() const
{
    return std::abs(height() * 0.5);
}

bool CEllipse::Contains(const CPoint<double>& point) const
{
    return SUprightEllipse{centerX(), centerY(), radiusA(), radiusB()}.Contains(point.x(), point.y());
}

std::vector<SPixelRun> CEllipse::GetPixelRuns(int width, int height) const
{
    return SUprightEllipse{centerX(), centerY(), radiusA(), radiusB()}.GetPixelRuns(width, height);
}

std::vector<SOutline> CEllipse::GetOutline() const
{
    if (GetType() != EGeometryType_Ellipse)
        return {};
    return {
        {EOutlineForm_Ellipse,
         {{centerX() - radiusA(), centerY() - radiusB()}, {centerX() + radiusA(), centerY() + radiusB()}}}};
}

std::shared_ptr<CGeometry> CEllipse::Clone() const
{
    return std::make_shared<CEllipse>(*this);
}

} // namespace Vantor::Geometry
