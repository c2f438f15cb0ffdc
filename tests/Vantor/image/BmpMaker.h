// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <algorithm>
#include <random>
#include <vector>

/// Plain encoders of BMP files.
namespace BmpMaker
{
using Color = std::vector<int>;
using Colors = std::vector<Color>;

constexpr int kInfoBytes = 40;
constexpr int kOs2Bytes = 64;
enum ECompression { None = 0, Rle8 = 1, Rle4 = 2, BitFields = 3, AlphaBitFields = 6 };
enum EOs2Compression { Huffman = 3, Rle24 = 4 };

inline const Colors kFourColors = {{10, 20, 30}, {200, 0, 0}, {0, 200, 0}, {0, 0, 200}};

inline QByteArray Little(int nValue, int nBytes)
{
    QByteArray bytes;
    for (int i = 0; i < nBytes; ++i)
        bytes.append(static_cast<char>(nValue >> (8 * i)));
    return bytes;
}

struct SBmp {
    int nWidth = 1;
    int nHeight = 1; ///< negative: the first row is the upper one
    int nBits = 8;
    int nCompression = None;
    Colors palette = {};
    QByteArray pixels = {};
    int nHeaderBytes = kInfoBytes;
    QByteArray masks = {}; ///< behind the header
};

inline QByteArray MakeBmp(const SBmp& bmp)
{
    QByteArray header = Little(bmp.nHeaderBytes, 4) + Little(bmp.nWidth, 4) + Little(bmp.nHeight, 4) +
                        Little(1, 2) + Little(bmp.nBits, 2) + Little(bmp.nCompression, 4) +
                        Little(bmp.pixels.size(), 4) + QByteArray(8, '\0') +
                        Little(static_cast<int>(bmp.palette.size()), 4) + Little(0, 4);
    header = header.left(bmp.nHeaderBytes);
    header.append(bmp.nHeaderBytes - header.size(), '\0');
    QByteArray palette;
    for (const Color& color : bmp.palette) {
        for (const int nPart : {color[2], color[1], color[0], 0})
            palette.append(static_cast<char>(nPart));
    }
    const QByteArray behind = header + bmp.masks + palette;
    return "BM" + Little(14 + behind.size() + bmp.pixels.size(), 4) + Little(0, 4) +
           Little(14 + behind.size(), 4) + behind + bmp.pixels;
}

/// Makes random run lengths and paints the same picture.
class CRunMaker
{
public:
    CRunMaker(int nBits, int nWidth, int nHeight, const Colors& palette, unsigned nSeed)
        : m_nBits(nBits), m_nWidth(nWidth), m_nHeight(nHeight), m_palette(palette), m_random(nSeed),
          m_expected(static_cast<std::size_t>(nWidth * nHeight), palette[0])
    {
        while (m_nY < m_nHeight)
            Step();
        m_code.append("\0\1", 2);
    }
    const QByteArray& GetCode() const { return m_code; }
    const Colors& GetExpected() const { return m_expected; }

private:
    int Random(int nMost) { return std::uniform_int_distribution<int>(0, nMost)(m_random); }
    void Put(int nIndex)
    {
        if (m_nX < m_nWidth)
            m_expected[static_cast<std::size_t>((m_nHeight - 1 - m_nY) * m_nWidth + m_nX++)] =
                m_palette[static_cast<std::size_t>(nIndex)];
    }
    void AppendUnit(int nFirst, int nSecond)
    {
        if (m_nBits == 24) {
            for (int c = 2; c >= 0; --c)
                m_code.append(static_cast<char>(
                    m_palette[static_cast<std::size_t>(nFirst)][static_cast<std::size_t>(c)]));
        } else {
            m_code.append(static_cast<char>(m_nBits == 4 ? nFirst << 4 | nSecond : nFirst));
        }
    }
    void Step()
    {
        const int nMost = static_cast<int>(m_palette.size()) - 1;
        switch (Random(5)) {
        case 0: // the next row
            m_code.append("\0\0", 2);
            m_nX = 0;
            ++m_nY;
            break;
        case 1: { // over some pixels and rows
            const int nRight = Random(std::min(9, m_nWidth - m_nX));
            const int nOn = Random(1);
            m_code.append("\0\2", 2).append(static_cast<char>(nRight)).append(static_cast<char>(nOn));
            m_nX += nRight;
            m_nY += nOn;
            break;
        }
        case 2:
        case 3: { // a run, beyond the end of the row at times
            const int nCount = 1 + Random(11);
            const int nFirst = Random(nMost);
            const int nSecond = m_nBits == 4 ? Random(nMost) : nFirst;
            m_code.append(static_cast<char>(nCount));
            AppendUnit(nFirst, nSecond);
            for (int i = 0; i < nCount; ++i)
                Put(i % 2 == 0 ? nFirst : nSecond);
            break;
        }
        default: { // single pixels
            const int nCount = 3 + Random(9);
            m_code.append('\0').append(static_cast<char>(nCount));
            const int nStart = m_code.size();
            for (int i = 0; i < nCount; i += m_nBits == 4 ? 2 : 1) {
                const int nFirst = Random(nMost);
                const int nSecond = Random(nMost);
                AppendUnit(nFirst, nSecond);
                Put(nFirst);
                if (m_nBits == 4 && i + 1 < nCount)
                    Put(nSecond);
            }
            if ((m_code.size() - nStart) % 2 == 1)
                m_code.append('\0');
        }
        }
    }

    int m_nBits;
    int m_nWidth;
    int m_nHeight;
    Colors m_palette;
    std::mt19937 m_random;
    Colors m_expected;
    QByteArray m_code;
    int m_nX = 0;
    int m_nY = 0; ///< from below
};
} // namespace BmpMaker
