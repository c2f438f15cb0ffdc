// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/CCalibration.h>

#include <algorithm>
#include <cmath>

namespace Vantor::Algorithms
{

using Geometry::SPlace;

namespace
{
constexpr double kMinSize = 1e-30; // the limits of files of annotations
constexpr double kMaxSize = 1e9;
constexpr std::size_t kMostBytes = 64;
constexpr double kDegrees = 180.0 / 3.14159265358979323846;

bool IsSize(double size)
{
    return size >= kMinSize && size <= kMaxSize; // nor NaN
}

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}
} // namespace

std::string CCalibration::Set(const Annotations::SCalibration& size, const SPlace& origin)
{
    if (!IsSize(size.x) || !IsSize(size.y))
        return "The size of a pixel is not a number from 1e-30 to 1e9 units.";
    if (size.unit.empty() || size.unit.size() > kMostBytes)
        return "The name of the unit has no letters or more than 64 bytes.";
    if (std::any_of(size.unit.begin(), size.unit.end(), IsControl))
        return "The name of the unit holds control characters.";
    if (!std::isfinite(origin.x) || !std::isfinite(origin.y))
        return "The origin is not finite.";
    m_size = size;
    m_origin = origin;
    return {};
}

SPlace CCalibration::ToUnits(const SPlace& place) const
{
    return {(place.x - m_origin.x) * m_size.x, (place.y - m_origin.y) * m_size.y};
}

SPlace CCalibration::ToPixels(const SPlace& place) const
{
    return {place.x / m_size.x + m_origin.x, place.y / m_size.y + m_origin.y};
}

double CCalibration::GetLength(double dx, double dy) const
{
    return std::hypot(dx * m_size.x, dy * m_size.y);
}

double CCalibration::GetAngle(double dx, double dy) const
{
    if (dx == 0.0 && dy == 0.0)
        return 0.0;
    return std::atan2(0.0 - dy * m_size.y, dx * m_size.x) * kDegrees;
}

} // namespace Vantor::Algorithms
