// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/Exif_p.h>

#include <Vantor/image/ImageMetadata_p.h>

#include <QtEndian>

#include <cstring>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kHeadBytes = 8; // byte order, a magic number, the place of the first directory
constexpr std::size_t kCountBytes = 2;
constexpr std::size_t kEntryBytes = 12; // tag, type, count and value
constexpr std::size_t kValueBytes = 4;  // what is longer stands elsewhere
constexpr std::size_t kRationalBytes = 8;
constexpr int kOrientations = 8;
const QByteArray kLittle("II*\0", 4);
const QByteArray kBig("MM\0*", 4);

enum ETag : quint16 { Orientation = 0x112, ResolutionX = 0x11A, ResolutionY = 0x11B, ResolutionUnit = 0x128 };
enum EType : quint16 { Ascii = 2, Short = 3, Rational = 5 };

/// Reads the entries of a directory, in the byte order of the data.
class CExifReader
{
public:
    explicit CExifReader(const QByteArray& exif)
        : m_pBytes(reinterpret_cast<const unsigned char*>(exif.constData())),
          m_nBytes(static_cast<std::size_t>(exif.size())), m_bLittle(exif.startsWith('I'))
    {
    }
    void ReadDirectory(SImageMetadata& metadata);

private:
    quint16 Word(std::size_t i) const
    {
        return m_bLittle ? qFromLittleEndian<quint16>(m_pBytes + i) : qFromBigEndian<quint16>(m_pBytes + i);
    }
    quint32 Long(std::size_t i) const
    {
        return m_bLittle ? qFromLittleEndian<quint32>(m_pBytes + i) : qFromBigEndian<quint32>(m_pBytes + i);
    }
    bool IsOne(std::size_t nEntry, EType eType) const
    {
        return Word(nEntry + 2) == eType && Long(nEntry + 4) == 1;
    }
    void ReadEntry(std::size_t nEntry, SImageMetadata& metadata);
    void ReadOrientation(std::size_t nEntry, SImageMetadata& metadata);
    double Ratio(std::size_t nEntry) const;
    void ReadText(std::size_t nEntry, SImageMetadata& metadata) const;

    const unsigned char* m_pBytes;
    std::size_t m_nBytes;
    bool m_bLittle;
    bool m_bOrientation = false; ///< the first entry counts
};

void CExifReader::ReadDirectory(SImageMetadata& metadata)
{
    const std::size_t nDirectory = Long(4);
    if (nDirectory > m_nBytes - kCountBytes)
        return;
    metadata.resolutionUnit = EResolutionUnit::Inch; // unless an entry says otherwise
    std::size_t nEntry = nDirectory + kCountBytes;
    for (int n = Word(nDirectory); n > 0 && nEntry + kEntryBytes <= m_nBytes; --n, nEntry += kEntryBytes)
        ReadEntry(nEntry, metadata);
}

void CExifReader::ReadEntry(std::size_t nEntry, SImageMetadata& metadata)
{
    switch (Word(nEntry)) {
    case Orientation:
        ReadOrientation(nEntry, metadata);
        break;
    case ResolutionX:
        metadata.resolutionX = Ratio(nEntry);
        break;
    case ResolutionY:
        metadata.resolutionY = Ratio(nEntry);
        break;
    case ResolutionUnit:
        if (IsOne(nEntry, Short))
            metadata.resolutionUnit = UnitOfTiff(Word(nEntry + 8));
        break;
    default:
        ReadText(nEntry, metadata);
    }
}

void CExifReader::ReadOrientation(std::size_t nEntry, SImageMetadata& metadata)
{
    const int nValue = Word(nEntry + 8);
    if (!m_bOrientation && IsOne(nEntry, Short) && nValue >= 1 && nValue <= kOrientations)
        metadata.orientation = nValue;
    m_bOrientation = true;
}

/// 0 for what is none.
double CExifReader::Ratio(std::size_t nEntry) const
{
    const std::size_t nAt = Long(nEntry + 8);
    if (!IsOne(nEntry, Rational) || nAt > m_nBytes || m_nBytes - nAt < kRationalBytes || Long(nAt + 4) == 0)
        return 0.0;
    return static_cast<double>(Long(nAt)) / Long(nAt + 4);
}

void CExifReader::ReadText(std::size_t nEntry, SImageMetadata& metadata) const
{
    for (const STextTag& tag : kTextTags) {
        if (tag.nTag != Word(nEntry) || Word(nEntry + 2) != Ascii)
            continue;
        const std::size_t nCount = Long(nEntry + 4);
        const std::size_t nAt = nCount <= kValueBytes ? nEntry + 8 : Long(nEntry + 8);
        if (nAt > m_nBytes || m_nBytes - nAt < nCount)
            return;
        const auto* pText = reinterpret_cast<const char*>(m_pBytes) + nAt;
        AddText(metadata, tag.pKey, {pText, ::strnlen(pText, nCount)});
    }
}
} // namespace

EResolutionUnit UnitOfTiff(int nUnit)
{
    constexpr int kInch = 2;
    constexpr int kCentimetre = 3;
    return nUnit == kInch         ? EResolutionUnit::Inch
           : nUnit == kCentimetre ? EResolutionUnit::Centimetre
                                  : EResolutionUnit::None;
}

void AddExif(const QByteArray& exif, bool bResolution, SImageMetadata& metadata)
{
    if (exif.size() < kHeadBytes || !(exif.startsWith(kLittle) || exif.startsWith(kBig)))
        return;
    SImageMetadata said;
    CExifReader(exif).ReadDirectory(said);
    metadata.orientation = said.orientation;
    metadata.texts.insert(metadata.texts.end(), said.texts.begin(), said.texts.end());
    if (!bResolution)
        return;
    metadata.resolutionX = said.resolutionX;
    metadata.resolutionY = said.resolutionY;
    metadata.resolutionUnit = said.resolutionUnit;
}

} // namespace Vantor::Algorithms
