// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <string>
#include <vector>

namespace Vantor::Algorithms
{

/// Describes a format of image files.
struct SImageFormatInfo {
    std::string name;                  ///< as people write it, such as "JPEG"
    std::vector<std::string> suffixes; ///< of file names: lower case, without a dot, the usual one first
    std::string mimeType;              ///< such as "image/jpeg"
    bool canLoad = false;              ///< CImage::Load knows it
    bool canSave = false;              ///< CImage::Save knows it
    bool severalImages = false;        ///< a file may hold pages or frames beside the first
    bool fewColors = false;            ///< saving keeps 256 colours at most
};

/// The formats of CImage::Load and CImage::Save. Any thread. May throw std::bad_alloc.
VANTOR_EXPORT std::vector<SImageFormatInfo> GetImageFormats();

} // namespace Vantor::Algorithms
