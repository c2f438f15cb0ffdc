// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>
#include <Vantor/annotation/Annotations.h>

#include <string>
#include <vector>

namespace Vantor::Annotations
{

using Remarks = std::vector<SRemark>;

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

/// One writer per format. All numbers are finite.
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

/// A row of the table of formats.
struct SFormat {
    const char* pName;   ///< as people write it
    const char* pSuffix; ///< of file names, lower case
    /// Whether the beginning of a file (its first 4 KiB, or all of it) is of this format.
    bool (*pMatches)(const std::string& head, const std::string& fileName);
    CResult (*pRead)(const std::string& bytes, const SContext& context, SDocument& document,
                     Remarks& remarks);
    CResult (*pWrite)(const SDocument& document, SContext& context, std::string& bytes, Remarks& remarks);
    bool bSeveralImages; ///< a file may be about several images
};

/// All formats, our own first. What walks over formats walks over these rows.
const std::vector<SFormat>& Formats();

} // namespace Vantor::Annotations
