// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Compiled once for each instruction set of the machine's family: foreach_target.h includes this file again
// and again, and HWY_DYNAMIC_DISPATCH picks at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Vantor/filter/RowKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <Vantor/filter/RowKernels_p.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace Vantor::Algorithms
{
namespace HWY_NAMESPACE
{
/// The three Sobel images are one pass with three outputs.
enum class ESobel { X, Y, XY };

#if HWY_TARGET == HWY_SCALAR // a machine that is too old for any of the others: one byte after another

/// Stores value(i) for every byte but alpha, which is copied.
template <class Value>
void StorePixels(const Value& value, const std::uint8_t* row, std::uint8_t* out, std::size_t bytes,
                 std::size_t channels)
{
    const bool bAlpha = channels % 2 == 0;
    for (std::size_t i = 0; i < bytes; ++i)
        out[i] = bAlpha && i % channels == channels - 1 ? row[i] : value(i);
}

void Median(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    const auto median = [&rows, nStep](std::size_t i) {
        std::uint8_t arrWindow[9];
        std::size_t n = 0;
        for (const std::uint8_t* pRow : {rows.pAbove, rows.pRow, rows.pBelow}) {
            for (const std::uint8_t* p : {pRow + i - nStep, pRow + i, pRow + i + nStep})
                arrWindow[n++] = *p;
        }
        std::nth_element(arrWindow, arrWindow + 4, arrWindow + 9);
        return arrWindow[4];
    };
    StorePixels(median, rows.pRow, out, bytes, nStep);
}

template <ESobel Output>
void Sobel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    const auto sobel = [&rows, nStep](std::size_t i) {
        const std::uint8_t* a = rows.pAbove + i;
        const std::uint8_t* b = rows.pRow + i;
        const std::uint8_t* c = rows.pBelow + i;
        const std::uint8_t* l[] = {a - nStep, b - nStep, c - nStep};
        const int nX = a[nStep] + 2 * b[nStep] + c[nStep] - (*l[0] + 2 * *l[1] + *l[2]);
        const int nY = *l[2] + 2 * c[0] + c[nStep] - (*l[0] + 2 * a[0] + a[nStep]);
        const double length = Output == ESobel::X   ? std::abs(nX)
                              : Output == ESobel::Y ? std::abs(nY)
                                                    : std::round(std::sqrt(nX * nX + nY * nY));
        return static_cast<std::uint8_t>(std::min(length, 255.0));
    };
    StorePixels(sobel, rows.pRow, out, bytes, nStep);
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

/// A stretch of columns, each sorted: small enough for the nearest cache.
constexpr std::size_t kMedianBlock = 2048;
constexpr std::size_t kMedianColumns = kMedianBlock + 2 * 4 + HWY_MAX_BYTES;

struct SSortedColumns {
    HWY_ALIGN std::uint8_t arrLow[kMedianColumns];
    HWY_ALIGN std::uint8_t arrMiddle[kMedianColumns];
    HWY_ALIGN std::uint8_t arrHigh[kMedianColumns];
};

/// Sorts the columns of the block that begins at an offset, with a neighbour on each side.
HWY_INLINE void SortColumns(const SThreeRows& rows, std::ptrdiff_t from, std::size_t bytes,
                            SSortedColumns& sorted)
{
    for (std::size_t i = 0; i < bytes; i += hn::Lanes(kD8)) {
        const std::ptrdiff_t at = from + static_cast<std::ptrdiff_t>(i);
        const V8 a = hn::LoadU(kD8, rows.pAbove + at);
        const V8 b = hn::LoadU(kD8, rows.pRow + at);
        const V8 c = hn::LoadU(kD8, rows.pBelow + at);
        const V8 small = hn::Min(a, b);
        const V8 large = hn::Max(a, b);
        const V8 rest = hn::Max(small, c);
        hn::StoreU(hn::Min(small, c), kD8, sorted.arrLow + i);
        hn::StoreU(hn::Min(rest, large), kD8, sorted.arrMiddle + i);
        hn::StoreU(hn::Max(rest, large), kD8, sorted.arrHigh + i);
    }
}

HWY_INLINE V8 MedianOf(V8 a, V8 b, V8 c)
{
    return hn::Max(hn::Min(a, b), hn::Min(hn::Max(a, b), c));
}

/// The median of nine is the median of the largest low, the median middle and the smallest high value of
/// three sorted columns (A. W. Paeth, Median finding on a 3x3 grid, Graphics Gems, 1990).
struct SMedian {
    const SSortedColumns& sorted;
    std::size_t nStep;

    HWY_INLINE V8 operator()(std::size_t i) const
    {
        const std::size_t j = i + nStep;
        const std::size_t k = j + nStep;
        const V8 low =
            hn::Max(hn::Max(Load(sorted.arrLow + i), Load(sorted.arrLow + j)), Load(sorted.arrLow + k));
        const V8 high =
            hn::Min(hn::Min(Load(sorted.arrHigh + i), Load(sorted.arrHigh + j)), Load(sorted.arrHigh + k));
        const V8 middle =
            MedianOf(Load(sorted.arrMiddle + i), Load(sorted.arrMiddle + j), Load(sorted.arrMiddle + k));
        return MedianOf(low, high, middle);
    }
    static HWY_INLINE V8 Load(const std::uint8_t* p) { return hn::LoadU(kD8, p); }
};

void Median(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    const std::size_t nBlock = kMedianBlock / nStep * nStep;
    SSortedColumns sorted;
    for (std::size_t i = 0; i < bytes; i += nBlock) {
        const std::size_t nBytes = std::min(nBlock, bytes - i);
        SortColumns(rows, static_cast<std::ptrdiff_t>(i) - channels, nBytes + 2 * nStep, sorted);
        StorePixels(SMedian{sorted, nStep}, rows.pRow + i, out + i, nBytes, nStep);
    }
}

/// The bytes of a vector as 16-bit numbers: those with even and those with odd places. Unlike unpacking,
/// that is the same in every instruction set.
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
    const SThreeRows& rows;
    std::size_t nStep;

    HWY_INLINE SWide StrengthX(std::size_t i) const
    {
        const SWide left = Weigh(rows.pAbove + i - nStep, rows.pRow + i - nStep, rows.pBelow + i - nStep);
        const SWide right = Weigh(rows.pAbove + i + nStep, rows.pRow + i + nStep, rows.pBelow + i + nStep);
        return {Strength(left.even, right.even), Strength(left.odd, right.odd)};
    }
    HWY_INLINE SWide StrengthY(std::size_t i) const
    {
        const SWide above = Weigh(rows.pAbove + i - nStep, rows.pAbove + i, rows.pAbove + i + nStep);
        const SWide below = Weigh(rows.pBelow + i - nStep, rows.pBelow + i, rows.pBelow + i + nStep);
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

template <ESobel Output>
void Sobel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    const std::size_t nStep = static_cast<std::size_t>(channels);
    StorePixels(SSobel<Output>{rows, nStep}, rows.pRow, out, bytes, nStep);
}

#endif

void SobelX(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    Sobel<ESobel::X>(rows, out, bytes, channels);
}

void SobelY(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    Sobel<ESobel::Y>(rows, out, bytes, channels);
}

void SobelXY(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
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
HWY_EXPORT(Median);
HWY_EXPORT(SobelX);
HWY_EXPORT(SobelY);
HWY_EXPORT(SobelXY);
} // namespace

void MedianKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    HWY_DYNAMIC_DISPATCH(Median)(rows, out, bytes, channels);
}

void SobelXKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    HWY_DYNAMIC_DISPATCH(SobelX)(rows, out, bytes, channels);
}

void SobelYKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    HWY_DYNAMIC_DISPATCH(SobelY)(rows, out, bytes, channels);
}

void SobelXYKernel(const SThreeRows& rows, unsigned char* out, std::size_t bytes, int channels)
{
    HWY_DYNAMIC_DISPATCH(SobelXY)(rows, out, bytes, channels);
}

} // namespace Vantor::Algorithms
#endif
