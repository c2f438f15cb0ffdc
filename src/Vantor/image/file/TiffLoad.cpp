// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/Orientation_p.h>
#include <Vantor/image/file/TiffColors_p.h>
#include <Vantor/image/file/TiffHandle_p.h>
#include <Vantor/image/file/TiffLacks_p.h>
#include <Vantor/image/file/TiffLoad_p.h>
#include <Vantor/image/file/TiffMetadata_p.h>
#include <Vantor/image/file/TiffPages_p.h>
#include <Vantor/image/file/TiffSamples_p.h>

#include <QIODevice>

#include <algorithm>
#include <utility>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
/// Deliberate: a file of this format may claim more than its length accounts for (strips may be shared or
/// left out, fax coding needs a bit a row), but not without end: this much for every file ...
constexpr std::uint64_t kFreeBytes = 8U << 20;
/// ... and this much for every byte of it, which is beyond the best ratio of its usual codecs.
constexpr std::uint64_t kMaxRatio = 8192;
constexpr int kMaxSamples = 64;

struct SLayout {
    std::uint32_t nWidth = 0;
    std::uint32_t nHeight = 0;
    SSampleFormat format;
    STiffColors colors;
    int nOrientation = ORIENTATION_TOPLEFT;
    bool bPlanar = false;
    bool bTiled = false;
    bool bDecodable = false; ///< by this reader; the codec's own converter takes the rest
};

std::uint16_t Tag(TIFF* pTiff, std::uint32_t nTag, std::uint16_t nDefault)
{
    std::uint16_t nValue = nDefault;
    return TIFFGetFieldDefaulted(pTiff, nTag, &nValue) == 1 ? nValue : nDefault;
}

/// What the sample behind the colours is.
std::uint16_t ExtraSample(TIFF* pTiff)
{
    std::uint16_t nCount = 0;
    std::uint16_t* pKinds = nullptr;
    if (TIFFGetFieldDefaulted(pTiff, TIFFTAG_EXTRASAMPLES, &nCount, &pKinds) != 1 || nCount == 0)
        return EXTRASAMPLE_UNSPECIFIED;
    return pKinds[0];
}

/// What the sample behind the colours means for them.
/// @param nSpare  samples behind the colours
ETiffAlpha FindAlpha(TIFF* pTiff, int nSpare)
{
    const std::uint16_t nExtra = nSpare > 0 ? ExtraSample(pTiff) : EXTRASAMPLE_UNSPECIFIED;
    return nExtra == EXTRASAMPLE_UNASSALPHA   ? ETiffAlpha::Straight
           : nExtra == EXTRASAMPLE_ASSOCALPHA ? ETiffAlpha::Premultiplied
                                              : ETiffAlpha::None;
}

/// The meaning of the samples; false for those that the codec's own converter takes.
bool FindColors(TIFF* pTiff, int nPhotometric, int nStored, STiffColors& colors)
{
    switch (nPhotometric) {
    case PHOTOMETRIC_MINISWHITE:
        colors.eKind = ETiffColors::WhiteIsZero;
        return true;
    case PHOTOMETRIC_MINISBLACK:
        colors.eKind = ETiffColors::Grey;
        break;
    case PHOTOMETRIC_RGB:
        colors.eKind = ETiffColors::Rgb;
        break;
    case PHOTOMETRIC_PALETTE:
        colors.eKind = ETiffColors::Palette;
        break;
    case PHOTOMETRIC_SEPARATED:
        colors.eKind = ETiffColors::Cmyk;
        if (Tag(pTiff, TIFFTAG_INKSET, INKSET_CMYK) != INKSET_CMYK)
            return false;
        break;
    case PHOTOMETRIC_CIELAB:
        colors.eKind = ETiffColors::Lab;
        if (colors.nBits != 8 && colors.nBits != 16)
            return false;
        break;
    default:
        return false;
    }
    const int nSpare = nStored - StoredChannels(colors);
    colors.eAlpha = FindAlpha(pTiff, nSpare);
    return nSpare >= 0;
}

/// What the samples mean in a file that does not say so: in a facsimile 1 is black.
int UsualPhotometric(int nStored, int nCompression)
{
    const bool bFax = nCompression == COMPRESSION_CCITTRLE || nCompression == COMPRESSION_CCITTRLEW ||
                      nCompression == COMPRESSION_CCITTFAX3 || nCompression == COMPRESSION_CCITTFAX4;
    return bFax ? PHOTOMETRIC_MINISWHITE : nStored >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK;
}

bool ReadLayout(TIFF* pTiff, SLayout& layout)
{
    if (TIFFGetField(pTiff, TIFFTAG_IMAGEWIDTH, &layout.nWidth) != 1 ||
        TIFFGetField(pTiff, TIFFTAG_IMAGELENGTH, &layout.nHeight) != 1)
        return false;
    layout.bTiled = TIFFIsTiled(pTiff) != 0;
    layout.bPlanar = Tag(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    layout.nOrientation = Tag(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    layout.format.nBits = Tag(pTiff, TIFFTAG_BITSPERSAMPLE, 1);
    layout.format.nStored = Tag(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    if (layout.format.nStored < 1 || layout.format.nStored > kMaxSamples)
        return false;
    const int nSampleFormat = Tag(pTiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    layout.format.bFloat = nSampleFormat == SAMPLEFORMAT_IEEEFP;
    layout.format.bSigned = nSampleFormat == SAMPLEFORMAT_INT;
    const int nCompression = Tag(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    const int nUsual = UsualPhotometric(layout.format.nStored, nCompression);
    int nPhotometric = Tag(pTiff, TIFFTAG_PHOTOMETRIC, static_cast<std::uint16_t>(nUsual));
    if (nPhotometric == PHOTOMETRIC_YCBCR && nCompression == COMPRESSION_JPEG && !layout.bPlanar) {
        TIFFSetField(pTiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        nPhotometric = PHOTOMETRIC_RGB;
    }
    layout.colors.nBits = layout.format.nBits;
    layout.bDecodable = FindColors(pTiff, nPhotometric, layout.format.nStored, layout.colors) &&
                        nSampleFormat <= SAMPLEFORMAT_VOID && nCompression != COMPRESSION_OJPEG;
    layout.format.nWanted = StoredChannels(layout.colors);
    layout.format.bRaw = AreRaw(layout.colors);
    layout.format.bWide = AreWide(layout.colors);
    layout.bDecodable = layout.bDecodable && CanUnpack(layout.format);
    return true;
}

/// Of a sample once it is unpacked.
int BytesOf(const SSampleFormat& format)
{
    return format.bWide ? 2 : 1;
}

/// Whether the image, what is needed to decode it and the tables of both stay within the bounds.
bool IsAffordable(TIFF* pTiff, const SLayout& layout, std::uint64_t nFileBytes)
{
    const int nResult = layout.bDecodable ? ResultChannels(layout.colors) : 3;
    const int nDecoder = !layout.bDecodable         ? static_cast<int>(sizeof(std::uint32_t))
                         : IsInPlace(layout.colors) ? 0
                                                    : layout.format.nWanted * BytesOf(layout.format);
    if (!FitsDecodeLimit(layout.nWidth, layout.nHeight, nResult, nDecoder))
        return false;
    const std::uint64_t nPiece = layout.bTiled ? TIFFTileSize64(pTiff) : TIFFScanlineSize64(pTiff);
    if (nPiece == 0 || nPiece > CImage::GetDecodeLimit())
        return false;
    const std::uint64_t nTables = (layout.nWidth + std::uint64_t(layout.nHeight)) * 2 * sizeof(void*);
    const std::uint64_t nPixels = std::uint64_t(layout.nWidth) * layout.nHeight;
    return nPixels * static_cast<std::uint64_t>(nResult + nDecoder) + nTables + nPiece <=
           kFreeBytes + kMaxRatio * nFileBytes;
}

/// Where the samples of a plane go: all samples of a pixel, or one per plane.
struct SPlane {
    SSampleFormat format;
    std::uint16_t nPlane = 0;
};

std::vector<SPlane> PlanesOf(const SLayout& layout)
{
    if (!layout.bPlanar)
        return {SPlane{layout.format, 0}};
    std::vector<SPlane> planes;
    for (int i = 0; i < layout.format.nWanted; ++i) {
        SPlane plane{layout.format, static_cast<std::uint16_t>(i)};
        plane.format.nStored = 1;
        plane.format.nWanted = 1;
        planes.push_back(plane);
    }
    return planes;
}

bool ReadRows(TIFF* pTiff, const SLayout& layout, const SPlane& plane, CImage& samples)
{
    const int nTo = layout.format.nWanted;
    const bool bDirect = plane.format.nBits == 8 && !plane.format.bSigned && !plane.format.bFloat &&
                         plane.format.nStored == nTo && plane.format.nWanted == nTo;
    std::vector<unsigned char> vctLine;
    if (!bDirect)
        vctLine.resize(static_cast<std::size_t>(TIFFScanlineSize64(pTiff)));
    for (std::uint32_t y = 0; y < layout.nHeight; ++y) {
        unsigned char* pRow = samples.GetRows()[y];
        if (CProgress::IsThreadCancelled() ||
            TIFFReadScanline(pTiff, bDirect ? pRow : vctLine.data(), y, plane.nPlane) != 1)
            return false;
        if (!bDirect)
            UnpackRow(plane.format, vctLine.data(), pRow + plane.nPlane * BytesOf(plane.format), nTo,
                      static_cast<int>(layout.nWidth));
    }
    return true;
}

bool ReadTiles(TIFF* pTiff, const SLayout& layout, const SPlane& plane, CImage& samples)
{
    std::uint32_t nTileWidth = 0;
    std::uint32_t nTileHeight = 0;
    if (TIFFGetField(pTiff, TIFFTAG_TILEWIDTH, &nTileWidth) != 1 ||
        TIFFGetField(pTiff, TIFFTAG_TILELENGTH, &nTileHeight) != 1 || nTileWidth == 0 || nTileHeight == 0)
        return false;
    const tmsize_t nTileRow = TIFFTileRowSize(pTiff);
    const auto nSampleBytes = static_cast<std::size_t>(BytesOf(plane.format));
    const std::size_t nPixelBytes = static_cast<std::size_t>(layout.format.nWanted) * nSampleBytes;
    const std::size_t nPlaneByte = plane.nPlane * nSampleBytes;
    std::vector<unsigned char> vctTile(static_cast<std::size_t>(TIFFTileSize64(pTiff)));
    for (std::uint64_t y = 0; y < layout.nHeight; y += nTileHeight) {
        for (std::uint64_t x = 0; x < layout.nWidth; x += nTileWidth) {
            const std::uint32_t nTile = TIFFComputeTile(pTiff, static_cast<std::uint32_t>(x),
                                                        static_cast<std::uint32_t>(y), 0, plane.nPlane);
            const auto nBytes = static_cast<tmsize_t>(vctTile.size());
            if (CProgress::IsThreadCancelled() ||
                TIFFReadEncodedTile(pTiff, nTile, vctTile.data(), nBytes) != nBytes)
                return false;
            const auto nColumns = static_cast<int>(std::min<std::uint64_t>(nTileWidth, layout.nWidth - x));
            const std::uint64_t nEnd = std::min<std::uint64_t>(y + nTileHeight, layout.nHeight);
            for (std::uint64_t row = y; row < nEnd; ++row)
                UnpackRow(plane.format, vctTile.data() + static_cast<tmsize_t>(row - y) * nTileRow,
                          samples.GetRows()[row] + x * nPixelBytes + nPlaneByte, layout.format.nWanted,
                          nColumns);
        }
    }
    return true;
}

bool CreateFor(const SLayout& layout, int nColumns, int nChannels, int nBits, CImage& image)
{
    return image.Create(static_cast<int>(layout.nWidth) * nColumns, static_cast<int>(layout.nHeight),
                        nChannels, nBits, EImageType::Interleaved, kRowAlignment) == 0;
}

/// The image of the stored samples, mended where that does not need another one.
bool Decode(TIFF* pTiff, const SLayout& layout, CImage& samples)
{
    const int nSamples = layout.format.nWanted; // inks with alpha have more than an image has channels
    if (!(IsInPlace(layout.colors) ? CreateFor(layout, 1, nSamples, 8, samples)
                                   : CreateFor(layout, nSamples, 1, 8 * BytesOf(layout.format), samples)))
        return false;
    for (const SPlane& plane : PlanesOf(layout)) {
        if (!(layout.bTiled ? ReadTiles : ReadRows)(pTiff, layout, plane, samples))
            return false;
    }
    if (IsInPlace(layout.colors))
        AdjustInPlace(layout.colors, samples);
    return true;
}

/// Loads rare kinds (log luminance, subsampled colours outside JPEG) with the codec's own converter.
bool DecodeByCodec(TIFF* pTiff, const SLayout& layout, CImage& image)
{
    // This reader applies the orientation itself.
    TIFFSetField(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    std::vector<std::uint32_t> vctRaster(static_cast<std::size_t>(layout.nWidth) * layout.nHeight);
    if (TIFFReadRGBAImageOriented(pTiff, layout.nWidth, layout.nHeight, vctRaster.data(), ORIENTATION_TOPLEFT,
                                  1) != 1 ||
        !CreateFor(layout, 1, 3, 8, image))
        return false;
    const std::uint32_t* pFrom = vctRaster.data();
    for (std::uint32_t y = 0; y < layout.nHeight; ++y) {
        unsigned char* pTo = image.GetRows()[y];
        for (std::uint32_t x = 0; x < layout.nWidth; ++x, ++pFrom, pTo += 3) {
            pTo[0] = static_cast<unsigned char>(TIFFGetR(*pFrom));
            pTo[1] = static_cast<unsigned char>(TIFFGetG(*pFrom));
            pTo[2] = static_cast<unsigned char>(TIFFGetB(*pFrom));
        }
    }
    return true;
}

bool DecodeTiffFile(TIFF* pTiff, std::uint64_t nFileBytes, CImage& image, SImageMetadata& metadata)
{
    SLayout layout;
    if (!ReadLayout(pTiff, layout) || !IsAffordable(pTiff, layout, nFileBytes))
        return false;
    metadata = TiffMetadata(pTiff);
    metadata.orientation = layout.nOrientation;
    // Each step that is needed has its own image; the last one writes into the result.
    const bool bTurn =
        layout.nOrientation > ORIENTATION_TOPLEFT && layout.nOrientation <= ORIENTATION_LEFTBOT;
    const bool bExpand = layout.bDecodable && !IsInPlace(layout.colors);
    CImage samples;
    CImage colors;
    CImage& decoded = bTurn || bExpand ? samples : image;
    CImage& expanded = !bExpand ? decoded : bTurn ? colors : image;
    if (!(layout.bDecodable ? Decode : DecodeByCodec)(pTiff, layout, decoded))
        return false;
    if (bExpand && !ExpandColors(pTiff, layout.colors, decoded, expanded))
        return false;
    return !bTurn || Reorient(expanded, layout.nOrientation, image);
}
} // namespace

bool TellTiffPage(TIFF* pTiff, std::uint64_t nFileBytes, STiffPage& page)
{
    SLayout layout;
    if (!ReadLayout(pTiff, layout) || !IsAffordable(pTiff, layout, nFileBytes))
        return false;
    page.nWidth = static_cast<int>(layout.nWidth);
    page.nHeight = static_cast<int>(layout.nHeight);
    if (layout.nOrientation >= ORIENTATION_LEFTTOP && layout.nOrientation <= ORIENTATION_LEFTBOT)
        std::swap(page.nWidth, page.nHeight);
    page.nChannels = layout.bDecodable ? ResultChannels(layout.colors) : 3;
    page.metadata = TiffMetadata(pTiff);
    page.metadata.orientation = layout.nOrientation;
    return true;
}

CResult LoadTiffPage(TIFF* pTiff, std::uint64_t nFileBytes, CImage& image, SFound& found)
{
    if (pTiff && DecodeTiffFile(pTiff, nFileBytes, image, found.metadata))
        return CResult::Success();
    const std::string strLack = pTiff ? WhatTheCodecLacks(pTiff) : std::string();
    return strLack.empty() ? Unreadable("TIFF") : CResult::Failure(strLack);
}

CResult LoadTiff(QIODevice& device, CImage& image, SFound& found)
{
    const TiffHandle tiff = OpenTiff(device, kReadTiff);
    CResult result = LoadTiffPage(tiff.get(), static_cast<std::uint64_t>(device.size()), image, found);
    const std::string strPages = result.IsSuccess() && found.bTellOthers ? NoteOfPages(device) : "";
    if (!strPages.empty())
        found.notes.push_back(strPages);
    return result;
}

} // namespace Vantor::Algorithms
