// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Smooth_p.h>

#include <Vantor/filter/Original_p.h>
#include <Vantor/filter/Threshold_p.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
constexpr double kSigmas = 3.0;
/// The least number of rows of a strip: each one computes what its windows read above and below it again.
constexpr int kStripRows = 128;
constexpr unsigned char kBlack = 0;
constexpr unsigned char kWhite = 255;

/// A strip of the region's rows with all pixels that its windows read.
struct SStrip {
    SBand band;
    int nTop;          ///< first row of the block
    int nLeft;         ///< first column of the block
    SPixelBlock block; ///< original pixels

    /// The index of a pixel in the block.
    std::size_t PlaceOf(int row, int column) const
    {
        return static_cast<std::size_t>(row - nTop) * static_cast<std::size_t>(block.nWidth) +
               static_cast<std::size_t>(column - nLeft);
    }
};

/// The block of original pixels around a band.
SStrip StripOf(const SFilterJob& job, const SOriginal& original, const SBand& band, int radius)
{
    const SColumns columns = ColumnsOf(band);
    const int nTop = std::max(band.FirstRow() - radius, 0);
    const int nBottom = std::min(band.LastRow() + radius, job.nHeight - 1);
    const int nLeft = std::max(columns.nBegin - radius, 0);
    const int nRight = std::min(columns.nEnd + radius, job.nWidth);
    const unsigned char* pData =
        original.Row(nTop) + static_cast<std::size_t>(nLeft) * static_cast<std::size_t>(job.nChannels);
    return {band, nTop, nLeft, {pData, original.nStride, nRight - nLeft, nBottom - nTop + 1, job.nChannels}};
}

/// Calls work(strip) for the region, a strip of consecutive runs at a time, until one returns false.
template <class Work>
bool WorkOnStrips(const SFilterJob& job, const SOriginal& original, int radius, const Work& work)
{
    const int nRows = std::max(kStripRows, 2 * radius);
    const Geometry::SPixelRun* const pEnd = job.runs.data() + job.runs.size();
    for (const Geometry::SPixelRun* pBegin = job.runs.data(); pBegin != pEnd;) {
        const Geometry::SPixelRun* pNext = std::find_if(
            pBegin, pEnd, [&](const Geometry::SPixelRun& run) { return run.nRow - pBegin->nRow >= nRows; });
        if (!work(StripOf(job, original, {pBegin, pNext}, radius)))
            return false;
        if (!CProgress::Tell(double(pNext - job.runs.data()) / static_cast<double>(job.runs.size())))
            return true;
        pBegin = pNext;
    }
    return true;
}

/// The same, all or nothing: when memory runs out midway, it restores the pixels.
template <class Work> bool ForEachStrip(const SFilterJob& job, int radius, const Work& work)
{
    if (job.runs.empty())
        return true;
    SOriginal original;
    if (!original.CopyFrom(job, radius))
        return false;
    try {
        if (WorkOnStrips(job, original, radius, work))
            return true;
    } catch (const std::bad_alloc&) { // counts as false
    }
    original.Restore(job);
    return false;
}

std::size_t PixelsOf(const SPixelBlock& block)
{
    return static_cast<std::size_t>(block.nWidth) * static_cast<std::size_t>(block.nHeight);
}
} // namespace

int GaussianRadius(double sigma)
{
    return static_cast<int>(std::ceil(kSigmas * sigma));
}

bool SharpenRuns(const SFilterJob& job, const SSmoothKernels& kernels, double sigma, double amount)
{
    const int nRadius = GaussianRadius(sigma);
    const std::size_t nChannels = static_cast<std::size_t>(job.nChannels);
    const std::size_t nColors = nChannels % 2 == 0 ? nChannels - 1 : nChannels;
    const float fAmount = static_cast<float>(amount);
    std::vector<float> vctSmooth;
    return ForEachStrip(job, nRadius, [&](const SStrip& strip) {
        vctSmooth.resize(PixelsOf(strip.block) * nChannels);
        if (!kernels.gaussian(strip.block, sigma, nRadius, vctSmooth.data()))
            return false;
        ForEachPixel(job, strip.band, [&](unsigned char* pPixel, int row, int column) {
            const float* pSmooth = vctSmooth.data() + strip.PlaceOf(row, column) * nChannels;
            for (std::size_t c = 0; c < nColors; ++c) {
                const float value = static_cast<float>(pPixel[c]);
                const float result = value + fAmount * (value - pSmooth[c]);
                pPixel[c] = static_cast<unsigned char>(std::clamp(result, 0.0F, 255.0F) + 0.5F);
            }
        });
        return true;
    });
}

bool ThresholdRunsByMean(const SFilterJob& job, const SSmoothKernels& kernels, int radius, double offset)
{
    const double side = 2.0 * radius + 1.0;
    std::vector<unsigned char> vctGrey;
    std::vector<int> vctSums;
    return ForEachStrip(job, radius, [&](const SStrip& strip) {
        const SPixelBlock& block = strip.block;
        const std::size_t nWidth = static_cast<std::size_t>(block.nWidth);
        vctGrey.resize(PixelsOf(block));
        vctSums.resize(PixelsOf(block));
        for (std::size_t i = 0; i < vctGrey.size(); ++i) {
            const unsigned char* pPixel = block.pData + i / nWidth * block.nStride +
                                          i % nWidth * static_cast<std::size_t>(block.nChannels);
            vctGrey[i] = static_cast<unsigned char>(GreyOf(pPixel, block.nChannels));
        }
        const SPixelBlock grey{vctGrey.data(), nWidth, block.nWidth, block.nHeight, 1};
        if (!kernels.windowSum(grey, radius, vctSums.data()))
            return false;
        ForEachPixel(job, strip.band, [&](unsigned char* pPixel, int row, int column) {
            const std::size_t nPlace = strip.PlaceOf(row, column);
            const bool bAbove = (vctGrey[nPlace] + offset) * side * side > vctSums[nPlace];
            SetColors(pPixel, job.nChannels, bAbove ? kWhite : kBlack);
        });
        return true;
    });
}

} // namespace Vantor::Algorithms
