// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>

#include <QByteArray>

namespace Vantor::Algorithms
{

/// What the chunks of a PNG file say beside its pixels.
class CPngMetadata
{
public:
    /// Longer bodies are not looked into.
    static constexpr qint64 kMostBodyBytes = kMostProfileBytes;

    /// Whether Add takes chunks of a type: resolution, profile and texts.
    static bool IsWanted(const QByteArray& type);
    /// @param body  whole, and as its checksum says
    void Add(const QByteArray& type, const QByteArray& body);
    /// @param exif  may be cut short
    void AddExif(const QByteArray& exif);

    const SImageMetadata& Get() const { return m_metadata; }

private:
    void AddResolution(const QByteArray& body);
    void AddProfile(const QByteArray& body);
    void AddPlainText(const QByteArray& body);
    void AddCompressedText(const QByteArray& body);
    void AddInternationalText(const QByteArray& body);
    void Keep(const QByteArray& key, const QByteArray& text);

    SImageMetadata m_metadata;
    bool m_bResolution = false; ///< said by a chunk of its own, which wins over EXIF
};

/// The body of the chunk with a profile; empty for a lack of memory.
QByteArray PngProfileBody(const std::vector<unsigned char>& profile);

} // namespace Vantor::Algorithms
