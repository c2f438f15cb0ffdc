// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>
#include <Vantor/filter/SmoothKernels_p.h>

namespace Vantor::Algorithms
{

// These functions change the colour samples of the runs of an 8-bit image and keep alpha. Each returns false
// when memory runs out, with the pixels unchanged.

/// The radius beyond which a Gaussian's weights count as 0: 3 sigma, rounded up.
int GaussianRadius(double sigma);

/// v + amount (v - smoothed), rounded; the amount -1 gives the smoothed value itself.
bool SharpenRuns(const SFilterJob& job, const SSmoothKernels& kernels, double sigma, double amount);

/// White where the pixel's grey is above the mean of its window less the offset, black elsewhere.
/// @param radius  0 to 1000
bool ThresholdRunsByMean(const SFilterJob& job, const SSmoothKernels& kernels, int radius, double offset);

} // namespace Vantor::Algorithms
