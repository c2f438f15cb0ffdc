// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <tiffio.h>

namespace Vantor::Algorithms
{

class CImage;

/// What the samples of a TIFF image mean.
enum class ETiffColors {
    Grey,
    WhiteIsZero,
    Rgb,
    Palette,
    Cmyk,
    Lab ///< CIE L*a*b*, of which a and b are signed
};

enum class ETiffAlpha { None, Straight, Premultiplied };

struct STiffColors {
    ETiffColors eKind = ETiffColors::Grey;
    ETiffAlpha eAlpha = ETiffAlpha::None; ///< of the sample behind the colours
    int nBits = 8;                        ///< of a sample in the file
};

/// Samples per pixel that are taken from the file.
int StoredChannels(const STiffColors& colors);
/// Channels of the resulting image.
int ResultChannels(const STiffColors& colors);
/// Whether the samples are taken unscaled.
bool AreRaw(const STiffColors& colors);
/// Whether 8 bits are too few for the samples until their colours are made.
bool AreWide(const STiffColors& colors);
/// Whether the image of the samples becomes the result in place.
bool IsInPlace(const STiffColors& colors);

/// Converts, within the same channels, what the core stores differently: white as zero, premultiplied alpha.
void AdjustInPlace(const STiffColors& colors, CImage& image);
/// Makes the result from samples that cannot become it in place.
/// @param samples  one channel of 16 bits where AreWide, else of 8: StoredChannels columns for each pixel
bool ExpandColors(TIFF* pTiff, const STiffColors& colors, const CImage& samples, CImage& image);

} // namespace Vantor::Algorithms
