// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>
#include <cstdint>

namespace Vantor::Algorithms
{

/// How the samples of a row are stored, and which of them are wanted.
struct SSampleFormat {
    int nBits = 8; ///< 1 to 16, 32 or 64
    bool bFloat = false;
    bool bSigned = false; ///< the most negative value is black
    bool bIndex = false;  ///< an index of a palette is not scaled
    int nStored = 1;      ///< samples per pixel in the row
    int nWanted = 1;      ///< the first so many of them are taken
};

/// Whether UnpackRow can read this.
bool CanUnpack(const SSampleFormat& format);

/// Scales a row of samples to 8 bits: unsigned v to round(v 255 / max), float by ScaleFloatTo8.
/// @param pTo   nWidth pixels, nTo bytes apart, of which the first nWanted are written
void UnpackRow(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
               int nWidth);

} // namespace Vantor::Algorithms
