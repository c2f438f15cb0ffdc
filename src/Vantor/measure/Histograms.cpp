// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/measure/Histograms_p.h>

#include <algorithm>
#include <cstring>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Equal values of 8 bits that follow each other are counted in different tables, or each would wait for the
/// one before. Those of 16 bits are seldom equal, and their tables are large.
constexpr std::size_t kCopies = 4;
} // namespace

CHistograms::CHistograms(const SPixelKernels& kernels, int channels, int bits)
    : m_kernels(kernels), m_nChannels(channels), m_nBits(bits), m_nBins(std::size_t(1) << bits),
      m_nCopies(bits == 8 ? kCopies : 1),
      m_vctCounts(static_cast<std::size_t>(PlanesOf(channels)) * m_nCopies * m_nBins),
      m_vctSamples(static_cast<std::size_t>(channels * bits / 8) * kSplitPixels),
      m_vctPlanes(static_cast<std::size_t>(PlanesOf(channels) * bits / 8) * kSplitPixels)
{
}

std::uint32_t* CHistograms::Table(int plane, std::size_t copy)
{
    return m_vctCounts.data() + (static_cast<std::size_t>(plane) * m_nCopies + copy % m_nCopies) * m_nBins;
}

template <class T> void CHistograms::CountPlane(const T* values, int plane)
{
    std::uint32_t* arrTables[kCopies];
    for (std::size_t i = 0; i < kCopies; ++i)
        arrTables[i] = Table(plane, i);
    std::size_t i = 0;
    for (; i + 4 <= m_nPixels; i += 4) {
        ++arrTables[0][values[i]];
        ++arrTables[1][values[i + 1]];
        ++arrTables[2][values[i + 2]];
        ++arrTables[3][values[i + 3]];
    }
    for (; i < m_nPixels; ++i)
        ++arrTables[0][values[i]];
}

void CHistograms::CountSamples()
{
    m_kernels.split(m_vctSamples.data(), m_nPixels, m_nChannels, m_nBits, m_vctPlanes.data());
    for (int nPlane = 0; nPlane < PlanesOf(m_nChannels); ++nPlane) {
        const std::size_t nBytes = static_cast<std::size_t>(m_nBits / 8);
        const unsigned char* pPlane =
            m_vctPlanes.data() + static_cast<std::size_t>(nPlane) * kSplitPixels * nBytes;
        if (m_nBits == 8)
            CountPlane(pPlane, nPlane);
        else
            CountPlane(reinterpret_cast<const std::uint16_t*>(pPlane), nPlane);
    }
    m_nPixels = 0;
}

void CHistograms::Add(const SPixelSource& source, const SPixelRun* begin, const SPixelRun* end)
{
    const std::size_t nBytes = static_cast<std::size_t>(m_nChannels * m_nBits / 8);
    for (const SPixelRun* pRun = begin; pRun != end; ++pRun) {
        const unsigned char* pPixel =
            source.pRows[pRun->nRow] + static_cast<std::size_t>(pRun->nBegin) * nBytes;
        for (std::size_t nLeft = static_cast<std::size_t>(pRun->nEnd - pRun->nBegin); nLeft > 0;) {
            const std::size_t nPart = std::min(nLeft, kSplitPixels - m_nPixels);
            std::memcpy(m_vctSamples.data() + m_nPixels * nBytes, pPixel, nPart * nBytes);
            pPixel += nPart * nBytes;
            nLeft -= nPart;
            m_nPixels += nPart;
            if (m_nPixels == kSplitPixels)
                CountSamples();
        }
    }
    CountSamples();
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
