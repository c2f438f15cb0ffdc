// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>
#include <Vantor/annotation/Annotations.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Vantor::Annotations
{

using Remarks = std::vector<SRemark>;

/// @{
/// The bounds of what is read, and so of what is written: hostile files cost no more.
constexpr std::size_t kMaxBytes = std::size_t{64} << 20U; ///< of a file
constexpr int kMaxDepth = 16;                             ///< levels of JSON
constexpr std::size_t kMaxPages = 100'000;
constexpr std::size_t kMaxObjects = 1'000'000;
constexpr std::size_t kMaxNumbers = 20'000'000;          ///< of all objects: ten million points
constexpr std::size_t kMaxText = std::size_t{64} << 10U; ///< bytes of one text
/// @}

/// The reason for a file of more than kMaxBytes.
constexpr const char* kTooLarge = "The file is larger than 64 MiB.";

/// Whether a file is of the format: by its bytes, all of them or the beginning, or, where the format has no
/// mark, by its name. One per format that is read.
/// @{
bool IsOwn(const std::string& bytes, const std::string& fileName);
bool IsLabelMe(const std::string& bytes, const std::string& fileName);
bool IsCoco(const std::string& bytes, const std::string& fileName);
bool IsGeoJson(const std::string& bytes, const std::string& fileName);
bool IsCvat(const std::string& bytes, const std::string& fileName);
bool IsVoc(const std::string& bytes, const std::string& fileName);
bool IsYolo(const std::string& bytes, const std::string& fileName);
bool IsRoi(const std::string& bytes, const std::string& fileName);
bool IsRoiSet(const std::string& bytes, const std::string& fileName);
bool IsSvg(const std::string& bytes, const std::string& fileName);
/// @}

/// One reader per format. The document is empty; after a failure it is worthless.
/// @{
CResult ReadOwn(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadLabelMe(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadCoco(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadGeoJson(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadCvat(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadVoc(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadYolo(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadRoi(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadRoiSet(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
CResult ReadSvg(const std::string& bytes, const SContext& context, SDocument& document, Remarks& remarks);
/// @}

/// One writer per format. The objects are well formed (IsWellFormed) and have a kind, or are raw.
/// @{
CResult WriteOwn(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteLabelMe(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteCoco(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteGeoJson(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteCvat(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteVoc(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteYolo(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteRoi(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteRoiSet(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteSvg(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
CResult WriteCsv(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
/// @}

/// A row of the table of formats. What is only written has neither a mark nor a reader.
struct SFormat {
    const char* pName;   ///< as people write it
    const char* pSuffix; ///< of file names, lower case
    bool (*pMatches)(const std::string& bytes, const std::string& fileName);
    CResult (*pRead)(const std::string& bytes, const SContext& context, SDocument& document,
                     Remarks& remarks);
    CResult (*pWrite)(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
    bool bSeveralImages;            ///< a file may be about several images
    const char* pClasses = nullptr; ///< name of the file beside it that keeps SContext::classes
};

/// All formats, our own (kOwnFormat) first; of several that match a file the first is taken. What walks over
/// formats walks over these rows; CMake takes the names of those that are read from the lines that begin a
/// row (cmake/VantorFormats.cmake).
const std::vector<SFormat>& Formats();
/// The row of that name; null when there is none.
const SFormat* FindFormat(const std::string& name);

} // namespace Vantor::Annotations
