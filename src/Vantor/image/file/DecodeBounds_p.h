// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QtGlobal>

namespace Vantor::Algorithms
{

/// Readers check the sizes that a file claims against these bounds before they allocate memory.

/// No side is longer than this; the tables of rows and columns of an image are 8 bytes per entry.
constexpr qint64 kMaxSide = 1000000;
/// Rows of loaded images start at multiples of this many bytes.
constexpr int kRowAlignment = 4;

/// While it lives, its thread decodes nothing: FitsDecodeLimit refuses every image, and the memory that it
/// would have allowed is noted. At most one at a time in a thread.
class CDecodeMeasure
{
public:
    CDecodeMeasure();
    ~CDecodeMeasure();
    CDecodeMeasure(const CDecodeMeasure&) = delete;
    CDecodeMeasure& operator=(const CDecodeMeasure&) = delete;

    quint64 GetBytes() const { return m_nBytes; } ///< of the last image; 0 when there was none

private:
    friend bool FitsDecodeLimit(qint64 width, qint64 height, int channels, int decoderBytesPerPixel);

    quint64 m_nBytes = 0;
};

/// True when an image of this size may be decoded: sides in 1 .. kMaxSide, the result (8 bits per channel,
/// rows aligned) within CImage::GetDecodeLimit, and the decoder's own copy of it within twice that limit.
/// @param decoderBytesPerPixel  what the decoder needs beside the result, 0 when it writes into the result
bool FitsDecodeLimit(qint64 width, qint64 height, int channels, int decoderBytesPerPixel);

} // namespace Vantor::Algorithms
