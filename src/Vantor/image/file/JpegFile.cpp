// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/QtImage_p.h>

#include <QByteArray>
#include <QImageWriter>
#include <QtEndian>

#include <algorithm>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kQuality = 95;
constexpr int kBlockSide = 8;
/// Every scan of a file with several walks over all blocks; encoders make about ten.
constexpr int kMaxScans = 100;
constexpr qint64 kBytesPerBlock = 128; // of coefficients, which several scans need all at once

enum EMarker : unsigned char {
    Sof0 = 0xC0,
    Dht = 0xC4,
    Jpg = 0xC8,
    Dac = 0xCC,
    Sof15 = 0xCF,
    Rst0 = 0xD0,
    Rst7 = 0xD7,
    Soi = 0xD8,
    Eoi = 0xD9,
    Sos = 0xDA,
    Tem = 0x01
};

struct SFrame {
    int nWidth = 0;
    int nHeight = 0;
    int nComponents = 0;
    bool bProgressive = false;
    qint64 nBlocks = 0; ///< 8 x 8 blocks of all components
};

bool IsFrameMarker(int nMarker)
{
    return nMarker >= Sof0 && nMarker <= Sof15 && nMarker != Dht && nMarker != Jpg && nMarker != Dac;
}

bool StandsAlone(int nMarker)
{
    return nMarker == Tem || (nMarker >= Rst0 && nMarker <= Soi);
}

/// The next marker code, skipping what is not a marker; -1 at the end of the file.
int NextMarker(QIODevice& device)
{
    char byte = 0;
    while (device.getChar(&byte)) {
        if (byte != '\xff')
            continue;
        while (device.getChar(&byte) && byte == '\xff') {
        }
        if (byte != 0 && byte != '\xff')
            return static_cast<unsigned char>(byte);
    }
    return -1;
}

/// The body of the segment behind a marker; null when it is cut short.
QByteArray ReadSegment(QIODevice& device)
{
    const QByteArray length = device.read(2);
    const int nBytes = length.size() == 2 ? qFromBigEndian<quint16>(length.constData()) - 2 : -1;
    const QByteArray body = nBytes >= 0 ? device.read(nBytes) : QByteArray();
    return body.size() == nBytes ? body : QByteArray();
}

qint64 DivideUp(qint64 a, qint64 b)
{
    return (a + b - 1) / b;
}

bool ParseFrame(int nMarker, const QByteArray& body, SFrame& frame)
{
    constexpr int kFixedBytes = 6;
    const auto byteAt = [&body](int i) { return static_cast<int>(static_cast<unsigned char>(body[i])); };
    if (body.size() < kFixedBytes)
        return false;
    frame.nHeight = qFromBigEndian<quint16>(body.constData() + 1);
    frame.nWidth = qFromBigEndian<quint16>(body.constData() + 3);
    frame.nComponents = byteAt(5);
    frame.bProgressive = (nMarker & 3) == 2;
    if (frame.nComponents < 1 || frame.nComponents > 4 || body.size() < kFixedBytes + 3 * frame.nComponents)
        return false;
    int nMaxH = 1;
    int nMaxV = 1;
    for (int i = 0; i < frame.nComponents; ++i) {
        const int nSampling = byteAt(kFixedBytes + 3 * i + 1);
        nMaxH = std::max(nMaxH, nSampling >> 4);
        nMaxV = std::max(nMaxV, nSampling & 15);
    }
    for (int i = 0; i < frame.nComponents; ++i) {
        const int nSampling = byteAt(kFixedBytes + 3 * i + 1);
        frame.nBlocks += DivideUp(static_cast<qint64>(frame.nWidth) * (nSampling >> 4), nMaxH * kBlockSide) *
                         DivideUp(static_cast<qint64>(frame.nHeight) * (nSampling & 15), nMaxV * kBlockSide);
    }
    return true;
}

/// Reads up to the first scan; a file without a frame before it is no image.
bool FindFrame(QIODevice& device, SFrame& frame, int& nScanComponents)
{
    for (;;) {
        const int nMarker = NextMarker(device);
        if (nMarker < 0 || nMarker == Eoi)
            return false;
        if (StandsAlone(nMarker))
            continue;
        const QByteArray body = ReadSegment(device);
        if (body.isNull())
            return false;
        if (nMarker == Sos) {
            nScanComponents = body.isEmpty() ? 0 : static_cast<unsigned char>(body[0]);
            return frame.nComponents > 0;
        }
        if (IsFrameMarker(nMarker) && (frame.nComponents > 0 || !ParseFrame(nMarker, body, frame)))
            return false;
    }
}

/// The scans from the current place on, counted up to one more than are allowed.
int CountScans(QIODevice& device)
{
    int nScans = 0;
    for (int nMarker = NextMarker(device); nMarker >= 0 && nMarker != Eoi; nMarker = NextMarker(device)) {
        if (nMarker == Sos && ++nScans > kMaxScans)
            break;
    }
    return nScans;
}

/// Whether the bytes behind the header can hold that many blocks: two codes of a bit each per block, in a
/// progressive file one. Arithmetic coding could do with less on a blank image; such files are not known.
bool CanHoldBlocks(const SFrame& frame, qint64 nBytes)
{
    return frame.nBlocks <= nBytes * (frame.bProgressive ? 8 : 4);
}

bool DecodeJpegFile(QIODevice& device, CImage& image)
{
    SFrame frame;
    int nScanComponents = 0;
    device.seek(2);
    if (!FindFrame(device, frame, nScanComponents) || !CanHoldBlocks(frame, device.size() - device.pos()))
        return false;
    const bool bSeveralScans = frame.bProgressive || nScanComponents < frame.nComponents;
    if (bSeveralScans && CountScans(device) >= kMaxScans)
        return false;

    SExpectedImage expected;
    expected.nWidth = frame.nWidth;
    expected.nHeight = frame.nHeight;
    expected.nChannels = frame.nComponents == 1 ? 1 : 3;
    expected.eFormat = frame.nComponents == 1 ? QImage::Format_Grayscale8 : QImage::Format_RGB32;
    int nDecoderBytes = frame.nComponents == 1 ? 0 : static_cast<int>(sizeof(QRgb));
    if (bSeveralScans)
        nDecoderBytes += static_cast<int>(
            DivideUp(frame.nBlocks * kBytesPerBlock,
                     std::max<qint64>(1, static_cast<qint64>(frame.nWidth) * frame.nHeight)));
    if (!FitsDecodeLimit(frame.nWidth, frame.nHeight, expected.nChannels, nDecoderBytes))
        return false;
    return device.seek(0) && ReadWithQt(device, "jpeg", expected, image);
}
} // namespace

CResult LoadJpeg(QIODevice& device, CImage& image, Notes& /*notes*/)
{
    return DecodeJpegFile(device, image) ? CResult::Success() : Unreadable("JPEG");
}

bool SaveJpeg(QIODevice& device, const CImage& image)
{
    QImageWriter writer(&device, "jpeg");
    writer.setQuality(kQuality);
    return writer.write(BorrowAsQImage(image));
}

} // namespace Vantor::Algorithms
