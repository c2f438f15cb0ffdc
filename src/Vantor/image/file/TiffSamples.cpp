// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffSamples_p.h>

#include <Vantor/image/file/Samples_p.h>

#include <QFloat16>

#include <cstring>
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

/// Calls scale(index of the sample in the row) for every wanted sample.
template <class TScale>
void ForWanted(const SSampleFormat& format, unsigned char* pTo, int nTo, int nWidth, TScale scale)
{
    const auto nStored = static_cast<std::size_t>(format.nStored);
    for (std::size_t x = 0; x < static_cast<std::size_t>(nWidth); ++x, pTo += nTo) {
        for (std::size_t s = 0; s < static_cast<std::size_t>(format.nWanted); ++s)
            pTo[s] = scale(x * nStored + s);
    }
}

template <class T>
void UnpackFloats(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
                  int nWidth)
{
    ForWanted(format, pTo, nTo, nWidth,
              [pFrom](std::size_t i) { return ScaleFloatTo8(static_cast<double>(ValueAt<T>(pFrom, i))); });
}

template <class T>
void UnpackIntegers(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
                    int nWidth)
{
    const T nFlip = format.bSigned ? static_cast<T>(T(1) << (8 * sizeof(T) - 1)) : T(0);
    ForWanted(format, pTo, nTo, nWidth, [pFrom, nFlip](std::size_t i) {
        const T value = static_cast<T>(ValueAt<T>(pFrom, i) ^ nFlip);
        if constexpr (sizeof(T) == 1)
            return static_cast<unsigned char>(value);
        else if constexpr (sizeof(T) == 2)
            return Scale16To8(value);
        else
            return Scale32To8(value);
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

/// Samples that are packed without regard to bytes, highest bit first.
void UnpackBits(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
                int nWidth)
{
    const auto nBits = static_cast<std::size_t>(format.nBits);
    const std::uint32_t nMax = (1U << nBits) - 1;
    const std::uint32_t nFlip = format.bSigned ? 1U << (nBits - 1) : 0;
    const bool bIndex = format.bIndex;
    ForWanted(format, pTo, nTo, nWidth, [=](std::size_t i) {
        const std::size_t nFirst = i * nBits;
        const std::size_t nLast = nFirst + nBits - 1;
        std::uint32_t value = 0;
        for (std::size_t n = nFirst / 8; n <= nLast / 8; ++n)
            value = value << 8 | pFrom[n];
        value = (value >> (7 - nLast % 8)) & nMax;
        return static_cast<unsigned char>(bIndex ? value : ((value ^ nFlip) * 255 + nMax / 2) / nMax);
    });
}
} // namespace

bool CanUnpack(const SSampleFormat& format)
{
    if (format.bFloat)
        return format.nBits == 16 || format.nBits == 32 || format.nBits == 64;
    if (format.bIndex)
        return format.nBits >= 1 && format.nBits <= 8;
    return (format.nBits >= 1 && format.nBits <= 16) || format.nBits == 32;
}

void UnpackRow(const SSampleFormat& format, const unsigned char* pFrom, unsigned char* pTo, int nTo,
               int nWidth)
{
    if (format.bFloat && format.nBits == 16)
        UnpackFloats<qfloat16>(format, pFrom, pTo, nTo, nWidth);
    else if (format.bFloat && format.nBits == 32)
        UnpackFloats<float>(format, pFrom, pTo, nTo, nWidth);
    else if (format.bFloat)
        UnpackFloats<double>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 1 && !format.bSigned && !format.bIndex && format.nStored == 1 && nTo == 1)
        UnpackBlackAndWhite(pFrom, pTo, nWidth);
    else if (format.nBits == 8 && !format.bSigned && format.nStored == 1 && nTo == 1)
        std::memcpy(pTo, pFrom, static_cast<std::size_t>(nWidth));
    else if (format.nBits == 8)
        UnpackIntegers<std::uint8_t>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 16)
        UnpackIntegers<std::uint16_t>(format, pFrom, pTo, nTo, nWidth);
    else if (format.nBits == 32)
        UnpackIntegers<std::uint32_t>(format, pFrom, pTo, nTo, nWidth);
    else
        UnpackBits(format, pFrom, pTo, nTo, nWidth);
}

} // namespace Vantor::Algorithms
