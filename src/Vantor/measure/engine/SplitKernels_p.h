// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

namespace Vantor::Algorithms
{

/// SPixelKernels::split.
void SplitPixels(const void* samples, std::size_t count, int channels, int bits, void* planes);

} // namespace Vantor::Algorithms
