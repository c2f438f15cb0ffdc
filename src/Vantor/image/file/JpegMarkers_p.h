// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/SImageMetadata.h>

class QIODevice;

namespace Vantor::Algorithms
{

/// What the markers before the first scan of a JPEG file say beside the pixels: EXIF, profile and comments,
/// within the bounds of an image. Moves the device. The resolution of the oldest marker, JFIF, wins.
SImageMetadata ReadJpegMarkers(QIODevice& device);

} // namespace Vantor::Algorithms
