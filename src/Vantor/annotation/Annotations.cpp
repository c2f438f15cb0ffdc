// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/Annotations.h>

#include <Vantor/annotation/AnnotationFormats_p.h>
#include <Vantor/annotation/ObjectOutline_p.h>

namespace Vantor::Annotations
{

namespace
{
constexpr const char* kNotRead = "There is no such format of annotations to read.";
constexpr const char* kNotWritten = "There is no such format of annotations to write.";

SReport ReportOf(const CResult& result, Remarks remarks)
{
    return {result.GetReason(), result.IsSuccess() ? std::move(remarks) : Remarks()};
}

/// What no format can write.
CResult CheckObjects(const SDocument& document)
{
    for (const SPage& page : document.pages) {
        for (const SObject& object : page.objects) {
            if (object.raw.empty() && (object.kind.empty() || !IsWellFormed(object)))
                return CResult::Failure('"' + object.name + "\" cannot be saved: its numbers are no " +
                                        (object.kind.empty() ? "shape" : object.kind) + '.');
        }
    }
    return CResult::Success();
}
} // namespace

std::vector<SFormatInfo> GetFormats()
{
    std::vector<SFormatInfo> infos;
    for (const SFormat& format : Formats())
        infos.push_back({format.pName, format.pSuffix, format.pRead != nullptr, format.pWrite != nullptr,
                         format.bSeveralImages});
    return infos;
}

const SFormat* FindFormat(const std::string& name)
{
    for (const SFormat& format : Formats()) {
        if (format.pName == name)
            return &format;
    }
    return nullptr;
}

std::string FormatOf(const std::string& bytes, const std::string& fileName)
{
    for (const SFormat& format : Formats()) {
        if (format.pRead && format.pMatches(bytes, fileName))
            return format.pName;
    }
    return std::string();
}

SReport Read(const std::string& bytes, const std::string& format, const SContext& context,
             SDocument& document)
{
    const SFormat* pFormat = FindFormat(format);
    if (!pFormat || !pFormat->pRead)
        return {kNotRead, {}};
    if (bytes.size() > kMaxBytes)
        return {kTooLarge, {}};
    SDocument read;
    Remarks remarks;
    const CResult result = pFormat->pRead(bytes, context, read, remarks);
    if (result.IsSuccess())
        document = std::move(read);
    return ReportOf(result, std::move(remarks));
}

SReport Write(const SDocument& document, const std::string& format, SContext& context, std::string& bytes)
{
    const SFormat* pFormat = FindFormat(format);
    if (!pFormat || !pFormat->pWrite)
        return {kNotWritten, {}};
    CResult result = CheckObjects(document);
    std::string written;
    Remarks remarks;
    if (result.IsSuccess())
        result = pFormat->pWrite(document, context, written, remarks);
    if (result.IsSuccess())
        bytes = std::move(written);
    return ReportOf(result, std::move(remarks));
}

} // namespace Vantor::Annotations
