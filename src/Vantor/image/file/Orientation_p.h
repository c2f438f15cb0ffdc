// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

namespace Vantor::Algorithms
{

class CImage;

/// The orientation that a block of EXIF data names, 1 to 8; 1 when it names none.
/// @param pExif  the data from its byte order mark ("II" or "MM") on; may be null for no bytes
int FindExifOrientation(const unsigned char* pExif, std::size_t nBytes);

/// Applies an orientation of 2 to 8, as the EXIF and TIFF tags count them.
/// @return false for a lack of memory
bool Reorient(const CImage& from, int nOrientation, CImage& image);

} // namespace Vantor::Algorithms
