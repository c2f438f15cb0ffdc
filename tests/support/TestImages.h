// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <memory>

namespace Vantor::Algorithms
{
class CImage;
}

/// An 8-bit image whose every byte follows from its place: byte c of pixel (x, y) is
/// (37 x + 59 y + 101 c + seed) mod 256, so that a pixel that went astray is seen.
std::shared_ptr<Vantor::Algorithms::CImage> MakeTestImage(int width, int height, int channels, int seed = 0);

/// The value that MakeTestImage gives to byte `channel` of the pixel (x, y).
unsigned char TestImageByte(int x, int y, int channel, int seed = 0);

/// Whether size, channels and every byte of two 8-bit images are equal.
bool SamePixels(const Vantor::Algorithms::CImage& a, const Vantor::Algorithms::CImage& b);

/// The path of a file below tests/data.
QString TestDataPath(const QString& relative);
