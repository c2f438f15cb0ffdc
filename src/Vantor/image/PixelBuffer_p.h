// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>
#include <memory>

namespace Vantor::Algorithms
{

/// Returns a buffer to where AllocatePixels took it from.
struct SPixelDeleter {
    std::size_t nBytes = 0; ///< as it was allocated, rounded up
    void operator()(unsigned char* pData) const;
};
using PixelBuffer = std::unique_ptr<unsigned char[], SPixelDeleter>;

/// A buffer of at least that many bytes, 64-byte aligned; null when there is no memory. Any thread.
///
/// Because of its page faults, the first use of fresh memory costs several times the copy of an image. So
/// large buffers lie on huge pages while these are cheap, and a few released buffers are kept for reuse.
/// @param pContent  as many bytes to copy into the buffer; null leaves its content undefined
PixelBuffer AllocatePixels(std::size_t nBytes, const unsigned char* pContent = nullptr);

/// Gives a buffer back to the system: it is not kept.
void FreePixels(PixelBuffer buffer);

/// The memory of the machine in bytes.
std::size_t GetPhysicalMemory();

} // namespace Vantor::Algorithms
