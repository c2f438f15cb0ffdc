// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>

#include <string>
#include <vector>

namespace Vantor::Algorithms
{

class CImage;

/// How the value at a place between the centres of pixels is found.
enum class ESampling : int {
    Nearest = 0, ///< of the pixel in which the place lies
    Bilinear = 1 ///< between the four pixels whose centres are around it; the image's edge is repeated
};

/// How a profile is taken.
struct SProfileOptions {
    ESampling sampling = ESampling::Bilinear; ///< of each place
    /// The number of parallel lines, a pixel apart and with the given one in their middle, whose values are
    /// averaged: 1 to 10,000.
    int width = 1;
};

/// The values of an image along a line.
struct SLineProfile {
    std::string failure;                       ///< a sentence in English, without values; empty for a success
    std::vector<double> positions;             ///< distances along the line from its start, in units
    std::vector<std::vector<double>> channels; ///< of each channel as many; NaN outside the image
};

/// The profile along a line of straight pieces. With L its length in pixels and n the nearest whole number to
/// L, 1 at least, it has n + 1 values, equally far apart, from the start to the end. The parallel lines of a
/// wide one keep their distance from the piece in which a place lies; of these the places in the image count.
/// @param image        8 or 16 bits
/// @param line         two places or more, in pixels of the image: a ruler's ends, or a polyline
/// @param options      see there; more than 2^27 values to read are refused
/// @param calibration  for the positions
/// @return never throws
VANTOR_EXPORT SLineProfile TakeProfile(const CImage& image, const std::vector<Geometry::SPlace>& line,
                                       const SProfileOptions& options = SProfileOptions(),
                                       const CCalibration& calibration = CCalibration());

} // namespace Vantor::Algorithms
