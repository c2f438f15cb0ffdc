// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/ImageFormats_p.h>

#include <string>

namespace Vantor::Algorithms
{

/// Loads what CImage::Load loads from an open random-access device, without name and folder. The content
/// decides the format. The image must be empty; after a failure its content is undefined.
CResult LoadImageFrom(QIODevice& device, CImage& image, SFound& found);

/// A path as CImage has it.
struct SImagePath {
    std::wstring strName;
    std::wstring strFolder;
};
SImagePath PartsOf(const std::wstring& path);

} // namespace Vantor::Algorithms
