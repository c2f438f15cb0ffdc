// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>
#include <Vantor/image/PixelBuffer_p.h>

#include <cstdint>

namespace Vantor::Algorithms
{

/// A copy of the rows that a region's windows read, taken before the filter writes.
struct SOriginal {
    PixelBuffer pData;
    int nFirstRow = 0;
    int nLastRow = 0;
    std::size_t nStride = 0; ///< bytes, no padding

    /// @param radius  rows that a window reaches above and below; 0 to 2^31 - 1
    /// @return false when memory runs out
    bool CopyFrom(const SFilterJob& job, int radius);
    /// Restores the pixels of the runs.
    void Restore(const SFilterJob& job) const;
    const unsigned char* Row(std::int64_t row) const
    {
        return pData.get() + static_cast<std::size_t>(row - nFirstRow) * nStride;
    }
};

} // namespace Vantor::Algorithms
