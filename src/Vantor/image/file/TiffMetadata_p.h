// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>

#include <tiffio.h>

namespace Vantor::Algorithms
{

/// What the directory that is open says beside the pixels, without the orientation.
SImageMetadata TiffMetadata(TIFF* pTiff);

/// Writes resolution and profile into the directory; the profile only where it is for these channels.
void SetTiffMetadata(TIFF* pTiff, const SImageMetadata& metadata, int nChannels);

} // namespace Vantor::Algorithms
