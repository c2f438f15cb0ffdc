// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>
#include <memory>

namespace Vantor::Algorithms
{

/// Hands a buffer back to where AllocatePixels took it from.
struct SPixelDeleter {
    std::size_t nBytes = 0;
    void operator()(unsigned char* pData) const;
};
using PixelBuffer = std::unique_ptr<unsigned char[], SPixelDeleter>;

/// A buffer of that many bytes, 64-byte aligned, its content undefined; null when there is no memory.
PixelBuffer AllocatePixels(std::size_t nBytes);

} // namespace Vantor::Algorithms
