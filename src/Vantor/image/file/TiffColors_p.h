// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <tiffio.h>

namespace Vantor::Algorithms
{

class CImage;

/// What the samples of a TIFF image mean.
enum class ETiffColors {
    Plain, ///< grey
    WhiteIsZero,
    GreyAlpha,
    GreyPremultiplied,
    Rgb,
    Rgba,
    RgbaPremultiplied,
    Palette,
    Cmyk
};

/// Samples per pixel that are taken from the file.
int StoredChannels(ETiffColors eColors);
/// Channels of the image that comes of them.
int ResultChannels(ETiffColors eColors);
/// Whether the image of the samples becomes the result without another one.
bool IsInPlace(ETiffColors eColors);

/// Mends what differs from the core's order within the same channels: white as zero, premultiplied alpha.
void AdjustInPlace(ETiffColors eColors, CImage& image);
/// Makes RGB or RGBA of palette indices, CMYK or grey with alpha.
bool ExpandColors(TIFF* pTiff, ETiffColors eColors, const CImage& samples, CImage& image);

} // namespace Vantor::Algorithms
