// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/BoxReduction_p.h>

#include <Vantor/CProgress.h>

#include <QImage>
#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace
{
using Float4 = float __attribute__((vector_size(16)));

/// The pixels of the source below one pixel of the picture, in one direction: the first and the last one
/// count as far as they are covered, those between them wholly.
struct SSpan {
    int nFirst;
    int nLast;
    float fFirst;
    float fLast; ///< 0 if there is only one
};

std::vector<SSpan> SpansOf(int nBegin, int nSize, double dblStep, int nSource)
{
    std::vector<SSpan> spans;
    for (int i = nBegin; i < nBegin + nSize; ++i) {
        const double dblBegin = i * dblStep;
        const double dblEnd = std::min((i + 1) * dblStep, double(nSource));
        const int nFirst = std::min(static_cast<int>(dblBegin), nSource - 1);
        const int nLast = std::clamp(static_cast<int>(std::ceil(dblEnd)) - 1, nFirst, nSource - 1);
        if (nFirst == nLast)
            spans.push_back({nFirst, nLast, static_cast<float>(dblEnd - dblBegin), 0.0F});
        else
            spans.push_back({nFirst, nLast, static_cast<float>(nFirst + 1 - dblBegin),
                             static_cast<float>(dblEnd - nLast)});
    }
    return spans;
}

/// Adds a weighted row to the sums, or makes these of it.
template <bool bAdd> void WeighRow(const uchar* pRow, std::size_t nBytes, float fWeight, float* pSums)
{
    for (std::size_t i = 0; i < nBytes; ++i)
        pSums[i] = (bAdd ? pSums[i] : 0.0F) + fWeight * static_cast<float>(static_cast<int>(pRow[i]));
}

/// The same for pixels with straight alpha, whose colours count by it. Since alpha takes the same way, as 255
/// times itself, no colour exceeds it in the end: none of the roundings changes an order.
template <bool bAdd> void WeighStraightRow(const uchar* pRow, std::size_t nBytes, float fWeight, float* pSums)
{
    constexpr std::size_t kBlock = 256; // bytes
    uchar factors[kBlock];
    const float fShare = fWeight / 255.0F;
    for (std::size_t nBegin = 0; nBegin < nBytes; nBegin += kBlock) {
        const std::size_t nSize = std::min(kBlock, nBytes - nBegin);
        const uchar* p = pRow + nBegin;
        for (std::size_t i = 0; i < nSize; i += 4) {
            const quint32 a = qFromLittleEndian<quint32>(p + i) >> 24;
            qToLittleEndian<quint32>(a | a << 8 | a << 16 | 0xFF000000U, factors + i);
        }
        float* pBlock = pSums + nBegin;
        for (std::size_t i = 0; i < nSize; ++i)
            pBlock[i] = (bAdd ? pBlock[i] : 0.0F) + fShare * static_cast<float>(p[i] * factors[i]);
    }
}

/// The sums of a row of the picture's boxes, downwards only: for each byte of the source from nBegin on.
template <bool bStraight>
void SumDown(const QImage& source, const SSpan& span, std::size_t nBegin, std::size_t nBytes, float* pSums)
{
    const auto weigh = bStraight ? WeighStraightRow<false> : WeighRow<false>;
    const auto add = bStraight ? WeighStraightRow<true> : WeighRow<true>;
    const auto row = [&](int y) { return source.constScanLine(y) + nBegin; };
    weigh(row(span.nFirst), nBytes, span.fFirst, pSums);
    for (int y = span.nFirst + 1; y < span.nLast; ++y)
        add(row(y), nBytes, 1.0F, pSums);
    if (span.nLast > span.nFirst)
        add(row(span.nLast), nBytes, span.fLast, pSums);
}

/// The means of a row's boxes, out of the sums downwards of the columns from nOffset on.
void SumAcross1(const float* pSums, const std::vector<SSpan>& spans, int nOffset, float fScale, float* pMeans)
{
    for (const SSpan& span : spans) {
        const float* p = pSums + (span.nFirst - nOffset);
        const float* pLast = pSums + (span.nLast - nOffset);
        float fSum = *p * span.fFirst + *pLast * span.fLast;
        while (++p < pLast)
            fSum += *p;
        *pMeans++ = fSum * fScale;
    }
}

/// The same for three or four samples a pixel; the means have four, the last of three is undefined. Reads
/// four sums at a time.
template <int nChannels>
void SumAcross(const float* pSums, const std::vector<SSpan>& spans, int nOffset, float fScale, float* pMeans)
{
    const auto load = [](const float* p) {
        Float4 sums;
        std::memcpy(&sums, p, sizeof sums);
        return sums;
    };
    for (const SSpan& span : spans) {
        const float* p = pSums + static_cast<std::ptrdiff_t>(span.nFirst - nOffset) * nChannels;
        const float* pLast = pSums + static_cast<std::ptrdiff_t>(span.nLast - nOffset) * nChannels;
        Float4 sum = load(p) * span.fFirst + load(pLast) * span.fLast;
        while ((p += nChannels) < pLast)
            sum += load(p);
        sum *= fScale;
        std::memcpy(pMeans, &sum, sizeof sum);
        pMeans += 4;
    }
}

void Round(const float* pMeans, std::size_t nMeans, uchar* pBytes)
{
    for (std::size_t i = 0; i < nMeans; ++i)
        pBytes[i] = static_cast<uchar>(static_cast<int>(pMeans[i] + 0.5F));
}

void StoreGrey(const uchar* pMeans, int nPixels, QRgb* pTarget)
{
    for (int x = 0; x < nPixels; ++x)
        pTarget[x] = 0xFF000000U | pMeans[x] * 0x010101U;
}

/// Four bytes a pixel: red, green, blue and alpha, or what takes the place of alpha.
template <QRgb nOpaque> void StoreColors(const uchar* pMeans, int nPixels, QRgb* pTarget)
{
    for (int x = 0; x < nPixels; ++x) {
        const auto n = qFromLittleEndian<quint32>(pMeans + 4 * static_cast<std::ptrdiff_t>(x));
        pTarget[x] = nOpaque | (n & 0xFF00FF00U) | (n & 0xFFU) << 16 | (n >> 16 & 0xFFU);
    }
}

struct SKernels {
    int nChannels;
    void (*pSumDown)(const QImage& source, const SSpan& span, std::size_t nBegin, std::size_t nBytes,
                     float* pSums);
    void (*pSumAcross)(const float* pSums, const std::vector<SSpan>& spans, int nOffset, float fScale,
                       float* pMeans);
    void (*pStore)(const uchar* pMeans, int nPixels, QRgb* pTarget);
};

SKernels KernelsFor(QImage::Format eFormat)
{
    switch (eFormat) {
    case QImage::Format_Grayscale8:
        return {1, SumDown<false>, SumAcross1, StoreGrey};
    case QImage::Format_RGB888:
        return {3, SumDown<false>, SumAcross<3>, StoreColors<0xFF000000U>};
    case QImage::Format_RGBA8888:
        return {4, SumDown<true>, SumAcross<4>, StoreColors<0>};
    default:
        return {4, SumDown<false>, SumAcross<4>, StoreColors<0>};
    }
}
} // namespace

int BoxReduction::FormatFor(const QImage& source)
{
    return source.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

bool BoxReduction::Reduce(const QImage& source, const SScale& scale, const QRect& part, QImage& target,
                          const QPoint& origin)
{
    const double dblStepX = scale.source.width() / scale.picture.width();
    const double dblStepY = scale.source.height() / scale.picture.height();
    const std::vector<SSpan> columns = SpansOf(part.left(), part.width(), dblStepX, source.width());
    const std::vector<SSpan> rows = SpansOf(part.top(), part.height(), dblStepY, source.height());
    const SKernels kernels = KernelsFor(source.format());
    const int nOffset = columns.front().nFirst;
    const auto nChannels = static_cast<std::size_t>(kernels.nChannels);
    const std::size_t nBegin = static_cast<std::size_t>(nOffset) * nChannels;
    const std::size_t nBytes = static_cast<std::size_t>(columns.back().nLast + 1 - nOffset) * nChannels;
    std::vector<float> sums(nBytes + 4); // the last pixel of three samples is read as one of four
    std::vector<float> means(columns.size() * (nChannels == 1 ? 1 : 4));
    std::vector<uchar> rounded(means.size());
    const auto fScale = static_cast<float>(1.0 / (dblStepX * dblStepY));
    for (int y = 0; y < part.height(); ++y) {
        if (Vantor::CProgress::IsThreadCancelled())
            return false;
        kernels.pSumDown(source, rows[static_cast<std::size_t>(y)], nBegin, nBytes, sums.data());
        kernels.pSumAcross(sums.data(), columns, nOffset, fScale, means.data());
        auto* pRow = reinterpret_cast<QRgb*>(target.scanLine(part.top() + y - origin.y()));
        Round(means.data(), means.size(), rounded.data());
        kernels.pStore(rounded.data(), part.width(), pRow + (part.left() - origin.x()));
    }
    return true;
}
