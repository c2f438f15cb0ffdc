// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/JpegMarkers_p.h>

#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/Exif_p.h>

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
enum EMarker : int {
    FirstAlone = 0xD0, ///< restarts and the start of the file have no body
    LastAlone = 0xD8,
    EndOfFile = 0xD9,
    StartOfScan = 0xDA,
    App0 = 0xE0,
    App1 = 0xE1,
    App2 = 0xE2,
    Comment = 0xFE,
    Fill = 0xFF
};

/// Deliberate: a file of tiny markers is not followed to its end; usual files have a dozen.
constexpr int kMostMarkers = 10000;
constexpr int kJfifBytes = 12; // up to the resolution's end
const QByteArray kJfifName("JFIF", 5);
const QByteArray kExifName("Exif\0", 6);
const QByteArray kProfileName("ICC_PROFILE", 12);

/// The kind of the next marker; -1 at the end.
int NextMarker(QIODevice& device)
{
    char byte = 0;
    do {
        if (!device.getChar(&byte))
            return -1;
    } while (static_cast<unsigned char>(byte) != Fill);
    while (static_cast<unsigned char>(byte) == Fill) {
        if (!device.getChar(&byte))
            return -1;
    }
    return static_cast<unsigned char>(byte);
}

/// Gathers what the markers say.
class CMarkerReader
{
public:
    explicit CMarkerReader(QIODevice& device) : m_device(device) {}
    SImageMetadata Read();

private:
    bool ReadMarker(int nMarker);
    void Take(int nMarker, const QByteArray& body);
    void TakeResolution(const QByteArray& body);
    void TakeExif(const QByteArray& body);
    void TakePieceOfProfile(const QByteArray& body);
    void JoinProfile();

    QIODevice& m_device;
    SImageMetadata m_metadata;
    std::map<int, QByteArray> m_pieces; ///< of the profile, by their numbers from 1 on
    int m_nPieces = 0;                  ///< that there should be
    bool m_bJfif = false;
    bool m_bExif = false;
};

SImageMetadata CMarkerReader::Read()
{
    int nMarkers = 0;
    if (m_device.seek(2))
        while (++nMarkers < kMostMarkers && ReadMarker(NextMarker(m_device))) {
        }
    JoinProfile();
    return std::move(m_metadata);
}

/// @return false behind the last marker before the pixels
bool CMarkerReader::ReadMarker(int nMarker)
{
    if (nMarker <= 1 || (nMarker >= FirstAlone && nMarker <= LastAlone))
        return nMarker >= 0;
    const QByteArray length = m_device.read(2);
    if (nMarker == EndOfFile || nMarker == StartOfScan || length.size() != 2)
        return false;
    const int nBytes = qFromBigEndian<quint16>(length.constData()) - 2;
    if (nBytes < 0)
        return false;
    const bool bWanted = (nMarker >= App0 && nMarker <= App2) || nMarker == Comment;
    if (!bWanted)
        return m_device.seek(std::min(m_device.pos() + nBytes, m_device.size()));
    const QByteArray body = m_device.read(nBytes);
    if (body.size() == nBytes)
        Take(nMarker, body);
    return body.size() == nBytes;
}

void CMarkerReader::Take(int nMarker, const QByteArray& body)
{
    if (nMarker == App0 && body.startsWith(kJfifName))
        TakeResolution(body);
    else if (nMarker == App1 && body.startsWith(kExifName) && !m_bExif)
        TakeExif(body.mid(kExifName.size()));
    else if (nMarker == App2 && body.startsWith(kProfileName))
        TakePieceOfProfile(body.mid(kProfileName.size()));
    else if (nMarker == Comment)
        AddText(m_metadata, "Comment", {body.constData(), static_cast<std::size_t>(body.size())});
}

void CMarkerReader::TakeResolution(const QByteArray& body)
{
    constexpr EResolutionUnit kUnits[] = {EResolutionUnit::None, EResolutionUnit::Inch,
                                          EResolutionUnit::Centimetre};
    const auto nUnit = body.size() >= kJfifBytes ? static_cast<unsigned char>(body[7]) : 0;
    if (nUnit == 0 ||
        nUnit >= static_cast<int>(std::size(kUnits))) // only how wide a pixel is: EXIF may know more
        return;
    m_metadata.resolutionX = qFromBigEndian<quint16>(body.constData() + 8);
    m_metadata.resolutionY = qFromBigEndian<quint16>(body.constData() + 10);
    m_metadata.resolutionUnit = kUnits[nUnit];
    m_bJfif = true;
}

void CMarkerReader::TakeExif(const QByteArray& body)
{
    m_bExif = true;
    AddExif(body, !m_bJfif, m_metadata);
}

void CMarkerReader::TakePieceOfProfile(const QByteArray& body)
{
    if (body.size() < 2)
        return;
    m_nPieces = static_cast<unsigned char>(body[1]);
    m_pieces.emplace(static_cast<unsigned char>(body[0]), body.mid(2)); // a number of 8 bits: 16 MB at most
}

/// A profile that lacks a piece is none.
void CMarkerReader::JoinProfile()
{
    for (int i = 1; i <= m_nPieces; ++i) {
        const auto piece = m_pieces.find(i);
        if (piece == m_pieces.end()) {
            m_metadata.profile.clear();
            return;
        }
        m_metadata.profile.insert(m_metadata.profile.end(), piece->second.begin(), piece->second.end());
    }
}
} // namespace

SImageMetadata ReadJpegMarkers(QIODevice& device)
{
    return CMarkerReader(device).Read();
}

} // namespace Vantor::Algorithms
