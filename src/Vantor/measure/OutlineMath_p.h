// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CGeometry.h>

#include <vector>

/// Measures of closed chains of places: the last one is joined to the first. All of it in long double, and
/// with finite places.
namespace Vantor::Algorithms
{

using Places = std::vector<Geometry::SPlace>;

/// Twice the signed area of a triangle: > 0 when c lies to the left of the way from a to b, with y upwards.
long double Turn(const Geometry::SPlace& a, const Geometry::SPlace& b, const Geometry::SPlace& c);

/// The chain without places that equal the one before.
Places WithoutRepeats(const Places& chain);

/// Whether a chain without repeats touches or crosses itself. A sweep over it finds that in O(n log n) (M.
/// Shamos, D. Hoey, Geometric intersection problems, 1976). One of less than three places does not.
bool MeetsItself(const Places& chain);

double PerimeterOf(const Places& chain);

/// Area and moments of the area about its middle, for a chain that does not meet itself.
struct SAreaMoments {
    long double area = 0.0L;
    long double xx = 0.0L; ///< of second order, by the area
    long double xy = 0.0L;
    long double yy = 0.0L;

    /// Major by minor axis of the ellipse with these moments.
    double Aspect() const;
};
SAreaMoments MomentsOf(const Places& chain);

/// The corners of the convex hull, with y upwards anticlockwise; none lies between two others. One or two
/// when all places lie in one place or on a line.
Places ConvexHullOf(Places places);

/// Feret's diameters of a convex hull.
struct SFeret {
    double max = 0.0;
    double min = 0.0;
    double angle = 0.0; ///< of max in degrees, 0 to less than 180, anticlockwise with y downwards
};
SFeret FeretOf(const Places& hull);

/// @{
/// The perimeter of an ellipse by its half axes, >= 0.
double EllipsePerimeter(double a, double b);
double RamanujanPerimeter(double a, double b);
/// @}

} // namespace Vantor::Algorithms
