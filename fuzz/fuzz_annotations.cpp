// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// Feeds the reader of one format of annotations; VANTOR_FUZZ_FORMAT is its name in lower case without blanks.
// Every document read must fit the library's own format, and come back from it unchanged.
#include <Vantor/annotation/Annotations.h>

#include <QByteArray>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>

using namespace Vantor::Annotations;

namespace
{
std::string g_strFormat;

[[noreturn]] void Fail(const std::string& what)
{
    std::fprintf(stderr, "%s\n", what.c_str());
    std::abort();
}

std::string OwnBytes(const SDocument& document)
{
    SContext context;
    std::string bytes;
    const SReport report = Write(document, kOwnFormat, context, bytes);
    if (!report.failure.empty())
        Fail("not written: " + report.failure);
    return bytes;
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    for (const SFormatInfo& format : GetFormats()) {
        if (QByteArray::fromStdString(format.name).toLower().replace(" ", "") == VANTOR_FUZZ_FORMAT)
            g_strFormat = format.name;
    }
    if (g_strFormat.empty())
        Fail("There is no such format.");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nBytes)
{
    const std::string bytes(reinterpret_cast<const char*>(pData), nBytes);
    SContext context;
    context.imageName = "photo.jpg";
    context.width = 400;
    context.height = 300;
    context.classes = "cell\nspot\n";
    try {
        FormatOf(bytes, "file.txt");
        SDocument document;
        if (!Read(bytes, g_strFormat, context, document).failure.empty() || document.IsReadOnly())
            return 0;
        const std::string own = OwnBytes(document);
        SDocument again;
        const SReport report = Read(own, kOwnFormat, SContext(), again);
        if (!report.failure.empty())
            Fail("not read again: " + report.failure);
        if (OwnBytes(again) != own && g_strFormat != kOwnFormat) // our reader adds missing identities
            Fail("changed");
        for (const SFormatInfo& format : GetFormats()) {
            std::string foreign;
            if (format.writes)
                Write(document, format.name, context, foreign);
        }
    } catch (const std::bad_alloc&) { // the functions may throw it
    }
    return 0;
}
