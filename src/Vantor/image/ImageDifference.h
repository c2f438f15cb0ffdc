// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <string>

namespace Vantor::Algorithms
{
class CImage;

/// By how much two images differ: |a - b| of every sample, as an image of their size, channels and depth.
/// With alpha (the last of 2 or 4 channels) the result is opaque, so that it can be seen, and where the
/// alphas differ no other sample is below that difference.
/// @param a, b    of equal size, channels and depth; only read. Any thread
/// @param result  neither of the two; stays as it was after a failure
/// @return empty, or why not, as a sentence in English: an empty image, images of different size or kind, no
///         image of its own for the result, a lack of memory
VANTOR_EXPORT std::string MakeDifference(const CImage& a, const CImage& b, CImage& result);

} // namespace Vantor::Algorithms
