// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/CodecState_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/PngHooks_p.h>
#include <Vantor/image/file/PngMetadata_p.h>

#include <QIODevice>

#include <png.h>

namespace Vantor::Algorithms
{

namespace
{
/// The codec at work on one file.
class CPngEncoder
{
public:
    explicit CPngEncoder(QIODevice& device);
    ~CPngEncoder() { png_destroy_write_struct(&m_pPng, &m_pInfo); }
    CPngEncoder(const CPngEncoder&) = delete;
    CPngEncoder& operator=(const CPngEncoder&) = delete;

    CResult Encode(const CImage& image)
    {
        const auto pMetadata = image.GetMetadata();
        const QByteArray profile = IsProfileFor(pMetadata->profile, image.GetChannel())
                                       ? PngProfileBody(pMetadata->profile)
                                       : QByteArray();
        const bool bWritten = m_pInfo && m_state.Run([&] { Write(image, *pMetadata, profile); });
        return bWritten ? CResult::Success() : Unwritable("PNG", m_state.GetFirst());
    }

private:
    static void OnWrite(png_structp pPng, png_bytep pFrom, std::size_t nBytes);
    static void OnFlush(png_structp) {}

    void Write(const CImage& image, const SImageMetadata& metadata, const QByteArray& profile);
    void SetResolution(const SImageMetadata& metadata);

    QIODevice& m_device;
    CCodecState m_state{"libpng"};
    png_structp m_pPng = nullptr;
    png_infop m_pInfo = nullptr;
};

CPngEncoder::CPngEncoder(QIODevice& device)
    : m_device(device),
      m_pPng(png_create_write_struct(PNG_LIBPNG_VER_STRING, &m_state, PngHooks::OnError, PngHooks::OnWarning))
{
    m_pInfo = m_pPng ? png_create_info_struct(m_pPng) : nullptr;
}

void CPngEncoder::OnWrite(png_structp pPng, png_bytep pFrom, std::size_t nBytes)
{
    QIODevice& device = static_cast<CPngEncoder*>(png_get_io_ptr(pPng))->m_device;
    const auto nWanted = static_cast<qint64>(nBytes);
    if (device.write(reinterpret_cast<const char*>(pFrom), nWanted) != nWanted)
        png_error(pPng, "the file cannot be written");
}

void CPngEncoder::SetResolution(const SImageMetadata& metadata)
{
    const double dblUnits = PerMetre(metadata.resolutionUnit);
    const bool bMetres = dblUnits > 0.0;
    const double dblFactor = bMetres ? dblUnits : 1.0;
    const std::uint32_t nX = ToWhole(metadata.resolutionX * dblFactor, PNG_UINT_31_MAX);
    const std::uint32_t nY = ToWhole(metadata.resolutionY * dblFactor, PNG_UINT_31_MAX);
    if (nX > 0 && nY > 0)
        png_set_pHYs(m_pPng, m_pInfo, nX, nY, bMetres ? PNG_RESOLUTION_METER : PNG_RESOLUTION_UNKNOWN);
}

void CPngEncoder::Write(const CImage& image, const SImageMetadata& metadata, const QByteArray& profile)
{
    constexpr int kColorTypes[] = {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB,
                                   PNG_COLOR_TYPE_RGBA};
    png_set_write_fn(m_pPng, this, OnWrite, OnFlush);
    png_set_IHDR(m_pPng, m_pInfo, static_cast<png_uint_32>(image.GetWidth()),
                 static_cast<png_uint_32>(image.GetHeight()), 8, kColorTypes[image.GetChannel() - 1],
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    SetResolution(metadata);
    png_write_info(m_pPng, m_pInfo);
    if (!profile.isEmpty()) // written as it is: the codec would refuse profiles that others read
        png_write_chunk(m_pPng, reinterpret_cast<png_const_bytep>("iCCP"),
                        reinterpret_cast<png_const_bytep>(profile.constData()),
                        static_cast<std::size_t>(profile.size()));
    for (int y = 0; y < image.GetHeight(); ++y) {
        CProgress::Tell(double(y) / image.GetHeight());
        png_write_row(m_pPng, image.GetRows()[y]);
    }
    png_write_end(m_pPng, m_pInfo);
}
} // namespace

CResult SavePng(QIODevice& device, const CImage& image)
{
    return CPngEncoder(device).Encode(image);
}

} // namespace Vantor::Algorithms
