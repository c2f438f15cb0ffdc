// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/PixelBuffer_p.h>

#include <cstdlib>

namespace Vantor::Algorithms
{

namespace
{
constexpr std::size_t kAlignment = 64;
}

void SPixelDeleter::operator()(unsigned char* pData) const
{
    std::free(pData);
}

PixelBuffer AllocatePixels(std::size_t nBytes)
{
    const std::size_t nRounded = (nBytes + kAlignment - 1) / kAlignment * kAlignment;
    return PixelBuffer(static_cast<unsigned char*>(std::aligned_alloc(kAlignment, nRounded)),
                       SPixelDeleter{nRounded});
}

} // namespace Vantor::Algorithms
