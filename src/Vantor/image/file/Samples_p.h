// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstdint>

namespace Vantor::Algorithms
{

/// round(v 255 / 65535), which is v / 257 rounded.
constexpr unsigned char Scale16To8(std::uint32_t v)
{
    return static_cast<unsigned char>((v + 128) / 257);
}

/// round(v 255 / (2^32 - 1)).
constexpr unsigned char Scale32To8(std::uint32_t v)
{
    return static_cast<unsigned char>((static_cast<std::uint64_t>(v) + 8421504U) / 16843009U);
}

/// round(v 255) of v clamped to 0 .. 1; what is not a number is 0.
constexpr unsigned char ScaleFloatTo8(double v)
{
    if (!(v > 0.0))
        return 0;
    return v >= 1.0 ? 255 : static_cast<unsigned char>(v * 255.0 + 0.5);
}

} // namespace Vantor::Algorithms
