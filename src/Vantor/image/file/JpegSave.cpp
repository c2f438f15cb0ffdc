// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/CodecState_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/JpegHooks_p.h>
#include <Vantor/image/file/JpegQuality.h>

#include <QIODevice>

#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>

namespace Vantor::Algorithms
{

namespace
{
std::atomic<int> g_nQuality{95};
constexpr std::uint32_t kMostDensity = 0xFFFF;
constexpr std::size_t kOutputBytes = 64 << 10;

/// The codec at work on one file.
class CJpegEncoder
{
public:
    explicit CJpegEncoder(QIODevice& device);
    ~CJpegEncoder() { jpeg_destroy_compress(&m_codec); }
    CJpegEncoder(const CJpegEncoder&) = delete;
    CJpegEncoder& operator=(const CJpegEncoder&) = delete;

    CResult Encode(const CImage& image)
    {
        const auto pMetadata = image.GetMetadata();
        const bool bWritten = m_state.Run([&] { Write(image, *pMetadata); });
        return bWritten ? CResult::Success() : Unwritable("JPEG", m_state.GetFirst());
    }

private:
    static void OnError(j_common_ptr pCodec);
    static void OnMessage(j_common_ptr, int) {}
    static void OnStart(j_compress_ptr pCodec);
    static boolean OnFull(j_compress_ptr pCodec);
    static void OnEnd(j_compress_ptr pCodec);

    void Write(const CImage& image, const SImageMetadata& metadata);
    void SetResolution(const SImageMetadata& metadata);
    void Flush(std::size_t nBytes);

    QIODevice& m_device;
    CCodecState m_state{"libjpeg"};
    jpeg_compress_struct m_codec = {};
    jpeg_error_mgr m_errors = {};
    jpeg_destination_mgr m_destination = {};
    std::array<JOCTET, kOutputBytes> m_arrOutput;
};

CJpegEncoder::CJpegEncoder(QIODevice& device) : m_device(device)
{
    JpegHooks::Install(m_codec, m_errors, this, OnError, OnMessage);
    m_destination.init_destination = OnStart;
    m_destination.empty_output_buffer = OnFull;
    m_destination.term_destination = OnEnd;
}

void CJpegEncoder::OnError(j_common_ptr pCodec)
{
    static_cast<CJpegEncoder*>(pCodec->client_data)->m_state.Fail(JpegHooks::SText(pCodec).szText);
}

void CJpegEncoder::OnStart(j_compress_ptr pCodec)
{
    auto& encoder = *static_cast<CJpegEncoder*>(pCodec->client_data);
    encoder.m_destination.next_output_byte = encoder.m_arrOutput.data();
    encoder.m_destination.free_in_buffer = kOutputBytes;
}

boolean CJpegEncoder::OnFull(j_compress_ptr pCodec)
{
    static_cast<CJpegEncoder*>(pCodec->client_data)->Flush(kOutputBytes);
    OnStart(pCodec);
    return TRUE;
}

void CJpegEncoder::OnEnd(j_compress_ptr pCodec)
{
    auto& encoder = *static_cast<CJpegEncoder*>(pCodec->client_data);
    encoder.Flush(kOutputBytes - encoder.m_destination.free_in_buffer);
}

void CJpegEncoder::Flush(std::size_t nBytes)
{
    const auto nWanted = static_cast<qint64>(nBytes);
    if (m_device.write(reinterpret_cast<const char*>(m_arrOutput.data()), nWanted) != nWanted)
        m_state.Fail("the file cannot be written");
}

/// The file holds whole numbers per inch or per centimetre: whichever is nearer.
void CJpegEncoder::SetResolution(const SImageMetadata& metadata)
{
    struct SUnit {
        UINT8 nCode;
        double dblPerMetre; ///< 0: the numbers stand for nothing but the shape of a pixel
    };
    constexpr SUnit kNone{0, 0.0};
    constexpr SUnit kInch{1, kInchesPerMetre};
    constexpr SUnit kCentimetre{2, kCentimetresPerMetre};
    const double dblPerMetre = PerMetre(metadata.resolutionUnit);
    const auto in = [dblPerMetre](double dbl, const SUnit& unit) {
        return unit.nCode == 0 ? dbl : dbl * dblPerMetre / unit.dblPerMetre;
    };
    const auto error = [&](const SUnit& unit) {
        const double dblX = in(metadata.resolutionX, unit);
        const double dblY = in(metadata.resolutionY, unit);
        return std::abs(dblX - std::round(dblX)) / dblX + std::abs(dblY - std::round(dblY)) / dblY;
    };
    const SUnit& unit = dblPerMetre <= 0.0 ? kNone : error(kInch) <= error(kCentimetre) ? kInch : kCentimetre;
    const std::uint32_t nX = ToWhole(in(metadata.resolutionX, unit), kMostDensity);
    const std::uint32_t nY = ToWhole(in(metadata.resolutionY, unit), kMostDensity);
    if (nX == 0 || nY == 0)
        return;
    m_codec.density_unit = unit.nCode;
    m_codec.X_density = static_cast<UINT16>(nX);
    m_codec.Y_density = static_cast<UINT16>(nY);
}

void CJpegEncoder::Write(const CImage& image, const SImageMetadata& metadata)
{
    constexpr J_COLOR_SPACE kColors[] = {JCS_GRAYSCALE, JCS_UNKNOWN, JCS_RGB, JCS_EXT_RGBX};
    jpeg_create_compress(&m_codec);
    m_codec.dest = &m_destination;
    m_codec.image_width = static_cast<JDIMENSION>(image.GetWidth());
    m_codec.image_height = static_cast<JDIMENSION>(image.GetHeight());
    m_codec.input_components = image.GetChannel();
    m_codec.in_color_space = kColors[image.GetChannel() - 1];
    jpeg_set_defaults(&m_codec);
    jpeg_set_quality(&m_codec, g_nQuality, TRUE);
    SetResolution(metadata);
    jpeg_start_compress(&m_codec, TRUE);
    if (IsProfileFor(metadata.profile, image.GetChannel()))
        jpeg_write_icc_profile(&m_codec, metadata.profile.data(),
                               static_cast<unsigned>(metadata.profile.size()));
    while (m_codec.next_scanline < m_codec.image_height) {
        CProgress::Tell(double(m_codec.next_scanline) / m_codec.image_height);
        JSAMPLE* pRow = const_cast<JSAMPLE*>(image.GetRows()[m_codec.next_scanline]); // it only reads
        jpeg_write_scanlines(&m_codec, &pRow, 1);
    }
    jpeg_finish_compress(&m_codec);
}
} // namespace

void SetJpegQuality(int quality)
{
    if (quality >= 1 && quality <= 100)
        g_nQuality = quality;
}

int GetJpegQuality()
{
    return g_nQuality;
}

CResult SaveJpeg(QIODevice& device, const CImage& image)
{
    return CJpegEncoder(device).Encode(image);
}

} // namespace Vantor::Algorithms
