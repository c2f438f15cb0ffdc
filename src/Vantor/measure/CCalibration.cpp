// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/CCalibration.h>

#include <Vantor/image/SImageMetadata.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace Vantor::Algorithms
{

using Geometry::SPlace;

namespace
{
constexpr double kMinSize = 1e-30; // the limits of files of annotations
constexpr double kMaxSize = 1e9;
constexpr double kMostPixels = 1e9;
constexpr std::size_t kMostBytes = 64;
constexpr double kDegrees = 180.0 / 3.14159265358979323846;

bool IsSize(double size)
{
    return size >= kMinSize && size <= kMaxSize; // nor NaN
}

bool IsPlace(double place)
{
    return std::abs(place) <= kMostPixels; // nor NaN
}

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}
} // namespace

std::string CCalibration::Set(const Annotations::SCalibration& size)
{
    if (!IsSize(size.x) || !IsSize(size.y))
        return "The size of a pixel is not a number from 1e-30 to 1e9 units.";
    if (size.unit.empty() || size.unit.size() > kMostBytes)
        return "The name of the unit has no letters or more than 64 bytes.";
    if (std::any_of(size.unit.begin(), size.unit.end(), IsControl))
        return "The name of the unit holds control characters.";
    if (!IsPlace(size.originX) || !IsPlace(size.originY))
        return "The origin is not a place from -1e9 to 1e9 pixels.";
    m_size = size;
    return {};
}

std::string CCalibration::Set(Annotations::SCalibration size, const SPlace& origin)
{
    size.originX = origin.x;
    size.originY = origin.y;
    return Set(size);
}

std::string CCalibration::SetByLength(double dx, double dy, double length, const std::string& unit)
{
    const double pixels = std::hypot(dx, dy);
    if (!(pixels > 0.0 && std::isfinite(pixels)))
        return "The way has no length.";
    return Set({unit, length / pixels, length / pixels, m_size.originX, m_size.originY});
}

std::string CCalibration::SetByResolution(const SImageMetadata& metadata)
{
    if (metadata.resolutionUnit == EResolutionUnit::None || !(metadata.resolutionX > 0.0))
        return "The file does not say how large its pixels are.";
    const double unit = metadata.resolutionUnit == EResolutionUnit::Inch ? 25.4 : 10.0; // in millimetres
    return Set(
        {"mm", unit / metadata.resolutionX, unit / metadata.resolutionY, m_size.originX, m_size.originY});
}

bool CCalibration::IsPixel() const
{
    return *this == CCalibration();
}

bool CCalibration::operator==(const CCalibration& other) const
{
    const auto numbers = [](const Annotations::SCalibration& size) {
        return std::tie(size.unit, size.x, size.y, size.originX, size.originY);
    };
    return numbers(m_size) == numbers(other.m_size);
}

SPlace CCalibration::ToUnits(const SPlace& place) const
{
    return {(place.x - m_size.originX) * m_size.x, (place.y - m_size.originY) * m_size.y};
}

SPlace CCalibration::ToPixels(const SPlace& place) const
{
    return {place.x / m_size.x + m_size.originX, place.y / m_size.y + m_size.originY};
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

double CCalibration::RoundLength(double most)
{
    if (!(most > 0.0 && std::isfinite(most)))
        return 0.0;
    const double power = std::floor(std::log10(most));
    for (const double exponent : {power + 1.0, power, power - 1.0}) { // the logarithm is rounded
        for (const double step : {5.0, 2.0, 1.0}) {
            const double length =
                exponent < 0.0 ? step / std::pow(10.0, -exponent) : step * std::pow(10.0, exponent);
            if (length <= most)
                return length;
        }
    }
    return 0.0;
}

} // namespace Vantor::Algorithms
