// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// Feeds the reader of journals. Each line gets the checksum that belongs to it, so that what it says is read.
// What comes back must be fit for a journal, and come back from that with all its annotations.
#include <VantorCommon/annotation/store/AnnotationJournal_p.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>
#include <zlib.h>

namespace
{
const std::string kCrc = ",\"crc\":\"";

[[noreturn]] void Fail(const char* szWhat)
{
    std::fprintf(stderr, "%s\n", szWhat);
    std::abort();
}

std::string WithChecksum(const std::string& line)
{
    const std::string body = line.substr(0, line.rfind(kCrc));
    const auto crc = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
    char szDigits[9];
    std::snprintf(szDigits, sizeof szDigits, "%08lx", crc);
    return body + kCrc + szDigits + "\"}";
}

std::string WithChecksums(const std::string& bytes)
{
    std::string made;
    std::size_t nAt = 0;
    for (std::size_t nEnd; (nEnd = bytes.find('\n', nAt)) != std::string::npos; nAt = nEnd + 1)
        made += WithChecksum(bytes.substr(nAt, nEnd - nAt)) + '\n';
    return made + bytes.substr(nAt);
}

/// Of the objects of each page: identities that stand twice are made anew when they are read.
std::vector<std::size_t> CountsOf(const Vantor::Annotations::SDocument& document)
{
    std::vector<std::size_t> vctCounts;
    for (const auto& page : document.pages)
        vctCounts.push_back(page.objects.size());
    return vctCounts;
}

void Check(const JournalText::SContent& content)
{
    if (!content.bValid || content.document.IsReadOnly()) // a later version is not written
        return;
    const std::string header = JournalText::HeaderLine(content.strImage, content.document, content.nSteps);
    if (header.empty())
        Fail("not written");
    const JournalText::SContent again = JournalText::Replay(header);
    if (!again.bValid || again.bTruncated)
        Fail("not read again");
    if (again.strImage != content.strImage || CountsOf(again.document) != CountsOf(content.document))
        Fail("changed");
}
} // namespace

/// Qt loses a value whose key stands twice; lines that were written have each key once.
extern "C" int __lsan_is_turned_off()
{
    return 1;
}

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    const std::string bytes(reinterpret_cast<const char*>(pData), nBytes);
    try {
        JournalText::Replay(bytes);
        Check(JournalText::Replay(WithChecksums(bytes)));
    } catch (const std::bad_alloc&) { // what the functions may throw
    }
    return 0;
}
