// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// PBM, PGM and PPM: a head of words, then plain numbers or bytes.
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ByteReader_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QIODevice>

#include <algorithm>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kMostMaximum = 65535;
constexpr int kByteMaximum = 255;

struct SPnmHead {
    const char* pFormat = "PNM";
    int nChannels = 1;
    int nMaximum = 1;    ///< the sample of white, or of 1 bit black
    bool bBits = false;  ///< one bit for each pixel, 1 is black
    bool bPlain = false; ///< numbers as people write them
    qint64 nWidth = 0;
    qint64 nHeight = 0;
};

bool IsSpace(int nByte)
{
    return nByte == ' ' || (nByte >= '\t' && nByte <= '\r');
}

/// Goes behind the end of the line.
void SkipLine(CByteReader& bytes)
{
    int nByte = 0;
    while (nByte >= 0 && nByte != '\n' && nByte != '\r')
        nByte = bytes.Next();
}

/// The next byte that is neither white space nor in a comment; -1 at the end.
int NextInk(CByteReader& bytes)
{
    for (;;) {
        const int nByte = bytes.Next();
        if (nByte == '#')
            SkipLine(bytes);
        else if (!IsSpace(nByte))
            return nByte;
    }
}

/// The next number and what ends it: a byte of white space, or a comment with its end of the line; -1 when
/// there is none or it is above the most.
int NextNumber(CByteReader& bytes, int nMost)
{
    int nByte = NextInk(bytes);
    if (nByte < '0' || nByte > '9')
        return -1;
    int nNumber = 0;
    for (; nByte >= '0' && nByte <= '9'; nByte = bytes.Next()) {
        nNumber = 10 * nNumber + nByte - '0';
        if (nNumber > nMost)
            return -1;
    }
    if (nByte == '#')
        SkipLine(bytes);
    return nByte < 0 || nByte == '#' || IsSpace(nByte) ? nNumber : -1;
}

bool ReadHead(CByteReader& bytes, SPnmHead& head)
{
    const bool bMark = bytes.Next() == 'P';
    const int nKind = bytes.Next() - '0';
    if (!bMark || nKind < 1 || nKind > 6)
        return false;
    constexpr const char* kFormats[] = {"PPM", "PBM", "PGM"};
    head.pFormat = kFormats[nKind % 3];
    head.bPlain = nKind <= 3;
    head.bBits = nKind == 1 || nKind == 4;
    head.nChannels = nKind % 3 == 0 ? 3 : 1;
    head.nWidth = NextNumber(bytes, kMaxSide);
    head.nHeight = NextNumber(bytes, kMaxSide);
    if (!head.bBits)
        head.nMaximum = NextNumber(bytes, kMostMaximum);
    return head.nWidth > 0 && head.nHeight > 0 && head.nMaximum > 0;
}

/// Bytes of a row that is not plain.
qint64 RowBytes(const SPnmHead& head)
{
    if (head.bBits)
        return (head.nWidth + 7) / 8;
    return head.nWidth * head.nChannels * (head.nMaximum > kByteMaximum ? 2 : 1);
}

/// What the pixels need at least: plain numbers have a digit each and, except for bits, a space between.
qint64 LeastBytes(const SPnmHead& head)
{
    if (!head.bPlain)
        return RowBytes(head) * head.nHeight;
    const qint64 nSamples = head.nWidth * head.nHeight * head.nChannels;
    return head.bBits ? nSamples : 2 * nSamples - 1;
}

unsigned char Scale(int nSample, int nMaximum)
{
    return static_cast<unsigned char>((std::min(nSample, nMaximum) * kByteMaximum + nMaximum / 2) / nMaximum);
}

/// A sample of a plain file, -1 for what is none. Bits need no space between them.
int PlainSample(CByteReader& bytes, const SPnmHead& head)
{
    if (!head.bBits)
        return NextNumber(bytes, kMostMaximum);
    const int nByte = NextInk(bytes);
    return nByte == '0' || nByte == '1' ? '1' - nByte : -1;
}

bool ReadPlain(CByteReader& bytes, const SPnmHead& head, CImage& image)
{
    const int nSamples = image.GetWidth() * image.GetChannel();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char* pTo = image.GetRows()[y];
        for (int i = 0; i < nSamples; ++i) {
            const int nSample = PlainSample(bytes, head);
            if (nSample < 0)
                return false;
            pTo[i] = Scale(nSample, head.nMaximum);
        }
    }
    return true;
}

void ExpandRow(const SPnmHead& head, const unsigned char* pFrom, unsigned char* pTo, int nSamples)
{
    for (int i = 0; i < nSamples; ++i) {
        if (head.bBits)
            pTo[i] = (pFrom[i / 8] >> (7 - i % 8) & 1) != 0 ? 0 : kByteMaximum;
        else if (head.nMaximum > kByteMaximum)
            pTo[i] = Scale(pFrom[2 * i] << 8 | pFrom[2 * i + 1], head.nMaximum);
        else
            pTo[i] = Scale(pFrom[i], head.nMaximum);
    }
}

bool ReadBytes(QIODevice& device, const SPnmHead& head, CImage& image)
{
    const qint64 nBytes = RowBytes(head);
    const bool bDirect = head.nMaximum == kByteMaximum;
    std::vector<unsigned char> row(bDirect ? 0 : static_cast<std::size_t>(nBytes));
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char* const pTo = image.GetRows()[y];
        if (device.read(reinterpret_cast<char*>(bDirect ? pTo : row.data()), nBytes) != nBytes)
            return false;
        if (!bDirect)
            ExpandRow(head, row.data(), pTo, image.GetWidth() * image.GetChannel());
    }
    return true;
}
} // namespace

CResult LoadPnm(QIODevice& device, CImage& image, SFound&)
{
    SPnmHead head;
    CByteReader bytes(device);
    if (!ReadHead(bytes, head))
        return Unreadable(head.pFormat);
    const std::string strFormat = head.pFormat;
    if (!FitsDecodeLimit(head.nWidth, head.nHeight, head.nChannels, 0))
        return CResult::Failure("The picture of the " + strFormat +
                                " file is empty or larger than the limit.");
    if (LeastBytes(head) > device.size() - bytes.Place())
        return CResult::Failure("The " + strFormat + " file is too short for the size that it claims.");
    if (image.Create(static_cast<int>(head.nWidth), static_cast<int>(head.nHeight), head.nChannels, 8,
                     EImageType::Interleaved, kRowAlignment) != 0)
        return Unreadable(head.pFormat);
    if (head.bPlain ? ReadPlain(bytes, head, image)
                    : device.seek(bytes.Place()) && ReadBytes(device, head, image))
        return CResult::Success();
    return Unreadable(head.pFormat);
}

} // namespace Vantor::Algorithms
