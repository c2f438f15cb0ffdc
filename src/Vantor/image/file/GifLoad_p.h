// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QtGlobal>

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;
struct SGifFrame;

/// A code of 12 bits stands for at most 4095 pixels.
constexpr qint64 kMaxGifPixelsPerByte = 2730;

/// Paints a frame of a GIF file over an image of 4 channels, as far as it lies on it and the file has its
/// pixels. Transparent pixels leave what is there.
/// @return how many pixels the file lacks
qint64 PaintGifFrame(QIODevice& device, const SGifFrame& frame, CImage& screen);

} // namespace Vantor::Algorithms
