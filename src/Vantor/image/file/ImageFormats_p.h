// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>
#include <Vantor/image/SImageMetadata.h>

#include <string>
#include <string_view>
#include <vector>

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;
struct SImagesOfFile;

/// What a reader reports of an image that it could load: plain sentences in English, such as "The file is
/// incomplete: rows 120 to 480 are missing."
using Notes = std::vector<std::string>;

/// What a reader finds beside the pixels.
struct SFound {
    Notes notes;
    SImageMetadata metadata; ///< as the file says it, also of rows that the reader has turned
    bool bTellOthers = true; ///< asks for a note on the images behind the first
};

/// The failure of a reader that knows no exact reason.
/// @param pFormat  the name of the format, such as "PNG"
inline CResult Unreadable(const char* pFormat)
{
    return CResult::Failure(std::string("The ") + pFormat +
                            " file is damaged, too large or of an unsupported kind.");
}

/// The failure of a writer.
/// @param strDetail  the encoder's message, without a full stop; may be empty
inline CResult Unwritable(const char* pFormat, const std::string& strDetail = {})
{
    return CResult::Failure(std::string("The image cannot be written as a ") + pFormat + " file" +
                            (strDetail.empty() ? "." : ": " + strDetail + '.'));
}

/// One reader per format. The device is random access, stands at its start and begins with the format's first
/// bytes; the image is empty. After a failure the image must not be used. May throw bad_alloc.
CResult LoadBmp(QIODevice& device, CImage& image, SFound& found);
CResult LoadJpeg(QIODevice& device, CImage& image, SFound& found);
CResult LoadPng(QIODevice& device, CImage& image, SFound& found);
CResult LoadGif(QIODevice& device, CImage& image, SFound& found);
CResult LoadTiff(QIODevice& device, CImage& image, SFound& found);
CResult LoadPnm(QIODevice& device, CImage& image, SFound& found); ///< PPM, PGM and PBM

/// The images behind the first, see OtherImages_p.h.
void AddGifFrames(SImagesOfFile& images);
void AddTiffPages(SImagesOfFile& images);

/// One writer per format. The image has 1, 3 or 4 channels of 8 bits; the device is open for writing and
/// may be read back and sought. May throw bad_alloc.
CResult SaveBmp(QIODevice& device, const CImage& image);
CResult SaveJpeg(QIODevice& device, const CImage& image);
CResult SavePng(QIODevice& device, const CImage& image);
CResult SaveGif(QIODevice& device, const CImage& image);
CResult SaveTiff(QIODevice& device, const CImage& image);
CResult SavePpm(QIODevice& device, const CImage& image);
CResult SavePgm(QIODevice& device, const CImage& image); ///< one channel only

/// A row of the table of formats.
struct SImageFormat {
    const char* pName;                      ///< as people write it, such as "JPEG"
    std::vector<std::string_view> suffixes; ///< lower case, without a dot, the usual one first
    const char* pMimeType;                  ///< such as "image/jpeg"
    std::vector<std::string_view> heads;    ///< how a file may begin, see BeginsLike
    CResult (*pLoad)(QIODevice& device, CImage& image, SFound& found);
    CResult (*pSave)(QIODevice& device, const CImage& image); ///< null when it is only read
    void (*pAddOthers)(SImagesOfFile& images) = nullptr;      ///< null when a file holds one image
    bool bFewColors = false;                                  ///< saving keeps 256 colours at most
};

/// All formats, in the order in which texts name them. All code that handles every format walks over these
/// rows; CMake takes the names from the lines that begin a row (cmake/VantorFormats.cmake).
inline const std::vector<SImageFormat>& ImageFormats()
{
    using namespace std::string_view_literals;
    // clang-format off
    static const std::vector<SImageFormat> formats{
        {"BMP", {"bmp"}, "image/bmp", {"BM"}, LoadBmp, SaveBmp},
        {"JPEG", {"jpg", "jpeg"}, "image/jpeg", {"\xff\xd8\xff"}, LoadJpeg, SaveJpeg},
        {"PNG", {"png"}, "image/png", {"\x89PNG\r\n\x1a\n"}, LoadPng, SavePng},
        {"GIF", {"gif"}, "image/gif", {"GIF87a", "GIF89a"}, LoadGif, SaveGif, AddGifFrames, true},
        {"TIFF", {"tif", "tiff"}, "image/tiff",
         {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv}, // the last two: BigTIFF
         LoadTiff, SaveTiff, AddTiffPages},
        {"PPM", {"ppm"}, "image/x-portable-pixmap", {"P3", "P6"}, LoadPnm, SavePpm},
        {"PGM", {"pgm"}, "image/x-portable-graymap", {"P2", "P5"}, LoadPnm, SavePgm},
        {"PBM", {"pbm"}, "image/x-portable-bitmap", {"P1", "P4"}, LoadPnm, nullptr},
    };
    // clang-format on
    return formats;
}

/// The format of what follows in the device; null when the table has none for it.
const SImageFormat* FormatOfContent(QIODevice& device);
/// The format that the suffix of a file name names, in any case, and that can be saved; null for others.
const SImageFormat* FormatToSave(const std::string& strPath);
/// "It is not an image in BMP, ... or TIFF format."
std::string NotAnImage();
/// "The name must end in bmp, ... or gif."
std::string NotASuffix();

/// Whether bytes begin like a pattern, in which '?' stands for any one byte: "RIFF????WEBP".
inline bool BeginsLike(std::string_view bytes, std::string_view pattern)
{
    if (bytes.size() < pattern.size())
        return false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '?' && pattern[i] != bytes[i])
            return false;
    }
    return true;
}

} // namespace Vantor::Algorithms
