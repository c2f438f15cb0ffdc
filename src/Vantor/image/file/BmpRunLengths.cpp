// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/BmpDecoders_p.h>
#include <Vantor/image/file/ByteReader_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>

#include <algorithm>
#include <array>

namespace Vantor::Algorithms
{

namespace
{
/// What may follow a zero count; any other value is a number of single pixels.
enum EEscape : int { EndOfRow = 0, EndOfPicture = 1, Delta = 2 };

void PutColor(quint32 nColor, unsigned char* pTo, int nChannels)
{
    if (nChannels == 3) {
        *pTo++ = static_cast<unsigned char>(nColor >> 16);
        *pTo++ = static_cast<unsigned char>(nColor >> 8);
    }
    *pTo = static_cast<unsigned char>(nColor); // all bytes of a grey are equal
}

/// Paints runs into an image that has the size of the picture.
class CRunPainter
{
public:
    CRunPainter(QIODevice& device, const SBmpHeader& header, CImage& image)
        : m_bytes(device), m_header(header), m_image(image), m_nWidth(image.GetWidth()),
          m_nHeight(image.GetHeight())
    {
    }
    /// Returns the number of rows that are missing at the end of data without an end mark.
    int Paint();

private:
    bool PaintEscape();
    bool PaintRun(int nCount);
    bool PaintSingles(int nCount);
    bool Move();
    bool ReadUnit();
    void Put(quint32 nColor);

    CByteReader m_bytes;
    const SBmpHeader& m_header;
    CImage& m_image;
    const int m_nWidth;
    const int m_nHeight;
    int m_nX = 0;
    int m_nY = 0; ///< in the order of the file
    std::array<quint32, 2> m_unit{};
};

int CRunPainter::Paint()
{
    while (m_nY < m_nHeight) {
        const int nCount = m_bytes.Next();
        if (nCount < 0 || !(nCount > 0 ? PaintRun(nCount) : PaintEscape()))
            return m_nHeight - m_nY - (m_nY < m_nHeight && m_nX == m_nWidth ? 1 : 0);
    }
    return 0;
}

bool CRunPainter::PaintEscape()
{
    const int nEscape = m_bytes.Next();
    switch (nEscape) {
    case EndOfRow:
        m_nX = 0;
        ++m_nY;
        return true;
    case EndOfPicture:
        m_nY = m_nHeight;
        return true;
    case Delta:
        return Move();
    default:
        return nEscape > 0 && PaintSingles(nEscape);
    }
}

bool CRunPainter::Move()
{
    const int nRight = m_bytes.Next();
    const int nOn = m_bytes.Next();
    if (nRight < 0 || nOn < 0)
        return false;
    m_nX = std::min(m_nX + nRight, m_nWidth);
    m_nY = std::min(m_nY + nOn, m_nHeight);
    return true;
}

/// Reads one item of the data: a colour, or two indexes of 4 bits.
bool CRunPainter::ReadUnit()
{
    const int nFirst = m_bytes.Next();
    if (m_header.eCompression == EBmpCompression::RunLength24) {
        const int nSecond = m_bytes.Next();
        const int nThird = m_bytes.Next();
        m_unit.fill(static_cast<quint32>(nThird << 16 | nSecond << 8 | nFirst));
        return nThird >= 0;
    }
    if (nFirst < 0)
        return false;
    const auto nIndex = static_cast<std::size_t>(nFirst);
    if (m_header.eCompression == EBmpCompression::RunLength4)
        m_unit = {m_header.palette[nIndex >> 4], m_header.palette[nIndex & 15]};
    else
        m_unit.fill(m_header.palette[nIndex]);
    return true;
}

bool CRunPainter::PaintRun(int nCount)
{
    if (!ReadUnit())
        return false;
    for (int i = 0; i < nCount; ++i)
        Put(m_unit[static_cast<std::size_t>(i % 2)]);
    return true;
}

bool CRunPainter::PaintSingles(int nCount)
{
    const bool bPairs = m_header.eCompression == EBmpCompression::RunLength4;
    for (int i = 0; i < nCount; ++i) {
        if (!(bPairs && i % 2 == 1) && !ReadUnit())
            return false;
        Put(m_unit[static_cast<std::size_t>(i % 2)]);
    }
    const int nBytes = bPairs ? (nCount + 1) / 2 : m_header.nBits / 8 * nCount;
    return nBytes % 2 == 0 || m_bytes.Next() >= 0;
}

void CRunPainter::Put(quint32 nColor)
{
    if (m_nX == m_nWidth) // a run does not continue in the next row
        return;
    const int nRow = m_header.bTopDown ? m_nY : m_nHeight - 1 - m_nY;
    const int nChannels = m_image.GetChannel();
    PutColor(nColor, m_image.GetRows()[nRow] + static_cast<std::ptrdiff_t>(m_nX) * nChannels, nChannels);
    ++m_nX;
}

void Fill(CImage& image, quint32 nColor)
{
    const int nChannels = image.GetChannel();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char* pTo = image.GetRows()[y];
        for (int x = 0; x < image.GetWidth(); ++x, pTo += nChannels)
            PutColor(nColor, pTo, nChannels);
    }
}
} // namespace

CResult ReadBmpRunLengths(QIODevice& device, const SBmpHeader& header, CImage& image, Notes& notes)
{
    if (image.Create(static_cast<int>(header.nWidth), static_cast<int>(header.nHeight), BmpChannels(header),
                     8, EImageType::Interleaved, kRowAlignment) != 0)
        return Unreadable("BMP");
    const quint32 nBackground = header.palette[0]; // black without a palette
    if (nBackground != 0)                          // a new image is black
        Fill(image, nBackground);
    const int nMissing = CRunPainter(device, header, image).Paint();
    if (nMissing > 0)
        notes.push_back("The file is incomplete: " + std::to_string(nMissing) + " of " +
                        std::to_string(header.nHeight) + " rows are missing or cut short.");
    return CResult::Success();
}

} // namespace Vantor::Algorithms
