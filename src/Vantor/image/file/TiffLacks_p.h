// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

#include <tiffio.h>

namespace Vantor::Algorithms
{

/// Why the codec could not decode a file although it may be whole: a sentence on the compression that it
/// lacks, empty when it has what the file needs.
std::string WhatTheCodecLacks(TIFF* pTiff);

} // namespace Vantor::Algorithms
