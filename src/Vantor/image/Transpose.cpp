// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/Transpose_p.h>

#include <Vantor/CProgress.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace Vantor::Algorithms
{

namespace
{
/// Pixels on each side of the square that is turned in registers.
constexpr int kBlock = 8;
/// A tile of the source is turned in a buffer and then written in whole rows. The buffer stays in the nearest
/// cache, and rows that lie a power of two apart do not evict each other.
constexpr int kTileRows = 64;
constexpr int kTileColumns = 128;
constexpr int kCacheLine = 64;

struct SGrids {
    const unsigned char* pFrom;
    std::ptrdiff_t nFromStride;
    unsigned char* pTo;
    std::ptrdiff_t nToStride;
};

template <int N> const unsigned char* Source(const SGrids& grids, int x, int y)
{
    return grids.pFrom + y * grids.nFromStride + static_cast<std::ptrdiff_t>(x) * N;
}

template <int N> unsigned char* Target(const SGrids& grids, int x, int y)
{
    return grids.pTo + x * grids.nToStride + static_cast<std::ptrdiff_t>(y) * N;
}

template <class T> T Load(const unsigned char* pFrom)
{
    T value;
    std::memcpy(&value, pFrom, sizeof value);
    return value;
}

template <class T> void Store(unsigned char* pTo, T value)
{
    std::memcpy(pTo, &value, sizeof value);
}

/// Transposes any rectangle, pixel by pixel.
template <int N> void TransposeAny(const SGrids& grids, int x0, int x1, int y0, int y1)
{
    for (int x = x0; x < x1; ++x)
        for (int y = y0; y < y1; ++y)
            std::memcpy(Target<N>(grids, x, y), Source<N>(grids, x, y), N);
}

/// Swaps the two halves of every pair of rows that lie `distance` apart: lanes of `shift` bits, the lower
/// ones of each pair selected by the mask.
inline void SwapLanes(std::uint64_t (&rows)[kBlock], int distance, int shift, std::uint64_t mask)
{
    for (int i = 0; i < kBlock; ++i) {
        if (i & distance)
            continue;
        const std::uint64_t difference = ((rows[i] >> shift) ^ rows[i + distance]) & mask;
        rows[i + distance] ^= difference;
        rows[i] ^= difference << shift;
    }
}

/// A block of 8 x 8 pixels.
template <int N> void TransposeBlock(const SGrids& grids, int x, int y)
{
    TransposeAny<N>(grids, x, x + kBlock, y, y + kBlock);
}

/// Bytes: three rounds of exchanges between eight registers, halves, quarters, then single bytes.
template <> void TransposeBlock<1>(const SGrids& grids, int x, int y)
{
    std::uint64_t rows[kBlock];
    for (int i = 0; i < kBlock; ++i)
        rows[i] = Load<std::uint64_t>(Source<1>(grids, x, y + i));
    SwapLanes(rows, 4, 32, 0x00000000FFFFFFFFu);
    SwapLanes(rows, 2, 16, 0x0000FFFF0000FFFFu);
    SwapLanes(rows, 1, 8, 0x00FF00FF00FF00FFu);
    for (int i = 0; i < kBlock; ++i)
        Store(Target<1>(grids, x + i, y), rows[i]);
}

/// Three bytes: packs eight pixels of a column into three words. It reads every pixel except the last of the
/// row with the byte behind it, and drops that byte.
template <> void TransposeBlock<3>(const SGrids& grids, int x, int y)
{
    constexpr std::uint64_t kPixel = 0xFFFFFF;
    for (int i = 0; i < kBlock; ++i) {
        std::uint64_t p[kBlock];
        for (int j = 0; j < kBlock; ++j)
            p[j] = Load<std::uint32_t>(Source<3>(grids, x + i, y + j)) & kPixel;
        unsigned char* pTo = Target<3>(grids, x + i, y);
        Store(pTo, p[0] | p[1] << 24 | p[2] << 48);
        Store(pTo + 8, p[2] >> 16 | p[3] << 8 | p[4] << 32 | p[5] << 56);
        Store(pTo + 16, p[5] >> 8 | p[6] << 16 | p[7] << 40);
    }
}

/// Prefetches a block of rows of the tile to the right, which comes next.
template <int N> void PrefetchNextTile(const SGrids& tile, int y)
{
    for (int i = 0; i < kBlock; ++i)
        for (int nByte = 0; nByte < kTileColumns * N; nByte += kCacheLine)
            __builtin_prefetch(Source<N>(tile, kTileColumns, y + i) + nByte);
}

/// A tile of width x height pixels, of which the first `blockWidth` columns may be turned in blocks.
template <int N> void TransposeTile(const SGrids& tile, int width, int height, int blockWidth)
{
    const int nBlocksEnd = blockWidth / kBlock * kBlock;
    int y = 0;
    for (; y + kBlock <= height; y += kBlock) {
        PrefetchNextTile<N>(tile, y);
        for (int x = 0; x < nBlocksEnd; x += kBlock)
            TransposeBlock<N>(tile, x, y);
        TransposeAny<N>(tile, nBlocksEnd, width, y, y + kBlock);
    }
    TransposeAny<N>(tile, 0, width, y, height);
}

template <int N> void TransposeTiles(const SGrids& grids, int width, int height)
{
    constexpr std::size_t kBufferStride = static_cast<std::size_t>(kTileRows) * N;
    alignas(kCacheLine) unsigned char buffer[kTileColumns * kBufferStride];
    for (int y = 0; y < height && CProgress::Tell(static_cast<double>(y) / height); y += kTileRows) {
        const int nRows = std::min(kTileRows, height - y);
        for (int x = 0; x < width; x += kTileColumns) {
            const int nColumns = std::min(kTileColumns, width - x);
            // Blocks of three bytes read one byte too far to the right.
            const int nBlockColumns = std::min(nColumns, width - x - (N == 3 ? 1 : 0));
            TransposeTile<N>({Source<N>(grids, x, y), grids.nFromStride, buffer, kBufferStride}, nColumns,
                             nRows, nBlockColumns);
            for (int i = 0; i < nColumns; ++i)
                std::memcpy(Target<N>(grids, x + i, y), buffer + static_cast<std::size_t>(i) * kBufferStride,
                            static_cast<std::size_t>(nRows) * N);
        }
    }
}
} // namespace

void TransposePixels(const unsigned char* from, std::ptrdiff_t fromStride, unsigned char* to,
                     std::ptrdiff_t toStride, int width, int height, int pixelBytes)
{
    const SGrids grids{from, fromStride, to, toStride};
    switch (pixelBytes) {
    case 1:
        return TransposeTiles<1>(grids, width, height);
    case 2:
        return TransposeTiles<2>(grids, width, height);
    case 3:
        return TransposeTiles<3>(grids, width, height);
    case 4:
        return TransposeTiles<4>(grids, width, height);
    case 6:
        return TransposeTiles<6>(grids, width, height);
    case 8:
        return TransposeTiles<8>(grids, width, height);
    default:
        return;
    }
}

} // namespace Vantor::Algorithms
