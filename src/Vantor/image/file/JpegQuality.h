// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

namespace Vantor::Algorithms
{

/// @{
/// The quality with which CImage::Save writes JPEG files from then on, for the whole process: 1 to 100, 95 at
/// the start. Any other value changes nothing. Any thread.
VANTOR_EXPORT void SetJpegQuality(int quality);
VANTOR_EXPORT int GetJpegQuality();
/// @}

} // namespace Vantor::Algorithms
