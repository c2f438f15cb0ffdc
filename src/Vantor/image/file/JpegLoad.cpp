// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/JpegDecoder_p.h>
#include <Vantor/image/file/Orientation_p.h>

#include <algorithm>

namespace Vantor::Algorithms
{

namespace
{
constexpr const char* kKindUnsupported =
    "The JPEG file is lossless, hierarchical or of 12 bits, which the library for JPEG lacks.";
constexpr qint64 kBytesPerBlock = 128; // of coefficients, which several scans need all at once

/// Whether the image that the header claims, and the memory to decode it, stay within the bounds.
bool IsAffordable(const CJpegDecoder& decoder)
{
    const qint64 nPixels = std::max<qint64>(1, qint64(decoder.GetWidth()) * decoder.GetHeight());
    qint64 nDecoderBytes = decoder.GetMetadata().orientation > 1 ? decoder.GetChannels() : 0;
    if (decoder.HasSeveralScans())
        nDecoderBytes += (decoder.GetBlocks() * kBytesPerBlock + nPixels - 1) / nPixels;
    return FitsDecodeLimit(decoder.GetWidth(), decoder.GetHeight(), decoder.GetChannels(),
                           static_cast<int>(nDecoderBytes));
}

bool DecodeJpegFile(CJpegDecoder& decoder, CImage& image)
{
    CImage stored;
    const bool bTurn = decoder.GetMetadata().orientation > 1;
    CImage& decoded = bTurn ? stored : image;
    return IsAffordable(decoder) &&
           decoded.Create(decoder.GetWidth(), decoder.GetHeight(), decoder.GetChannels(), 8,
                          EImageType::Interleaved, kRowAlignment) == 0 &&
           decoder.ReadPixels(decoded) &&
           (!bTurn || Reorient(stored, decoder.GetMetadata().orientation, image));
}
} // namespace

CResult LoadJpeg(QIODevice& device, CImage& image, SFound& found)
{
    CJpegDecoder decoder(device);
    if (!decoder.ReadHeader())
        return decoder.IsKindUnsupported() ? CResult::Failure(kKindUnsupported) : Unreadable("JPEG");
    if (!DecodeJpegFile(decoder, image))
        return Unreadable("JPEG");
    found.metadata = decoder.GetMetadata();
    const std::string strNote = decoder.GetLoss().empty() ? decoder.GetFlaw() : decoder.GetLoss();
    if (!strNote.empty())
        found.notes.push_back(strNote);
    return CResult::Success();
}

} // namespace Vantor::Algorithms
