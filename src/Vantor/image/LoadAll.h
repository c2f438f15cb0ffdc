// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <memory>
#include <string>
#include <vector>

namespace Vantor::Algorithms
{

class CImage;

/// More images of a file than these are left out.
constexpr int kMostImagesOfFile = 10000;

/// All images of a file: the pages of a TIFF file, without reduced copies and masks, and the frames of a GIF
/// file as they are shown, each on what the frames before it have left. Files of other formats have one.
///
/// The first is what CImage::Load makes of the file. The others are deferred (CImage::Defer): they have their
/// size and what the file says beside the pixels, and are read when their pixels are needed, from the file
/// that was opened, which stays open until the last of them has gone. All have name and folder of the file. A
/// page that cannot be read is white, and its note says why; when even its size is unknown it has that of the
/// first. The notes of a GIF frame tell how long it is shown. Frames have 3 channels as long as the first one
/// has and no frame cleared what it covered, else 4: what is cleared is transparent.
///
/// The function reads the heads of the images, for no longer than a file of this size can need, and tells the
/// progress of its thread; cancelled, it fails. Any thread.
/// @param path        as for CImage::Load
/// @param limit       the most images, 1 to kMostImagesOfFile; what is beyond counts as the nearest of both
/// @param strFailure  a sentence in English: why there is none, or why some were left out; empty when all
/// came
/// @return none when the first cannot be loaded
VANTOR_EXPORT std::vector<std::shared_ptr<CImage>> LoadAll(const std::wstring& path, int limit,
                                                           std::string& strFailure);

} // namespace Vantor::Algorithms
