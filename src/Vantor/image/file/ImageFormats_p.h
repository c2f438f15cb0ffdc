// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <cstddef>

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;

/// One reader per format. The device is random access and stands at its start, its first bytes are those of
/// the format; the image is empty. False on failure, the image is then worthless. May throw bad_alloc.
bool LoadBmp(QIODevice& device, CImage& image);
bool LoadJpeg(QIODevice& device, CImage& image);
bool LoadPng(QIODevice& device, CImage& image);
bool LoadGif(QIODevice& device, CImage& image);
bool LoadTiff(QIODevice& device, CImage& image);

/// One writer per format. The image has 1, 3 or 4 channels of 8 bits; the device is open for writing and
/// may be read back and sought. False on failure. May throw bad_alloc.
bool SaveBmp(QIODevice& device, const CImage& image);
bool SaveJpeg(QIODevice& device, const CImage& image);
bool SavePng(QIODevice& device, const CImage& image);
bool SaveGif(QIODevice& device, const CImage& image);
bool SaveTiff(QIODevice& device, const CImage& image);

} // namespace Vantor::Algorithms
