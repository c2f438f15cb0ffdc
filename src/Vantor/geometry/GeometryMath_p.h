// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CRectangle.h>

namespace Vantor::Geometry
{

/// The first pixel whose centre is not below the coordinate, clamped to 0 .. limit; 0 for NaN.
int FirstCentreFrom(double coordinate, int limit);

/// The pixel that the coordinate lies in, clamped to -1 .. limit; -1 for NaN.
int PixelOf(double coordinate, int limit);

/// The x at which the straight line through two points of different height reaches y. Exact at the two
/// points; intermediate values neither overflow nor lose a crossing on a whole pixel.
double AbscissaAt(const CPoint<double>& a, const CPoint<double>& b, double y);

bool IsFinite(const CPoint<double>& point);

/// Sorts by row and column, and joins runs that overlap or touch.
std::vector<SPixelRun> UnionOf(std::vector<SPixelRun> runs);

/// The smallest upright rectangle around the points and rectangles that it is given; it ignores NaN.
class CBounds
{
public:
    void Include(double x, double y);
    /// A normalised rectangle.
    void Include(const CRectangle& rectangle);
    /// (0, 0, 0, 0) when nothing was included.
    CRectangle GetRectangle() const;

private:
    bool m_bEmpty = true;
    double m_dblLeft = 0.0;
    double m_dblTop = 0.0;
    double m_dblRight = 0.0;
    double m_dblBottom = 0.0;
};

/// An upright ellipse by its centre and half axes (>= 0): what CEllipse and CCircle share.
struct SUprightEllipse {
    double x;
    double y;
    double a;
    double b;

    /// ((px - x) / a)^2 + ((py - y) / b)^2 <= 1, but for rounding; an ellipse without extent along an axis
    /// is a segment or a point.
    bool Contains(double px, double py) const;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const;
};

} // namespace Vantor::Geometry
