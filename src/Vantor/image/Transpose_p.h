// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

namespace Vantor::Algorithms
{

/// Columns become rows: to[x][y] = from[y][x] for 0 <= x < width, 0 <= y < height. Ends early when the
/// progress of the thread is cancelled.
/// @param fromStride, toStride  bytes from one row to the next; a negative one starts at the last row, which
///                              makes the transposition a quarter turn
/// @param width, height         of the source, in pixels, 0 or more
/// @param pixelBytes            1, 2, 3, 4, 6 or 8
void TransposePixels(const unsigned char* from, std::ptrdiff_t fromStride, unsigned char* to,
                     std::ptrdiff_t toStride, int width, int height, int pixelBytes);

} // namespace Vantor::Algorithms
