// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffMetadata_p.h>

#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/Exif_p.h>

#include <algorithm>
#include <cstring>

namespace Vantor::Algorithms
{

namespace
{
void TakeResolution(TIFF* pTiff, SImageMetadata& metadata)
{
    float fX = 0.0F;
    float fY = 0.0F;
    std::uint16_t nUnit = RESUNIT_INCH;
    if (TIFFGetField(pTiff, TIFFTAG_XRESOLUTION, &fX) != 1 ||
        TIFFGetField(pTiff, TIFFTAG_YRESOLUTION, &fY) != 1)
        return;
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_RESOLUTIONUNIT, &nUnit);
    metadata.resolutionX = static_cast<double>(fX);
    metadata.resolutionY = static_cast<double>(fY);
    metadata.resolutionUnit = UnitOfTiff(nUnit);
}
} // namespace

SImageMetadata TiffMetadata(TIFF* pTiff)
{
    SImageMetadata metadata;
    TakeResolution(pTiff, metadata);
    std::uint32_t nBytes = 0;
    const unsigned char* pProfile = nullptr;
    if (TIFFGetField(pTiff, TIFFTAG_ICCPROFILE, &nBytes, &pProfile) == 1 && pProfile)
        metadata.profile.assign(pProfile, pProfile + std::min<std::size_t>(nBytes, kMostProfileBytes + 1));
    for (const STextTag& tag : kTextTags) {
        const char* pText = nullptr;
        if (TIFFGetField(pTiff, tag.nTag, &pText) == 1 && pText && *pText != '\0')
            AddText(metadata, tag.pKey, {pText, ::strnlen(pText, kMostImageTextBytes + 1)});
    }
    return metadata;
}

void SetTiffMetadata(TIFF* pTiff, const SImageMetadata& metadata, int nChannels)
{
    if (metadata.resolutionX > 0.0) {
        const std::uint16_t nUnit = metadata.resolutionUnit == EResolutionUnit::Inch ? RESUNIT_INCH
                                    : metadata.resolutionUnit == EResolutionUnit::Centimetre
                                        ? RESUNIT_CENTIMETER
                                        : RESUNIT_NONE;
        TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, metadata.resolutionX);
        TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, metadata.resolutionY);
        TIFFSetField(pTiff, TIFFTAG_RESOLUTIONUNIT, nUnit);
    }
    if (IsProfileFor(metadata.profile, nChannels))
        TIFFSetField(pTiff, TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(metadata.profile.size()),
                     metadata.profile.data());
}

} // namespace Vantor::Algorithms
