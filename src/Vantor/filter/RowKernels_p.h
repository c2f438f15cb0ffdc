// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

namespace Vantor::Algorithms
{

/// How far beyond its neighbours a kernel may read: one vector of any instruction set.
constexpr std::size_t kKernelSlack = 256;

/// The largest radius of a kernel's neighbourhood.
constexpr int kMaxKernelRadius = 2;

/// 2 r + 1 rows of original pixels from the top down, each pointer at the first pixel of a run. Readable from
/// r pixels before the run to r pixels and kKernelSlack bytes after it; what the slack holds does not matter.
using RowWindow = const unsigned char* const*;

/// Computes a run of interleaved 8-bit pixels from their neighbours with the widest instructions of the
/// machine. It copies alpha, the last of 2 or 4 channels.
struct SRowKernel {
    /// @param out       the run, apart from the rows; exactly bytes are written
    /// @param bytes     a multiple of the channels
    /// @param channels  1 to 4
    void (*function)(RowWindow rows, unsigned char* out, std::size_t bytes, int channels);
    int nRadius; ///< r
};

/// What the module returns: kernels that live until the process ends.
struct SRowKernels {
    SRowKernel median3x3;
    SRowKernel median5x5;
    SRowKernel sobelX;
    SRowKernel sobelY;
    SRowKernel sobelXY;
};

/// The module and its function that returns the kernels. Loading Highway takes 3 ms.
constexpr const char* kFilterModule = "vantor-filter.so";
constexpr const char* kFilterFunction = "VantorGetRowKernels";

} // namespace Vantor::Algorithms
