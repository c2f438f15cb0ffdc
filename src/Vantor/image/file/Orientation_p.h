// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

namespace Vantor::Algorithms
{

class CImage;

/// Applies an orientation of 2 to 8, as the EXIF and TIFF tags count them.
/// @return false for a lack of memory
bool Reorient(const CImage& from, int nOrientation, CImage& image);

} // namespace Vantor::Algorithms
