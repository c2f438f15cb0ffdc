// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Region_p.h>

#include <vector>

namespace Vantor::Algorithms
{

/// What the engine reads: an 8-bit image of 1 (grey) or 3 (R, G, B) channels without gaps.
struct SPage {
    int nWidth = 0;
    int nHeight = 0;
    int nChannels = 1;
    std::vector<unsigned char> vctBytes;

    /// Half a turn.
    void TurnUpsideDown();
};

/// The bounding box of the runs, cut out of the image. Pixels that the runs do not cover are white; alpha is
/// composed on white; 16-bit samples keep their upper 8 bits. Without runs the page has no pixels. Throws
/// std::bad_alloc.
SPage MakePage(const CImage& image, const PixelRuns& runs);

} // namespace Vantor::Algorithms
