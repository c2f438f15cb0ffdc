// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// This file is compiled once for each instruction set: foreach_target.h includes it repeatedly, and
// HWY_DYNAMIC_DISPATCH picks one at run time. Vectors without a size of their own can be neither members nor
// elements.
#undef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Vantor/filter/engine/RowKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/filter/RowKernels_p.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>

HWY_BEFORE_NAMESPACE();
namespace Vantor::Algorithms
{
namespace HWY_NAMESPACE
{
/// The three Sobel images are one pass with three outputs.
enum class ESobel { X, Y, XY };

#if HWY_TARGET == HWY_SCALAR // no vector instructions: one byte at a time

/// Stores value(i) for every byte but alpha, which is copied.
template <class Value>
void StorePixels(const Value& value, const std::uint8_t* row, std::uint8_t* out, std::size_t bytes,
                 std::size_t channels)
{
    const bool bAlpha = channels % 2 == 0;
    for (std::size_t i = 0; i < bytes; ++i)
        out[i] = bAlpha && i % channels == channels - 1 ? row[i] : value(i);
}

template <int Radius> void Median(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    constexpr std::size_t kSide = 2 * Radius + 1;
    const std::size_t nStep = static_cast<std::size_t>(channels);
    const auto median = [rows, nStep](std::size_t i) {
        std::uint8_t arrWindow[kSide * kSide];
        for (std::size_t n = 0; n < kSide * kSide; ++n)
            arrWindow[n] = rows[n / kSide][i + n % kSide * nStep - Radius * nStep];
        std::nth_element(arrWindow, arrWindow + kSide * kSide / 2, std::end(arrWindow));
        return arrWindow[kSide * kSide / 2];
    };
    StorePixels(median, rows[Radius], out, bytes, nStep);
}

template <ESobel Output> void Sobel(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    const auto sobel = [rows, nStep](std::size_t i) {
        const std::uint8_t* a = rows[0] + i;
        const std::uint8_t* b = rows[1] + i;
        const std::uint8_t* c = rows[2] + i;
        const std::uint8_t* l[] = {a - nStep, b - nStep, c - nStep};
        const int nX = a[nStep] + 2 * b[nStep] + c[nStep] - (*l[0] + 2 * *l[1] + *l[2]);
        const int nY = *l[2] + 2 * c[0] + c[nStep] - (*l[0] + 2 * a[0] + a[nStep]);
        const double length = Output == ESobel::X   ? std::abs(nX)
                              : Output == ESobel::Y ? std::abs(nY)
                                                    : std::round(std::sqrt(nX * nX + nY * nY));
        return static_cast<std::uint8_t>(std::min(length, 255.0));
    };
    StorePixels(sobel, rows[1], out, bytes, nStep);
}

#else

namespace hn = hwy::HWY_NAMESPACE;

using D8 = hn::ScalableTag<std::uint8_t>;
using D16 = hn::Repartition<std::uint16_t, D8>;
using DI16 = hn::Repartition<std::int16_t, D8>;
using D32 = hn::Repartition<std::int32_t, D8>;
using DF = hn::Repartition<float, D8>;
using V8 = hn::Vec<D8>;
using V16 = hn::Vec<D16>;
using VI16 = hn::Vec<DI16>;

static_assert(HWY_MAX_BYTES <= kKernelSlack, "a vector must fit the slack behind the rows");

constexpr D8 kD8;
constexpr D16 kD16;
constexpr DI16 kDI16;

/// Stores value(i) for i = 0, N, 2N ... as exactly that many bytes. The last vector overlaps the one before.
template <class Value>
HWY_INLINE void StoreAll(const Value& value, std::uint8_t* HWY_RESTRICT out, std::size_t bytes)
{
    const std::size_t nLanes = hn::Lanes(kD8);
    std::size_t i = 0;
    for (; i + nLanes <= bytes; i += nLanes)
        hn::StoreU(value(i), kD8, out + i);
    if (i == bytes)
        return;
    if (bytes >= nLanes) {
        hn::StoreU(value(bytes - nLanes), kD8, out + (bytes - nLanes));
        return;
    }
    HWY_ALIGN std::uint8_t arrLast[HWY_MAX_BYTES];
    hn::Store(value(0), kD8, arrLast);
    std::memcpy(out, arrLast, bytes);
}

/// Set bytes where alpha lies in pixels of 2 or 4 channels.
HWY_INLINE V8 AlphaBytes(std::size_t channels)
{
    static constexpr std::uint8_t kPattern[2][16] = {
        {0, 255, 0, 255, 0, 255, 0, 255, 0, 255, 0, 255, 0, 255, 0, 255},
        {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255}};
    HWY_ALIGN std::uint8_t arrPattern[16];
    std::memcpy(arrPattern, kPattern[channels == 4], sizeof arrPattern);
    return hn::LoadDup128(kD8, arrPattern);
}

/// Any value with alpha taken from the unfiltered row.
template <class Value> struct SKeepAlpha {
    Value value;
    const std::uint8_t* pRow;
    V8 alpha;

    HWY_INLINE V8 operator()(std::size_t i) const
    {
        return hn::IfVecThenElse(alpha, hn::LoadU(kD8, pRow + i), value(i));
    }
};

template <class Value>
HWY_INLINE void StorePixels(const Value& value, const std::uint8_t* row, std::uint8_t* HWY_RESTRICT out,
                            std::size_t bytes, std::size_t channels)
{
    if (channels % 2 == 0)
        StoreAll(SKeepAlpha<Value>{value, row, AlphaBytes(channels)}, out, bytes);
    else
        StoreAll(value, out, bytes);
}

/// A stretch of columns, each sorted from the smallest value on: small enough for the nearest cache.
constexpr std::size_t kMedianBlock = 2048;

template <int Radius> struct SSortedColumns {
    static constexpr std::size_t kColumns = kMedianBlock + 2 * Radius * 4 + HWY_MAX_BYTES;
    HWY_ALIGN std::uint8_t arrRanks[2 * Radius + 1][kColumns];
};

HWY_INLINE void Sort(V8& a, V8& b)
{
    const V8 small = hn::Min(a, b);
    b = hn::Max(a, b);
    a = small;
}

HWY_INLINE void Sort(V8 (&v)[3])
{
    Sort(v[0], v[1]);
    Sort(v[1], v[2]);
    Sort(v[0], v[1]);
}

/// The shortest network for five values has nine comparators.
HWY_INLINE void Sort(V8 (&v)[5])
{
    Sort(v[0], v[1]);
    Sort(v[3], v[4]);
    Sort(v[2], v[4]);
    Sort(v[2], v[3]);
    Sort(v[1], v[4]);
    Sort(v[0], v[3]);
    Sort(v[0], v[2]);
    Sort(v[1], v[3]);
    Sort(v[1], v[2]);
}

/// Sorts the columns of the block that begins at an offset, with the neighbours on each side.
template <int Radius>
HWY_INLINE void SortColumns(RowWindow rows, std::ptrdiff_t from, std::size_t bytes,
                            SSortedColumns<Radius>& sorted)
{
    constexpr int kSide = 2 * Radius + 1;
    for (std::size_t i = 0; i < bytes; i += hn::Lanes(kD8)) {
        V8 column[kSide];
        for (int k = 0; k < kSide; ++k)
            column[k] = hn::LoadU(kD8, rows[k] + from + static_cast<std::ptrdiff_t>(i));
        Sort(column);
        for (int k = 0; k < kSide; ++k)
            hn::StoreU(column[k], kD8, sorted.arrRanks[k] + i);
    }
}

/// The values of one rank in five neighbouring columns, sorted.
HWY_INLINE void LoadRank(const SSortedColumns<2>& sorted, int rank, std::size_t i, std::size_t step,
                         V8 (&v)[5])
{
    for (std::size_t k = 0; k < 5; ++k)
        v[k] = hn::LoadU(kD8, sorted.arrRanks[rank] + i + k * step);
    Sort(v);
}

/// Brings the smallest of the values to the front and the largest to the end.
template <int Count> HWY_INLINE void SortEnds(V8* v)
{
    for (int i = 0; i < Count / 2; ++i)
        Sort(v[i], v[Count - 1 - i]);
    for (int i = 1; i < (Count + 1) / 2; ++i)
        Sort(v[0], v[i]);
    for (int i = Count / 2; i < Count - 1; ++i)
        Sort(v[i], v[Count - 1]);
}

/// The median of Count values at v and Count - 3 values at more. The smallest and the largest of more than
/// half of all values cannot be the median, so each round drops both and takes one of the others in.
template <int Count> HWY_INLINE V8 ForgetToMedian(V8* v, const V8* more)
{
    SortEnds<Count>(v);
    if constexpr (Count == 3) {
        return v[1];
    } else {
        v[Count - 1] = *more;
        return ForgetToMedian<Count - 1>(v + 1, more + 1);
    }
}

template <int Radius> struct SMedian;

/// The median of nine is the median of the largest low, the median middle and the smallest high value of
/// three sorted columns (A. W. Paeth, Median finding on a 3x3 grid, Graphics Gems, 1990).
template <> struct SMedian<1> {
    const SSortedColumns<1>& sorted;
    std::size_t nStep;

    HWY_INLINE V8 operator()(std::size_t i) const
    {
        const V8 low = hn::Max(hn::Max(Load(0, i), Load(0, i + nStep)), Load(0, i + 2 * nStep));
        const V8 high = hn::Min(hn::Min(Load(2, i), Load(2, i + nStep)), Load(2, i + 2 * nStep));
        const V8 middle = MedianOf(Load(1, i), Load(1, i + nStep), Load(1, i + 2 * nStep));
        return MedianOf(low, high, middle);
    }
    HWY_INLINE V8 Load(int rank, std::size_t i) const { return hn::LoadU(kD8, sorted.arrRanks[rank] + i); }
    static HWY_INLINE V8 MedianOf(V8 a, V8 b, V8 c)
    {
        return hn::Max(hn::Min(a, b), hn::Min(hn::Max(a, b), c));
    }
};

/// Once the columns are sorted, and then the values of each rank, the one at rank r and place c has at least
/// (r + 1)(c + 1) - 1 others that are not larger and (5 - r)(5 - c) - 1 that are not smaller. Those with more
/// than twelve of either cannot be the median: six small ones, six large ones, and thirteen remain.
template <> struct SMedian<2> {
    const SSortedColumns<2>& sorted;
    std::size_t nStep;

    // Not inlined: the network is long.
    HWY_NOINLINE V8 operator()(std::size_t i) const
    {
        V8 a[5], b[5], c[5], d[5], e[5];
        LoadRank(sorted, 0, i, nStep, a);
        LoadRank(sorted, 1, i, nStep, b);
        LoadRank(sorted, 2, i, nStep, c);
        LoadRank(sorted, 3, i, nStep, d);
        LoadRank(sorted, 4, i, nStep, e);
        V8 first[8] = {a[3], b[2], c[1], d[0], e[1], d[2], c[3], b[4]};
        const V8 more[5] = {a[4], b[3], c[2], d[1], e[0]};
        return ForgetToMedian<8>(first, more);
    }
};

template <int Radius> void Median(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    const std::size_t nBlock = kMedianBlock / nStep * nStep;
    SSortedColumns<Radius> sorted;
    for (std::size_t i = 0; i < bytes; i += nBlock) {
        const std::size_t nBytes = std::min(nBlock, bytes - i);
        SortColumns(rows, static_cast<std::ptrdiff_t>(i) - Radius * channels, nBytes + 2 * Radius * nStep,
                    sorted);
        StorePixels(SMedian<Radius>{sorted, nStep}, rows[Radius] + i, out + i, nBytes, nStep);
    }
}

/// The bytes of a vector as 16-bit numbers, even and odd places apart. Unlike unpacking, this is the same in
/// every instruction set.
struct SWide {
    VI16 even;
    VI16 odd;
};

HWY_INLINE SWide LoadWide(const std::uint8_t* p)
{
    const V16 v = hn::BitCast(kD16, hn::LoadU(kD8, p));
    return {hn::BitCast(kDI16, hn::And(v, hn::Set(kD16, 0xFF))), hn::BitCast(kDI16, hn::ShiftRight<8>(v))};
}

/// a + 2 b + c
HWY_INLINE VI16 Weigh(VI16 a, VI16 b, VI16 c)
{
    return hn::Add(hn::Add(a, c), hn::Add(b, b));
}

HWY_INLINE SWide Weigh(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c)
{
    const SWide wideA = LoadWide(a);
    const SWide wideB = LoadWide(b);
    const SWide wideC = LoadWide(c);
    return {Weigh(wideA.even, wideB.even, wideC.even), Weigh(wideA.odd, wideB.odd, wideC.odd)};
}

/// min(255, |a - b|)
HWY_INLINE VI16 Strength(VI16 a, VI16 b)
{
    return hn::Min(hn::Abs(hn::Sub(a, b)), hn::Set(kDI16, 255));
}

HWY_INLINE V8 Merge(VI16 even, VI16 odd)
{
    return hn::BitCast(kD8, hn::Or(even, hn::ShiftLeft<8>(odd)));
}

/// round(sqrt(n)) of non-negative numbers. Exact: no root of a whole number ends in .5, and single precision
/// tells the roots of these from it.
HWY_INLINE hn::Vec<D32> RoundedRoot(hn::Vec<D32> n)
{
    return hn::NearestInt(hn::Sqrt(hn::ConvertTo(DF(), n)));
}

/// min(255, round(sqrt(x^2 + y^2))) of numbers from 0 to 255. The sum saturates at 65535, whose root is
/// above 255 as well.
HWY_INLINE VI16 Length(VI16 x, VI16 y)
{
    constexpr D32 d32;
    const V16 sum = hn::SaturatedAdd(hn::BitCast(kD16, hn::Mul(x, x)), hn::BitCast(kD16, hn::Mul(y, y)));
    const hn::Repartition<std::uint32_t, D8> du32;
    const auto pair = hn::BitCast(du32, sum);
    const auto even = RoundedRoot(hn::BitCast(d32, hn::And(pair, hn::Set(du32, 0xFFFF))));
    const auto odd = RoundedRoot(hn::BitCast(d32, hn::ShiftRight<16>(pair)));
    return hn::Min(hn::BitCast(kDI16, hn::Or(even, hn::ShiftLeft<16>(odd))), hn::Set(kDI16, 255));
}

template <ESobel Output> struct SSobel {
    RowWindow rows;
    std::size_t nStep;

    HWY_INLINE SWide StrengthX(std::size_t i) const
    {
        const SWide left = Weigh(rows[0] + i - nStep, rows[1] + i - nStep, rows[2] + i - nStep);
        const SWide right = Weigh(rows[0] + i + nStep, rows[1] + i + nStep, rows[2] + i + nStep);
        return {Strength(left.even, right.even), Strength(left.odd, right.odd)};
    }
    HWY_INLINE SWide StrengthY(std::size_t i) const
    {
        const SWide above = Weigh(rows[0] + i - nStep, rows[0] + i, rows[0] + i + nStep);
        const SWide below = Weigh(rows[2] + i - nStep, rows[2] + i, rows[2] + i + nStep);
        return {Strength(above.even, below.even), Strength(above.odd, below.odd)};
    }
    HWY_INLINE V8 operator()(std::size_t i) const
    {
        if constexpr (Output == ESobel::X) {
            const SWide x = StrengthX(i);
            return Merge(x.even, x.odd);
        } else if constexpr (Output == ESobel::Y) {
            const SWide y = StrengthY(i);
            return Merge(y.even, y.odd);
        } else {
            const SWide x = StrengthX(i);
            const SWide y = StrengthY(i);
            return Merge(Length(x.even, y.even), Length(x.odd, y.odd));
        }
    }
};

template <ESobel Output> void Sobel(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    StorePixels(SSobel<Output>{rows, nStep}, rows[1], out, bytes, nStep);
}

#endif

void Median3x3(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    Median<1>(rows, out, bytes, channels);
}

void Median5x5(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    Median<2>(rows, out, bytes, channels);
}

void SobelX(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    Sobel<ESobel::X>(rows, out, bytes, channels);
}

void SobelY(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    Sobel<ESobel::Y>(rows, out, bytes, channels);
}

void SobelXY(RowWindow rows, unsigned char* out, std::size_t bytes, int channels)
{
    Sobel<ESobel::XY>(rows, out, bytes, channels);
}

} // namespace HWY_NAMESPACE
} // namespace Vantor::Algorithms
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Vantor::Algorithms
{

namespace
{
HWY_EXPORT(Median3x3);
HWY_EXPORT(Median5x5);
HWY_EXPORT(SobelX);
HWY_EXPORT(SobelY);
HWY_EXPORT(SobelXY);

// A wrapper, because each call chooses the instruction set.
#define VANTOR_ROW_KERNEL(name)                                                                              \
    [](RowWindow rows, unsigned char* out, std::size_t bytes, int channels) {                                \
        HWY_DYNAMIC_DISPATCH(name)(rows, out, bytes, channels);                                              \
    }

const SRowKernels kKernels{{VANTOR_ROW_KERNEL(Median3x3), 1},
                           {VANTOR_ROW_KERNEL(Median5x5), 2},
                           {VANTOR_ROW_KERNEL(SobelX), 1},
                           {VANTOR_ROW_KERNEL(SobelY), 1},
                           {VANTOR_ROW_KERNEL(SobelXY), 1}};
} // namespace

VANTOR_ENGINE_FUNCTION const SRowKernels* VantorGetRowKernels()
{
    return &kKernels;
}

} // namespace Vantor::Algorithms
#endif
