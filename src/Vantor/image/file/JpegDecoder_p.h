// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>
#include <Vantor/image/file/CodecState_p.h>

#include <QtGlobal>

#include <cstdio> // which the next one needs
#include <string>
#include <vector>

#include <jpeglib.h>

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;

/// The codec at work on one file. ReadHeader comes first, then the sizes may be asked for, then ReadPixels.
class CJpegDecoder
{
public:
    /// @param device  random access; must outlive this object
    explicit CJpegDecoder(QIODevice& device);
    ~CJpegDecoder();
    CJpegDecoder(const CJpegDecoder&) = delete;
    CJpegDecoder& operator=(const CJpegDecoder&) = delete;

    /// Reads up to the first scan; false for a file that cannot be decoded.
    bool ReadHeader();
    /// Whether ReadHeader failed because the codec knows the kind but cannot decode it.
    bool IsKindUnsupported() const { return m_bKindUnsupported; }

    int GetWidth() const { return static_cast<int>(m_codec.image_width); }
    int GetHeight() const { return static_cast<int>(m_codec.image_height); }
    int GetChannels() const { return m_codec.num_components == 1 ? 1 : 3; }
    /// What the markers say.
    const SImageMetadata& GetMetadata() const { return m_metadata; }
    bool HasSeveralScans() const { return m_bSeveralScans; }
    qint64 GetBlocks() const; ///< 8 x 8 blocks of all components

    /// Reads the rows into an image of these sizes and channels. Missing pixels are grey.
    bool ReadPixels(CImage& image);

    /// What is missing in the picture and the codec's message about it, as sentences; may be empty.
    std::string GetLoss() const;
    std::string GetFlaw() const { return m_state.GetFlaw(); }

private:
    static void OnError(j_common_ptr pCodec);
    static void OnMessage(j_common_ptr pCodec, int nLevel);
    static boolean OnFill(j_decompress_ptr pCodec);
    static void OnSkip(j_decompress_ptr pCodec, long nBytes);
    static void OnStart(j_decompress_ptr) {}

    bool IsDecodable() const;
    void ReadScans();
    void ReadRows(CImage& image);
    void ReadCmykRow(unsigned char* pTo);
    void NoteCut();
    int RowsPerStep() const { return m_codec.max_v_samp_factor * DCTSIZE; }

    QIODevice& m_device;
    CCodecState m_state{"libjpeg"};
    jpeg_decompress_struct m_codec = {};
    jpeg_error_mgr m_errors = {};
    jpeg_source_mgr m_source = {};
    std::vector<JOCTET> m_vctInput;
    std::vector<JSAMPLE> m_vctCmykRow;
    SImageMetadata m_metadata;
    bool m_bKindUnsupported = false;
    bool m_bSeveralScans = false;
    bool m_bEnded = false;   ///< the codec wanted more than the file has
    bool m_bStopped = false; ///< scans were left out
    int m_nScans = 0;        ///< read so far, where there are several
    int m_nCutScans = 0;     ///< scans that end before the last row
    int m_nLastCutScan = 0;
    int m_nStepsThere = 0; ///< rows of blocks of which a truncated scan holds a part; 0: all
};

} // namespace Vantor::Algorithms
