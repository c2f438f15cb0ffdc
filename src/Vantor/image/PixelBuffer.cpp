// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/PixelBuffer_p.h>

#include <Vantor/image/LargePages_p.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <ctime>
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
/// Buffers of this size and more may lie on huge pages and are kept when they are released.
constexpr std::size_t kLargeBuffer = 4 * kMiB;
constexpr std::size_t kMaxKeptBuffers = 6;
constexpr std::size_t kMaxKeptBytes = 512 * kMiB;
/// A kept buffer serves a request that leaves at most an eighth of it unused.
constexpr std::size_t kWasteDivisor = 8;

struct SKept {
    unsigned char* pData = nullptr;
    std::size_t nBytes = 0;
};

/// The released buffers, oldest first. It needs neither construction nor destruction, because static images
/// may be constructed earlier and destroyed later than anything else.
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

/// The kept buffer that fits best, or none.
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

/// Keeps the buffer and frees the oldest ones if there are too many.
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
    // Outside the lock: returning much memory to the system takes a while.
    for (std::size_t i = 0; i < nFree; ++i)
        std::free(arrFree[i]);
}

/// Frees all kept buffers at the end of the process; a buffer that is released later is freed at once.
struct SCloseAtExit {
    ~SCloseAtExit()
    {
        const std::lock_guard<std::mutex> lock(g_shelf.mutex);
        g_shelf.bClosed = true;
        while (g_shelf.nCount > 0)
            std::free(g_shelf.RemoveAt(g_shelf.nCount - 1).pData);
    }
} g_closeAtExit;

CLargePages g_largePages;

/// The processor time of this thread: what others do meanwhile on a busy machine does not count.
std::chrono::nanoseconds ThreadTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Makes the system provide memory of the size of a large page. These calls are requests only: if they fail,
/// the memory comes at its first use, more slowly.
void TouchPiece(unsigned char* pPiece)
{
    const bool bLarge = g_largePages.WantsLarge();
    const std::chrono::nanoseconds start = ThreadTime();
    madvise(pPiece, kHugePage, bLarge ? MADV_HUGEPAGE : MADV_NOHUGEPAGE);
    pPiece[0] = 0;
    madvise(pPiece, kHugePage, MADV_POPULATE_WRITE);
    if (bLarge)
        g_largePages.NoteCost(ThreadTime() - start);
}

/// Works piece by piece, so that the copy finds its target in the cache.
/// @param pContent  nUsed bytes to begin with, or null
unsigned char* AllocateLarge(std::size_t nBytes, const unsigned char* pContent, std::size_t nUsed)
{
    auto* pData = static_cast<unsigned char*>(std::aligned_alloc(kHugePage, nBytes));
    for (std::size_t i = 0; pData && i < nBytes; i += kHugePage) {
        TouchPiece(pData + i);
        if (pContent)
            std::memcpy(pData + i, pContent + i, std::min(kHugePage, nUsed - i));
    }
    return pData;
}

unsigned char* AllocateSmall(std::size_t nBytes)
{
    return static_cast<unsigned char*>(std::aligned_alloc(kAlignment, nBytes));
}
} // namespace

void SPixelDeleter::operator()(unsigned char* pData) const
{
    if (nBytes >= kLargeBuffer)
        Keep({pData, nBytes});
    else
        std::free(pData);
}

PixelBuffer AllocatePixels(std::size_t nBytes, const unsigned char* pContent)
{
    // Never ask for that much: the system might grant it and kill the process when it is used.
    if (nBytes > GetPhysicalMemory())
        return nullptr;
    const std::size_t nUnit = nBytes >= kLargeBuffer ? kHugePage : kAlignment;
    const std::size_t nRounded = (nBytes + nUnit - 1) / nUnit * nUnit;
    const bool bLarge = nRounded >= kLargeBuffer;
    SKept buffer = bLarge ? Take(nRounded) : SKept{AllocateSmall(nRounded), nRounded};
    if (bLarge && !buffer.pData)
        buffer = {AllocateLarge(nRounded, pContent, nBytes), nRounded};
    else if (buffer.pData && pContent)
        std::memcpy(buffer.pData, pContent, nBytes);
    return PixelBuffer(buffer.pData, SPixelDeleter{buffer.nBytes});
}

void FreePixels(PixelBuffer buffer)
{
    std::free(buffer.release());
}

std::size_t GetPhysicalMemory()
{
    static const std::size_t nPhysical =
        static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return nPhysical;
}

} // namespace Vantor::Algorithms
