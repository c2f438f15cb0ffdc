// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

namespace Vantor::Algorithms
{

/// How far beyond its neighbours a kernel may read: one vector of any instruction set.
constexpr std::size_t kKernelSlack = 256;

/// Three rows of original pixels, each pointer at the first pixel of a run. Readable from one pixel before
/// the run to one pixel and kKernelSlack bytes after it; what the slack holds does not matter.
struct SThreeRows {
    const unsigned char* pAbove;
    const unsigned char* pRow;
    const unsigned char* pBelow;
};

/// Computes a run of interleaved 8-bit pixels out of their 3x3 neighbours with the widest instructions that
/// the machine has. Alpha, the last of 2 or 4 channels, is copied.
/// @param out       the run, apart from the rows; exactly bytes are written
/// @param bytes     a multiple of the channels
/// @param channels  1 to 4
using RowKernel = void (*)(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels);

void MedianKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels);
void SobelXKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels);
void SobelYKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels);
void SobelXYKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels);

} // namespace Vantor::Algorithms
