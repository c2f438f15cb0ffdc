// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/BoxReduction_p.h>

#include <Vantor/CProgress.h>

#include <QImage>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace
{
using Bytes4 = unsigned char __attribute__((vector_size(4)));
using Float4 = float __attribute__((vector_size(16)));

constexpr std::size_t kBlock = 16; // floats that the compiler keeps in registers
constexpr int kRowsAtOnce = 4;

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

/// A row of the source, and its weight.
struct SRow {
    const uchar* pBytes;
    float fWeight;
};

/// Adds up to four weighted rows to the sums, or makes these of them. One pass over the sums for all rows,
/// a block at a time, so that the compiler keeps the block in vectors.
template <bool bAdd> void WeighRows(const SRow* pRows, int nRows, std::size_t nBytes, float* pSums)
{
    std::size_t i = 0;
    for (; i + kBlock <= nBytes; i += kBlock) {
        float block[kBlock] = {};
        if (bAdd)
            std::memcpy(block, pSums + i, sizeof block);
        for (int r = 0; r < nRows; ++r)
            for (std::size_t k = 0; k < kBlock; ++k)
                block[k] += pRows[r].fWeight * static_cast<float>(pRows[r].pBytes[i + k]);
        std::memcpy(pSums + i, block, sizeof block);
    }
    for (; i < nBytes; ++i) {
        float fSum = bAdd ? pSums[i] : 0.0F;
        for (int r = 0; r < nRows; ++r)
            fSum += pRows[r].fWeight * static_cast<float>(pRows[r].pBytes[i]);
        pSums[i] = fSum;
    }
}

/// The same for pixels with straight alpha, whose colours it multiplies by their alpha.
template <bool bAdd> void WeighStraightRows(const SRow* pRows, int nRows, std::size_t nBytes, float* pSums)
{
    for (std::size_t i = 0; i < nBytes; i += 4) {
        Float4 sum = {};
        if (bAdd)
            std::memcpy(&sum, pSums + i, sizeof sum);
        for (int r = 0; r < nRows; ++r) {
            Bytes4 bytes;
            std::memcpy(&bytes, pRows[r].pBytes + i, sizeof bytes);
            const float fWeight = pRows[r].fWeight;
            const float fColor = fWeight * static_cast<float>(bytes[3]) * (1.0F / 255.0F);
            sum += __builtin_convertvector(bytes, Float4) * Float4{fColor, fColor, fColor, fWeight};
        }
        std::memcpy(pSums + i, &sum, sizeof sum);
    }
}

/// The sums of a row of the picture's boxes, downwards only: for each byte of the source from nBegin on.
template <bool bStraight>
void SumDown(const QImage& source, const SSpan& span, std::size_t nBegin, std::size_t nBytes, float* pSums)
{
    SRow rows[kRowsAtOnce];
    for (int y = span.nFirst; y <= span.nLast; y += kRowsAtOnce) {
        const int nRows = std::min(kRowsAtOnce, span.nLast + 1 - y);
        for (int r = 0; r < nRows; ++r) {
            const bool bFirst = y + r == span.nFirst;
            const bool bLast = y + r == span.nLast;
            rows[r] = {source.constScanLine(y + r) + nBegin, bFirst  ? span.fFirst
                                                             : bLast ? span.fLast
                                                                     : 1.0F};
        }
        const bool bAdd = y > span.nFirst;
        if (bStraight)
            (bAdd ? WeighStraightRows<true> : WeighStraightRows<false>)(rows, nRows, nBytes, pSums);
        else
            (bAdd ? WeighRows<true> : WeighRows<false>)(rows, nRows, nBytes, pSums);
    }
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

QRgb Rounded(float fMean)
{
    return static_cast<QRgb>(static_cast<int>(fMean + 0.5F));
}

void StoreGrey(const float* pMeans, int nPixels, QRgb* pTarget)
{
    for (int x = 0; x < nPixels; ++x)
        pTarget[x] = 0xFF000000U | Rounded(pMeans[x]) * 0x010101U;
}

void StoreRgb(const float* pMeans, int nPixels, QRgb* pTarget)
{
    for (int x = 0; x < nPixels; ++x)
        pTarget[x] = 0xFF000000U | Rounded(pMeans[4 * x]) << 16 | Rounded(pMeans[4 * x + 1]) << 8 |
                     Rounded(pMeans[4 * x + 2]);
}

/// No colour may exceed its alpha, not even by a rounding.
void StoreRgba(const float* pMeans, int nPixels, QRgb* pTarget)
{
    for (int x = 0; x < nPixels; ++x) {
        const float* p = pMeans + 4 * x;
        pTarget[x] = Rounded(p[3]) << 24 | Rounded(std::min(p[0], p[3])) << 16 |
                     Rounded(std::min(p[1], p[3])) << 8 | Rounded(std::min(p[2], p[3]));
    }
}

struct SKernels {
    int nChannels;
    void (*pSumDown)(const QImage& source, const SSpan& span, std::size_t nBegin, std::size_t nBytes,
                     float* pSums);
    void (*pSumAcross)(const float* pSums, const std::vector<SSpan>& spans, int nOffset, float fScale,
                       float* pMeans);
    void (*pStore)(const float* pMeans, int nPixels, QRgb* pTarget);
};

SKernels KernelsFor(QImage::Format eFormat)
{
    switch (eFormat) {
    case QImage::Format_Grayscale8:
        return {1, SumDown<false>, SumAcross1, StoreGrey};
    case QImage::Format_RGB888:
        return {3, SumDown<false>, SumAcross<3>, StoreRgb};
    case QImage::Format_RGBA8888:
        return {4, SumDown<true>, SumAcross<4>, StoreRgba};
    default:
        return {4, SumDown<false>, SumAcross<4>, StoreRgba};
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
    std::vector<float> means(4 * columns.size());
    const auto fScale = static_cast<float>(1.0 / (dblStepX * dblStepY));
    for (int y = 0; y < part.height(); ++y) {
        if (Vantor::CProgress::IsThreadCancelled())
            return false;
        kernels.pSumDown(source, rows[static_cast<std::size_t>(y)], nBegin, nBytes, sums.data());
        kernels.pSumAcross(sums.data(), columns, nOffset, fScale, means.data());
        auto* pRow = reinterpret_cast<QRgb*>(target.scanLine(part.top() + y - origin.y()));
        kernels.pStore(means.data(), part.width(), pRow + (part.left() - origin.x()));
    }
    return true;
}
