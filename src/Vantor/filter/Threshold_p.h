// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>

namespace Vantor::Algorithms
{

/// The grey value of a pixel: the first sample of 1 or 2 channels, else 0.299 R + 0.587 G + 0.114 B, rounded
/// (ITU-R BT.601).
inline int GreyOf(const unsigned char* pixel, int channels)
{
    return channels < 3 ? pixel[0] : (299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2] + 500) / 1000;
}

/// Sets the colour samples of a pixel to one value and keeps its alpha.
inline void SetColors(unsigned char* pixel, int channels, unsigned char value)
{
    const int nColors = channels % 2 == 0 ? channels - 1 : channels;
    for (int c = 0; c < nColors; ++c)
        pixel[c] = value;
}

/// Makes the pixels of the runs white where their grey is above the value, black elsewhere.
void ThresholdRuns(const SFilterJob& job, int value);

/// The grey value that splits the pixels of the runs into two classes, up to it and above it, with the
/// largest variance between them (N. Otsu, A threshold selection method from gray-level histograms, IEEE
/// Transactions on Systems, Man and Cybernetics 9, 1979). Of several such values it is the lowest; for a
/// single grey it is 0.
int OtsuValue(const SFilterJob& job);

} // namespace Vantor::Algorithms
