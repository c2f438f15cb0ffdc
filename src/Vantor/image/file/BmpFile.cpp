// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/QtImage_p.h>

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <limits>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kFileHeaderBytes = 14;
constexpr int kCoreHeaderBytes = 12;
constexpr int kInfoHeaderBytes = 40;
constexpr int kV4HeaderBytes = 108;
constexpr int kPaletteEntries = 256;
constexpr int kPaletteBytes = 4 * kPaletteEntries;
constexpr int kReserveForHeaders = kFileHeaderBytes + kV4HeaderBytes + kPaletteBytes;
constexpr quint32 kRedMask = 0x00ff0000;
constexpr quint32 kGreenMask = 0x0000ff00;
constexpr quint32 kBlueMask = 0x000000ff;
constexpr quint32 kAlphaMask = 0xff000000;
/// A run of two bytes covers at most 255 pixels.
constexpr qint64 kMaxPixelsPerRunByte = 128;

enum ECompression : quint32 { None = 0, RunLength8 = 1, RunLength4 = 2, BitFields = 3 };

struct SHeader {
    qint64 nWidth = 0;
    qint64 nHeight = 0;
    bool bTopDown = false;
    int nBits = 0;
    quint32 nCompression = None;
    quint32 nRedMask = 0;
    quint32 nAlphaMask = 0;
    bool bUsualMasks = false;
    bool bGreyPalette = false; ///< 256 entries, entry i is the grey i: how grey is written in this format
    qint64 nPixels = 0;        ///< offset of the first row in the file
};

bool IsGreyPalette(const QByteArray& head, quint32 nHeaderBytes, quint32 nColorsUsed)
{
    const qint64 nStart = kFileHeaderBytes + static_cast<qint64>(nHeaderBytes);
    if ((nColorsUsed != 0 && nColorsUsed != kPaletteEntries) || nStart + kPaletteBytes > head.size())
        return false;
    for (int i = 0; i < kPaletteEntries; ++i) {
        const char* pEntry = head.constData() + nStart + 4 * i;
        if (pEntry[0] != static_cast<char>(i) || pEntry[1] != pEntry[0] || pEntry[2] != pEntry[0])
            return false;
    }
    return true;
}

void ParseMasks(const char* pHead, quint32 nHeaderBytes, SHeader& header)
{
    header.nRedMask = qFromLittleEndian<quint32>(pHead + 54);
    if (nHeaderBytes >= kV4HeaderBytes)
        header.nAlphaMask = qFromLittleEndian<quint32>(pHead + 66);
    header.bUsualMasks = header.nRedMask == kRedMask &&
                         qFromLittleEndian<quint32>(pHead + 58) == kGreenMask &&
                         qFromLittleEndian<quint32>(pHead + 62) == kBlueMask &&
                         (header.nAlphaMask == 0 || header.nAlphaMask == kAlphaMask);
}

bool ParseHeader(const QByteArray& head, SHeader& header)
{
    const char* p = head.constData();
    if (head.size() < kFileHeaderBytes + kCoreHeaderBytes)
        return false;
    const quint32 nHeaderBytes = qFromLittleEndian<quint32>(p + 14);
    header.nPixels =
        std::max<qint64>(qFromLittleEndian<quint32>(p + 10), kFileHeaderBytes + qint64(nHeaderBytes));
    if (nHeaderBytes == kCoreHeaderBytes) {
        header.nWidth = qFromLittleEndian<quint16>(p + 18);
        header.nHeight = qFromLittleEndian<quint16>(p + 20);
        header.nBits = qFromLittleEndian<quint16>(p + 24);
        return true;
    }
    constexpr int kBytesUpToMasks = 70;
    if (nHeaderBytes < kInfoHeaderBytes || head.size() < kBytesUpToMasks)
        return false;
    header.nWidth = qFromLittleEndian<qint32>(p + 18);
    const qint64 nHeight = qFromLittleEndian<qint32>(p + 22);
    header.bTopDown = nHeight < 0;
    header.nHeight = std::abs(nHeight);
    header.nBits = qFromLittleEndian<quint16>(p + 28);
    header.nCompression = qFromLittleEndian<quint32>(p + 30);
    if (header.nCompression == BitFields)
        ParseMasks(p, nHeaderBytes, header);
    if (header.nBits == 8 && header.nCompression == None)
        header.bGreyPalette = IsGreyPalette(head, nHeaderBytes, qFromLittleEndian<quint32>(p + 46));
    return true;
}

qint64 FileStride(qint64 nWidth, int nBits)
{
    return (nWidth * nBits + 31) / 32 * 4;
}

/// Whether the bytes behind the header can hold the pixels that it claims.
bool CanHoldPixels(const SHeader& header, qint64 nBytes)
{
    switch (header.nCompression) {
    case None:
    case BitFields: // the padding of the last row may be missing
        return (header.nHeight - 1) * FileStride(header.nWidth, header.nBits) +
                   (header.nWidth * header.nBits + 7) / 8 <=
               nBytes;
    case RunLength8:
    case RunLength4:
        return header.nWidth * header.nHeight <= nBytes * kMaxPixelsPerRunByte;
    default:
        return false;
    }
}

int ChannelsOf(const SHeader& header)
{
    if (header.bGreyPalette)
        return 1;
    return header.nBits > 8 && header.nAlphaMask != 0 ? 4 : 3;
}

/// Rows of whole bytes per channel in the usual order.
bool IsPlain(const SHeader& header)
{
    if (header.nCompression == None)
        return header.bGreyPalette || header.nBits == 24 || header.nBits == 32;
    return header.nCompression == BitFields && header.nBits == 32 && header.bUsualMasks;
}

/// Turns a row of B, G, R (and a fourth byte) into the channels of the image; pFrom may be pTo.
void ReorderRow(const unsigned char* pFrom, int nFromBytes, unsigned char* pTo, int nChannels, int nWidth)
{
    for (int x = 0; x < nWidth; ++x, pFrom += nFromBytes, pTo += nChannels) {
        const unsigned char nBlue = pFrom[0];
        const unsigned char nRed = pFrom[2];
        pTo[1] = pFrom[1];
        if (nChannels == 4)
            pTo[3] = pFrom[3];
        pTo[0] = nRed;
        pTo[2] = nBlue;
    }
}

/// Reads the rows straight into the image.
bool ReadPlainRows(QIODevice& device, const SHeader& header, CImage& image)
{
    const int nWidth = static_cast<int>(header.nWidth);
    const int nHeight = static_cast<int>(header.nHeight);
    const int nChannels = ChannelsOf(header);
    const int nFromBytes = header.nBits / 8;
    const qint64 nStride = FileStride(nWidth, header.nBits);
    if (image.Create(nWidth, nHeight, nChannels, 8, EImageType::Interleaved, kRowAlignment) != 0 ||
        !device.seek(header.nPixels))
        return false;
    QByteArray row(nFromBytes == nChannels ? 0 : static_cast<int>(nStride), Qt::Uninitialized);
    for (int i = 0; i < nHeight; ++i) {
        unsigned char* pRow = image.GetRows()[header.bTopDown ? i : nHeight - 1 - i];
        char* pRead = row.isEmpty() ? reinterpret_cast<char*>(pRow) : row.data();
        if (device.read(pRead, nStride) < static_cast<qint64>(nWidth) * nFromBytes)
            return false;
        if (nChannels > 1)
            ReorderRow(reinterpret_cast<unsigned char*>(pRead), nFromBytes, pRow, nChannels, nWidth);
    }
    return true;
}

QByteArray MakeHeader(const CImage& image, qint64 nImageBytes)
{
    const int nChannels = image.GetChannel();
    const quint32 nHeaderBytes = nChannels == 4 ? kV4HeaderBytes : kInfoHeaderBytes;
    const quint32 nPixels = kFileHeaderBytes + nHeaderBytes + (nChannels == 1 ? kPaletteBytes : 0);
    constexpr qint32 kPixelsPerMeter = 3780; // 96 dpi
    QByteArray head;
    QDataStream out(&head, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint8('B') << quint8('M') << quint32(nPixels + nImageBytes) << quint32(0) << nPixels;
    out << nHeaderBytes << qint32(image.GetWidth()) << qint32(image.GetHeight()) << quint16(1)
        << quint16(8 * nChannels) << quint32(nChannels == 4 ? BitFields : None) << quint32(nImageBytes)
        << kPixelsPerMeter << kPixelsPerMeter << quint32(nChannels == 1 ? kPaletteEntries : 0) << quint32(0);
    if (nChannels == 4) {
        constexpr quint32 kStandardColors = 0x73524742; // "sRGB"
        constexpr int kUnusedBytes = 48;                // end points and gamma
        out << kRedMask << kGreenMask << kBlueMask << kAlphaMask << kStandardColors;
        head.append(kUnusedBytes, '\0');
    }
    if (nChannels == 1) {
        for (int i = 0; i < kPaletteEntries; ++i)
            head.append(3, static_cast<char>(i)).append('\0');
    }
    return head;
}
} // namespace

bool LoadBmp(QIODevice& device, CImage& image)
{
    SHeader header;
    if (!ParseHeader(device.peek(kReserveForHeaders), header) || header.nBits < 1 || header.nBits > 32)
        return false;
    const bool bPlain = IsPlain(header);
    SExpectedImage expected;
    expected.nChannels = ChannelsOf(header);
    expected.eFormat = header.nBits <= 8         ? QImage::Format_Indexed8
                       : expected.nChannels == 4 ? QImage::Format_ARGB32
                                                 : QImage::Format_RGB32;
    const int nDecoderBytes = bPlain ? 0 : QImage::toPixelFormat(expected.eFormat).bitsPerPixel() / 8;
    if (!FitsDecodeLimit(header.nWidth, header.nHeight, expected.nChannels, nDecoderBytes) ||
        !CanHoldPixels(header, device.size() - header.nPixels))
        return false;
    if (bPlain)
        return ReadPlainRows(device, header, image);
    expected.nWidth = static_cast<int>(header.nWidth);
    expected.nHeight = static_cast<int>(header.nHeight);
    return ReadWithQt(device, "bmp", expected, image);
}

bool SaveBmp(QIODevice& device, const CImage& image)
{
    const int nChannels = image.GetChannel();
    const int nWidth = image.GetWidth();
    const int nHeight = image.GetHeight();
    const qint64 nStride = FileStride(nWidth, 8 * nChannels);
    const qint64 nImageBytes = nStride * nHeight;
    if (nImageBytes > std::numeric_limits<quint32>::max() - kReserveForHeaders)
        return false;
    const QByteArray head = MakeHeader(image, nImageBytes);
    if (device.write(head) != head.size())
        return false;
    QByteArray row(static_cast<int>(nStride), '\0');
    unsigned char* pRow = reinterpret_cast<unsigned char*>(row.data());
    for (int y = nHeight - 1; y >= 0; --y) {
        const unsigned char* pFrom = image.GetRows()[y];
        if (nChannels == 1)
            std::copy(pFrom, pFrom + nWidth, pRow);
        else
            ReorderRow(pFrom, nChannels, pRow, nChannels, nWidth);
        if (device.write(row) != row.size())
            return false;
    }
    return true;
}

} // namespace Vantor::Algorithms
