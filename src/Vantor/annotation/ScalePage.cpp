// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/Annotations.h>

#include <Vantor/annotation/ObjectOutline_p.h>

#include <cmath>
#include <utility>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kNotScaled = "It stays as it is: only the program that made it can scale it.";
constexpr const char* kTooLarge = "It stays as it is: scaled it would be too large.";

/// Coordinates and sizes stand in pairs, but for the third number of some kinds.
SObject Scaled(SObject object, double x, double y)
{
    std::vector<double>& numbers = object.numbers;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] *= i % 2 == 0 ? x : y;
    if (object.kind == "circle")
        numbers[2] *= std::sqrt(y / x);
    else if (object.kind == "text")
        numbers[2] *= y / x;
    return object;
}

int ScaledSide(int side, double factor)
{
    const double scaled = std::round(side * factor);
    return scaled <= kMaxCoordinate ? static_cast<int>(scaled) : 0;
}
} // namespace

std::vector<SRemark> ScalePage(SPage& page, double x, double y)
{
    std::vector<SRemark> remarks;
    if (!(x > 0.0 && y > 0.0 && std::isfinite(x) && std::isfinite(y)))
        return remarks;
    for (SObject& object : page.objects) {
        const bool bKnown = object.raw.empty() && IsBuiltIn(object) && IsWellFormed(object);
        SObject scaled = bKnown ? Scaled(object, x, y) : object;
        if (!bKnown || !IsWellFormed(scaled))
            remarks.push_back({object.name, bKnown ? kTooLarge : kNotScaled});
        else
            object = std::move(scaled);
    }
    page.width = ScaledSide(page.width, x);
    page.height = ScaledSide(page.height, y);
    if (page.calibration) {
        page.calibration->x /= x;
        page.calibration->y /= y;
        page.calibration->originX *= x;
        page.calibration->originY *= y;
    }
    return remarks;
}

} // namespace Vantor::Annotations
