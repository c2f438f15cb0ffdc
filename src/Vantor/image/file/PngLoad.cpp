// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/CodecState_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/Orientation_p.h>
#include <Vantor/image/file/PngChunks_p.h>
#include <Vantor/image/file/PngHooks_p.h>

#include <algorithm>
#include <array>
#include <cstring>

#include <png.h>

namespace Vantor::Algorithms
{

namespace
{
/// Deflate never makes more than this many bytes of one.
constexpr qint64 kMaxDeflateRatio = 1032;

/// Bytes of the rows of one pass before compression, each with its filter byte.
qint64 PassBytes(qint64 nWidth, qint64 nHeight, int nBitsPerPixel)
{
    return nWidth > 0 && nHeight > 0 ? nHeight * (1 + (nWidth * nBitsPerPixel + 7) / 8) : 0;
}

qint64 RawBytes(qint64 nWidth, qint64 nHeight, int nBitsPerPixel, bool bInterlaced)
{
    if (!bInterlaced)
        return PassBytes(nWidth, nHeight, nBitsPerPixel);
    // The seven passes of Adam7: first column and row, steps.
    constexpr int kPasses[][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                  {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    qint64 nBytes = 0;
    for (const auto& pass : kPasses)
        nBytes += PassBytes((nWidth - pass[0] + pass[2] - 1) / pass[2],
                            (nHeight - pass[1] + pass[3] - 1) / pass[3], nBitsPerPixel);
    return nBytes;
}

int SamplesPerPixel(int nColorType)
{
    switch (nColorType) {
    case CPngChunks::Grey:
    case CPngChunks::Palette:
        return 1;
    case CPngChunks::GreyAlpha:
        return 2;
    case CPngChunks::Rgb:
        return 3;
    case CPngChunks::Rgba:
        return 4;
    default:
        return 0;
    }
}

/// Whether the image that the header claims stays within the bounds, and the data can be enough for it.
bool IsAffordable(const CPngChunks& chunks)
{
    const int nSamples = SamplesPerPixel(chunks.GetColorType());
    const int nDepth = chunks.GetDepth();
    if (nSamples == 0 || nDepth < 1 || nDepth > 16)
        return false;
    const bool bAlpha = chunks.HasTransparency() || nSamples % 2 == 0;
    const int nChannels = bAlpha ? 4 : chunks.GetColorType() == CPngChunks::Grey ? 1 : 3;
    const int nTurned = chunks.GetMetadata().orientation > 1 ? nChannels : 0;
    return FitsDecodeLimit(chunks.GetWidth(), chunks.GetHeight(), nChannels, nTurned) &&
           RawBytes(chunks.GetWidth(), chunks.GetHeight(), nSamples * nDepth, chunks.IsInterlaced()) <=
               kMaxDeflateRatio * chunks.GetDataBytes();
}

/// The codec at work on one file.
class CPngDecoder
{
public:
    explicit CPngDecoder(CPngChunks& chunks);
    ~CPngDecoder() { png_destroy_read_struct(&m_pPng, &m_pInfo, nullptr); }
    CPngDecoder(const CPngDecoder&) = delete;
    CPngDecoder& operator=(const CPngDecoder&) = delete;

    bool Decode(CImage& image);
    std::string GetFlaw() const { return m_state.GetFlaw(); }

private:
    static void OnRead(png_structp pPng, png_bytep pTo, std::size_t nBytes);

    void ReadHead();
    void FillPalette();
    void MakeEightBits();

    CPngChunks& m_chunks;
    CCodecState m_state{"libpng"};
    png_structp m_pPng = nullptr;
    png_infop m_pInfo = nullptr;
    bool m_bBlankTransparent = false;
};

CPngDecoder::CPngDecoder(CPngChunks& chunks)
    : m_chunks(chunks),
      m_pPng(png_create_read_struct(PNG_LIBPNG_VER_STRING, &m_state, PngHooks::OnError, PngHooks::OnWarning))
{
    m_pInfo = m_pPng ? png_create_info_struct(m_pPng) : nullptr;
}

void CPngDecoder::OnRead(png_structp pPng, png_bytep pTo, std::size_t nBytes)
{
    CPngChunks& chunks = static_cast<CPngDecoder*>(png_get_io_ptr(pPng))->m_chunks;
    if (!chunks.Read(reinterpret_cast<char*>(pTo), static_cast<qint64>(nBytes)))
        png_error(pPng, "the file ends too early");
}

void CPngDecoder::ReadHead()
{
    // Some writers understate how far back their data refers.
    png_set_option(m_pPng, PNG_MAXIMUM_INFLATE_WINDOW, PNG_OPTION_ON);
    png_set_read_fn(m_pPng, this, OnRead);
    png_read_info(m_pPng, m_pInfo);
    FillPalette();
    MakeEightBits();
    png_set_interlace_handling(m_pPng);
    png_read_update_info(m_pPng, m_pInfo);
}

/// Extends the palette to all possible indices; those without an entry in the file get its first colour.
void CPngDecoder::FillPalette()
{
    png_colorp pFrom = nullptr;
    int nColors = 0;
    if (png_get_color_type(m_pPng, m_pInfo) != PNG_COLOR_TYPE_PALETTE ||
        png_get_PLTE(m_pPng, m_pInfo, &pFrom, &nColors) == 0 || nColors < 1)
        return;
    const int nWanted = 1 << png_get_bit_depth(m_pPng, m_pInfo);
    std::array<png_color, PNG_MAX_PALETTE_LENGTH> arrColors;
    arrColors.fill(pFrom[0]);
    std::copy_n(pFrom, std::min(nColors, nWanted), arrColors.begin());
    png_set_PLTE(m_pPng, m_pInfo, arrColors.data(), nWanted);
}

/// Makes the codec convert everything to 1, 3 or 4 channels of 8 bits.
void CPngDecoder::MakeEightBits()
{
    const int nType = png_get_color_type(m_pPng, m_pInfo);
    const bool bTransparent = png_get_valid(m_pPng, m_pInfo, PNG_INFO_tRNS) != 0;
    const int nDepth = png_get_bit_depth(m_pPng, m_pInfo);
    png_set_expand(m_pPng);
    if (nDepth == 16)
        png_set_scale_16(m_pPng);
    if (nType == PNG_COLOR_TYPE_GRAY_ALPHA || (nType == PNG_COLOR_TYPE_GRAY && bTransparent))
        png_set_gray_to_rgb(m_pPng);
    m_bBlankTransparent = nType == PNG_COLOR_TYPE_GRAY && bTransparent && nDepth > 1 && nDepth <= 8;
}

/// Deliberate: the transparent grey of a file of 2 to 8 bits becomes black, other colours keep theirs.
void BlankTransparent(CImage& image)
{
    const int nWidth = image.GetWidth();
    for (int y = 0; y < image.GetHeight(); ++y) {
        unsigned char* pPixel = image.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pPixel += 4) {
            if (pPixel[3] == 0)
                std::memset(pPixel, 0, 4);
        }
    }
}

bool CPngDecoder::Decode(CImage& image)
{
    if (!m_pInfo || !m_state.Run([this] { ReadHead(); }))
        return false;
    const auto nWidth = static_cast<int>(m_chunks.GetWidth());
    const int nChannels = png_get_channels(m_pPng, m_pInfo);
    if (png_get_image_width(m_pPng, m_pInfo) != static_cast<png_uint_32>(nWidth) ||
        png_get_image_height(m_pPng, m_pInfo) != static_cast<png_uint_32>(m_chunks.GetHeight()) ||
        png_get_rowbytes(m_pPng, m_pInfo) !=
            static_cast<std::size_t>(nWidth) * static_cast<std::size_t>(nChannels))
        return false;
    if (image.Create(nWidth, static_cast<int>(m_chunks.GetHeight()), nChannels, 8, EImageType::Interleaved,
                     kRowAlignment) != 0)
        return false;
    unsigned char** const pRows = image.GetRows();
    const bool bRead = m_state.Run([this, pRows] {
        png_read_image(m_pPng, pRows);
        png_read_end(m_pPng, nullptr);
    });
    if (bRead && m_bBlankTransparent)
        BlankTransparent(image);
    return bRead;
}

bool DecodePngFile(QIODevice& device, CImage& image, SFound& found)
{
    CPngChunks chunks(device);
    if (!chunks.Find() || !IsAffordable(chunks))
        return false;
    CPngDecoder decoder(chunks);
    CImage stored;
    const bool bTurn = chunks.GetMetadata().orientation > 1;
    if (!decoder.Decode(bTurn ? stored : image) ||
        (bTurn && !Reorient(stored, chunks.GetMetadata().orientation, image)))
        return false;
    found.metadata = chunks.GetMetadata();
    if (chunks.GetFrames() > 1)
        found.notes.push_back("It is the first of " + std::to_string(chunks.GetFrames()) + " frames.");
    if (!decoder.GetFlaw().empty())
        found.notes.push_back(decoder.GetFlaw());
    return true;
}
} // namespace

CResult LoadPng(QIODevice& device, CImage& image, SFound& found)
{
    return DecodePngFile(device, image, found) ? CResult::Success() : Unreadable("PNG");
}

} // namespace Vantor::Algorithms
