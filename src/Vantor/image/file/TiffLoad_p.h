// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/ImageFormats_p.h>

#include <cstdint>

#include <tiffio.h>

namespace Vantor::Algorithms
{

/// What the directory of a page says of its image, which is turned already.
struct STiffPage {
    int nWidth = 0;
    int nHeight = 0;
    int nChannels = 0;
    SImageMetadata metadata;
};

/// Of the directory that the codec has read. @return false when LoadTiffPage would refuse it
bool TellTiffPage(TIFF* pTiff, std::uint64_t nFileBytes, STiffPage& page);

/// Loads the image of the directory that the codec has read. Without a codec it fails.
CResult LoadTiffPage(TIFF* pTiff, std::uint64_t nFileBytes, CImage& image, SFound& found);

} // namespace Vantor::Algorithms
