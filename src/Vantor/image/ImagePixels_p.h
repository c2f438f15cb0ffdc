// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>
#include <Vantor/image/CPixelSource.h>
#include <Vantor/image/PixelBuffer_p.h>
#include <Vantor/image/SImageMetadata.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace Vantor::Algorithms
{

/// What a deferred image has beside its format.
struct SDeferred {
    std::shared_ptr<CPixelSource> pSource;
    std::timed_mutex mutex;            ///< of the thread that gets the pixels
    bool bFailed = false;              ///< the pixels cannot be made; the notes say why
    std::atomic<bool> bReady{false};   ///< the pixels are there, and nobody writes them any more
    std::atomic<bool> bChanged{false}; ///< somebody could have changed them
};

/// The pixels of an image and their format.
struct CImage::SPixels {
    int nWidth = 0;
    int nHeight = 0;
    int nChannels = 0;
    int nBitDepth = 0;
    EImageType eType = EImageType::Interleaved;
    int nRowAlignment = 1;
    int nStride = 0;
    PixelBuffer pData;
    std::vector<unsigned char*> vctRows;
    std::vector<std::size_t> vctColumnOffsets;
    std::vector<std::string> vctNotes;
    std::shared_ptr<const SImageMetadata> pMetadata; ///< null: nothing is known

    std::size_t Bytes() const
    {
        return static_cast<std::size_t>(nStride) * static_cast<std::size_t>(nHeight);
    }
    /// Takes over everything except size and content.
    void TakeFormat(const SPixels& model);
    /// Allocates the buffer and the tables for the sizes above.
    /// @param content  the bytes to copy into the buffer; null leaves its content undefined
    bool Allocate(const unsigned char* content = nullptr);
    /// Takes over size and format, and computes the stride. @return false for bad ones
    bool SetFormat(int width, int height, int channels, int bitDepth, int rowAlignment);

    /// @{
    /// To be called before the pixels are read, or before anybody can change them.
    /// @return false when a deferred image cannot get its pixels
    bool Need() { return !pDeferred || pDeferred->bReady.load(std::memory_order_acquire) || Fetch(); }
    bool NeedToChange();
    /// @}
    bool Fetch();
    void TakePixels(SPixels& made);

    std::unique_ptr<SDeferred> pDeferred; ///< null for an image that has always had its pixels
};

} // namespace Vantor::Algorithms
