// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

namespace Vantor::Algorithms
{

/// Interleaved 8-bit pixels.
struct SPixelBlock {
    const unsigned char* pData;
    std::size_t nStride; ///< bytes from one row to the next
    int nWidth;
    int nHeight;
    int nChannels;
};

/// What the module returns. Each function computes every sample of a block, repeats the border outwards, and
/// returns false when memory runs out. Any thread.
struct SSmoothKernels {
    /// The mean with the weights of a Gaussian, cut off at the radius and normalised.
    /// @param to  receives nWidth nHeight nChannels values, no padding
    bool (*gaussian)(const SPixelBlock& from, double sigma, int radius, float* to);
    /// The sum over a window of 2 radius + 1 pixels a side.
    /// @param radius  0 to 1000: the sums fit an int
    /// @param to      as above
    bool (*windowSum)(const SPixelBlock& from, int radius, int* to);
};

/// The module and its function that returns the kernels, which live until the process ends.
constexpr const char* kSmoothModule = "vantor-smooth.so";
constexpr const char* kSmoothFunction = "VantorGetSmoothKernels";

} // namespace Vantor::Algorithms
