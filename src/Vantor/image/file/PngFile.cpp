// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/QtImage_p.h>

#include <QBuffer>
#include <QByteArray>
#include <QImageWriter>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kSignatureBytes = 8;
constexpr int kChunkHeadBytes = 8; // length and type
constexpr int kChunkCrcBytes = 4;
constexpr quint32 kHeaderBytes = 13;
/// Deflate never makes more than this many bytes of one.
constexpr qint64 kMaxDeflateRatio = 1032;

constexpr qint64 kMaxContentBytes = std::numeric_limits<int>::max() - 64; // of a byte array

enum EColorType { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

/// A PNG file reduced to the chunks that its pixels follow from. Texts, profiles and the like can inflate to
/// many times the size of the image; they are never shown to the decoder.
struct SPng {
    QByteArray content;
    QByteArray header;
    qint64 nDataBytes = 0;
    bool bTransparent = false;
};

bool IsNeeded(const QByteArray& type)
{
    return type == "IHDR" || type == "PLTE" || type == "IDAT" || type == "IEND" || type == "tRNS";
}

/// Appends so many bytes of the device; false when there are fewer, or more than an array holds.
bool Append(QIODevice& device, qint64 nBytes, QByteArray& content)
{
    const int nOld = content.size();
    if (nBytes > device.size() - device.pos() || nOld + nBytes > kMaxContentBytes)
        return false;
    content.resize(nOld + static_cast<int>(nBytes));
    return device.read(content.data() + nOld, nBytes) == nBytes;
}

/// Copies the chunks up to IEND. False for a chunk that reaches past the end of the file.
bool ReadChunks(QIODevice& device, SPng& png)
{
    png.content.reserve(static_cast<int>(std::min(device.size(), kMaxContentBytes)));
    if (!Append(device, kSignatureBytes, png.content))
        return false;
    for (;;) {
        const QByteArray head = device.read(kChunkHeadBytes);
        if (head.size() != kChunkHeadBytes)
            return false;
        const qint64 nBytes = qFromBigEndian<quint32>(head.constData());
        const QByteArray type = head.mid(4);
        if (!IsNeeded(type)) {
            const qint64 nNext = device.pos() + nBytes + kChunkCrcBytes;
            if (nNext > device.size() || !device.seek(nNext))
                return false;
            continue;
        }
        png.content += head;
        const int nBody = png.content.size();
        if (!Append(device, nBytes + kChunkCrcBytes, png.content))
            return false;
        if (png.header.isEmpty()) {
            if (type != "IHDR" || nBytes != kHeaderBytes)
                return false;
            png.header = png.content.mid(nBody, kHeaderBytes);
        }
        if (type == "IDAT")
            png.nDataBytes += nBytes;
        png.bTransparent |= type == "tRNS";
        if (type == "IEND")
            return true;
    }
}

/// Bytes of the rows of one pass before compression, each with its filter byte.
qint64 PassBytes(qint64 nWidth, qint64 nHeight, int nBitsPerPixel)
{
    return nWidth > 0 && nHeight > 0 ? nHeight * (1 + (nWidth * nBitsPerPixel + 7) / 8) : 0;
}

qint64 RawBytes(qint64 nWidth, qint64 nHeight, int nBitsPerPixel, bool bInterlaced)
{
    if (!bInterlaced)
        return PassBytes(nWidth, nHeight, nBitsPerPixel);
    // The seven passes of Adam7: first column and row, steps.
    constexpr int kPasses[][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                  {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    qint64 nBytes = 0;
    for (const auto& pass : kPasses)
        nBytes += PassBytes((nWidth - pass[0] + pass[2] - 1) / pass[2],
                            (nHeight - pass[1] + pass[3] - 1) / pass[3], nBitsPerPixel);
    return nBytes;
}

int SamplesPerPixel(int nColorType)
{
    switch (nColorType) {
    case Grey:
    case Palette:
        return 1;
    case GreyAlpha:
        return 2;
    case Rgb:
        return 3;
    case Rgba:
        return 4;
    default:
        return 0;
    }
}

/// What Qt decodes to; only a guess where it does not matter for the buffer.
QImage::Format FormatOf(int nColorType, int nDepth, bool bTransparent)
{
    if (nDepth == 16)
        return nColorType == Grey && !bTransparent ? QImage::Format_Grayscale16 : QImage::Format_RGBA64;
    if (nColorType == Grey)
        return nDepth == 8 && !bTransparent ? QImage::Format_Grayscale8 : QImage::Format_Indexed8;
    if (nColorType == Palette)
        return QImage::Format_Indexed8;
    return nColorType == Rgb && !bTransparent ? QImage::Format_RGB32 : QImage::Format_ARGB32;
}

bool DecodePngFile(QIODevice& device, CImage& image)
{
    SPng png;
    if (!ReadChunks(device, png))
        return false;
    const char* pHeader = png.header.constData();
    const qint64 nWidth = qFromBigEndian<quint32>(pHeader);
    const qint64 nHeight = qFromBigEndian<quint32>(pHeader + 4);
    const int nDepth = static_cast<unsigned char>(pHeader[8]);
    const int nColorType = static_cast<unsigned char>(pHeader[9]);
    const int nSamples = SamplesPerPixel(nColorType);
    if (nSamples == 0 || nDepth < 1 || nDepth > 16)
        return false;

    SExpectedImage expected;
    expected.nChannels = nColorType == Grey ? 1 : 3;
    if (nColorType == GreyAlpha || nColorType == Rgba || png.bTransparent)
        expected.nChannels = 4;
    expected.eFormat = FormatOf(nColorType, nDepth, png.bTransparent);
    const int nDecoderBytes = QImage::toPixelFormat(expected.eFormat).bitsPerPixel() / 8;
    if (!FitsDecodeLimit(nWidth, nHeight, expected.nChannels, nDecoderBytes))
        return false;
    if (RawBytes(nWidth, nHeight, nSamples * nDepth, pHeader[12] != 0) > kMaxDeflateRatio * png.nDataBytes)
        return false;
    expected.nWidth = static_cast<int>(nWidth);
    expected.nHeight = static_cast<int>(nHeight);
    QBuffer buffer(&png.content);
    return buffer.open(QIODevice::ReadOnly) && ReadWithQt(buffer, "png", expected, image);
}
} // namespace

CResult LoadPng(QIODevice& device, CImage& image, Notes& /*notes*/)
{
    return DecodePngFile(device, image) ? CResult::Success() : Unreadable("PNG");
}

bool SavePng(QIODevice& device, const CImage& image)
{
    return QImageWriter(&device, "png").write(BorrowAsQImage(image));
}

} // namespace Vantor::Algorithms
