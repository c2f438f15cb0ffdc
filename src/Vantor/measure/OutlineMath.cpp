// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/OutlineMath_p.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace Vantor::Algorithms
{

using Geometry::SPlace;

namespace
{
using Real = long double;
constexpr Real kPi = 3.14159265358979323846264338327950288L;

bool IsBefore(const SPlace& a, const SPlace& b)
{
    return std::tie(a.x, a.y) < std::tie(b.x, b.y);
}

const SPlace& Next(const Places& chain, std::size_t index)
{
    return chain[index + 1 < chain.size() ? index + 1 : 0];
}

Real Distance(const SPlace& a, const SPlace& b)
{
    return std::hypot(Real(b.x) - a.x, Real(b.y) - a.y);
}

/// Keeps the larger distance, of equal ones that with the larger angle.
void Include(SFeret& feret, const SPlace& a, const SPlace& b)
{
    const double distance = static_cast<double>(Distance(a, b));
    if (distance < feret.max)
        return;
    double angle = static_cast<double>(std::atan2(Real(a.y) - b.y, Real(b.x) - a.x) * 180.0L / kPi);
    if (angle < 0.0)
        angle += 180.0;
    if (angle >= 180.0)
        angle = 0.0;
    if (distance > feret.max || angle > feret.angle)
        feret.angle = angle;
    feret.max = distance;
}
} // namespace

long double Turn(const SPlace& a, const SPlace& b, const SPlace& c)
{
    return (Real(b.x) - a.x) * (Real(c.y) - a.y) - (Real(b.y) - a.y) * (Real(c.x) - a.x);
}

Places WithoutRepeats(const Places& chain)
{
    Places places;
    const auto same = [](const SPlace& a, const SPlace& b) { return a.x == b.x && a.y == b.y; };
    for (const SPlace& place : chain) {
        if (places.empty() || !same(places.back(), place))
            places.push_back(place);
    }
    while (places.size() > 1 && same(places.back(), places.front()))
        places.pop_back();
    return places;
}

double PerimeterOf(const Places& chain)
{
    Real sum = 0.0L;
    for (std::size_t i = 0; i < chain.size(); ++i)
        sum += Distance(chain[i], Next(chain, i));
    return static_cast<double>(sum);
}

/// Relative to the first place, so that large coordinates cost no digits.
SAreaMoments MomentsOf(const Places& chain)
{
    Real twice = 0.0L, x = 0.0L, y = 0.0L, xx = 0.0L, xy = 0.0L, yy = 0.0L;
    for (std::size_t i = 0; i < chain.size(); ++i) {
        const Real ax = Real(chain[i].x) - chain[0].x;
        const Real ay = Real(chain[i].y) - chain[0].y;
        const Real bx = Real(Next(chain, i).x) - chain[0].x;
        const Real by = Real(Next(chain, i).y) - chain[0].y;
        const Real cross = ax * by - bx * ay;
        twice += cross;
        x += (ax + bx) * cross;
        y += (ay + by) * cross;
        xx += (ax * ax + ax * bx + bx * bx) * cross;
        yy += (ay * ay + ay * by + by * by) * cross;
        xy += (ax * by + 2.0L * ax * ay + 2.0L * bx * by + bx * ay) * cross;
    }
    SAreaMoments moments;
    if (twice == 0.0L)
        return moments;
    const Real middleX = x / (3.0L * twice);
    const Real middleY = y / (3.0L * twice);
    moments.area = std::abs(twice) / 2.0L;
    moments.xx = xx / (6.0L * twice) - middleX * middleX;
    moments.yy = yy / (6.0L * twice) - middleY * middleY;
    moments.xy = xy / (12.0L * twice) - middleX * middleY;
    return moments;
}

double SAreaMoments::Aspect() const
{
    if (!(area > 0.0L))
        return std::numeric_limits<double>::quiet_NaN();
    const Real middle = (xx + yy) / 2.0L;
    const Real apart = std::hypot((xx - yy) / 2.0L, xy);
    // The product of both is the determinant; a difference would lose the digits of the smaller one.
    const Real major = middle + apart;
    const Real minor = (xx * yy - xy * xy) / major;
    return static_cast<double>(std::sqrt(major / minor));
}

/// A. Andrew's monotone chain (Another efficient algorithm for convex hulls in two dimensions, 1979).
Places ConvexHullOf(Places places)
{
    std::sort(places.begin(), places.end(), IsBefore);
    places = WithoutRepeats(places);
    if (places.size() < 3)
        return places;
    Places hull;
    const auto add = [&hull](const SPlace& place, std::size_t kept) {
        while (hull.size() >= kept + 2 && !(Turn(hull[hull.size() - 2], hull.back(), place) > 0.0L))
            hull.pop_back();
        hull.push_back(place);
    };
    for (const SPlace& place : places)
        add(place, 0);
    const std::size_t nLower = hull.size() - 1;
    for (auto it = places.rbegin() + 1; it != places.rend(); ++it)
        add(*it, nLower);
    hull.pop_back();
    return hull;
}

/// Rotating callipers: for each side the corner that is farthest away from it.
SFeret FeretOf(const Places& hull)
{
    SFeret feret;
    if (hull.size() == 2)
        Include(feret, hull[0], hull[1]);
    if (hull.size() < 3)
        return feret;
    feret.min = std::numeric_limits<double>::infinity();
    std::size_t nFar = 1;
    const std::size_t nSize = hull.size();
    for (std::size_t i = 0; i < nSize; ++i) {
        const SPlace& a = hull[i];
        const SPlace& b = Next(hull, i);
        while (Turn(a, b, Next(hull, nFar)) > Turn(a, b, hull[nFar]))
            nFar = (nFar + 1) % nSize;
        Include(feret, a, hull[nFar]);
        Include(feret, b, hull[nFar]);
        feret.min = std::min(feret.min, static_cast<double>(Turn(a, b, hull[nFar]) / Distance(a, b)));
    }
    return feret;
}

/// P = 2 pi / M(a, b) (a^2 - sum of 2^(n-1) c_n^2), where M is the arithmetic-geometric mean and c_n half the
/// distance of its two sequences (C. F. Gauss; Abramowitz and Stegun, 17.6).
double EllipsePerimeter(double a, double b)
{
    Real x = std::max(a, b);
    Real y = std::min(a, b);
    if (!(y > 0.0L))
        return static_cast<double>(4.0L * x);
    const Real unit = x; // the rest is about an ellipse of half axes 1 and y
    x = 1.0L;
    y /= unit;
    Real sum = (1.0L - y) * (1.0L + y) / 2.0L;
    Real weight = 1.0L;
    while (x - y > x * std::numeric_limits<Real>::epsilon()) {
        const Real half = (x - y) / 2.0L;
        sum += weight * half * half;
        weight *= 2.0L;
        const Real mean = (x + y) / 2.0L;
        y = std::sqrt(x * y);
        x = mean;
    }
    return static_cast<double>(2.0L * kPi * unit * (1.0L - sum) / x);
}

double RamanujanPerimeter(double a, double b)
{
    const Real x = a;
    const Real y = b;
    return static_cast<double>(kPi * (3.0L * (x + y) - std::sqrt((3.0L * x + y) * (x + 3.0L * y))));
}

} // namespace Vantor::Algorithms
