// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/TiffPages_p.h>

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <limits>
#include <set>

#include <tiffio.h>

namespace Vantor::Algorithms
{

namespace
{
constexpr std::size_t kMostDirectories = 10000;

/// The chain of a file's directories, which may be truncated or form a loop.
class CDirectories
{
public:
    explicit CDirectories(QIODevice& device);

    quint64 GetOffset() const { return m_nOffset; } ///< of the directory in the file

    /// Goes to the first directory, then to the next one; false behind the last.
    bool Next();
    /// Whether there are more directories than it reads.
    bool IsTooLong() const { return m_nNext != 0 && m_visited.size() == kMostDirectories; }
    /// Whether the directory describes a page of its own.
    bool IsPage() const { return (m_nKind & (FILETYPE_REDUCEDIMAGE | FILETYPE_MASK)) == 0; }

private:
    /// A number of 64 bits in large files, of fewer in classic ones.
    template <class Classic> quint64 ReadNumber();
    quint64 ReadOffset();
    void ReadHead();

    QIODevice& m_device;
    QDataStream m_stream;
    bool m_bBig = false; ///< offsets of 64 bits
    quint64 m_nOffset = 0;
    quint64 m_nNext = 0; ///< where the next directory is; 0 behind the last
    quint32 m_nKind = 0; ///< its subfile type
    std::set<quint64> m_visited;
};

CDirectories::CDirectories(QIODevice& device) : m_device(device), m_stream(&device)
{
    device.seek(0);
    m_stream.setByteOrder(device.peek(1) == "I" ? QDataStream::LittleEndian : QDataStream::BigEndian);
    quint16 nOrder = 0;
    quint16 nVersion = 0;
    m_stream >> nOrder >> nVersion;
    m_bBig = nVersion == TIFF_VERSION_BIG;
    device.seek(m_bBig ? 8 : 4);
    m_nNext = ReadOffset();
}

template <class Classic> quint64 CDirectories::ReadNumber()
{
    quint64 nBig = 0;
    Classic nClassic = 0;
    if (m_bBig)
        m_stream >> nBig;
    else
        m_stream >> nClassic;
    return m_bBig ? nBig : nClassic;
}

quint64 CDirectories::ReadOffset()
{
    const auto nOffset = ReadNumber<quint32>();
    return m_stream.status() == QDataStream::Ok && nOffset < static_cast<quint64>(m_device.size()) ? nOffset
                                                                                                   : 0;
}

bool CDirectories::Next()
{
    if (m_nNext == 0 || IsTooLong() || !m_visited.insert(m_nNext).second)
        return false;
    m_nOffset = m_nNext;
    ReadHead();
    return m_stream.status() == QDataStream::Ok;
}

/// Reads the first entry, which is the subfile type where there is one, and where the next directory is.
void CDirectories::ReadHead()
{
    const qint64 nStart = static_cast<qint64>(m_nOffset);
    m_device.seek(nStart);
    const auto nEntries = std::min<quint64>(ReadNumber<quint16>(), std::numeric_limits<quint16>::max());
    quint16 nTag = 0;
    quint16 nType = 0;
    m_stream >> nTag >> nType;
    m_device.seek(m_device.pos() + (m_bBig ? 8 : 4)); // the count
    m_nKind = 0;
    if (nTag == TIFFTAG_SUBFILETYPE)
        m_stream >> m_nKind;
    const qint64 nEntry = m_bBig ? 20 : 12;
    m_device.seek(nStart + (m_bBig ? 8 : 2) + static_cast<qint64>(nEntries) * nEntry);
    m_nNext = ReadOffset();
}
} // namespace

STiffPages FindTiffPages(QIODevice& device)
{
    CDirectories directories(device);
    STiffPages pages;
    while (directories.Next()) {
        if (pages.vctOffsets.empty() || directories.IsPage()) // the shown image is a page in every case
            pages.vctOffsets.push_back(directories.GetOffset());
    }
    pages.bMore = directories.IsTooLong();
    return pages;
}

std::string NoteOfPages(QIODevice& device)
{
    const STiffPages pages = FindTiffPages(device);
    if (pages.vctOffsets.size() < 2)
        return {};
    return std::string("It is the first of ") + (pages.bMore ? "more than " : "") +
           std::to_string(pages.vctOffsets.size()) + " pages.";
}

} // namespace Vantor::Algorithms
