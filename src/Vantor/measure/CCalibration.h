// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>
#include <Vantor/annotation/Annotations.h>
#include <Vantor/geometry/CGeometry.h>

#include <string>

namespace Vantor::Algorithms
{

/// What pixels are in units such as millimetres: the size of a pixel, which need not be square, and the place
/// that is (0, 0) in units. A plain value; at first a unit is a pixel.
class VANTOR_EXPORT CCalibration
{
public:
    CCalibration() { m_size.unit = "pixel"; }

    /// Takes the size of a pixel and the origin.
    /// @param size    width and height from 1e-30 to 1e9 units, and a unit's name: UTF-8, not empty, without
    ///                control characters, at most 64 bytes
    /// @param origin  in pixels, finite
    /// @return empty, or why not, a sentence in English; the calibration then stays
    [[nodiscard]] std::string Set(const Annotations::SCalibration& size,
                                  const Geometry::SPlace& origin = {0.0, 0.0});

    const Annotations::SCalibration& GetSize() const { return m_size; } ///< of a pixel, in units
    const Geometry::SPlace& GetOrigin() const { return m_origin; }      ///< in pixels

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

private:
    Annotations::SCalibration m_size;
    Geometry::SPlace m_origin{0.0, 0.0};
};

} // namespace Vantor::Algorithms
