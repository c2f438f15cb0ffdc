// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ObjectOutline_p.h>

#include <algorithm>
#include <cmath>

namespace Vantor::Annotations
{

namespace
{
constexpr double kPi = 3.14159265358979323846;
constexpr double kChordError = 0.05; // pixels
constexpr double kMinCorners = 16;
constexpr double kMaxCorners = 720;

/// The box of a rectangle or ellipse, whichever corner comes first.
SBounds BoxOf(const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    const bool bCorner = n.size() == 6;
    const double dRight = bCorner ? n[4] : n[0] + n[2];
    const double dBottom = bCorner ? n[5] : n[1] + n[3];
    return {std::min(n[0], dRight), std::min(n[1], dBottom), std::max(n[0], dRight), std::max(n[1], dBottom)};
}

SBounds CircleBox(const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    return {n[0] - n[2], n[1] - n[2], n[0] + n[2], n[1] + n[2]};
}

/// How many corners a polygon needs that stands for an ellipse.
int CornersOf(double dRadius)
{
    const double dCosine = 1.0 - kChordError / dRadius;
    const double dCorners = dRadius > kChordError ? std::ceil(kPi / std::acos(dCosine)) : kMinCorners;
    const int nCorners = static_cast<int>(std::clamp(dCorners, kMinCorners, kMaxCorners));
    return (nCorners + 3) / 4 * 4;
}

std::vector<double> EllipseOutline(const SBounds& box, double dX, double dY)
{
    const double dRadiusX = box.Width() / 2.0;
    const double dRadiusY = box.Height() / 2.0;
    const int nCorners = CornersOf(std::max(dRadiusX, dRadiusY));
    const int nQuarter = nCorners / 4;
    std::vector<double> outline;
    outline.reserve(2 * static_cast<std::size_t>(nCorners));
    for (int i = 0; i < nCorners; ++i) {
        const double dAngle = 2.0 * kPi * i / nCorners;
        outline.push_back(std::clamp(dX + dRadiusX * std::cos(dAngle), box.left, box.right));
        outline.push_back(std::clamp(dY + dRadiusY * std::sin(dAngle), box.top, box.bottom));
    }
    const double extremes[4][2] = {{box.right, dY}, {dX, box.bottom}, {box.left, dY}, {dX, box.top}};
    for (int i = 0; i < 4; ++i)
        std::copy_n(extremes[i], 2, outline.begin() + 2 * static_cast<std::ptrdiff_t>(i) * nQuarter);
    return outline;
}

double Shoelace(const std::vector<double>& points)
{
    double dSum = 0.0; // about the first corner, so that far away polygons lose no digits
    for (std::size_t i = 2; i + 3 < points.size(); i += 2) {
        dSum += (points[i] - points[0]) * (points[i + 3] - points[1]) -
                (points[i + 2] - points[0]) * (points[i + 1] - points[1]);
    }
    return std::abs(dSum) / 2.0;
}

bool HasItsCount(const SObject& object)
{
    const std::size_t nNumbers = object.numbers.size();
    if (IsBox(object))
        return nNumbers == 4 || nNumbers == 6;
    if (object.kind == "circle" || object.kind == "text")
        return nNumbers == 3 && object.numbers[2] >= 0.0;
    if (object.kind == "polygon")
        return nNumbers >= 6 && nNumbers % 2 == 0;
    if (IsTwoPoints(object))
        return nNumbers == 4;
    return object.kind != "point" || nNumbers == 2;
}
} // namespace

bool IsBuiltIn(const SObject& object)
{
    return IsRegion(object) || IsTwoPoints(object) || object.kind == "point" || object.kind == "text";
}

bool IsWellFormed(const SObject& object)
{
    const auto isGood = [](double dNumber) { return std::abs(dNumber) <= kMaxCoordinate; }; // false for NaN
    return std::all_of(object.numbers.begin(), object.numbers.end(), isGood) && HasItsCount(object);
}

bool IsBox(const SObject& object)
{
    return object.kind == "rectangle" || object.kind == "ellipse";
}

bool IsEllipse(const SObject& object)
{
    return object.kind == "ellipse" || object.kind == "circle";
}

bool IsRegion(const SObject& object)
{
    return IsBox(object) || object.kind == "circle" || object.kind == "polygon";
}

bool IsTwoPoints(const SObject& object)
{
    return object.kind == "ruler" || object.kind == "line" || object.kind == "arrow";
}

std::vector<double> OutlineOf(const SObject& object)
{
    if (IsEllipse(object)) {
        const SBounds box = BoundsOf(object);
        const bool bCircle = object.kind == "circle";
        return EllipseOutline(box, bCircle ? object.numbers[0] : box.left + box.Width() / 2.0,
                              bCircle ? object.numbers[1] : box.top + box.Height() / 2.0);
    }
    if (object.kind == "rectangle") {
        const SBounds box = BoxOf(object);
        return {box.left, box.top, box.right, box.top, box.right, box.bottom, box.left, box.bottom};
    }
    if (object.kind == "text")
        return {object.numbers[0], object.numbers[1]};
    return IsBuiltIn(object) ? object.numbers : std::vector<double>();
}

SBounds BoundsOf(const SObject& object)
{
    if (IsBox(object))
        return BoxOf(object);
    if (object.kind == "circle")
        return CircleBox(object);
    return BoundsOfPoints(OutlineOf(object));
}

SBounds BoundsOfPoints(const std::vector<double>& points)
{
    if (points.size() < 2)
        return {};
    SBounds box{points[0], points[1], points[0], points[1]};
    for (std::size_t i = 2; i + 1 < points.size(); i += 2) {
        box.left = std::min(box.left, points[i]);
        box.right = std::max(box.right, points[i]);
        box.top = std::min(box.top, points[i + 1]);
        box.bottom = std::max(box.bottom, points[i + 1]);
    }
    return box;
}

double AreaOf(const SObject& object)
{
    if (object.kind == "polygon")
        return Shoelace(object.numbers);
    if (object.kind == "circle")
        return kPi * object.numbers[2] * object.numbers[2];
    if (!IsBox(object))
        return 0.0;
    const SBounds box = BoxOf(object);
    const double dArea = box.Width() * box.Height();
    return object.kind == "rectangle" ? dArea : kPi / 4.0 * dArea;
}

std::vector<double> NumbersOf(const SBounds& box)
{
    std::vector<double> numbers{box.left, box.top, box.Width(), box.Height()};
    if (box.left + box.Width() != box.right || box.top + box.Height() != box.bottom)
        numbers.insert(numbers.end(), {box.right, box.bottom});
    return numbers;
}

SObject Normalised(const SObject& object)
{
    SObject normal = object;
    if (IsBox(object))
        normal.numbers = NumbersOf(BoxOf(object));
    return normal;
}

} // namespace Vantor::Annotations
