// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/filter/Bands_p.h>
#include <Vantor/image/PixelBuffer_p.h>

#include <cstdint>

namespace Vantor::Algorithms
{

/// A copy of the rows that a region's windows read, made before the filter writes.
struct SOriginal {
    PixelBuffer pData;
    int nFirstRow = 0;
    int nLastRow = 0;
    std::size_t nStride = 0; ///< bytes, no padding

    /// @param radius  rows that a window reaches above and below; 0 to 2^31 - 1
    /// @return false for a lack of memory
    bool CopyFrom(const SFilterJob& job, int radius);
    /// Gives the runs their pixels back.
    void Restore(const SFilterJob& job) const;
    const unsigned char* Row(std::int64_t row) const
    {
        return pData.get() + static_cast<std::size_t>(row - nFirstRow) * nStride;
    }
};

} // namespace Vantor::Algorithms
