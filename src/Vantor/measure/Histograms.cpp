// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/Histograms_p.h>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Equal values of 8 bits that follow each other are counted in different tables, or each would wait for the
/// one before. Those of 16 bits are seldom equal, and their tables are large.
constexpr std::size_t kCopies = 4;

template <class T> std::uint32_t Rounded(const SGreyWeights& weights, const T* color)
{
    return (weights.nRed * color[0] + weights.nGreen * color[1] + weights.nBlue * color[2] +
            weights.Sum() / 2) /
           weights.Sum();
}
} // namespace

CHistograms::CHistograms(int channels, int bits)
    : m_nChannels(channels), m_nBins(std::size_t(1) << bits), m_nCopies(bits == 8 ? kCopies : 1),
      m_vctCounts(static_cast<std::size_t>(channels >= 3 ? channels + 2 : channels) * m_nCopies * m_nBins)
{
}

std::uint32_t* CHistograms::Table(int plane, std::size_t copy)
{
    return m_vctCounts.data() + (static_cast<std::size_t>(plane) * m_nCopies + copy % m_nCopies) * m_nBins;
}

template <class T> void CHistograms::AddChannel(const T* samples, int count, int channel)
{
    std::uint32_t* arrTables[kCopies];
    for (std::size_t i = 0; i < kCopies; ++i)
        arrTables[i] = Table(channel, i);
    const int nStep = m_nChannels;
    samples += channel;
    int i = 0;
    for (; i + 4 <= count; i += 4, samples += 4 * nStep) {
        ++arrTables[0][samples[0]];
        ++arrTables[1][samples[nStep]];
        ++arrTables[2][samples[2 * nStep]];
        ++arrTables[3][samples[3 * nStep]];
    }
    for (; i < count; ++i, samples += nStep)
        ++arrTables[0][*samples];
}

/// Five counts for each pixel: by the next one, the same count is ready again.
template <class T> void CHistograms::AddColors(const T* samples, int count)
{
    std::uint32_t* pRed = Table(0, 0);
    std::uint32_t* pGreen = Table(1, 0);
    std::uint32_t* pBlue = Table(2, 0);
    std::uint32_t* pGrey = Table(m_nChannels, 0);
    std::uint32_t* pWeighted = Table(m_nChannels + 1, 0);
    const int nStep = m_nChannels;
    for (int i = 0; i < count; ++i) {
        const T* pColor = samples + std::ptrdiff_t(i) * nStep;
        ++pRed[pColor[0]];
        ++pGreen[pColor[1]];
        ++pBlue[pColor[2]];
        ++pGrey[Rounded(kGreys[0], pColor)];
        ++pWeighted[Rounded(kGreys[1], pColor)];
    }
}

template <class T> void CHistograms::AddRun(const T* samples, int count)
{
    const bool bColors = m_nChannels >= 3;
    if (bColors)
        AddColors(samples, count);
    for (int c = bColors ? 3 : 0; c < m_nChannels; ++c)
        AddChannel(samples, count, c);
}

void CHistograms::Add(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end)
{
    for (const SPixelRun* pRun = begin; pRun != end; ++pRun) {
        const std::ptrdiff_t nSample = std::ptrdiff_t(pRun->nBegin) * m_nChannels;
        const unsigned char* pRow = source.pRows[pRun->nRow];
        const int nCount = pRun->nEnd - pRun->nBegin;
        if (source.nBits == 8)
            AddRun(pRow + nSample, nCount);
        else
            AddRun(reinterpret_cast<const std::uint16_t*>(pRow) + nSample, nCount);
    }
}

void CHistograms::Take(int plane, std::uint32_t low, std::uint32_t high, std::uint64_t count,
                       SChannelStatistics& statistics)
{
    const std::uint32_t nPerBin = static_cast<std::uint32_t>(m_nBins / SChannelStatistics::kBins);
    std::uint32_t* pTable = Table(plane, 0);
    statistics.histogram.assign(SChannelStatistics::kBins, 0);
    std::uint64_t nUpTo = 0;
    std::uint32_t nMost = 0;
    bool bMedian = false;
    for (std::uint32_t nValue = low; nValue <= high; ++nValue) {
        std::uint32_t nCount = 0;
        for (std::size_t i = 0; i < m_nCopies; ++i) {
            std::uint32_t& nPart = pTable[i * m_nBins + nValue];
            nCount += nPart;
            nPart = 0;
        }
        statistics.histogram[nValue / nPerBin] += nCount;
        nUpTo += nCount;
        if (nCount > nMost) {
            nMost = nCount;
            statistics.mode = nValue;
        }
        if (!bMedian && 2 * nUpTo > count) {
            bMedian = true;
            statistics.median = nValue;
        }
    }
}

} // namespace Vantor::Algorithms
