// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/ZipArchive_p.h>

#include <QString>

#include <zlib.h>

#include <algorithm>

namespace Vantor::Annotations
{

namespace
{
constexpr std::uint32_t kEntryMark = 0x04034b50;
constexpr std::uint32_t kDirectoryMark = 0x02014b50;
constexpr std::uint32_t kEndMark = 0x06054b50;
constexpr std::size_t kEntrySize = 30;
constexpr std::size_t kDirectorySize = 46;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kMaxComment = 65535;
constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kNamesAreUtf8 = 0x0800;
constexpr std::uint16_t kIsEncrypted = 0x0001;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;
constexpr std::uint16_t kFirstDay = 0x0021; // 1980-01-01: archives of the same content are the same
constexpr const char* kDamaged = "It is left out: it is damaged.";
constexpr std::size_t kMaxTotal = std::size_t(64) << 20;

void Put(std::string& bytes, std::uint32_t nValue, int nBytes)
{
    for (int i = 0; i < nBytes; ++i)
        bytes += static_cast<char>((nValue >> (8 * i)) & 0xFF);
}

std::uint32_t Get(const std::string& bytes, std::size_t nAt, int nBytes)
{
    std::uint32_t nValue = 0;
    for (int i = nBytes - 1; i >= 0; --i)
        nValue = (nValue << 8) | static_cast<unsigned char>(bytes[nAt + static_cast<std::size_t>(i)]);
    return nValue;
}

std::uint32_t ChecksumOf(const std::string& bytes)
{
    return static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

/// What the directory tells of an entry.
struct SEntry {
    std::uint16_t nFlags;
    std::uint16_t nMethod;
    std::uint32_t nChecksum;
    std::uint32_t nPacked;
    std::uint32_t nSize;
    std::uint32_t nOffset;
    std::string name;
};

/// Where the end mark stands, or npos.
std::size_t FindEnd(const std::string& bytes)
{
    if (bytes.size() < kEndSize)
        return std::string::npos;
    const std::size_t nLast = bytes.size() - kEndSize;
    const std::size_t nFirst = nLast - std::min(nLast, kMaxComment);
    for (std::size_t nAt = nLast + 1; nAt-- > nFirst;) {
        if (Get(bytes, nAt, 4) == kEndMark && Get(bytes, nAt + 20, 2) <= nLast - nAt)
            return nAt;
    }
    return std::string::npos;
}

/// Reads the entry of the directory at nAt and goes on to the next one.
bool NextEntry(const std::string& bytes, std::size_t& nAt, SEntry& entry)
{
    if (nAt + kDirectorySize > bytes.size() || Get(bytes, nAt, 4) != kDirectoryMark)
        return false;
    const auto half = [&](std::size_t n) { return static_cast<std::uint16_t>(Get(bytes, nAt + n, 2)); };
    const std::size_t nName = half(28);
    if (nAt + kDirectorySize + nName > bytes.size())
        return false;
    entry = {half(8),
             half(10),
             Get(bytes, nAt + 16, 4),
             Get(bytes, nAt + 20, 4),
             Get(bytes, nAt + 24, 4),
             Get(bytes, nAt + 42, 4),
             QString::fromUtf8(bytes.data() + nAt + kDirectorySize, static_cast<int>(nName)).toStdString()};
    nAt += kDirectorySize + nName + half(30) + half(32);
    return true;
}

bool Inflate(const char* pFrom, std::size_t nFrom, std::string& to)
{
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        return false;
    char nothing = 0;
    stream.next_in = reinterpret_cast<z_const Bytef*>(const_cast<char*>(pFrom)); // zlib only reads it
    stream.avail_in = static_cast<uInt>(nFrom);
    stream.next_out = reinterpret_cast<Bytef*>(to.empty() ? &nothing : to.data());
    stream.avail_out = static_cast<uInt>(to.size());
    const bool bWhole = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_out == 0;
    inflateEnd(&stream);
    return bWhole;
}

/// Takes the content of an entry out of the archive.
/// @return why not; empty for a success
std::string Unpack(const std::string& bytes, const SEntry& entry, std::string& content)
{
    if (entry.nFlags & kIsEncrypted)
        return "It is left out: it is encrypted.";
    if (entry.nMethod != kStored && entry.nMethod != kDeflated)
        return "It is left out: its compression is unknown.";
    const std::size_t nEntry = entry.nOffset;
    if (nEntry + kEntrySize > bytes.size() || Get(bytes, nEntry, 4) != kEntryMark)
        return kDamaged;
    const std::size_t nData = nEntry + kEntrySize + Get(bytes, nEntry + 26, 2) + Get(bytes, nEntry + 28, 2);
    if (nData > bytes.size() || entry.nPacked > bytes.size() - nData)
        return kDamaged;
    if (entry.nMethod == kStored) {
        content = bytes.substr(nData, entry.nPacked);
    } else {
        content.assign(entry.nSize, '\0');
        if (!Inflate(bytes.data() + nData, entry.nPacked, content))
            return kDamaged;
    }
    return content.size() == entry.nSize && ChecksumOf(content) == entry.nChecksum ? "" : kDamaged;
}
} // namespace

void CZipWriter::Add(const std::string& name, const std::string& bytes)
{
    std::string common; // what both headers say
    Put(common, kVersion, 2);
    Put(common, kNamesAreUtf8, 2);
    Put(common, kStored, 2);
    Put(common, 0, 2);
    Put(common, kFirstDay, 2);
    Put(common, ChecksumOf(bytes), 4);
    Put(common, static_cast<std::uint32_t>(bytes.size()), 4);
    Put(common, static_cast<std::uint32_t>(bytes.size()), 4);
    Put(common, static_cast<std::uint32_t>(name.size()), 2);
    Put(common, 0, 2); // no extra fields

    Put(m_directory, kDirectoryMark, 4);
    Put(m_directory, kVersion, 2);
    m_directory += common;
    for (int i = 0; i < 5; ++i) // no comment, first disk, no attributes
        Put(m_directory, 0, 2);
    Put(m_directory, static_cast<std::uint32_t>(m_bytes.size()), 4);
    m_directory += name;

    Put(m_bytes, kEntryMark, 4);
    m_bytes += common + name;
    m_bytes += bytes;
    ++m_nEntries;
}

std::string CZipWriter::Finish()
{
    const auto nDirectory = static_cast<std::uint32_t>(m_bytes.size());
    m_bytes += m_directory;
    Put(m_bytes, kEndMark, 4);
    Put(m_bytes, 0, 4); // one disk
    Put(m_bytes, m_nEntries, 2);
    Put(m_bytes, m_nEntries, 2);
    Put(m_bytes, static_cast<std::uint32_t>(m_directory.size()), 4);
    Put(m_bytes, nDirectory, 4);
    Put(m_bytes, 0, 2); // no comment
    return std::move(m_bytes);
}

CResult ReadZip(const std::string& bytes,
                const std::function<bool(const std::string& name, const std::string& content)>& visit,
                Remarks& remarks)
{
    const std::size_t nEnd = FindEnd(bytes);
    if (nEnd == std::string::npos)
        return CResult::Failure("The file is not a zip archive, or its end is missing.");
    const std::uint32_t nEntries = Get(bytes, nEnd + 10, 2);
    std::size_t nAt = Get(bytes, nEnd + 16, 4);
    std::size_t nLeft = kMaxTotal;
    SEntry entry;
    std::string content;
    for (std::uint32_t i = 0; i < nEntries; ++i) {
        if (!NextEntry(bytes, nAt, entry))
            return CResult::Failure("The directory of the zip archive is damaged.");
        const std::size_t nClaim = std::max(entry.nSize, entry.nPacked);
        if (nClaim > nLeft) // a claim counts, also when nothing comes of it
            return CResult::Failure("The zip archive unpacks to more than 64 MiB.");
        nLeft -= nClaim;
        const std::string why = Unpack(bytes, entry, content);
        if (!why.empty())
            remarks.push_back({entry.name, why});
        else if (!visit(entry.name, content))
            break;
    }
    return CResult::Success();
}

} // namespace Vantor::Annotations
