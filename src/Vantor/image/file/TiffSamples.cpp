// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffSamples_p.h>

#include <QFloat16>

#include <cstring>
#include <limits>
#include <type_traits>

namespace Vantor::Algorithms
{

namespace
{
template <class T> T ValueAt(const unsigned char* pFrom, std::size_t nIndex)
{
    T value;
    std::memcpy(&value, pFrom + nIndex * sizeof(T), sizeof(T));
    return value;
}

/// An integer of 24 bits in the machine's byte order.
struct SInteger24 {
    unsigned char bytes[3];
    operator std::uint32_t() const
    {
        const bool bLittle = Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
        return std::uint32_t(bytes[bLittle ? 2 : 0]) << 16 | std::uint32_t(bytes[1]) << 8 |
               bytes[bLittle ? 0 : 2];
    }
};

/// round(v max / (2^nBits - 1)), max being that of the result.
template <int nBits, class TTo, class T> constexpr TTo ScaleInteger(T v)
{
    constexpr std::uint64_t kFrom = ~std::uint64_t(0) >> (64 - nBits);
    constexpr std::uint64_t kTo = std::numeric_limits<TTo>::max();
    if constexpr (kFrom % kTo == 0) {
        constexpr T kStep = static_cast<T>(kFrom / kTo); // odd: there are no halves
        return static_cast<TTo>(v / kStep + (v % kStep > kStep / 2 ? 1 : 0));
    } else {
        static_assert(nBits <= 32, "the product would overflow");
        return static_cast<TTo>((v * kTo + kFrom / 2) / kFrom);
    }
}

template <class TTo> constexpr TTo ScaleFloat(double v)
{
    constexpr TTo kMax = std::numeric_limits<TTo>::max();
    if (!(v > 0.0)) // or NaN
        return 0;
    return v >= 1.0 ? kMax : static_cast<TTo>(v * kMax + 0.5);
}

/// Calls scale(index of the sample in the row) for every wanted sample.
template <class TTo, class TScale>
void ForWanted(const SSampleFormat& format, TTo* pTo, int nTo, int nWidth, TScale scale)
{
    const auto nStored = static_cast<std::size_t>(format.nStored);
    for (std::size_t x = 0; x < static_cast<std::size_t>(nWidth); ++x, pTo += nTo) {
        for (std::size_t s = 0; s < static_cast<std::size_t>(format.nWanted); ++s)
            pTo[s] = scale(x * nStored + s);
    }
}

template <class TFrom, class TTo>
void UnpackFloats(const SSampleFormat& format, const unsigned char* pFrom, TTo* pTo, int nTo, int nWidth)
{
    ForWanted(format, pTo, nTo, nWidth, [pFrom](std::size_t i) {
        return ScaleFloat<TTo>(static_cast<double>(ValueAt<TFrom>(pFrom, i)));
    });
}

template <class TFrom, class TTo>
void UnpackIntegers(const SSampleFormat& format, const unsigned char* pFrom, TTo* pTo, int nTo, int nWidth)
{
    using Value = std::conditional_t<sizeof(TFrom) == 8, std::uint64_t, std::uint32_t>;
    constexpr int kBits = static_cast<int>(8 * sizeof(TFrom));
    if (format.bRaw) {
        ForWanted(format, pTo, nTo, nWidth, [pFrom](std::size_t i) {
            return static_cast<TTo>(static_cast<Value>(ValueAt<TFrom>(pFrom, i)));
        });
        return;
    }
    const Value nFlip = format.bSigned ? Value(1) << (kBits - 1) : Value(0);
    ForWanted(format, pTo, nTo, nWidth, [pFrom, nFlip](std::size_t i) {
        return ScaleInteger<kBits, TTo>(static_cast<Value>(ValueAt<TFrom>(pFrom, i)) ^ nFlip);
    });
}

/// Eight grey pixels for every byte of one bit per pixel.
struct SBitTable {
    unsigned char pixels[256][8] = {};
    constexpr SBitTable()
    {
        for (int nByte = 0; nByte < 256; ++nByte) {
            for (int i = 0; i < 8; ++i)
                pixels[nByte][i] = (nByte >> (7 - i) & 1) != 0 ? 255 : 0;
        }
    }
};

void UnpackBlackAndWhite(const unsigned char* pFrom, unsigned char* pTo, int nWidth)
{
    static constexpr SBitTable kTable;
    for (; nWidth >= 8; nWidth -= 8, pTo += 8)
        std::memcpy(pTo, kTable.pixels[*pFrom++], 8);
    if (nWidth > 0)
        std::memcpy(pTo, kTable.pixels[*pFrom], static_cast<std::size_t>(nWidth));
}

/// Samples that are packed across bytes, highest bit first.
template <class TTo>
void UnpackBits(const SSampleFormat& format, const unsigned char* pFrom, TTo* pTo, int nTo, int nWidth)
{
    constexpr std::uint32_t kTo = std::numeric_limits<TTo>::max();
    const auto nBits = static_cast<std::size_t>(format.nBits);
    const std::uint32_t nMax = (1U << nBits) - 1;
    const std::uint32_t nFlip = format.bSigned ? 1U << (nBits - 1) : 0;
    const bool bRaw = format.bRaw;
    ForWanted(format, pTo, nTo, nWidth, [=](std::size_t i) {
        const std::size_t nFirst = i * nBits;
        const std::size_t nLast = nFirst + nBits - 1;
        std::uint32_t value = 0;
        for (std::size_t n = nFirst / 8; n <= nLast / 8; ++n)
            value = value << 8 | pFrom[n];
        value = (value >> (7 - nLast % 8)) & nMax;
        return static_cast<TTo>(bRaw ? value : ((value ^ nFlip) * kTo + nMax / 2) / nMax);
    });
}

template <class TTo>
void UnpackAnyRow(const SSampleFormat& format, const unsigned char* pFrom, TTo* pTo, int nTo, int nWidth)
{
    if (format.bFloat && format.nBits == 16)
        UnpackFloats<qfloat16>(format, pFrom, pTo, nTo, nWidth);
    else if (format.bFloat && format.nBits == 32)
        UnpackFloats<float>(format, pFrom, pTo, nTo, nWidth);
    else if (format.bFloat)
        UnpackFloats<double>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 8)
        UnpackIntegers<std::uint8_t>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 16)
        UnpackIntegers<std::uint16_t>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 24)
        UnpackIntegers<SInteger24>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 32)
        UnpackIntegers<std::uint32_t>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 64)
        UnpackIntegers<std::uint64_t>(format, pFrom, pTo, nTo, nWidth);
    else
        UnpackBits(format, pFrom, pTo, nTo, nWidth);
}
} // namespace

bool CanUnpack(const SSampleFormat& format)
{
    const bool bPacked = format.nBits >= 1 && format.nBits <= 16;
    if (format.bRaw)
        return bPacked && !format.bFloat;
    if (format.bFloat)
        return format.nBits == 16 || format.nBits == 32 || format.nBits == 64;
    return bPacked || format.nBits == 24 || format.nBits == 32 || format.nBits == 64;
}

void UnpackRow(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
               int nWidth)
{
    const bool bPlain = !format.bFloat && !format.bSigned && format.nStored == 1 && nTo == 1;
    if (format.bWide)
        UnpackAnyRow(format, pFrom, reinterpret_cast<std::uint16_t*>(pTo), nTo, nWidth);
    else if (bPlain && !format.bRaw && format.nBits == 1)
        UnpackBlackAndWhite(pFrom, pTo, nWidth);
    else if (bPlain && format.nBits == 8)
        std::memcpy(pTo, pFrom, static_cast<std::size_t>(nWidth));
    else
        UnpackAnyRow(format, pFrom, pTo, nTo, nWidth);
}

} // namespace Vantor::Algorithms
