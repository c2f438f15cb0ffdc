// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/file/ImageFormats_p.h>

namespace Vantor::Algorithms
{

/// Adds a note on the number of frames when a GIF file holds more than one. It decodes no pixels.
void NoteGifFrames(QIODevice& device, Notes& notes);

} // namespace Vantor::Algorithms
