// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/Resample_p.h>

#include <Vantor/CProgress.h>
#include <Vantor/filter/Bands_p.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Vantor::Algorithms
{

using Geometry::SPixelRun;

namespace
{
/// Source coordinates advance along a row of the canvas as whole numbers with so many binary places; after a
/// million pixels they are off by at most a millionth of a pixel.
constexpr int kPlaces = 40;
constexpr std::int64_t kOne = std::int64_t(1) << kPlaces;
/// The canvas is drawn in strips of so many columns, top to bottom: the source pixels that the rows of a
/// strip read stay in the nearer caches at any angle.
constexpr int kStrip = 1024;
/// Prefetch the source of a row so many rows before it is drawn.
constexpr double kRowsAhead = 6.0;

std::int64_t ToFixed(double value)
{
    return static_cast<std::int64_t>(std::floor(value * static_cast<double>(kOne)));
}

/// Cuts a run to the pixels that meet a condition, which changes at most once along it.
template <class Condition> void Narrow(SPixelRun& run, const Condition& holds)
{
    if (run.nBegin >= run.nEnd)
        return;
    const bool bFirst = holds(run.nBegin);
    const bool bLast = holds(run.nEnd - 1);
    if (bFirst == bLast) {
        run.nEnd = bFirst ? run.nEnd : run.nBegin;
        return;
    }
    int nBefore = run.nBegin; // as the first
    int nAfter = run.nEnd - 1;
    while (nAfter - nBefore > 1) {
        const int nMiddle = nBefore + (nAfter - nBefore) / 2;
        (holds(nMiddle) == bFirst ? nBefore : nAfter) = nMiddle;
    }
    (bFirst ? run.nEnd : run.nBegin) = nAfter;
}

/// The pixels of a row of the canvas whose centres lie in the source.
SPixelRun Covered(const SInverse& inverse, const CImage& from, int row, int canvasWidth)
{
    SPixelRun run{row, 0, canvasWidth};
    const double y = row + 0.5;
    Narrow(run, [&](int x) { return inverse.X(x + 0.5, y) >= 0.0; });
    Narrow(run, [&](int x) { return inverse.X(x + 0.5, y) <= from.GetWidth(); });
    Narrow(run, [&](int x) { return inverse.Y(x + 0.5, y) >= 0.0; });
    Narrow(run, [&](int x) { return inverse.Y(x + 0.5, y) <= from.GetHeight(); });
    return run;
}

/// The two neighbours of a coordinate along an axis and the weight of the second; equal at the border.
struct SNeighbours {
    std::ptrdiff_t nFirst;
    std::ptrdiff_t nSecond;
    float weight;

    SNeighbours(double coordinate, int length)
    {
        const double centre = std::clamp(coordinate - 0.5, 0.0, length - 1.0);
        nFirst = static_cast<std::ptrdiff_t>(centre);
        nSecond = std::min<std::ptrdiff_t>(nFirst + 1, length - 1);
        weight = static_cast<float>(centre - static_cast<double>(nFirst));
    }
};

/// Four samples around a point, two above and two below it, and the weights of those at the right and below.
/// Single precision is exact enough for 16 bits.
template <class T> struct SBlend {
    using Weight = float;
    static Weight WeightOf(std::int64_t coordinate)
    {
        constexpr int kBits = 24;
        const auto nFraction = static_cast<std::int32_t>((coordinate & (kOne - 1)) >> (kPlaces - kBits));
        return static_cast<float>(nFraction) * (1.0f / (1 << kBits));
    }
    static T Value(T a, T b, T c, T d, Weight right, Weight below)
    {
        const float upper = a + right * static_cast<float>(b - a);
        const float lower = c + right * static_cast<float>(d - c);
        return static_cast<T>(static_cast<std::int32_t>(upper + below * (lower - upper) + 0.5f));
    }
};

/// 8-bit samples in 16-bit whole numbers, which compilers vectorise: a value has 6 binary places, a weight
/// 15. Each product is rounded down by less than one such place, which the last sum compensates. Nothing
/// overflows; without the casts the vectors would be twice as wide.
template <> struct SBlend<std::uint8_t> {
    using Weight = std::int16_t;
    static Weight WeightOf(std::int64_t coordinate)
    {
        return static_cast<Weight>((coordinate & (kOne - 1)) >> (kPlaces - 15));
    }
    static std::uint8_t Value(std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d, Weight right,
                              Weight below)
    {
        const auto upper = static_cast<std::int16_t>((a << 6) + Weigh(b - a, 7, right));
        const auto lower = static_cast<std::int16_t>((c << 6) + Weigh(d - c, 7, right));
        const auto value = static_cast<std::uint16_t>(upper + Weigh(lower - upper, 1, below) + 33);
        return static_cast<std::uint8_t>(value >> 6);
    }
    /// The upper half of (difference << shift) * weight.
    static std::int16_t Weigh(int difference, int shift, Weight weight)
    {
        const auto shifted = static_cast<std::int16_t>(
            static_cast<std::uint16_t>(static_cast<std::uint16_t>(difference) << shift));
        return static_cast<std::int16_t>((int(shifted) * int(weight)) >> 16);
    }
};

/// Draws the runs of a band. T is the type of a sample.
template <class T, int Channels> class CResampler
{
public:
    CResampler(const CImage& from, CImage& to, const SInverse& inverse, unsigned char fill, const SBand& band)
        : m_from(from), m_to(to), m_inverse(inverse), m_nStepX(ToFixed(inverse.c)),
          m_nStepY(ToFixed(-inverse.s)), m_nFill(fill), m_band(band)
    {
    }
    void Run();

private:
    static constexpr std::size_t kPixel = Channels * sizeof(T);
    /// The bytes to copy for a pixel: four are one move, but then the last column is not an inner one.
    static constexpr std::size_t kCopied = kPixel == 3 ? 4 : kPixel;
    static constexpr int kLastColumns = kCopied > kPixel ? 2 : 1;
    static constexpr std::size_t kSamples = std::size_t(kStrip) * Channels;

    /// The neighbours of consecutive pixels, sample by sample, in rows that vectors can process.
    struct SStretch {
        T arrCorners[4][kSamples + kCopied];
        typename SBlend<T>::Weight arrRight[kSamples + kCopied], arrBelow[kSamples + kCopied];
    };

    void FillBeside(const SPixelRun& run);
    void Draw(const SPixelRun& run);
    /// Draws pixels whose four neighbours all lie in the source; (x, y) belongs to the first.
    void DrawInner(const SPixelRun& run, std::int64_t x, std::int64_t y);
    void DrawAtRim(const SPixelRun& run);
    unsigned char* Target(const SPixelRun& run) const
    {
        return m_to.GetRows()[run.nRow] + static_cast<std::size_t>(run.nBegin) * kPixel;
    }

    const CImage& m_from;
    CImage& m_to;
    SInverse m_inverse;
    std::int64_t m_nStepX, m_nStepY;
    unsigned char m_nFill;
    SBand m_band;
    SStretch m_stretch;
};

template <class T, int Channels> void CResampler<T, Channels>::Run()
{
    for (const SPixelRun* pRun = m_band.pBegin; pRun != m_band.pEnd; ++pRun)
        FillBeside(*pRun);
    const SColumns columns = ColumnsOf(m_band);
    for (int nBegin = columns.nBegin; nBegin < columns.nEnd; nBegin += kStrip) {
        CProgress::Tell(double(nBegin - columns.nBegin) / (columns.nEnd - columns.nBegin));
        for (const SPixelRun* pRun = m_band.pBegin; pRun != m_band.pEnd && !CProgress::IsThreadCancelled();
             ++pRun)
            Draw({pRun->nRow, std::max(pRun->nBegin, nBegin), std::min(pRun->nEnd, nBegin + kStrip)});
    }
}

template <class T, int Channels> void CResampler<T, Channels>::FillBeside(const SPixelRun& run)
{
    unsigned char* pRow = m_to.GetRows()[run.nRow];
    std::memset(pRow, m_nFill, static_cast<std::size_t>(run.nBegin) * kPixel);
    std::memset(pRow + static_cast<std::size_t>(run.nEnd) * kPixel, m_nFill,
                static_cast<std::size_t>(m_to.GetWidth() - run.nEnd) * kPixel);
}

template <class T, int Channels> void CResampler<T, Channels>::Draw(const SPixelRun& run)
{
    if (run.nBegin >= run.nEnd)
        return;
    const std::int64_t nX = ToFixed(m_inverse.X(run.nBegin + 0.5, run.nRow + 0.5) - 0.5);
    const std::int64_t nY = ToFixed(m_inverse.Y(run.nBegin + 0.5, run.nRow + 0.5) - 0.5);
    const std::int64_t nEndX = (m_from.GetWidth() - kLastColumns) * kOne;
    const std::int64_t nEndY = (m_from.GetHeight() - 1) * kOne;
    SPixelRun inner = run;
    Narrow(inner, [&](int x) { return nX + (x - run.nBegin) * m_nStepX >= 0; });
    Narrow(inner, [&](int x) { return nX + (x - run.nBegin) * m_nStepX < nEndX; });
    Narrow(inner, [&](int x) { return nY + (x - run.nBegin) * m_nStepY >= 0; });
    Narrow(inner, [&](int x) { return nY + (x - run.nBegin) * m_nStepY < nEndY; });
    const int nSkipped = inner.nBegin - run.nBegin;
    DrawAtRim({run.nRow, run.nBegin, inner.nBegin});
    DrawInner(inner, nX + nSkipped * m_nStepX, nY + nSkipped * m_nStepY);
    DrawAtRim({run.nRow, inner.nEnd, run.nEnd});
}

template <class T, int Channels>
void CResampler<T, Channels>::DrawInner(const SPixelRun& run, std::int64_t x, std::int64_t y)
{
    const unsigned char* pData = m_from.GetData();
    const std::int64_t nStride = m_from.GetStride();
    const std::int64_t nAhead = std::lround(kRowsAhead * m_inverse.c) * nStride +
                                std::lround(kRowsAhead * m_inverse.s) * std::int64_t(kPixel);
    const std::int64_t nStepX = m_nStepX;
    const std::int64_t nStepY = m_nStepY;
    const std::size_t nSamples = static_cast<std::size_t>(run.nEnd - run.nBegin) * Channels;
    for (std::size_t i = 0; i < nSamples; i += Channels, x += nStepX, y += nStepY) {
        const unsigned char* p = pData + (y >> kPlaces) * nStride + (x >> kPlaces) * std::int64_t(kPixel);
        __builtin_prefetch(p + nAhead);
        std::memcpy(m_stretch.arrCorners[0] + i, p, kCopied);
        std::memcpy(m_stretch.arrCorners[1] + i, p + kPixel, kCopied);
        std::memcpy(m_stretch.arrCorners[2] + i, p + nStride, kCopied);
        std::memcpy(m_stretch.arrCorners[3] + i, p + nStride + kPixel, kCopied);
        for (std::size_t c = 0; c < kCopied / sizeof(T); ++c) {
            m_stretch.arrRight[i + c] = SBlend<T>::WeightOf(x);
            m_stretch.arrBelow[i + c] = SBlend<T>::WeightOf(y);
        }
    }
    T arrValues[kSamples];
    for (std::size_t i = 0; i < nSamples; ++i)
        arrValues[i] = SBlend<T>::Value(m_stretch.arrCorners[0][i], m_stretch.arrCorners[1][i],
                                        m_stretch.arrCorners[2][i], m_stretch.arrCorners[3][i],
                                        m_stretch.arrRight[i], m_stretch.arrBelow[i]);
    std::memcpy(Target(run), arrValues, nSamples * sizeof(T));
}

template <class T, int Channels> void CResampler<T, Channels>::DrawAtRim(const SPixelRun& run)
{
    unsigned char* pTo = Target(run);
    for (int x = run.nBegin; x < run.nEnd; ++x, pTo += kPixel) {
        const SNeighbours columns(m_inverse.X(x + 0.5, run.nRow + 0.5), m_from.GetWidth());
        const SNeighbours rows(m_inverse.Y(x + 0.5, run.nRow + 0.5), m_from.GetHeight());
        T arrCorners[4][Channels];
        int nCorner = 0;
        for (const std::ptrdiff_t nRow : {rows.nFirst, rows.nSecond}) {
            for (const std::ptrdiff_t nColumn : {columns.nFirst, columns.nSecond})
                std::memcpy(arrCorners[nCorner++], m_from.GetRows()[nRow] + nColumn * std::ptrdiff_t(kPixel),
                            kPixel);
        }
        T arrValue[Channels];
        for (int c = 0; c < Channels; ++c)
            arrValue[c] =
                static_cast<T>(SBlend<float>::Value(arrCorners[0][c], arrCorners[1][c], arrCorners[2][c],
                                                    arrCorners[3][c], columns.weight, rows.weight));
        std::memcpy(pTo, arrValue, kPixel);
    }
}

template <class T, int Channels>
void ResampleAs(const CImage& from, CImage& to, const SInverse& inverse, unsigned char fill)
{
    PixelRuns runs;
    for (int y = 0; y < to.GetHeight(); ++y)
        runs.push_back(Covered(inverse, from, y, to.GetWidth()));
    std::vector<CResampler<T, Channels>> vctWorkers;
    for (const SBand& band : MakeBands(runs))
        vctWorkers.emplace_back(from, to, inverse, fill, band);
    RunWorkers(vctWorkers);
}

template <class T>
void ResampleSamples(const CImage& from, CImage& to, const SInverse& inverse, unsigned char fill)
{
    switch (from.GetChannel()) {
    case 1:
        return ResampleAs<T, 1>(from, to, inverse, fill);
    case 2:
        return ResampleAs<T, 2>(from, to, inverse, fill);
    case 3:
        return ResampleAs<T, 3>(from, to, inverse, fill);
    default:
        return ResampleAs<T, 4>(from, to, inverse, fill);
    }
}
} // namespace

void Resample(const CImage& from, CImage& to, const SInverse& inverse, unsigned char fill)
{
    if (from.GetBitDepth() == CHAR_BIT)
        ResampleSamples<std::uint8_t>(from, to, inverse, fill);
    else
        ResampleSamples<std::uint16_t>(from, to, inverse, fill);
}

} // namespace Vantor::Algorithms
