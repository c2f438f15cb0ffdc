// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>
#include <Vantor/filter/RowKernels_p.h>

namespace Vantor::Algorithms
{

/// Replaces the runs of an 8-bit image by what the kernel computes from the original pixels around them; the
/// border is repeated. It works in place and copies only a few rows of original pixels at a time. It throws
/// std::bad_alloc before it writes anything.
void FilterNeighbours(const SFilterJob& job, const SRowKernel& kernel);

} // namespace Vantor::Algorithms
