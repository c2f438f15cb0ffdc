// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// PGM and PPM, in bytes.
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QIODevice>

#include <cstring>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
/// One grey, or three colours, of each pixel.
void PackRow(const unsigned char* pFrom, int nFrom, unsigned char* pTo, int nTo, int nWidth)
{
    for (int x = 0; x < nWidth; ++x, pFrom += nFrom, pTo += nTo) {
        if (nFrom == 1)
            std::memset(pTo, *pFrom, static_cast<std::size_t>(nTo));
        else
            std::memcpy(pTo, pFrom, static_cast<std::size_t>(nTo));
    }
}

/// @param nChannels  1 or 3 in the file
CResult Write(QIODevice& device, const CImage& image, int nChannels, const char* pFormat)
{
    const QByteArray head = QByteArray(nChannels == 1 ? "P5\n" : "P6\n") +
                            QByteArray::number(image.GetWidth()) + ' ' +
                            QByteArray::number(image.GetHeight()) + "\n255\n";
    if (device.write(head) != head.size())
        return Unwritable(pFormat);
    std::vector<unsigned char> row(static_cast<std::size_t>(image.GetWidth()) *
                                   static_cast<std::size_t>(nChannels));
    const auto nBytes = static_cast<qint64>(row.size());
    for (int y = 0; y < image.GetHeight(); ++y) {
        CProgress::Tell(double(y) / image.GetHeight());
        PackRow(image.GetRows()[y], image.GetChannel(), row.data(), nChannels, image.GetWidth());
        if (device.write(reinterpret_cast<const char*>(row.data()), nBytes) != nBytes)
            return Unwritable(pFormat);
    }
    return CResult::Success();
}
} // namespace

CResult SavePpm(QIODevice& device, const CImage& image)
{
    return Write(device, image, 3, "PPM");
}

CResult SavePgm(QIODevice& device, const CImage& image)
{
    if (image.GetChannel() != 1)
        return CResult::Failure("A PGM file holds shades of grey only, and the image has colours.");
    return Write(device, image, 1, "PGM");
}

} // namespace Vantor::Algorithms
