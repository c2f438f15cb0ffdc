// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/BmpHeader_p.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <limits>

namespace Vantor::Algorithms
{

namespace
{
QByteArray MakeHeader(const CImage& image, qint64 nImageBytes)
{
    const int nChannels = image.GetChannel();
    const quint32 nHeaderBytes = nChannels == 4 ? kBmpV4HeaderBytes : kBmpInfoHeaderBytes;
    const quint32 nPixels = kBmpFileHeaderBytes + nHeaderBytes + (nChannels == 1 ? kBmpPaletteBytes : 0);
    const auto pMetadata = image.GetMetadata();
    const double dblUnits = PerMetre(pMetadata->resolutionUnit);
    const auto perMetre = [dblUnits](double dblPerUnit) {
        return static_cast<qint32>(ToWhole(dblPerUnit * dblUnits, std::numeric_limits<qint32>::max()));
    };
    QByteArray head;
    QDataStream out(&head, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint8('B') << quint8('M') << quint32(nPixels + nImageBytes) << quint32(0) << nPixels;
    out << nHeaderBytes << qint32(image.GetWidth()) << qint32(image.GetHeight()) << quint16(1)
        << quint16(8 * nChannels)
        << quint32(nChannels == 4 ? EBmpCompression::BitFields : EBmpCompression::None)
        << quint32(nImageBytes) << perMetre(pMetadata->resolutionX) << perMetre(pMetadata->resolutionY)
        << quint32(nChannels == 1 ? kBmpPaletteEntries : 0) << quint32(0);
    if (nChannels == 4) {
        constexpr quint32 kStandardColors = 0x73524742; // "sRGB"
        constexpr int kUnusedBytes = 48;                // end points and gamma
        out << kBmpRedMask << kBmpGreenMask << kBmpBlueMask << kBmpAlphaMask << kStandardColors;
        head.append(kUnusedBytes, '\0');
    }
    if (nChannels == 1) {
        for (int i = 0; i < kBmpPaletteEntries; ++i)
            head.append(3, static_cast<char>(i)).append('\0');
    }
    return head;
}
} // namespace

CResult SaveBmp(QIODevice& device, const CImage& image)
{
    const int nChannels = image.GetChannel();
    const int nWidth = image.GetWidth();
    const int nHeight = image.GetHeight();
    const qint64 nStride = BmpStride(nWidth, 8 * nChannels);
    const qint64 nImageBytes = nStride * nHeight;
    if (nImageBytes > std::numeric_limits<quint32>::max() - kBmpHeadBytes)
        return CResult::Failure("A BMP file holds at most 4 GiB.");
    const QByteArray head = MakeHeader(image, nImageBytes);
    if (device.write(head) != head.size())
        return Unwritable("BMP");
    QByteArray row(static_cast<int>(nStride), '\0');
    unsigned char* pRow = reinterpret_cast<unsigned char*>(row.data());
    for (int y = nHeight - 1; y >= 0; --y) {
        CProgress::Tell(1.0 - double(y) / nHeight);
        const unsigned char* pFrom = image.GetRows()[y];
        if (nChannels == 1)
            std::copy(pFrom, pFrom + nWidth, pRow);
        else
            ReorderBmpRow(pFrom, nChannels, pRow, nChannels, nWidth);
        if (device.write(row) != row.size())
            return Unwritable("BMP");
    }
    return CResult::Success();
}

} // namespace Vantor::Algorithms
