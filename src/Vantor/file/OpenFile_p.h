// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

class QFile;

namespace Vantor
{

/// The path as the system takes it: UTF-8, whatever the locale says. Empty for a path that cannot exist.
std::string ToSystemPath(const std::wstring& path);

/// Opens an existing regular file for reading. A folder, a FIFO, a device or a socket fails at once, without
/// waiting for the other end.
/// @param reason  takes a sentence that tells why it failed; may be null
/// @{
bool OpenRegularFile(const std::wstring& path, QFile& file, std::string* reason = nullptr);
bool OpenRegularFile(const std::string& systemPath, QFile& file, std::string* reason = nullptr);
/// @}

} // namespace Vantor
