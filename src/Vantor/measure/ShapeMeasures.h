// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>
#include <Vantor/measure/CCalibration.h>

#include <cstdint>
#include <string>

namespace Vantor::Algorithms
{

/// What there is to be measured of a shape's outline, in the units of a calibration; NaN is what the shape
/// does not have. The pixels that it covers are counted by MeasureRegion and CountPixels.
///
/// Areas have a rectangle, an ellipse, a circle and a polygon; lengths have a line and an arrow (of its
/// segment). Other shapes have their bounding box, a host's own also the rest if its outline is one piece.
struct VANTOR_EXPORT SShapeMeasures {
    SShapeMeasures();

    std::string failure; ///< a sentence in English; everything else is NaN then; empty for a success

    /// @{
    /// The bounding box; x and y from the calibration's origin.
    double x;
    double y;
    double width;
    double height;
    /// @}

    /// Within the outline. Not defined for a polygon that meets itself.
    double area;
    /// Whether the outline of a polygon touches or crosses itself, or goes back the way it came.
    bool meetsItself = false;
    /// The length of the outline of an area; of an ellipse by the arithmetic-geometric mean, to the last
    /// digit.
    double perimeter;
    /// The same with the first formula of S. Ramanujan (1914) for ellipses, as other programs have it: too
    /// small by 3e-6 of it at 2:1, by 4e-3 for flat ones.
    double ramanujanPerimeter;

    /// @{
    /// From the start to the end of a line; y goes down. The angle as that of CCalibration.
    double length;
    double dx;
    double dy;
    double angle;
    /// @}

    /// @{
    /// The largest and the smallest distance of two parallel lines that hold the outline between them, and
    /// the direction of the largest in degrees: 0 to less than 180, anticlockwise as seen; the largest of
    /// several, for a rectangle that of its falling diagonal. Of areas and lines.
    double feret;
    double minFeret;
    double feretAngle;
    /// @}

    double circularity; ///< 4 pi area / perimeter^2: 1 for a circle
    /// Major by minor axis of the ellipse that has the moments of the area of second order; 1 or more.
    double aspect;
    double roundness; ///< minor by major axis of that ellipse
    double solidity;  ///< area by that of the convex hull
};

/// Measures the outline of a shape, wherever it lies. O(n log n) for n vertices. Any thread; never throws.
/// @param shape        of any kind; only read
/// @param calibration  takes the outline to units before it is measured
VANTOR_EXPORT SShapeMeasures MeasureShape(const Geometry::CGeometry& shape,
                                          const CCalibration& calibration = CCalibration());

/// The number of pixels of a width x height image that a shape covers: its pixel area, also of a polygon that
/// crosses itself, by the even-odd rule. 0 also when memory runs out.
VANTOR_EXPORT std::uint64_t CountPixels(const Geometry::CGeometry& shape, int width, int height);

} // namespace Vantor::Algorithms
