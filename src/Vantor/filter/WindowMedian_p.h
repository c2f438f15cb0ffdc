// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>

namespace Vantor::Algorithms
{

/// Replaces the runs of an 8-bit image by the medians of windows of any size, the border repeated; alpha
/// stays. The time for a pixel does not grow with the radii: every column has a histogram of its own, a
/// window's histogram moves by adding a column and taking one away (S. Perreault, P. Hebert, Median filtering
/// in constant time, IEEE Transactions on Image Processing 16, 2007).
/// @param radiusX, radiusY  0 to 2^31 - 1
/// @return false for a lack of memory; that, and std::bad_alloc, come before anything is written
bool WindowMedian(const SFilterJob& job, int radiusX, int radiusY);

} // namespace Vantor::Algorithms
