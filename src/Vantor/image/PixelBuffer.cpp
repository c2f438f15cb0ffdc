// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/PixelBuffer_p.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <mutex>

#include <sys/mman.h>
#include <unistd.h>

namespace Vantor::Algorithms
{

namespace
{
constexpr std::size_t kMiB = std::size_t(1) << 20;
constexpr std::size_t kAlignment = 64;
constexpr std::size_t kHugePage = 2 * kMiB;
/// From here on a buffer is large: it lies on huge pages and is kept when it is released.
constexpr std::size_t kLargeBuffer = 4 * kMiB;
constexpr std::size_t kMaxKeptBuffers = 6;
constexpr std::size_t kMaxKeptBytes = 512 * kMiB;
/// A kept buffer serves a request that leaves at most an eighth of it unused.
constexpr std::size_t kWasteDivisor = 8;

struct SKept {
    unsigned char* pData = nullptr;
    std::size_t nBytes = 0;
};

/// The released buffers, oldest first. Needs neither construction nor destruction, so that images with
/// static lifetime may come and go before and after everything else.
struct SShelf {
    std::mutex mutex;
    std::array<SKept, kMaxKeptBuffers> arrKept;
    std::size_t nCount = 0;
    std::size_t nBytes = 0;
    bool bClosed = false;

    SKept RemoveAt(std::size_t index)
    {
        const SKept kept = arrKept[index];
        std::move(arrKept.begin() + static_cast<std::ptrdiff_t>(index + 1),
                  arrKept.begin() + static_cast<std::ptrdiff_t>(nCount),
                  arrKept.begin() + static_cast<std::ptrdiff_t>(index));
        --nCount;
        nBytes -= kept.nBytes;
        return kept;
    }
};
SShelf g_shelf;

/// The kept buffer that fits best, or nothing.
SKept Take(std::size_t nBytes)
{
    const std::lock_guard<std::mutex> lock(g_shelf.mutex);
    std::size_t nBest = g_shelf.nCount;
    for (std::size_t i = 0; i < g_shelf.nCount; ++i) {
        const std::size_t nHas = g_shelf.arrKept[i].nBytes;
        if (nHas >= nBytes && nHas - nBytes <= nHas / kWasteDivisor &&
            (nBest == g_shelf.nCount || nHas < g_shelf.arrKept[nBest].nBytes))
            nBest = i;
    }
    return nBest < g_shelf.nCount ? g_shelf.RemoveAt(nBest) : SKept{};
}

/// Keeps the buffer, for which the oldest ones may have to go.
void Keep(const SKept& kept)
{
    std::array<unsigned char*, kMaxKeptBuffers + 1> arrFree{};
    std::size_t nFree = 0;
    {
        const std::lock_guard<std::mutex> lock(g_shelf.mutex);
        if (g_shelf.bClosed || kept.nBytes > kMaxKeptBytes) {
            arrFree[nFree++] = kept.pData;
        } else {
            while (g_shelf.nCount == kMaxKeptBuffers || g_shelf.nBytes + kept.nBytes > kMaxKeptBytes)
                arrFree[nFree++] = g_shelf.RemoveAt(0).pData;
            g_shelf.arrKept[g_shelf.nCount++] = kept;
            g_shelf.nBytes += kept.nBytes;
        }
    }
    // Outside the lock: giving back large memory takes the system a while.
    for (std::size_t i = 0; i < nFree; ++i)
        std::free(arrFree[i]);
}

/// Empties the shelf at the end of the process; what is released later is freed at once.
struct SCloseAtExit {
    ~SCloseAtExit()
    {
        const std::lock_guard<std::mutex> lock(g_shelf.mutex);
        g_shelf.bClosed = true;
        while (g_shelf.nCount > 0)
            std::free(g_shelf.RemoveAt(g_shelf.nCount - 1).pData);
    }
} g_closeAtExit;

unsigned char* AllocateLarge(std::size_t nBytes)
{
    void* pData = std::aligned_alloc(kHugePage, nBytes);
    if (pData)
        madvise(pData, nBytes, MADV_HUGEPAGE); // a wish: without it the buffer is only slower
    return static_cast<unsigned char*>(pData);
}
} // namespace

void SPixelDeleter::operator()(unsigned char* pData) const
{
    if (nBytes >= kLargeBuffer)
        Keep({pData, nBytes});
    else
        std::free(pData);
}

PixelBuffer AllocatePixels(std::size_t nBytes)
{
    // Not even asked for: the system might grant it and kill the process when it is used.
    if (nBytes > GetPhysicalMemory())
        return nullptr;
    const std::size_t nUnit = nBytes >= kLargeBuffer ? kHugePage : kAlignment;
    const std::size_t nRounded = (nBytes + nUnit - 1) / nUnit * nUnit;
    if (nRounded < kLargeBuffer)
        return PixelBuffer(static_cast<unsigned char*>(std::aligned_alloc(kAlignment, nRounded)),
                           SPixelDeleter{nRounded});
    const SKept kept = Take(nRounded);
    if (kept.pData)
        return PixelBuffer(kept.pData, SPixelDeleter{kept.nBytes});
    return PixelBuffer(AllocateLarge(nRounded), SPixelDeleter{nRounded});
}

std::size_t GetPhysicalMemory()
{
    static const std::size_t nPhysical =
        static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return nPhysical;
}

} // namespace Vantor::Algorithms
