// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/PngChunks_p.h>

#include <QIODevice>
#include <QtEndian>

#include <algorithm>

#include <zlib.h>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kSignatureBytes = 8;
constexpr int kChunkHeadBytes = 8; // length and type
constexpr int kChunkCrcBytes = 4;
constexpr int kHeaderBytes = 13;
constexpr qint64 kFramesBytes = 4; // at the start of the chunk that describes an animation
/// Longer EXIF data is not looked into: its first directory stands at its start.
constexpr qint64 kMostExifBytes = 64 << 10;

quint32 PngSum(const QByteArray& type, const QByteArray& body)
{
    uLong nSum = ::crc32(0, reinterpret_cast<const Bytef*>(type.constData()), static_cast<uInt>(type.size()));
    if (!body.isEmpty())
        nSum =
            ::crc32(nSum, reinterpret_cast<const Bytef*>(body.constData()), static_cast<uInt>(body.size()));
    return static_cast<quint32>(nSum);
}

bool IsNeeded(const QByteArray& type)
{
    return type == "IHDR" || type == "PLTE" || type == "IDAT" || type == "IEND" || type == "tRNS";
}
} // namespace

void CPngChunks::Add(qint64 nStart, qint64 nEnd)
{
    if (!m_vctRanges.empty() && m_vctRanges.back().nEnd == nStart)
        m_vctRanges.back().nEnd = nEnd;
    else
        m_vctRanges.push_back({nStart, nEnd});
}

/// The device is positioned at the chunk's body, which is complete; afterwards it may be anywhere.
bool CPngChunks::TakeChunk(const QByteArray& type, qint64 nBytes)
{
    if (m_header.isEmpty() && IsNeeded(type)) {
        if (type != "IHDR" || nBytes != kHeaderBytes)
            return false;
        m_header = m_device.read(kHeaderBytes);
        return m_header.size() == kHeaderBytes;
    }
    if (type == "IDAT") {
        m_nDataBytes += nBytes;
    } else if (type == "tRNS") {
        m_bTransparent = true;
    } else if (type == "acTL") {
        const QByteArray frames = m_device.read(std::min(nBytes, kFramesBytes));
        m_nFrames = frames.size() == kFramesBytes ? qFromBigEndian<quint32>(frames.constData()) : 0;
    } else if (type == "eXIf") {
        const QByteArray exif = m_device.read(std::min(nBytes, kMostExifBytes));
        m_metadata.AddExif(exif);
    } else if (CPngMetadata::IsWanted(type)) {
        AddBeside(type, nBytes);
    }
    return true;
}

/// Takes a chunk that stands beside the pixels, if it is whole.
void CPngChunks::AddBeside(const QByteArray& type, qint64 nBytes)
{
    const QByteArray body = m_device.read(std::min(nBytes, CPngMetadata::kMostBodyBytes));
    const QByteArray sum = m_device.read(kChunkCrcBytes);
    if (body.size() == nBytes && sum.size() == kChunkCrcBytes &&
        qFromBigEndian<quint32>(sum.constData()) == PngSum(type, body))
        m_metadata.Add(type, body);
}

bool CPngChunks::Find()
{
    if (!m_device.seek(kSignatureBytes))
        return false;
    Add(0, kSignatureBytes);
    for (;;) {
        const qint64 nStart = m_device.pos();
        const QByteArray head = m_device.read(kChunkHeadBytes);
        if (head.size() != kChunkHeadBytes)
            return false;
        const qint64 nBytes = qFromBigEndian<quint32>(head.constData());
        const QByteArray type = head.mid(4);
        const qint64 nEnd = nStart + kChunkHeadBytes + nBytes + kChunkCrcBytes;
        if (nEnd > m_device.size() || !TakeChunk(type, nBytes))
            return false;
        if (IsNeeded(type))
            Add(nStart, nEnd);
        if (type == "IEND")
            return m_device.seek(0);
        if (!m_device.seek(nEnd))
            return false;
    }
}

bool CPngChunks::Read(char* pTo, qint64 nBytes)
{
    while (nBytes > 0) {
        if (m_nRange == m_vctRanges.size())
            return false;
        const SRange& range = m_vctRanges[m_nRange];
        if (m_device.pos() == range.nEnd) {
            if (++m_nRange < m_vctRanges.size() && !m_device.seek(m_vctRanges[m_nRange].nStart))
                return false;
            continue;
        }
        const qint64 nRead = m_device.read(pTo, std::min(nBytes, range.nEnd - m_device.pos()));
        if (nRead <= 0)
            return false;
        pTo += nRead;
        nBytes -= nRead;
    }
    return true;
}

qint64 CPngChunks::GetWidth() const
{
    return qFromBigEndian<quint32>(m_header.constData());
}

qint64 CPngChunks::GetHeight() const
{
    return qFromBigEndian<quint32>(m_header.constData() + 4);
}

int CPngChunks::GetDepth() const
{
    return static_cast<unsigned char>(m_header[8]);
}

int CPngChunks::GetColorType() const
{
    return static_cast<unsigned char>(m_header[9]);
}

bool CPngChunks::IsInterlaced() const
{
    return m_header[12] != 0;
}

} // namespace Vantor::Algorithms
