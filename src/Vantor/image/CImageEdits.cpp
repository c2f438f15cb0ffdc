// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CImage's edits of the whole image other than rotation: crop, flips, grey.
#include <Vantor/image/CImage.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/filter/Threshold_p.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
constexpr const char* kNoImage = "There is no image to change.";
constexpr const char* kNoMemory = "There is not enough memory for the changed image.";

std::size_t BytesPerPixel(const CImage& image)
{
    return static_cast<std::size_t>(image.GetChannel()) * static_cast<std::size_t>(image.GetBitDepth() / 8);
}

/// The part of begin .. begin + length - 1 that lies in 0 .. size - 1; a length of 0 or less means none.
struct SPart {
    SPart(int begin, int length, int size)
        : nBegin(std::max(begin, 0)),
          nLength(std::min<std::int64_t>(std::int64_t{begin} + length, size) - nBegin)
    {
    }
    int nBegin;
    std::int64_t nLength;
};

std::uint16_t SampleAt(const unsigned char* pPixel, int nSample)
{
    std::uint16_t nValue;
    std::memcpy(&nValue, pPixel + 2 * nSample, sizeof nValue);
    return nValue;
}

/// GreyOf for samples of 16 bits, with the same weights.
std::uint16_t WideGreyOf(const unsigned char* pPixel)
{
    const std::uint64_t nSum = 299u * std::uint64_t{SampleAt(pPixel, 0)} +
                               587u * std::uint64_t{SampleAt(pPixel, 1)} +
                               114u * std::uint64_t{SampleAt(pPixel, 2)};
    return static_cast<std::uint16_t>((nSum + 500) / 1000);
}

void PutGrey(const unsigned char* pFrom, unsigned char* pTo, int nChannels, bool bWide)
{
    if (bWide) {
        const std::uint16_t nGrey = WideGreyOf(pFrom);
        std::memcpy(pTo, &nGrey, sizeof nGrey);
    } else {
        *pTo = static_cast<unsigned char>(GreyOf(pFrom, nChannels));
    }
}
} // namespace

int CImage::Crop(int x, int y, int width, int height)
try {
    if (!GetData())
        return m_pFailure->Fail(kNoImage);
    const SPart columns(x, width, GetWidth());
    const SPart rows(y, height, GetHeight());
    if (columns.nLength < 1 || rows.nLength < 1)
        return m_pFailure->Fail("The part to keep has no pixels in the image.");
    CImage result;
    if (result.CreateLike(*this, static_cast<int>(columns.nLength), static_cast<int>(rows.nLength),
                          GetChannel()) != 0)
        return m_pFailure->Fail(kNoMemory);
    const std::size_t nBytes = static_cast<std::size_t>(columns.nLength) * BytesPerPixel(*this);
    for (int nRow = 0; nRow < result.GetHeight(); ++nRow) {
        std::memset(result.GetRows()[nRow], 0, static_cast<std::size_t>(result.GetStride()));
        std::memcpy(result.GetRows()[nRow], GetPixel(columns.nBegin, rows.nBegin + nRow), nBytes);
    }
    m_pPixels.swap(result.m_pPixels);
    return m_pFailure->Succeed();
} catch (const std::bad_alloc&) {
    return m_pFailure->Fail(kNoMemory);
}

int CImage::FlipHorizontally()
{
    if (!GetData())
        return m_pFailure->Fail(kNoImage);
    const std::size_t nBytes = BytesPerPixel(*this);
    for (int y = 0; y < GetHeight(); ++y) {
        unsigned char* pLeft = GetPixel(0, y);
        unsigned char* pRight = GetPixel(GetWidth() - 1, y);
        for (; pLeft < pRight; pLeft += nBytes, pRight -= nBytes)
            std::swap_ranges(pLeft, pLeft + nBytes, pRight);
    }
    return m_pFailure->Succeed();
}

int CImage::FlipVertically()
{
    if (!GetData())
        return m_pFailure->Fail(kNoImage);
    const std::size_t nBytes = static_cast<std::size_t>(GetWidth()) * BytesPerPixel(*this);
    for (int nTop = 0, nBottom = GetHeight() - 1; nTop < nBottom; ++nTop, --nBottom)
        std::swap_ranges(GetRows()[nTop], GetRows()[nTop] + nBytes, GetRows()[nBottom]);
    return m_pFailure->Succeed();
}

int CImage::ToGrey()
try {
    if (!GetData())
        return m_pFailure->Fail(kNoImage);
    const int nChannels = GetChannel();
    if (nChannels < 3)
        return m_pFailure->Succeed();
    CImage result;
    if (result.CreateLike(*this, GetWidth(), GetHeight(), nChannels - 2) != 0)
        return m_pFailure->Fail(kNoMemory);
    const bool bWide = GetBitDepth() == 16;
    const std::size_t nSample = bWide ? 2 : 1;
    for (int y = 0; y < GetHeight(); ++y) {
        std::memset(result.GetRows()[y], 0, static_cast<std::size_t>(result.GetStride()));
        for (int x = 0; x < GetWidth(); ++x) {
            const unsigned char* pFrom = GetPixel(x, y);
            unsigned char* pTo = result.GetPixel(x, y);
            PutGrey(pFrom, pTo, nChannels, bWide);
            if (nChannels == 4)
                std::memcpy(pTo + nSample, pFrom + 3 * nSample, nSample);
        }
    }
    m_pPixels.swap(result.m_pPixels);
    return m_pFailure->Succeed();
} catch (const std::bad_alloc&) {
    return m_pFailure->Fail(kNoMemory);
}

} // namespace Vantor::Algorithms
