// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/PngMetadata_p.h>

#include <QByteArray>
#include <QtGlobal>

#include <vector>

class QIODevice;

namespace Vantor::Algorithms
{

/// A PNG file reduced to the chunks that define its pixels. Texts, profiles and the like can inflate to many
/// times the size of the image; the decoder never sees them, and CPngMetadata reads them within bounds.
class CPngChunks
{
public:
    enum EColorType { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4, Rgba = 6 };

    /// @param device  random access; must outlive this object
    explicit CPngChunks(QIODevice& device) : m_device(device) {}

    /// Finds the chunks up to IEND. False for a chunk that reaches past the end of the file, or a first one
    /// that is no header.
    bool Find();
    /// Reads the next bytes of the reduced file; false past its end.
    bool Read(char* pTo, qint64 nBytes);

    qint64 GetWidth() const;
    qint64 GetHeight() const;
    int GetDepth() const;     ///< bits per sample
    int GetColorType() const; ///< an EColorType, or any other number
    bool IsInterlaced() const;
    bool HasTransparency() const { return m_bTransparent; } ///< whether there is a chunk of it
    qint64 GetDataBytes() const { return m_nDataBytes; }    ///< of the compressed pixels
    quint32 GetFrames() const { return m_nFrames; }         ///< of an animation, 0 for a plain file
    /// What the chunks beside the pixels say.
    const SImageMetadata& GetMetadata() const { return m_metadata.Get(); }

private:
    struct SRange {
        qint64 nStart = 0;
        qint64 nEnd = 0;
    };

    bool TakeChunk(const QByteArray& type, qint64 nBytes);
    void AddBeside(const QByteArray& type, qint64 nBytes);
    void Add(qint64 nStart, qint64 nEnd);

    QIODevice& m_device;
    QByteArray m_header;
    std::vector<SRange> m_vctRanges;
    std::size_t m_nRange = 0;
    qint64 m_nDataBytes = 0;
    quint32 m_nFrames = 0;
    CPngMetadata m_metadata;
    bool m_bTransparent = false;
};

} // namespace Vantor::Algorithms
