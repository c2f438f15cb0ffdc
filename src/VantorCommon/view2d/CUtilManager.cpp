// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CUtilManager.h>

#include <Vantor/image/CImage.h>

#include <QImage>
#include <algorithm>
#include <cstring>
#include <memory>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kChannels = 4;
constexpr int kBitDepth = 8;
constexpr int kRowAlignment = 4;
/// The size of the strips in which an image is converted: a strip stays in the cache.
constexpr int kStripBytes = 64 * 1024;

QImage::Format FormatOf(int nChannels)
{
    switch (nChannels) {
    case 1:
        return QImage::Format_Grayscale8;
    case 4:
        return QImage::Format_RGBA8888;
    default: // Deliberate: two channels too
        return QImage::Format_RGB888;
    }
}

/// @param pImage  a CImage* to write to, or a const CImage* to read from
template <class Image>
QImage Wrap(Image* pImage, QImageCleanupFunction pCleanup = nullptr, void* pInfo = nullptr)
{
    return QImage(pImage->GetData(), pImage->GetWidth(), pImage->GetHeight(), pImage->GetStride(),
                  FormatOf(pImage->GetChannel()), pCleanup, pInfo);
}

/// An image over a copy of the source; the image's last user frees the copy. The core library recycles
/// buffers, so this is several times faster than QImage::copy for large images. Null when memory ends.
QImage WrapCopy(const CImage* pSource)
{
    auto pCopy = std::make_unique<CImage>();
    if (pCopy->CopyFrom(pSource) != 0)
        return QImage();
    QImage image = Wrap(
        pCopy.get(), [](void* p) { delete static_cast<CImage*>(p); }, pCopy.get());
    if (!image.isNull()) // a null image does not call its clean-up function
        static_cast<void>(pCopy.release());
    return image;
}

void CopyRows(const QImage& from, CImage* pTo, int nFirstRow, std::size_t nBytes)
{
    for (int y = 0; y < from.height(); ++y)
        std::memcpy(pTo->GetRows()[nFirstRow + y], from.constScanLine(y), nBytes);
}
} // namespace

bool CUtilManager::ConvertImage(CImage* pSource, QImage& destination, bool bDeepCopy)
{
    if (!pSource)
        return false;
    QImage image = bDeepCopy ? WrapCopy(pSource) : Wrap(pSource);
    destination.swap(image);
    return !destination.isNull();
}

bool CUtilManager::ViewImage(const CImage* pSource, QImage& destination)
{
    if (!pSource)
        return false;
    QImage image = Wrap(pSource);
    destination.swap(image);
    return !destination.isNull();
}

bool CUtilManager::ConvertImage(const QImage& source, CImage* pDestination)
{
    if (source.isNull() || !pDestination)
        return false;
    if (source.constBits() ==
        pDestination->GetData()) // the source shares the buffer that is about to be freed
        return ConvertImage(source.copy(), pDestination);
    const int nWidth = source.width();
    const int nHeight = source.height();
    if (pDestination->Create(nWidth, nHeight, kChannels, kBitDepth, EImageType::Interleaved, kRowAlignment) !=
        0)
        return false;
    // Deliberate: the bytes per line of the source, not of the converted image.
    const auto nBytes = static_cast<std::size_t>(std::min(source.bytesPerLine(), pDestination->GetStride()));
    if (source.format() == QImage::Format_RGBA8888) {
        CopyRows(source, pDestination, 0, nBytes);
        return true;
    }
    const int nStripRows = std::max(1, kStripBytes / pDestination->GetStride());
    for (int y = 0; y < nHeight; y += nStripRows) {
        const int nRows = std::min(nStripRows, nHeight - y);
        const QImage strip = source.copy(0, y, nWidth, nRows).convertToFormat(QImage::Format_RGBA8888);
        if (strip.isNull())
            return false;
        CopyRows(strip, pDestination, y, nBytes);
    }
    return true;
}
