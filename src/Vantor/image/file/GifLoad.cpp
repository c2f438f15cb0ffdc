// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/GifFrames_p.h>
#include <Vantor/image/file/GifLoad_p.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QIODevice>

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kMaxColors = 256;
using Palette = std::array<std::array<unsigned char, 4>, kMaxColors>; ///< R, G, B, A

struct SSource {
    QIODevice& device;
    bool bInPixels = false; ///< what follows are blocks, each behind its length
    bool bLength = true;    ///< the next read asks for such a length
};

/// Passes the bytes of a file to the codec. The codec takes only whole blocks of pixels, so the last block of
/// a truncated file gets the length that is left, and the end of the blocks follows it.
int ReadBytes(GifFileType* pGif, GifByteType* pTo, int nBytes)
{
    SSource& source = *static_cast<SSource*>(pGif->UserData);
    const int nRead = static_cast<int>(source.device.read(reinterpret_cast<char*>(pTo), nBytes));
    if (!source.bInPixels || !source.bLength) {
        source.bLength = true;
        return nRead;
    }
    const qint64 nLeft = source.device.size() - source.device.pos();
    *pTo = nRead == 1 ? static_cast<GifByteType>(std::min<qint64>(*pTo, nLeft)) : GifByteType(0);
    source.bLength = *pTo == 0;
    return 1;
}

struct SGifCloser {
    void operator()(GifFileType* pGif) const { DGifCloseFile(pGif, nullptr); }
};

/// Reads one extension and keeps its transparency, if it has one.
bool ReadExtension(GifFileType* pGif, int& nTransparent)
{
    int nKind = 0;
    GifByteType* pBlock = nullptr;
    if (DGifGetExtension(pGif, &nKind, &pBlock) != GIF_OK)
        return false;
    while (pBlock) {
        GraphicsControlBlock control = {};
        if (nKind == GRAPHICS_EXT_FUNC_CODE && DGifExtensionToGCB(pBlock[0], pBlock + 1, &control) == GIF_OK)
            nTransparent = control.TransparentColor;
        if (DGifGetExtensionNext(pGif, &pBlock) != GIF_OK)
            return false;
    }
    return true;
}

/// Goes to the pixels of the first frame.
bool FindFirstFrame(GifFileType* pGif, int& nTransparent)
{
    GifRecordType eType = UNDEFINED_RECORD_TYPE;
    while (DGifGetRecordType(pGif, &eType) == GIF_OK) {
        if (eType == IMAGE_DESC_RECORD_TYPE)
            return DGifGetImageDesc(pGif) == GIF_OK;
        if (eType != EXTENSION_RECORD_TYPE || !ReadExtension(pGif, nTransparent))
            return false;
    }
    return false;
}

/// The colours of all indexes; indexes beyond the palette are black.
Palette PaletteOf(const GifFileType& gif, int nTransparent)
{
    Palette palette;
    palette.fill({0, 0, 0, 255});
    const ColorMapObject* pMap = gif.Image.ColorMap ? gif.Image.ColorMap : gif.SColorMap;
    for (int i = 0; pMap && i < std::min(pMap->ColorCount, kMaxColors); ++i) {
        const GifColorType& color = pMap->Colors[i];
        palette[static_cast<std::size_t>(i)] = {color.Red, color.Green, color.Blue, 255};
    }
    if (nTransparent >= 0)
        palette[static_cast<std::size_t>(nTransparent)] = {0, 0, 0, 0};
    return palette;
}

/// Calls visit(y) for the rows of a frame in the order of the file, until it returns false.
template <class TVisit> void VisitRows(int nHeight, bool bInterlaced, TVisit visit)
{
    struct SPass {
        int nStart;
        int nStep;
    };
    const std::vector<SPass> passes =
        bInterlaced ? std::vector<SPass>{{0, 8}, {4, 8}, {2, 4}, {1, 2}} : std::vector<SPass>{{0, 1}};
    for (const SPass& pass : passes) {
        for (int y = pass.nStart; y < nHeight; y += pass.nStep) {
            if (!visit(y))
                return;
        }
    }
}

/// The number of pixels that the next row has. The codec reads a whole row, or does not say how far it got.
int ReadRow(GifFileType* pGif, std::vector<GifPixelType>& row, bool bByPixel)
{
    const int nWidth = static_cast<int>(row.size());
    if (!bByPixel)
        return DGifGetLine(pGif, row.data(), nWidth) == GIF_OK ? nWidth : 0;
    int nThere = 0;
    while (nThere < nWidth && DGifGetLine(pGif, row.data() + nThere, 1) == GIF_OK)
        ++nThere;
    return nThere;
}

/// With four channels, transparent pixels leave what is there.
template <std::size_t Channels>
void PaintRow(const GifPixelType* pFrom, unsigned char* pTo, int nWidth, const Palette& palette)
{
    for (int x = 0; x < nWidth; ++x, pTo += Channels)
        if (Channels == 3 || palette[pFrom[x]][3] != 0)
            std::memcpy(pTo, palette[pFrom[x]].data(), Channels);
}

/// Paints the part of the frame that lies on the canvas.
/// @param nByRow  the number of pixels in whole rows
/// @return the number of pixels that the frame has
qint64 PaintFrame(GifFileType* pGif, const Palette& palette, qint64 nByRow, CImage& image)
{
    const GifImageDesc& frame = pGif->Image;
    std::vector<GifPixelType> row(static_cast<std::size_t>(frame.Width));
    qint64 nThere = 0;
    VisitRows(frame.Width > 0 ? frame.Height : 0, frame.Interlace, [&](int y) {
        const int nRow = ReadRow(pGif, row, nThere >= nByRow);
        nThere += nRow;
        if (unsigned char* pTo = image.GetPixel(frame.Left, frame.Top + y)) {
            const int nShown = std::min(nRow, image.GetWidth() - frame.Left);
            (image.GetChannel() == 3 ? PaintRow<3> : PaintRow<4>)(row.data(), pTo, nShown, palette);
        }
        return nRow == frame.Width;
    });
    return nThere;
}

constexpr qint64 kWhole = std::numeric_limits<qint64>::max();

struct SPixelCount {
    qint64 nThere = 0;
    qint64 nMissing = 0;
};

/// Decodes the first frame.
/// @param nByRow  kWhole, or the pixels that a call with that has found: then it finds also those of the row
///                that is not whole, and what is missing is transparent
CResult DecodeFrame(QIODevice& device, qint64 nByRow, CImage& image, SPixelCount& count)
{
    SSource source{device};
    if (!device.seek(0))
        return Unreadable("GIF");
    const std::unique_ptr<GifFileType, SGifCloser> gif(DGifOpen(&source, ReadBytes, nullptr));
    int nTransparent = NO_TRANSPARENT_COLOR;
    if (!gif)
        return Unreadable("GIF");
    if (!FindFirstFrame(gif.get(), nTransparent))
        return CResult::Failure("The GIF file holds no picture, or ends before the first one.");
    source.bInPixels = true;
    const GifImageDesc& frame = gif->Image;
    const int nRight = frame.Left + frame.Width;
    const int nBottom = frame.Top + frame.Height;
    const qint64 nMostWidth = std::max(gif->SWidth, nRight);
    const qint64 nMostHeight = std::max(gif->SHeight, nBottom);
    if (!FitsDecodeLimit(nMostWidth, nMostHeight, 4, 0))
        return CResult::Failure("The picture of the GIF file is empty or larger than the limit.");
    if (nMostWidth * nMostHeight > kMaxGifPixelsPerByte * device.size())
        return CResult::Failure("The GIF file is too short for the size that it claims.");
    const int nWidth = gif->SWidth > 0 ? gif->SWidth : nRight;
    const int nHeight = gif->SHeight > 0 ? gif->SHeight : nBottom;
    const bool bCovered = frame.Left == 0 && frame.Top == 0 && nRight >= nWidth && nBottom >= nHeight;
    const int nChannels = bCovered && nTransparent < 0 && nByRow == kWhole ? 3 : 4;
    if (image.Create(nWidth, nHeight, nChannels, 8, EImageType::Interleaved, kRowAlignment) != 0)
        return Unreadable("GIF");
    count.nThere = PaintFrame(gif.get(), PaletteOf(*gif, nTransparent), nByRow, image);
    count.nMissing = static_cast<qint64>(frame.Width) * frame.Height - count.nThere;
    return CResult::Success();
}

/// @param nByRow  as for DecodeFrame
/// @return the number of pixels that the frame has
qint64 PaintFrameAt(QIODevice& device, const SGifFrame& frame, qint64 nByRow, CImage& screen)
{
    SSource source{device};
    const std::unique_ptr<GifFileType, SGifCloser> gif(device.seek(0) ? DGifOpen(&source, ReadBytes, nullptr)
                                                                      : nullptr);
    GifRecordType eType = UNDEFINED_RECORD_TYPE;
    if (!gif || !device.seek(frame.nOffset) || DGifGetRecordType(gif.get(), &eType) != GIF_OK ||
        eType != IMAGE_DESC_RECORD_TYPE || DGifGetImageDesc(gif.get()) != GIF_OK)
        return 0;
    source.bInPixels = true;
    return PaintFrame(gif.get(), PaletteOf(*gif, frame.nTransparent), nByRow, screen);
}
} // namespace

qint64 PaintGifFrame(QIODevice& device, const SGifFrame& frame, CImage& screen)
{
    const qint64 nPixels = static_cast<qint64>(frame.nWidth) * frame.nHeight;
    qint64 nThere = PaintFrameAt(device, frame, kWhole, screen);
    if (nThere < nPixels)
        nThere = PaintFrameAt(device, frame, nThere, screen);
    return nPixels - nThere;
}

CResult LoadGif(QIODevice& device, CImage& image, SFound& found)
{
    SPixelCount count;
    CResult result = DecodeFrame(device, kWhole, image, count);
    if (result.IsSuccess() && count.nMissing > 0)
        result = DecodeFrame(device, count.nThere, image, count);
    if (!result.IsSuccess())
        return result;
    if (count.nMissing > 0 && count.nThere == 0)
        return CResult::Failure("The GIF file ends before its first pixel.");
    if (count.nMissing > 0)
        found.notes.push_back("The file is incomplete: " + std::to_string(count.nMissing) +
                              " pixels of the picture are missing.");
    if (found.bTellOthers)
        NoteGifFrames(device, found.notes);
    return result;
}

} // namespace Vantor::Algorithms
