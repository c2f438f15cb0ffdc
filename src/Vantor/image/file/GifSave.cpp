// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QIODevice>

#include <gif_lib.h>

#include <cstring>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kMaxColors = 256;
constexpr int kMaxGifSide = 65535;
constexpr int kBitsPerPrimary = 8;

struct SIndexed {
    std::vector<GifColorType> colors = std::vector<GifColorType>(kMaxColors);
    std::vector<GifByteType> pixels;
};

GifColorType ColorAt(const unsigned char* pPixel, int nChannels)
{
    return nChannels == 1 ? GifColorType{pPixel[0], pPixel[0], pPixel[0]}
                          : GifColorType{pPixel[0], pPixel[1], pPixel[2]};
}

/// @return false when a visit says so, or when the work of the thread is to end
template <class TVisit> bool VisitPixels(const CImage& image, TVisit visit)
{
    const int nWidth = image.GetWidth();
    const int nChannels = image.GetChannel();
    for (int y = 0; y < image.GetHeight(); ++y) {
        if (CProgress::IsThreadCancelled())
            return false;
        const unsigned char* pPixel = image.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pPixel += nChannels) {
            if (!visit(ColorAt(pPixel, nChannels)))
                return false;
        }
    }
    return true;
}

/// Takes the colours unchanged, in the order of their appearance; false when there are too many.
bool IndexExactly(const CImage& image, SIndexed& indexed)
{
    std::unordered_map<unsigned, GifByteType> indexes;
    indexed.pixels.clear();
    return VisitPixels(image, [&](const GifColorType& color) {
        const unsigned nKey = (unsigned(color.Red) << 16) | (unsigned(color.Green) << 8) | color.Blue;
        auto found = indexes.find(nKey);
        if (found == indexes.end()) {
            if (indexes.size() == kMaxColors)
                return false;
            indexed.colors[indexes.size()] = color;
            found = indexes.emplace(nKey, static_cast<GifByteType>(indexes.size())).first;
        }
        indexed.pixels.push_back(found->second);
        return true;
    });
}

/// Reduces the colours by median cut.
bool Quantize(const CImage& image, SIndexed& indexed)
{
    const std::size_t nPixels =
        static_cast<std::size_t>(image.GetWidth()) * static_cast<std::size_t>(image.GetHeight());
    std::vector<GifByteType> red;
    std::vector<GifByteType> green;
    std::vector<GifByteType> blue;
    for (auto* pPlane : {&red, &green, &blue})
        pPlane->reserve(nPixels);
    const bool bWhole = VisitPixels(image, [&](const GifColorType& color) {
        red.push_back(color.Red);
        green.push_back(color.Green);
        blue.push_back(color.Blue);
        return true;
    });
    if (!bWhole)
        return false;
    indexed.pixels.resize(nPixels);
    int nColors = kMaxColors;
    return GifQuantizeBuffer(static_cast<unsigned>(image.GetWidth()),
                             static_cast<unsigned>(image.GetHeight()), &nColors, red.data(), green.data(),
                             blue.data(), indexed.pixels.data(), indexed.colors.data()) == GIF_OK;
}

int WriteBytes(GifFileType* pGif, const GifByteType* pFrom, int nBytes)
{
    auto& device = *static_cast<QIODevice*>(pGif->UserData);
    return static_cast<int>(device.write(reinterpret_cast<const char*>(pFrom), nBytes));
}

bool PutImage(GifFileType* pGif, int nWidth, int nHeight, SIndexed& indexed)
{
    const std::unique_ptr<ColorMapObject, void (*)(ColorMapObject*)> map(
        GifMakeMapObject(kMaxColors, indexed.colors.data()), GifFreeMapObject);
    if (!map || EGifPutScreenDesc(pGif, nWidth, nHeight, kBitsPerPrimary, 0, map.get()) != GIF_OK ||
        EGifPutImageDesc(pGif, 0, 0, nWidth, nHeight, false, nullptr) != GIF_OK)
        return false;
    for (int y = 0; y < nHeight; ++y) {
        CProgress::Tell(double(y) / nHeight);
        GifByteType* pRow =
            indexed.pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(nWidth);
        if (EGifPutLine(pGif, pRow, nWidth) != GIF_OK)
            return false;
    }
    return true;
}
} // namespace

CResult SaveGif(QIODevice& device, const CImage& image)
{
    if (image.GetWidth() > kMaxGifSide || image.GetHeight() > kMaxGifSide)
        return CResult::Failure("A GIF image is at most 65535 pixels wide and high.");
    SIndexed indexed;
    if (!IndexExactly(image, indexed) && !Quantize(image, indexed))
        return Unwritable("GIF");
    GifFileType* pGif = EGifOpen(&device, WriteBytes, nullptr);
    if (!pGif)
        return Unwritable("GIF");
    const bool bPut = PutImage(pGif, image.GetWidth(), image.GetHeight(), indexed);
    return EGifCloseFile(pGif, nullptr) == GIF_OK && bPut ? CResult::Success() : Unwritable("GIF");
}

} // namespace Vantor::Algorithms
