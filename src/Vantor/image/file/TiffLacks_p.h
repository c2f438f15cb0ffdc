// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

#include <tiffio.h>

namespace Vantor::Algorithms
{

/// Why the codec could not decode a file that may be intact: a sentence on the compression that the codec
/// lacks; empty when it lacks none.
std::string WhatTheCodecLacks(TIFF* pTiff);

} // namespace Vantor::Algorithms
