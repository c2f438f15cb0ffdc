// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/BmpDecoders_p.h>
#include <Vantor/image/file/TiffHandle_p.h>

#include <QBuffer>
#include <QByteArray>

#include <array>

namespace Vantor::Algorithms
{

namespace
{
/// The longest code of so many pixels: a run takes at most 6 bits per pixel, the mark of a row 12 bits and
/// the padding of its byte.
qint64 MostBytes(const SBmpHeader& header)
{
    constexpr qint64 kRowBytes = 8;
    return header.nHeight * (header.nWidth + kRowBytes) + kRowBytes;
}

/// The decoder expects the mark that ends a row before each row, also before the first one.
QByteArray WithFirstMark(const QByteArray& code)
{
    const bool bMarked =
        code.size() > 1 && code[0] == '\0' && (static_cast<unsigned char>(code[1]) & 0xe0) == 0;
    return bMarked ? code : QByteArray("\0\1", 2) + code;
}

/// Wraps the code in an equivalent TIFF file.
bool WriteAsTiff(QIODevice& device, const SBmpHeader& header, QByteArray code)
{
    const TiffHandle tiff = OpenTiff(device, "w");
    if (!tiff)
        return false;
    std::array<std::array<std::uint16_t, 2>, 3> colors{};
    for (std::size_t c = 0; c < 3; ++c) {
        for (std::size_t i = 0; i < 2; ++i)
            colors[c][i] = static_cast<std::uint16_t>((header.palette[i] >> (16 - 8 * c) & 0xff) * 257);
    }
    TIFF* pTiff = tiff.get();
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(header.nWidth));
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(header.nHeight));
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(header.nHeight));
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX3);
    TIFFSetField(pTiff, TIFFTAG_ORIENTATION, header.bTopDown ? ORIENTATION_TOPLEFT : ORIENTATION_BOTLEFT);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_PALETTE);
    TIFFSetField(pTiff, TIFFTAG_COLORMAP, colors[0].data(), colors[1].data(), colors[2].data());
    return TIFFWriteRawStrip(pTiff, 0, code.data(), code.size()) == code.size() && TIFFFlush(pTiff) == 1;
}
} // namespace

CResult ReadBmpHuffman(QIODevice& device, const SBmpHeader& header, CImage& image)
{
    const QByteArray code = device.read(MostBytes(header));
    QBuffer tiff;
    SFound ofTiff; // which says nothing that the BMP file does not
    if (!tiff.open(QIODevice::ReadWrite) || !WriteAsTiff(tiff, header, WithFirstMark(code)) ||
        !tiff.seek(0) || !LoadTiff(tiff, image, ofTiff).IsSuccess())
        return CResult::Failure("The BMP file is in Huffman code that is cut short or lacks the marks "
                                "between its rows.");
    return CResult::Success();
}

} // namespace Vantor::Algorithms
