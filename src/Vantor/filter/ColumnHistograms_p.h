// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vantor::Algorithms
{

constexpr std::size_t kBins = 16; ///< coarse bins, and fine bins in each coarse one

template <class Count> struct SBins {
    typedef Count Vector __attribute__((vector_size(kBins * sizeof(Count))));
};
/// Bins of a histogram (all coarse ones, or the fine ones of one coarse bin) that are added and subtracted
/// together.
template <class Count> using Bins = typename SBins<Count>::Vector;

/// The bin in which the sample of that rank (from 0) lies; the rank becomes the one within the bin.
template <class Count, class Vector> inline std::size_t FindBin(const Vector& bins, Count& rank)
{
    std::size_t i = 0;
    while (rank >= bins[i])
        rank = static_cast<Count>(rank - bins[i++]);
    return i;
}

/// A window around a position on an axis, cut off at the axis's ends; its first and last cells count more
/// than once.
struct SWindow {
    std::int64_t nFirst;
    std::int64_t nLast;
    std::int64_t nFirstWeight;
    std::int64_t nLastWeight; ///< added to the first one's when both are the same cell

    SWindow(std::int64_t middle, std::int64_t radius, std::int64_t length)
        : nFirst(std::max<std::int64_t>(middle - radius, 0)), nLast(std::min(middle + radius, length - 1)),
          nFirstWeight(1 + std::max<std::int64_t>(radius - middle, 0)),
          nLastWeight(1 + std::max<std::int64_t>(middle + radius - (length - 1), 0))
    {
    }
    std::int64_t WeightOf(std::int64_t cell) const
    {
        return 1 + (cell == nFirst ? nFirstWeight - 1 : 0) + (cell == nLast ? nLastWeight - 1 : 0);
    }
};

/// The histograms of some columns of one channel; each counts the samples of a window of rows. Count is an
/// unsigned type that holds the number of samples of a whole window.
template <class Count> class CColumnHistograms
{
public:
    explicit CColumnHistograms(std::size_t columns) : m_vctCoarse(columns), m_vctFine(columns * kBins) {}

    /// Empties the histograms; index 0 stands for that column from now on.
    void Restart(int firstColumn, int columns)
    {
        m_nFirst = firstColumn;
        m_nColumns = static_cast<std::size_t>(columns);
        std::fill_n(m_vctCoarse.begin(), m_nColumns, Bins<Count>{});
        std::fill_n(m_vctFine.begin(), m_nColumns * kBins, Bins<Count>{});
    }
    /// Adds a row's samples with a weight, which may be negative modulo the range of Count.
    /// @param row    the sample of column 0
    /// @param pitch  bytes from one column to the next
    void AddRow(const unsigned char* row, std::size_t pitch, Count weight)
    {
        const unsigned char* pSample = row + static_cast<std::size_t>(m_nFirst) * pitch;
        for (std::size_t i = 0; i < m_nColumns; ++i, pSample += pitch) {
            const std::size_t nCoarse = *pSample / kBins;
            Bins<Count>& coarse = m_vctCoarse[i];
            Bins<Count>& fine = m_vctFine[nCoarse * m_nColumns + i];
            coarse[nCoarse] = static_cast<Count>(coarse[nCoarse] + weight);
            fine[*pSample % kBins] = static_cast<Count>(fine[*pSample % kBins] + weight);
        }
    }
    const Bins<Count>& Coarse(std::int64_t column) const { return m_vctCoarse[Index(column)]; }
    /// The fine bins of one coarse bin; those of neighbouring columns lie side by side.
    const Bins<Count>& Fine(std::size_t bin, std::int64_t column) const
    {
        return m_vctFine[bin * m_nColumns + Index(column)];
    }

private:
    std::size_t Index(std::int64_t column) const { return static_cast<std::size_t>(column - m_nFirst); }

    int m_nFirst = 0;
    std::size_t m_nColumns = 0;
    std::vector<Bins<Count>> m_vctCoarse;
    std::vector<Bins<Count>> m_vctFine;
};

/// The sum of the bins of the columns in a window that moves along a row.
template <class Count> class CMovingSum
{
public:
    /// Forgets the window's position.
    void Restart() { m_nX = -1; }
    /// Moves the window to the right, or stays.
    /// @param binsOf  the bins of a column
    template <class BinsOf>
    const Bins<Count>& MoveTo(std::int64_t x, std::int64_t radius, std::int64_t width, const BinsOf& binsOf)
    {
        // A long move costs more than a new start.
        if (m_nX < 0 || x - m_nX > radius) {
            m_sum = Bins<Count>{};
            const SWindow window(x, radius, width);
            for (std::int64_t i = window.nFirst; i <= window.nLast; ++i)
                m_sum += binsOf(i) * static_cast<Count>(window.WeightOf(i));
        } else {
            for (std::int64_t i = m_nX + 1; i <= x; ++i)
                m_sum += binsOf(std::min(i + radius, width - 1)) -
                         binsOf(std::max<std::int64_t>(i - 1 - radius, 0));
        }
        m_nX = x;
        return m_sum;
    }

private:
    std::int64_t m_nX = -1;
    Bins<Count> m_sum{};
};

/// The histogram of a window that moves along a row, over column histograms. It updates fine bins only when
/// they are needed.
template <class Count> class CWindowHistogram
{
public:
    CWindowHistogram(const CColumnHistograms<Count>& columns, int radius, int width)
        : m_columns(columns), m_nRadius(radius), m_nWidth(width)
    {
    }
    /// Begins another row: the column histograms have changed.
    void Restart()
    {
        m_coarse.Restart();
        for (CMovingSum<Count>& fine : m_arrFine)
            fine.Restart();
    }
    /// Moves the window to the right and finds the sample of that rank, from 0.
    unsigned char FindAt(std::int64_t x, Count rank)
    {
        const auto coarseOf = [this](std::int64_t column) -> const Bins<Count>& {
            return m_columns.Coarse(column);
        };
        const std::size_t nBin = FindBin(m_coarse.MoveTo(x, m_nRadius, m_nWidth, coarseOf), rank);
        const auto fineOf = [this, nBin](std::int64_t column) -> const Bins<Count>& {
            return m_columns.Fine(nBin, column);
        };
        const std::size_t nFine = FindBin(m_arrFine[nBin].MoveTo(x, m_nRadius, m_nWidth, fineOf), rank);
        return static_cast<unsigned char>(nBin * kBins + nFine);
    }

private:
    const CColumnHistograms<Count>& m_columns;
    const std::int64_t m_nRadius;
    const std::int64_t m_nWidth;
    CMovingSum<Count> m_coarse;
    std::array<CMovingSum<Count>, kBins> m_arrFine;
};

} // namespace Vantor::Algorithms
