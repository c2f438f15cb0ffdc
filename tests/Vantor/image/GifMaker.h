// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <algorithm>
#include <vector>

/// A plain encoder of GIF files that compresses nothing.
namespace GifMaker
{
using Color = std::vector<int>;

inline const std::vector<Color> kColors = {{10, 20, 30}, {200, 0, 0}, {0, 200, 0}, {0, 0, 200}};
inline const std::vector<Color> kOtherColors = {{1, 1, 1}, {2, 2, 2}};
constexpr int kCodeBits = 9; ///< of an index of 8 bits

inline QByteArray Word(int nValue)
{
    return QByteArray(1, static_cast<char>(nValue)) + static_cast<char>(nValue >> 8);
}

/// 2 or 4 colours, and the flags that announce them.
inline char ColorFlags(const std::vector<Color>& colors)
{
    return colors.empty() ? '\0' : static_cast<char>(0x80 | (colors.size() == 4 ? 1 : 0));
}

inline QByteArray ColorBytes(const std::vector<Color>& colors)
{
    QByteArray bytes;
    for (const Color& color : colors) {
        for (const int nPart : color)
            bytes.append(static_cast<char>(nPart));
    }
    return bytes;
}

inline QByteArray Screen(int nWidth, int nHeight, const std::vector<Color>& colors = kColors)
{
    return "GIF89a" + Word(nWidth) + Word(nHeight) + ColorFlags(colors) + QByteArray(2, '\0') +
           ColorBytes(colors);
}

/// The codes of indexes, each by itself; the table is cleared before its codes grow.
inline QByteArray Codes(const QByteArray& indexes)
{
    constexpr int kClear = 256;
    constexpr int kEnd = 257;
    std::vector<int> codes;
    for (int i = 0; i < indexes.size(); ++i) {
        if (i % 200 == 0)
            codes.push_back(kClear);
        codes.push_back(static_cast<unsigned char>(indexes[i]));
    }
    codes.push_back(kEnd);
    QByteArray bytes((static_cast<int>(codes.size()) * kCodeBits + 7) / 8, '\0');
    for (int i = 0; i < static_cast<int>(codes.size()) * kCodeBits; ++i) {
        const int nBit = codes[static_cast<std::size_t>(i / kCodeBits)] >> (i % kCodeBits) & 1;
        bytes[i / 8] = static_cast<char>(bytes[i / 8] | nBit << (i % 8));
    }
    return bytes;
}

struct SFrame {
    int nLeft = 0;
    int nTop = 0;
    int nWidth = 1;
    int nHeight = 1;
    QByteArray indexes = {};
    bool bInterlaced = false;
    std::vector<Color> colors = {};
};

inline QByteArray Frame(const SFrame& frame)
{
    QByteArray bytes = "," + Word(frame.nLeft) + Word(frame.nTop) + Word(frame.nWidth) + Word(frame.nHeight) +
                       static_cast<char>(ColorFlags(frame.colors) | (frame.bInterlaced ? 0x40 : 0)) +
                       ColorBytes(frame.colors) + '\x08';
    const QByteArray codes = Codes(frame.indexes);
    for (int i = 0; i < codes.size(); i += 255)
        bytes += QByteArray(1, static_cast<char>(std::min(255, codes.size() - i))) + codes.mid(i, 255);
    return bytes + '\0';
}

/// @param nDisposal  0 to 7
/// @param nDelay     hundredths of a second
/// @param nIndex     the transparent colour; -1 for none
inline QByteArray Control(int nDisposal, int nDelay, int nIndex)
{
    return QByteArray("!\xf9\4", 3) + static_cast<char>(nDisposal << 2 | (nIndex >= 0 ? 1 : 0)) +
           Word(nDelay) + static_cast<char>(nIndex) + '\0';
}

inline QByteArray Transparent(int nIndex)
{
    return Control(0, 0, nIndex);
}
} // namespace GifMaker
