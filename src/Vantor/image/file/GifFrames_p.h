// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/ImageFormats_p.h>

namespace Vantor::Algorithms
{

/// Notes how many frames a GIF file holds, when it holds more than one. Pixels are not decoded.
void NoteGifFrames(QIODevice& device, Notes& notes);

} // namespace Vantor::Algorithms
