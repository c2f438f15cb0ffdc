// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

/// What the reader and the writer of our own format share.
namespace Vantor::Annotations
{

constexpr const char* kOwnMark = "vantor-annotations";
constexpr double kMinPixelSize = 1e-30; ///< of a calibration, in units

/// Whether the text is a SHA-256 digest in lower case, or empty.
inline bool IsDigest(const std::string& text)
{
    constexpr std::size_t kDigits = 64;
    return text.empty() ||
           (text.size() == kDigits && text.find_first_not_of("0123456789abcdef") == std::string::npos);
}

} // namespace Vantor::Annotations
