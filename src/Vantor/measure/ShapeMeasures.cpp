// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/ShapeMeasures.h>

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/measure/OutlineMath_p.h>
#include <Vantor/measure/RegionStatistics.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace Vantor::Algorithms
{

using Geometry::CGeometry;
using Geometry::SOutline;
using Geometry::SPlace;

namespace
{
constexpr double kPi = 3.14159265358979323846;
constexpr double kMostCoordinate = 1e100;

/// The one piece that is measured; a chain without places when there is none.
SOutline OutlineOf(const CGeometry& shape)
{
    if (const auto* pCircle = dynamic_cast<const Geometry::CCircle*>(&shape)) {
        const double r = pCircle->radius();
        const auto& middle = pCircle->center();
        return {Geometry::EOutlineForm_Ellipse,
                {{middle.x() - r, middle.y() - r}, {middle.x() + r, middle.y() + r}}};
    }
    if (const auto* pLine = dynamic_cast<const Geometry::CLine*>(&shape))
        return {Geometry::EOutlineForm_Chain,
                {{pLine->start().x(), pLine->start().y()}, {pLine->end().x(), pLine->end().y()}}};
    std::vector<SOutline> vctPieces = shape.GetOutline();
    if (vctPieces.size() == 1)
        return std::move(vctPieces.front());
    return {Geometry::EOutlineForm_Chain, {}};
}

/// Neither not a number nor so large that an area or a moment might overflow.
bool IsMeasurable(const SPlace& place)
{
    return std::abs(place.x) <= kMostCoordinate && std::abs(place.y) <= kMostCoordinate;
}

/// A box by its four corners.
Places CornersOf(const Places& box)
{
    const SPlace& a = box[0];
    const SPlace& b = box[1];
    return {{a.x, a.y}, {b.x, a.y}, {b.x, b.y}, {a.x, b.y}};
}

void MeasureFeret(const Places& hull, SShapeMeasures& measures)
{
    const SFeret feret = FeretOf(hull);
    measures.feret = feret.max;
    measures.minFeret = feret.min;
    measures.feretAngle = feret.angle;
}

void MeasurePolygon(const Places& corners, SShapeMeasures& measures)
{
    const Places chain = WithoutRepeats(corners);
    const Places hull = ConvexHullOf(chain);
    measures.perimeter = PerimeterOf(chain);
    measures.ramanujanPerimeter = measures.perimeter;
    MeasureFeret(hull, measures);
    measures.meetsItself = MeetsItself(chain);
    if (measures.meetsItself)
        return;
    const SAreaMoments moments = MomentsOf(chain);
    measures.area = static_cast<double>(moments.area);
    measures.aspect = moments.Aspect();
    measures.solidity = static_cast<double>(moments.area / MomentsOf(hull).area);
}

void MeasureEllipse(const Places& box, SShapeMeasures& measures)
{
    const double width = std::abs(box[1].x - box[0].x);
    const double height = std::abs(box[1].y - box[0].y);
    measures.area = kPi * width * height / 4.0;
    measures.perimeter = EllipsePerimeter(width / 2.0, height / 2.0);
    measures.ramanujanPerimeter = RamanujanPerimeter(width / 2.0, height / 2.0);
    measures.feret = std::max(width, height);
    measures.minFeret = std::min(width, height);
    measures.feretAngle = width >= height ? 0.0 : 90.0;
    measures.aspect = measures.feret / measures.minFeret;
    measures.solidity = measures.area > 0.0 ? 1.0 : kUndefined;
}

void MeasureChain(const Places& chain, SShapeMeasures& measures)
{
    measures.length = 0.0;
    for (std::size_t i = 1; i < chain.size(); ++i)
        measures.length += std::hypot(chain[i].x - chain[i - 1].x, chain[i].y - chain[i - 1].y);
    measures.dx = chain.back().x - chain.front().x;
    measures.dy = chain.back().y - chain.front().y;
    measures.angle = CCalibration().GetAngle(measures.dx, measures.dy);
    MeasureFeret(ConvexHullOf(chain), measures);
}

void MeasureOutline(const SOutline& outline, SShapeMeasures& measures)
{
    const Places& places = outline.vctPlaces;
    const bool bBox = places.size() == 2;
    if (outline.eForm == Geometry::EOutlineForm_Polygon)
        MeasurePolygon(places, measures);
    else if (outline.eForm == Geometry::EOutlineForm_Box && bBox)
        MeasurePolygon(CornersOf(places), measures);
    else if (outline.eForm == Geometry::EOutlineForm_Ellipse && bBox)
        MeasureEllipse(places, measures);
    else if (outline.eForm == Geometry::EOutlineForm_Chain && !places.empty())
        MeasureChain(places, measures);
    if (measures.perimeter > 0.0) {
        measures.circularity = 4.0 * kPi * measures.area / (measures.perimeter * measures.perimeter);
        measures.roundness = 1.0 / measures.aspect;
    }
}

SShapeMeasures Measure(const CGeometry& shape, const CCalibration& calibration)
{
    SShapeMeasures measures;
    const Geometry::CRectangle box = shape.GetBoundingRectangle();
    const SPlace corner = calibration.ToUnits({box.x(), box.y()});
    const SPlace size{box.width() * calibration.GetSize().x, box.height() * calibration.GetSize().y};
    SOutline outline = OutlineOf(shape);
    for (SPlace& place : outline.vctPlaces)
        place = calibration.ToUnits(place);
    if (!IsMeasurable(corner) || !IsMeasurable(size) ||
        !std::all_of(outline.vctPlaces.begin(), outline.vctPlaces.end(), IsMeasurable)) {
        measures.failure = "The shape is not finite or reaches beyond 1e100.";
        return measures;
    }
    measures.x = corner.x;
    measures.y = corner.y;
    measures.width = size.x;
    measures.height = size.y;
    MeasureOutline(outline, measures);
    return measures;
}
} // namespace

SShapeMeasures::SShapeMeasures()
{
    for (double* pNumber :
         {&x, &y, &width, &height, &area, &perimeter, &ramanujanPerimeter, &length, &dx, &dy, &angle, &feret,
          &minFeret, &feretAngle, &circularity, &aspect, &roundness, &solidity})
        *pNumber = kUndefined;
}

SShapeMeasures MeasureShape(const CGeometry& shape, const CCalibration& calibration)
{
    try {
        return Measure(shape, calibration);
    } catch (const std::bad_alloc&) {
        SShapeMeasures measures;
        measures.failure = "Out of memory.";
        return measures;
    }
}

std::uint64_t CountPixels(const CGeometry& shape, int width, int height)
{
    std::uint64_t nCount = 0;
    try {
        for (const Geometry::SPixelRun& run : shape.GetPixelRuns(width, height))
            nCount += static_cast<std::uint64_t>(run.nEnd - run.nBegin);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return nCount;
}

} // namespace Vantor::Algorithms
