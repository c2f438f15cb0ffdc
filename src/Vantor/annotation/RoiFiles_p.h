// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/AnnotationFormats_p.h>

#include <string>
#include <vector>

/// Regions of interest as ImageJ stores them, one in a file.
namespace Vantor::Annotations
{

/// What a file says.
struct SRegion {
    std::vector<SObject> objects; ///< one; several for a selection of several points
    int page = 0;                 ///< 0: of no page in particular; otherwise 1 and up
    std::string remark;           ///< what was lost; empty: nothing
};

/// @return a failure for what is no region, is cut, or is of a kind that we do not have
CResult DecodeRegion(const std::string& bytes, SRegion& region);

/// Whether ImageJ has such a region; remarks it when not.
bool IsRegionOfImageJ(const SObject& object, Remarks& remarks);
/// The bytes of a file, and remarks about what they do not say.
/// @param object  one for which IsRegionOfImageJ is true
/// @param nPage   as in SRegion
std::string EncodeRegion(const SObject& object, int nPage, Remarks& remarks);

} // namespace Vantor::Annotations
