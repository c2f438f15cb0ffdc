// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/ImageLevels_p.h>

#include <Vantor/CProgress.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/job/FreeMemory_p.h>

#include <algorithm>
#include <map>
#include <utility>

namespace
{
constexpr qint64 kSmallest = 128LL * 128; // pixels; a level that small has none below it

/// The levels of all images that are shown, by the address of the image.
std::map<const void*, std::weak_ptr<CImageLevels>>& Registry()
{
    static std::map<const void*, std::weak_ptr<CImageLevels>> s_mapLevels;
    return s_mapLevels;
}

/// Rows of a level: the mean of four samples; an odd last column or row counts twice.
template <std::size_t nChannels>
void HalveRow(const uchar* pUpper, const uchar* pLower, std::size_t nWidth, uchar* pTarget)
{
    for (std::size_t x = 0; x < nWidth; x += 2) {
        const std::size_t nLeft = x * nChannels;
        const std::size_t nRight = std::min(x + 1, nWidth - 1) * nChannels;
        for (std::size_t c = 0; c < nChannels; ++c)
            *pTarget++ = static_cast<uchar>(
                (pUpper[nLeft + c] + pUpper[nRight + c] + pLower[nLeft + c] + pLower[nRight + c] + 2) / 4);
    }
}

/// The same for straight alpha; the level's is premultiplied.
void HalveStraightRow(const uchar* pUpper, const uchar* pLower, std::size_t nWidth, uchar* pTarget)
{
    for (std::size_t x = 0; x < nWidth; x += 2) {
        const std::size_t nLeft = x * 4;
        const std::size_t nRight = std::min(x + 1, nWidth - 1) * 4;
        const uchar* const pixels[] = {pUpper + nLeft, pUpper + nRight, pLower + nLeft, pLower + nRight};
        unsigned int sums[4] = {};
        for (const uchar* p : pixels) {
            for (int c = 0; c < 3; ++c)
                sums[c] += p[c] * p[3];
            sums[3] += p[3];
        }
        for (int c = 0; c < 3; ++c)
            *pTarget++ = static_cast<uchar>((sums[c] + 2 * 255) / (4 * 255));
        *pTarget++ = static_cast<uchar>((sums[3] + 2) / 4);
    }
}

auto RowHalver(QImage::Format eFormat)
{
    switch (eFormat) {
    case QImage::Format_Grayscale8:
        return HalveRow<1>;
    case QImage::Format_RGB888:
        return HalveRow<3>;
    case QImage::Format_RGBA8888:
        return HalveStraightRow;
    default:
        return HalveRow<4>;
    }
}

/// Null when cancelled or when memory ends.
QImage Half(const QImage& source)
{
    QImage half((source.width() + 1) / 2, (source.height() + 1) / 2,
                source.hasAlphaChannel() ? QImage::Format_RGBA8888_Premultiplied : source.format());
    if (half.isNull())
        return half;
    const auto halve = RowHalver(source.format());
    for (int y = 0; y < half.height(); ++y) {
        if (Vantor::CProgress::IsThreadCancelled())
            return QImage();
        halve(source.constScanLine(2 * y), source.constScanLine(std::min(2 * y + 1, source.height() - 1)),
              static_cast<std::size_t>(source.width()), half.scanLine(y));
    }
    return half;
}

std::vector<QImage> MakeLevels(const QImage& image)
{
    std::vector<QImage> levels;
    qint64 nLeft = image.sizeInBytes() / 3;
    const qint64 nFree = FreeMemory();
    if (nFree >= 0 && nFree / 2 < nLeft)
        return levels;
    for (QImage source = image; qint64(source.width()) * source.height() > kSmallest;) {
        QImage half = Half(source);
        nLeft -= half.sizeInBytes();
        if (half.isNull() || nLeft < 0)
            break;
        levels.push_back(half);
        source.swap(half);
    }
    return levels;
}
} // namespace

CImageLevels::CImageLevels(const ImagePtr& pImage) : m_pImage(pImage)
{
}

CImageLevels::~CImageLevels()
{
    Registry().erase(m_pImage.get());
}

std::shared_ptr<CImageLevels> CImageLevels::Of(const ImagePtr& pImage)
{
    std::weak_ptr<CImageLevels>& pKnown = Registry()[pImage.get()];
    std::shared_ptr<CImageLevels> pLevels = pKnown.lock();
    if (!pLevels) {
        pLevels.reset(new CImageLevels(pImage));
        pKnown = pLevels;
    }
    return pLevels;
}

void CImageLevels::Make(const QImage& image)
{
    if (std::exchange(m_bAsked, true))
        return;
    CJobs::Get().Start(this, SJob(), [this, image, pImage = m_pImage](Vantor::CProgress&) {
        return CJob::Finish([this, levels = MakeLevels(image)] {
            m_vctLevels = levels;
            Q_EMIT signal_Made();
        });
    });
}

const QImage* CImageLevels::Get(int& nLevel) const
{
    if (m_vctLevels.empty())
        return nullptr;
    nLevel = std::clamp(nLevel, 1, static_cast<int>(m_vctLevels.size()));
    return &m_vctLevels[static_cast<std::size_t>(nLevel - 1)];
}
