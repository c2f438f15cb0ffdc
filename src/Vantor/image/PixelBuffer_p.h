// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>
#include <memory>

namespace Vantor::Algorithms
{

/// Hands a buffer back to where AllocatePixels took it from.
struct SPixelDeleter {
    std::size_t nBytes = 0; ///< as it was allocated, rounded up
    void operator()(unsigned char* pData) const;
};
using PixelBuffer = std::unique_ptr<unsigned char[], SPixelDeleter>;

/// A buffer of at least that many bytes, 64-byte aligned, its content undefined; null when there is no
/// memory. Any thread.
///
/// The first use of fresh memory costs several times the copy of an image, for its page faults. So large
/// buffers lie on huge pages, and a few that were released are kept for the next that need one.
PixelBuffer AllocatePixels(std::size_t nBytes);

/// The memory of the machine in bytes.
std::size_t GetPhysicalMemory();

} // namespace Vantor::Algorithms
