// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>
#include <cstdint>

namespace Vantor::Algorithms
{

/// How the samples of a row are stored, and which of them are read.
struct SSampleFormat {
    int nBits = 8; ///< 1 to 16, 24, 32 or 64
    bool bFloat = false;
    bool bSigned = false; ///< the most negative value is black
    bool bRaw = false;    ///< at most 16 bits, taken unscaled, such as an index of a palette
    bool bWide = false;   ///< a sample becomes 16 bits instead of 8
    int nStored = 1;      ///< samples per pixel in the row
    int nWanted = 1;      ///< how many of them are read, from the first on
};

/// Whether UnpackRow can read this.
bool CanUnpack(const SSampleFormat& format);

/// Scales a row of samples to 8 or 16 bits: unsigned v to round(v 255 / max), float by round(v 255) of v
/// clamped to 0 .. 1; with bWide, 65535 stands in place of 255.
/// @param pTo  nWidth pixels, nTo samples apart, of which the first nWanted are written
void UnpackRow(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
               int nWidth);

} // namespace Vantor::Algorithms
