// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/QtImage_p.h>

#include <QByteArray>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kScreenBytes = 13;
constexpr int kFrameBytes = 9;
/// A code of 12 bits stands for at most 4095 pixels.
constexpr qint64 kMaxPixelsPerByte = 2730;

/// The bytes of the colour table that these flags announce.
int ColorTableBytes(char flags)
{
    return (flags & 0x80) != 0 ? 3 << ((flags & 7) + 1) : 0;
}

bool Skip(QIODevice& device, qint64 nBytes)
{
    return nBytes <= device.size() - device.pos() && device.seek(device.pos() + nBytes);
}

/// Skips a label and the sub-blocks behind it.
bool SkipExtension(QIODevice& device)
{
    char nBytes = 0;
    if (!Skip(device, 1))
        return false;
    while (device.getChar(&nBytes) && nBytes != 0) {
        if (!Skip(device, static_cast<unsigned char>(nBytes)))
            return false;
    }
    return nBytes == 0 && !device.atEnd();
}

/// The size of the canvas that holds the screen and the first frame; empty when there is no frame.
QSize FindCanvas(QIODevice& device)
{
    const QByteArray screen = device.read(kScreenBytes);
    if (screen.size() != kScreenBytes || !Skip(device, ColorTableBytes(screen[10])))
        return QSize();
    char introducer = 0;
    while (device.getChar(&introducer)) {
        if (introducer == '!') {
            if (!SkipExtension(device))
                return QSize();
        } else if (introducer == ',') {
            const QByteArray frame = device.read(kFrameBytes);
            if (frame.size() != kFrameBytes)
                return QSize();
            const auto wordAt = [](const QByteArray& from, int i) {
                return static_cast<int>(qFromLittleEndian<quint16>(from.constData() + i));
            };
            return QSize(std::max(wordAt(screen, 6), wordAt(frame, 0) + wordAt(frame, 4)),
                         std::max(wordAt(screen, 8), wordAt(frame, 2) + wordAt(frame, 6)));
        } else if (introducer == ';') {
            return QSize();
        }
    }
    return QSize();
}

bool DecodeGifFile(QIODevice& device, CImage& image)
{
    const QSize canvas = FindCanvas(device);
    if (!FitsDecodeLimit(canvas.width(), canvas.height(), 4, static_cast<int>(sizeof(QRgb))) ||
        static_cast<qint64>(canvas.width()) * canvas.height() > kMaxPixelsPerByte * device.size())
        return false;
    if (!device.seek(0))
        return false;
    QImageReader reader(&device, "gif");
    reader.setAutoDetectImageFormat(false);
    const QImage decoded = reader.read();
    return ConvertToCore(decoded, decoded.hasAlphaChannel() ? 4 : 3, image);
}
} // namespace

CResult LoadGif(QIODevice& device, CImage& image, Notes& /*notes*/)
{
    return DecodeGifFile(device, image) ? CResult::Success() : Unreadable("GIF");
}

} // namespace Vantor::Algorithms
