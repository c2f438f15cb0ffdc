// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>
#include <Vantor/filter/RowKernels_p.h>

namespace Vantor::Algorithms
{

/// Replaces the runs of an 8-bit image by what the kernel makes out of the original pixels around them, the
/// border repeated. In place: only a few rows of original pixels are kept aside, never the image.
/// Throws std::bad_alloc before it has written anything.
void FilterNeighbours(const SFilterJob& job, const SRowKernel& kernel);

} // namespace Vantor::Algorithms
