// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/PngMetadata_p.h>

#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/Exif_p.h>

#include <QtEndian>

#include <algorithm>
#include <iterator>

#include <zlib.h>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kResolutionBytes = 9;
constexpr const char* kWanted[] = {"pHYs", "iCCP", "tEXt", "zTXt", "iTXt"};
/// Data for programs, not for people.
constexpr const char* kMachineKeys[] = {"XML:com.adobe.xmp", "Raw profile type "};

/// Inflates at most so many bytes. Empty for data that are damaged.
QByteArray Inflate(const QByteArray& from, std::size_t nMost)
{
    z_stream stream{};
    if (from.isEmpty() || inflateInit(&stream) != Z_OK)
        return {};
    constexpr int kStep = 64 << 10;
    QByteArray to;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(from.constData())); // zlib only reads it
    stream.avail_in = static_cast<uInt>(from.size());
    int nState = Z_OK;
    while (nState == Z_OK && static_cast<std::size_t>(to.size()) < nMost) {
        const int nThere = to.size();
        to.resize(nThere +
                  static_cast<int>(std::min<std::size_t>(kStep, nMost - static_cast<std::size_t>(nThere))));
        stream.next_out = reinterpret_cast<Bytef*>(to.data()) + nThere;
        stream.avail_out = static_cast<uInt>(to.size() - nThere);
        nState = inflate(&stream, Z_NO_FLUSH);
        to.resize(to.size() - static_cast<int>(stream.avail_out));
    }
    inflateEnd(&stream);
    return nState == Z_STREAM_END || static_cast<std::size_t>(to.size()) == nMost ? to : QByteArray();
}

/// Takes the text up to the next zero, and the zero, from the front; everything when there is none.
QByteArray TakeWord(QByteArray& body)
{
    const int nEnd = body.indexOf('\0');
    QByteArray word = body.left(nEnd);
    body = nEnd < 0 ? QByteArray() : body.mid(nEnd + 1);
    return word;
}
} // namespace

bool CPngMetadata::IsWanted(const QByteArray& type)
{
    return std::any_of(std::begin(kWanted), std::end(kWanted), [&type](const char* p) { return type == p; });
}

void CPngMetadata::Add(const QByteArray& type, const QByteArray& body)
{
    if (type == "pHYs")
        AddResolution(body);
    else if (type == "iCCP")
        AddProfile(body);
    else if (type == "tEXt")
        AddPlainText(body);
    else if (type == "zTXt")
        AddCompressedText(body);
    else
        AddInternationalText(body);
}

void CPngMetadata::AddExif(const QByteArray& exif)
{
    Algorithms::AddExif(exif, !m_bResolution, m_metadata);
}

void CPngMetadata::AddResolution(const QByteArray& body)
{
    if (body.size() != kResolutionBytes)
        return;
    const bool bMetres = body[8] == 1;
    const double dblPerUnit = bMetres ? kCentimetresPerMetre : 1.0;
    m_metadata.resolutionX = qFromBigEndian<quint32>(body.constData()) / dblPerUnit;
    m_metadata.resolutionY = qFromBigEndian<quint32>(body.constData() + 4) / dblPerUnit;
    m_metadata.resolutionUnit = bMetres ? EResolutionUnit::Centimetre : EResolutionUnit::None;
    m_bResolution = true;
}

void CPngMetadata::AddProfile(const QByteArray& body)
{
    QByteArray rest = body;
    TakeWord(rest);                                                         // its name
    const QByteArray profile = Inflate(rest.mid(1), kMostProfileBytes + 1); // behind the method, which is 0
    m_metadata.profile.assign(profile.begin(), profile.end());
}

void CPngMetadata::AddPlainText(const QByteArray& body)
{
    QByteArray rest = body;
    const QByteArray key = TakeWord(rest);
    Keep(key, rest);
}

void CPngMetadata::AddCompressedText(const QByteArray& body)
{
    QByteArray rest = body;
    const QByteArray key = TakeWord(rest);
    Keep(key, Inflate(rest.mid(1), kMostImageTextBytes + 1));
}

/// Behind the key: two bytes about the compression, the language and the key in that language.
void CPngMetadata::AddInternationalText(const QByteArray& body)
{
    QByteArray rest = body;
    const QByteArray key = TakeWord(rest);
    const bool bCompressed = rest.startsWith('\1');
    rest = rest.mid(2);
    TakeWord(rest);
    TakeWord(rest);
    Keep(key, bCompressed ? Inflate(rest, kMostImageTextBytes + 1) : rest);
}

void CPngMetadata::Keep(const QByteArray& key, const QByteArray& text)
{
    const bool bForMachines = std::any_of(std::begin(kMachineKeys), std::end(kMachineKeys),
                                          [&key](const char* p) { return key.startsWith(p); });
    if (!bForMachines && !text.isEmpty())
        AddText(m_metadata, QString::fromLatin1(key).toStdString(),
                {text.constData(), static_cast<std::size_t>(text.size())});
}

QByteArray PngProfileBody(const std::vector<unsigned char>& profile)
{
    constexpr char kName[] = "ICC profile\0"; // the name, its end, and the method
    uLongf nBytes = compressBound(static_cast<uLong>(profile.size()));
    QByteArray body(kName, sizeof(kName));
    const int nHead = body.size();
    body.resize(nHead + static_cast<int>(nBytes));
    if (compress(reinterpret_cast<Bytef*>(body.data()) + nHead, &nBytes, profile.data(),
                 static_cast<uLong>(profile.size())) != Z_OK)
        return {};
    body.resize(nHead + static_cast<int>(nBytes));
    return body;
}

} // namespace Vantor::Algorithms
