// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/TiffHandle_p.h>
#include <Vantor/image/file/TiffMetadata_p.h>

#include <QIODevice>

#include <algorithm>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
/// Larger files need the format with 64-bit offsets; the margin allows for data that does not compress.
constexpr long long kMaxClassicBytes = 3LL << 30;

void SetTags(TIFF* pTiff, const CImage& image)
{
    const int nChannels = image.GetChannel();
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(image.GetWidth()));
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(image.GetHeight()));
    TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, nChannels);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, nChannels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
    TIFFSetField(pTiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    if (nChannels == 4) {
        const std::uint16_t nExtra = EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(pTiff, TIFFTAG_EXTRASAMPLES, 1, &nExtra);
    }
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(pTiff, 0));
    SetTiffMetadata(pTiff, *image.GetMetadata(), nChannels);
}
} // namespace

CResult SaveTiff(QIODevice& device, const CImage& image)
{
    const bool bLarge = static_cast<long long>(image.GetStride()) * image.GetHeight() > kMaxClassicBytes;
    const TiffHandle tiff = OpenTiff(device, bLarge ? "w8" : "w");
    if (!tiff)
        return Unwritable("TIFF");
    SetTags(tiff.get(), image);
    // Copy each row, because the predictor works in place.
    std::vector<unsigned char> vctRow(static_cast<std::size_t>(image.GetWidth()) *
                                      static_cast<std::size_t>(image.GetChannel()));
    for (int y = 0; y < image.GetHeight(); ++y) {
        CProgress::Tell(double(y) / image.GetHeight());
        std::copy_n(image.GetRows()[y], vctRow.size(), vctRow.begin());
        if (TIFFWriteScanline(tiff.get(), vctRow.data(), static_cast<std::uint32_t>(y), 0) != 1)
            return Unwritable("TIFF");
    }
    return TIFFFlush(tiff.get()) == 1 ? CResult::Success() : Unwritable("TIFF");
}

} // namespace Vantor::Algorithms
