// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>

namespace Vantor::Algorithms
{

/// Replaces the runs of an 8-bit image by the medians of windows of any size; the border is repeated and
/// alpha stays. The time per pixel does not grow with the radii: every column has a histogram, and a window's
/// histogram moves by adding one column and subtracting another (S. Perreault, P. Hebert, Median filtering in
/// constant time, IEEE Transactions on Image Processing 16, 2007).
/// @param radiusX, radiusY  0 to 2^31 - 1
/// @return false when memory runs out; like std::bad_alloc, that happens before anything is written
bool WindowMedian(const SFilterJob& job, int radiusX, int radiusY);

} // namespace Vantor::Algorithms
