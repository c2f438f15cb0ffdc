// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <filesystem>

namespace Vantor
{

/// The folder beside the library that holds what it loads or starts.
constexpr const char* kModuleFolder = "vantor";

/// The folder of this library, wherever it lies; a link to the library is followed.
std::filesystem::path LibraryFolder();

} // namespace Vantor
