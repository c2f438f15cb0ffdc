// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/DecodeBounds_p.h>

#include <Vantor/image/CImage.h>

namespace Vantor::Algorithms
{

namespace
{
thread_local CDecodeMeasure* t_pMeasure = nullptr;
} // namespace

CDecodeMeasure::CDecodeMeasure()
{
    t_pMeasure = this;
}

CDecodeMeasure::~CDecodeMeasure()
{
    t_pMeasure = nullptr;
}

bool FitsDecodeLimit(qint64 width, qint64 height, int channels, int decoderBytesPerPixel)
{
    if (width < 1 || height < 1 || width > kMaxSide || height > kMaxSide)
        return false;
    const quint64 nRow =
        static_cast<quint64>((width * channels + kRowAlignment - 1) / kRowAlignment * kRowAlignment);
    const quint64 nResult = nRow * static_cast<quint64>(height);
    const quint64 nDecoder =
        static_cast<quint64>(width * height) * static_cast<quint64>(decoderBytesPerPixel);
    const quint64 nLimit = CImage::GetDecodeLimit();
    const bool bFits = nResult <= nLimit && nDecoder / 2 <= nLimit;
    if (!t_pMeasure)
        return bFits;
    t_pMeasure->m_nBytes = bFits ? nResult + nDecoder : 0;
    return false;
}

} // namespace Vantor::Algorithms
