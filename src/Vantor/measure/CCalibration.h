// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>
#include <Vantor/annotation/Annotations.h>
#include <Vantor/geometry/CGeometry.h>

#include <string>

namespace Vantor::Algorithms
{

struct SImageMetadata;

/// What pixels are in units such as millimetres: the size of a pixel, which need not be square, and the place
/// that is (0, 0) in units. A plain value; at first a unit is a pixel.
class VANTOR_EXPORT CCalibration
{
public:
    CCalibration() { m_size.unit = "pixel"; }

    /// Takes the size of a pixel and the origin.
    /// @param size  width and height from 1e-30 to 1e9 units, a unit's name: UTF-8, not empty, without
    /// control
    ///              characters, at most 64 bytes; and the origin in pixels, up to 1e9 and down to -1e9
    /// @return empty, or why not, a sentence in English; the calibration then stays
    [[nodiscard]] std::string Set(const Annotations::SCalibration& size);
    /// The same, with an origin in place of that in the size.
    [[nodiscard]] std::string Set(Annotations::SCalibration size, const Geometry::SPlace& origin);
    /// Takes units in which a known way is as long as somebody says. Pixels become square.
    /// @param dx, dy  the way in pixels
    /// @param length  in units, above 0
    /// @param unit    as in Set
    /// @return as Set; also why not when the way has no length
    [[nodiscard]] std::string SetByLength(double dx, double dy, double length, const std::string& unit);
    /// Takes the size of a pixel in millimetres from what a file says; the origin stays.
    /// @return as Set; also why not when the file has no resolution, or one without a unit
    [[nodiscard]] std::string SetByResolution(const SImageMetadata& metadata);

    /// Of a pixel, in units; with the origin, as files keep it.
    const Annotations::SCalibration& GetSize() const { return m_size; }
    Geometry::SPlace GetOrigin() const { return {m_size.originX, m_size.originY}; } ///< in pixels
    /// Whether it is as it was at first.
    bool IsPixel() const;
    /// @{
    /// Whether the unit and all numbers are equal, or not.
    bool operator==(const CCalibration& other) const;
    bool operator!=(const CCalibration& other) const { return !(*this == other); }
    /// @}

    /// @{
    /// A place in pixels of the image, in units from the origin, and back. y goes down in both.
    Geometry::SPlace ToUnits(const Geometry::SPlace& place) const;
    Geometry::SPlace ToPixels(const Geometry::SPlace& place) const;
    /// @}

    /// The length of a way of dx and dy pixels, in units.
    double GetLength(double dx, double dy) const;
    /// The direction of that way in degrees, -180 to 180, anticlockwise as seen from the direction of x; 0
    /// for no way. Pixels that are not square change it.
    double GetAngle(double dx, double dy) const;
    /// The area of that many pixels in square units. With SChannelStatistics::sum: the integrated density.
    double GetArea(double pixels) const { return pixels * m_size.x * m_size.y; }

    /// The longest length of 1, 2 or 5 times a power of ten up to a length, in any unit: of scale bars.
    /// @return 0 for a length that is not above 0 and finite
    static double RoundLength(double most);

private:
    Annotations::SCalibration m_size;
};

} // namespace Vantor::Algorithms
