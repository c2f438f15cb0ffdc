// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/image/file/AtomicFile_p.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/OpenFile_p.h>

#include <QString>

#include <cstring>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
using Saver = bool (*)(QIODevice& device, const CImage& image);

struct SSuffix {
    const char* pSuffix;
    Saver pSave;
};

constexpr const char* kNoMemory = "There is not enough memory to save the image.";

const SSuffix kSuffixes[] = {{"bmp", SaveBmp},  {"jpg", SaveJpeg},  {"jpeg", SaveJpeg}, {"png", SavePng},
                             {"tif", SaveTiff}, {"tiff", SaveTiff}, {"gif", SaveGif}};

Saver FindSaver(const std::string& path)
{
    const std::size_t nDot = path.rfind('.');
    if (nDot == std::string::npos)
        return nullptr;
    const QByteArray suffix = QByteArray::fromStdString(path.substr(nDot + 1)).toLower();
    for (const SSuffix& known : kSuffixes) {
        if (suffix == known.pSuffix)
            return known.pSave;
    }
    return nullptr;
}

/// Grey with alpha as RGBA.
CResult ExpandTwoChannels(const CImage& from, CImage& image)
{
    if (image.Create(from.GetWidth(), from.GetHeight(), 4, 8, EImageType::Interleaved, 1) != 0)
        return CResult::Failure(kNoMemory);
    const int nWidth = from.GetWidth();
    for (int y = 0; y < from.GetHeight(); ++y) {
        const unsigned char* pFrom = from.GetRows()[y];
        unsigned char* pTo = image.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pFrom += 2, pTo += 4) {
            std::memset(pTo, pFrom[0], 3);
            pTo[3] = pFrom[1];
        }
    }
    return CResult::Success();
}

/// Writes an image of 1, 3 or 4 channels in place of the file.
CResult Write(const std::string& path, Saver save, const CImage& image)
{
    AtomicFile file;
    CResult result = file.Open(path);
    if (!result.IsSuccess())
        return result;
    if (!save(file.Device(), image))
        return CResult::Failure(AtomicFile::kNotWhole);
    return file.Commit();
}

CResult SaveAs(const std::string& path, const CImage& image)
{
    const Saver pSave = FindSaver(path);
    if (!pSave)
        return CResult::Failure("The name must end in bmp, jpg, jpeg, png, tif, tiff or gif.");
    if (!image.GetData())
        return CResult::Failure("There is no image to save.");
    if (image.GetBitDepth() != 8)
        return CResult::Failure("Only images of 8 bits per channel can be saved.");
    if (image.GetChannel() != 2)
        return Write(path, pSave, image);
    CImage expanded;
    CResult result = ExpandTwoChannels(image, expanded);
    return result.IsSuccess() ? Write(path, pSave, expanded) : result;
}
} // namespace

int CImage::Save(const std::wstring& path) const
{
    try {
        return m_pFailure->Note(SaveAs(ToSystemPath(path), *this));
    } catch (const std::bad_alloc&) {
        return m_pFailure->Fail(kNoMemory);
    }
}

} // namespace Vantor::Algorithms
