// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>

#include <QByteArray>

#include <cstdint>

namespace Vantor::Algorithms
{

/// A text of the directories of TIFF and EXIF.
struct STextTag {
    std::uint16_t nTag;
    const char* pKey; ///< as PNG calls it, where it does
};

inline constexpr STextTag kTextTags[] = {
    {0x10D, "Title"},         {0x10E, "Description"}, {0x10F, "Make"},          {0x110, "Model"},
    {0x11D, "Page Name"},     {0x131, "Software"},    {0x132, "Creation Time"}, {0x13B, "Author"},
    {0x13C, "Host Computer"}, {0x8298, "Copyright"},
};

/// The meaning of the tag for the unit of the resolution.
EResolutionUnit UnitOfTiff(int nUnit);

/// Adds what the first directory of a block of EXIF data says: orientation, resolution and texts. What it
/// does not say, or says wrongly, becomes as in an image without a file.
/// @param exif         from its byte order mark ("II" or "MM") on; may be cut short
/// @param bResolution  whether its resolution counts
void AddExif(const QByteArray& exif, bool bResolution, SImageMetadata& metadata);

} // namespace Vantor::Algorithms
