// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/JpegDecoder_p.h>

#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/JpegHooks_p.h>
#include <Vantor/image/file/JpegMarkers_p.h>

#include <QIODevice>

#include <algorithm>

#include <jerror.h>

namespace Vantor::Algorithms
{

namespace
{
constexpr std::size_t kInputBytes = 64 << 10;
/// In a file with several scans, each scan walks over all blocks; encoders make about ten.
constexpr int kMaxScans = 100;
/// How many blocks all scans together may walk over for each byte of the file: the most scans, at one bit per
/// block. The first scan is free.
constexpr qint64 kMostBlocksPerByte = 8 * kMaxScans;
} // namespace

CJpegDecoder::CJpegDecoder(QIODevice& device) : m_device(device), m_vctInput(kInputBytes)
{
    JpegHooks::Install(m_codec, m_errors, this, OnError, OnMessage);
    m_source.init_source = OnStart;
    m_source.fill_input_buffer = OnFill;
    m_source.skip_input_data = OnSkip;
    m_source.resync_to_restart = jpeg_resync_to_restart;
    m_source.term_source = OnStart;
}

CJpegDecoder::~CJpegDecoder()
{
    jpeg_destroy_decompress(&m_codec);
}

void CJpegDecoder::OnError(j_common_ptr pCodec)
{
    auto& decoder = *static_cast<CJpegDecoder*>(pCodec->client_data);
    const int nCode = pCodec->err->msg_code;
    decoder.m_bKindUnsupported =
        nCode == JERR_SOF_UNSUPPORTED || nCode == JERR_BAD_PRECISION || nCode == JERR_ARITH_NOTIMPL;
    decoder.m_state.Fail(JpegHooks::SText(pCodec).szText);
}

void CJpegDecoder::OnMessage(j_common_ptr pCodec, int nLevel)
{
    if (nLevel >= 0)
        return; // a trace message, no warning
    auto& decoder = *static_cast<CJpegDecoder*>(pCodec->client_data);
    if (pCodec->err->msg_code == JWRN_HIT_MARKER)
        decoder.NoteCut();
    decoder.m_state.Note(JpegHooks::SText(pCodec).szText);
}

/// At the end of the file, supplies an end marker, so that the decoder shows what it has.
boolean CJpegDecoder::OnFill(j_decompress_ptr pCodec)
{
    auto& decoder = *static_cast<CJpegDecoder*>(pCodec->client_data);
    JOCTET* const pInput = decoder.m_vctInput.data();
    qint64 nBytes = decoder.m_device.read(reinterpret_cast<char*>(pInput), kInputBytes);
    if (nBytes <= 0) {
        decoder.m_bEnded = true;
        decoder.m_state.Note("the file ends too early");
        pInput[0] = 0xFF;
        pInput[1] = JPEG_EOI;
        nBytes = 2;
    }
    decoder.m_source.next_input_byte = pInput;
    decoder.m_source.bytes_in_buffer = static_cast<std::size_t>(nBytes);
    return TRUE;
}

void CJpegDecoder::OnSkip(j_decompress_ptr pCodec, long nBytes)
{
    auto& decoder = *static_cast<CJpegDecoder*>(pCodec->client_data);
    jpeg_source_mgr& source = decoder.m_source;
    if (nBytes <= 0)
        return;
    const std::size_t nHere = std::min(static_cast<std::size_t>(nBytes), source.bytes_in_buffer);
    source.next_input_byte += nHere;
    source.bytes_in_buffer -= nHere;
    const qint64 nPlace = decoder.m_device.pos() + nBytes - static_cast<qint64>(nHere);
    decoder.m_device.seek(std::min(nPlace, decoder.m_device.size()));
}

/// The scan's data end before its last row. They may continue after a restart marker.
void CJpegDecoder::NoteCut()
{
    constexpr int kFirstFrameMarker = 0xC0; // lower values are no such markers
    constexpr int kRestarts = 8;
    const int nMarker = m_codec.unread_marker;
    if (nMarker < kFirstFrameMarker || (nMarker >= JPEG_RST0 && nMarker < JPEG_RST0 + kRestarts) ||
        m_nLastCutScan == m_codec.input_scan_number)
        return;
    m_nLastCutScan = m_codec.input_scan_number;
    ++m_nCutScans;
    m_nStepsThere = std::max(m_nStepsThere, static_cast<int>(m_codec.input_iMCU_row) + 1);
}

qint64 CJpegDecoder::GetBlocks() const
{
    qint64 nBlocks = 0;
    for (int i = 0; i < m_codec.num_components; ++i)
        nBlocks +=
            static_cast<qint64>(m_codec.comp_info[i].width_in_blocks) * m_codec.comp_info[i].height_in_blocks;
    return nBlocks;
}

/// Whether the components are those of grey, colours or CMYK. Arithmetic coding continues silently past its
/// end, so such a file has to be long enough: one bit per block, two if there is one scan.
bool CJpegDecoder::IsDecodable() const
{
    if (m_codec.num_components != 1 && m_codec.num_components != 3 && m_codec.num_components != 4)
        return false;
    return !m_codec.arith_code || GetBlocks() <= m_device.size() * (m_codec.progressive_mode ? 8 : 4);
}

bool CJpegDecoder::ReadHeader()
{
    const auto read = [this] {
        jpeg_create_decompress(&m_codec);
        m_codec.src = &m_source;
        jpeg_read_header(&m_codec, TRUE);
        m_bSeveralScans = jpeg_has_multiple_scans(&m_codec) != 0;
    };
    m_metadata = ReadJpegMarkers(m_device);
    return m_device.seek(0) && m_state.Run(read) && IsDecodable();
}

/// Takes the coefficients of all scans.
void CJpegDecoder::ReadScans()
{
    const qint64 nMost = std::max<qint64>(1, kMostBlocksPerByte * m_device.size() / GetBlocks());
    while (!m_bStopped && !CProgress::IsThreadCancelled()) {
        const int nState = jpeg_consume_input(&m_codec);
        if (nState == JPEG_REACHED_EOI)
            return;
        if (nState != JPEG_SCAN_COMPLETED)
            continue;
        if (++m_nScans > kMaxScans)
            m_state.Fail("there are too many scans");
        m_bStopped = m_nScans >= nMost;
    }
}

bool CJpegDecoder::ReadPixels(CImage& image)
{
    m_codec.buffered_image = m_bSeveralScans ? TRUE : FALSE; // the codec's own loop does not count scans
    if (!m_state.Run([this] { jpeg_start_decompress(&m_codec); }))
        return false;
    if (m_bSeveralScans) {
        // The file may end in the head of a scan; the scans before it can be shown.
        const bool bRead = m_state.Run([this] { ReadScans(); });
        if (!bRead && (!m_bEnded || m_nScans < 1))
            return false;
        // Smoothing would read ahead into a scan that was left out.
        m_codec.do_block_smoothing = bRead && !m_bStopped ? TRUE : FALSE;
        if (m_nCutScans < m_nScans)
            m_nStepsThere = 0;
        if (!m_state.Run([this] { jpeg_start_output(&m_codec, m_nScans); }))
            return false;
    }
    if (m_codec.output_components == 4)
        m_vctCmykRow.resize(std::size_t(4) * m_codec.output_width);
    return m_state.Run([this, &image] { ReadRows(image); });
}

void CJpegDecoder::ReadRows(CImage& image)
{
    const JDIMENSION nHeight = m_codec.output_height;
    unsigned char** const pRows = image.GetRows();
    while (m_codec.output_scanline < nHeight && !CProgress::IsThreadCancelled()) {
        const JDIMENSION nRow = m_codec.output_scanline;
        if (m_vctCmykRow.empty())
            jpeg_read_scanlines(&m_codec, pRows + nRow, nHeight - nRow);
        else
            ReadCmykRow(pRows[nRow]);
    }
}

/// The values stand for light, as all writers store them: 255 is no ink.
void CJpegDecoder::ReadCmykRow(unsigned char* pTo)
{
    JSAMPLE* pFrom = m_vctCmykRow.data();
    jpeg_read_scanlines(&m_codec, &pFrom, 1);
    for (JDIMENSION x = 0; x < m_codec.output_width; ++x, pFrom += 4, pTo += 3) {
        for (int c = 0; c < 3; ++c)
            pTo[c] = static_cast<unsigned char>(pFrom[c] * pFrom[3] / 255);
    }
}

std::string CJpegDecoder::GetLoss() const
{
    const std::string strIncomplete = "The file is incomplete: ";
    if (m_nStepsThere > 0 && m_metadata.orientation == 1)
        return strIncomplete + "the picture is missing from row " +
               std::to_string((m_nStepsThere - 1) * RowsPerStep() + 1) + " on.";
    if (m_nStepsThere > 0)
        return strIncomplete + "a part of the picture is missing.";
    const bool bEarly = m_bEnded && (m_bSeveralScans || m_codec.arith_code);
    return bEarly || m_bStopped || m_nCutScans > 0 ? strIncomplete + "details of the picture are missing."
                                                   : std::string();
}

} // namespace Vantor::Algorithms
