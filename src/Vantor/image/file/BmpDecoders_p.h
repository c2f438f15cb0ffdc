// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/BmpHeader_p.h>
#include <Vantor/image/file/ImageFormats_p.h>

namespace Vantor::Algorithms
{

/// The channels of what this file loads as: 1, 3 or 4.
int BmpChannels(const SBmpHeader& header);

/// The decoders of compressed pixels. The caller has checked the size that the header claims against the
/// limit; the device is positioned at the pixels.
/// @{
/// Run lengths of indexes (4, 8 bits) or colours (24 bits). Pixels that they skip, or that a truncated file
/// lacks, get the first colour of the palette, or black.
CResult ReadBmpRunLengths(QIODevice& device, const SBmpHeader& header, CImage& image, Notes& notes);
/// One-dimensional fax code: white runs are the first colour of the palette, black runs the second.
CResult ReadBmpHuffman(QIODevice& device, const SBmpHeader& header, CImage& image);
/// @}

} // namespace Vantor::Algorithms
