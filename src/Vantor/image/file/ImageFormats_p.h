// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>

#include <string>
#include <vector>

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;

/// What a reader has to say of an image that it could load: plain sentences in English, such as "The file is
/// incomplete: rows 120 to 480 are missing."
using Notes = std::vector<std::string>;

/// The failure of a reader that has nothing more exact to say.
/// @param pFormat  the name of the format, such as "PNG"
inline CResult Unreadable(const char* pFormat)
{
    return CResult::Failure(std::string("The ") + pFormat +
                            " file is damaged, too large or of an unsupported kind.");
}

/// One reader per format. The device is random access and stands at its start, its first bytes are those of
/// the format; the image is empty. After a failure the image is worthless. May throw bad_alloc.
CResult LoadBmp(QIODevice& device, CImage& image, Notes& notes);
CResult LoadJpeg(QIODevice& device, CImage& image, Notes& notes);
CResult LoadPng(QIODevice& device, CImage& image, Notes& notes);
CResult LoadGif(QIODevice& device, CImage& image, Notes& notes);
CResult LoadTiff(QIODevice& device, CImage& image, Notes& notes);

/// One writer per format. The image has 1, 3 or 4 channels of 8 bits; the device is open for writing and
/// may be read back and sought. False on failure. May throw bad_alloc.
bool SaveBmp(QIODevice& device, const CImage& image);
bool SaveJpeg(QIODevice& device, const CImage& image);
bool SavePng(QIODevice& device, const CImage& image);
bool SaveGif(QIODevice& device, const CImage& image);
bool SaveTiff(QIODevice& device, const CImage& image);

} // namespace Vantor::Algorithms
