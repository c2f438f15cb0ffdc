// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <string>

namespace Vantor::Algorithms
{

class CImage;

/// Makes the pixels of deferred images (CImage::Defer), which share it. It lives as long as any of them.
class VANTOR_EXPORT CPixelSource
{
public:
    /// What came of it.
    enum EMade : int {
        EMade_Done = 0,   ///< the pixels
        EMade_Failed = 1, ///< they cannot be made, now or later
        EMade_Nothing = 2 ///< the thread's progress was cancelled, or memory ended; it may be tried again
    };

    CPixelSource() = default;
    virtual ~CPixelSource();
    CPixelSource(const CPixelSource&) = delete;
    CPixelSource& operator=(const CPixelSource&) = delete;

    /// Makes the pixels of an image, the same each time. Called by the thread that needs them, by one at a
    /// time for each deferred image. Throws nothing but bad_alloc.
    /// @param image      empty; receives width, height and channels of the deferred image, with rows at
    ///                   multiples of 4 bytes, and its notes
    /// @param strReason  of EMade_Failed, a sentence in English
    virtual EMade Make(CImage& image, std::string& strReason) = 0;
};

} // namespace Vantor::Algorithms
