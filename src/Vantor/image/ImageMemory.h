// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <cstdint>
#include <string>

namespace Vantor::Algorithms
{

/// The memory that CImage::Load takes for a file, as its header tells: the pixels and what the decoder needs
/// beside them. Reads little more than the header, and reports nothing. Any thread.
/// @param path  as for CImage::Load
/// @return bytes; 0 when Load would refuse the file, or when there is no memory to look into it
VANTOR_EXPORT std::uint64_t MemoryToLoad(const std::wstring& path);

} // namespace Vantor::Algorithms
