// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>

#include <array>

namespace Vantor::Algorithms
{

/// The new value for each value of a sample.
using ToneTable = std::array<unsigned char, 256>;

/// 255 - v.
ToneTable InvertedTones();

/// With v from 0 to 1: ((v - 1/2) contrast + 1/2 + brightness), clamped to 0 .. 1, to the power of 1 / gamma.
/// @param gamma  above 0
ToneTable AdjustedTones(double brightness, double contrast, double gamma);

/// Maps every colour sample of the runs by the table and keeps alpha. Throws std::bad_alloc, before it writes
/// anything.
void MapTones(const SFilterJob& job, const ToneTable& table);

} // namespace Vantor::Algorithms
