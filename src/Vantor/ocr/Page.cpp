// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/ocr/Page_p.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
constexpr int kWhite = 255;

/// A sample as 8 bits.
int SampleOf(const unsigned char* pixel, int channel, int bytes)
{
    if (bytes == 1)
        return pixel[channel];
    std::uint16_t nSample = 0;
    std::memcpy(&nSample, pixel + 2 * channel, sizeof nSample);
    return nSample >> CHAR_BIT;
}

unsigned char OnWhite(int value, int alpha)
{
    return static_cast<unsigned char>((value * alpha + kWhite * (kWhite - alpha) + kWhite / 2) / kWhite);
}
} // namespace

void SPage::TurnUpsideDown()
{
    std::reverse(vctBytes.begin(), vctBytes.end());
    if (nChannels == 3) {
        for (std::size_t i = 0; i + 2 < vctBytes.size(); i += 3)
            std::swap(vctBytes[i], vctBytes[i + 2]);
    }
}

SPage MakePage(const CImage& image, const PixelRuns& runs)
{
    SPage page;
    if (runs.empty())
        return page;
    const int nChannels = image.GetChannel();
    const int nBytes = image.GetBitDepth() / CHAR_BIT;
    const bool bAlpha = nChannels % 2 == 0;
    int nLeft = image.GetWidth();
    int nRight = 0;
    for (const SPixelRun& run : runs) {
        nLeft = std::min(nLeft, run.nBegin);
        nRight = std::max(nRight, run.nEnd);
    }
    page.nWidth = nRight - nLeft;
    page.nHeight = runs.back().nRow - runs.front().nRow + 1;
    page.nChannels = nChannels < 3 ? 1 : 3;
    const std::size_t nPixel = static_cast<std::size_t>(page.nChannels);
    const std::size_t nStride = static_cast<std::size_t>(page.nWidth) * nPixel;
    page.vctBytes.assign(nStride * static_cast<std::size_t>(page.nHeight), kWhite);
    for (const SPixelRun& run : runs) {
        unsigned char* pTo = page.vctBytes.data() +
                             static_cast<std::size_t>(run.nRow - runs.front().nRow) * nStride +
                             static_cast<std::size_t>(run.nBegin - nLeft) * nPixel;
        for (int x = run.nBegin; x < run.nEnd; ++x) {
            const unsigned char* pFrom = image.GetPixel(x, run.nRow);
            const int nAlpha = bAlpha ? SampleOf(pFrom, nChannels - 1, nBytes) : kWhite;
            for (int c = 0; c < page.nChannels; ++c)
                *pTo++ = OnWhite(SampleOf(pFrom, c, nBytes), nAlpha);
        }
    }
    return page;
}

} // namespace Vantor::Algorithms
