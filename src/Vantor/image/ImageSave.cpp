// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/CProgress.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/file/AtomicFile_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/SImageMetadata.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QString>

#include <cstring>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
constexpr const char* kNoMemory = "There is not enough memory to save the image.";

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
    return image.SetMetadata(*from.GetMetadata()) == 0 ? CResult::Success() : CResult::Failure(kNoMemory);
}

/// Writes an image of 1, 3 or 4 channels in place of the file.
CResult Write(const std::string& path, const SImageFormat& format, const CImage& image)
{
    AtomicFile file;
    CResult result = file.Open(path);
    if (!result.IsSuccess())
        return result;
    result = format.pSave(file.Device(), image);
    // A full disk is a better reason than the error that the writer derives from it.
    return result.IsSuccess() || file.HasFailed() || CProgress::IsThreadCancelled() ? file.Commit() : result;
}

CResult SaveAs(const std::string& path, const CImage& image)
{
    const SImageFormat* pFormat = FormatToSave(path);
    if (!pFormat)
        return CResult::Failure(NotASuffix());
    if (!image.GetData())
        return CResult::Failure("There is no image to save.");
    if (image.GetBitDepth() != 8)
        return CResult::Failure("Only images of 8 bits per channel can be saved.");
    if (image.GetChannel() != 2)
        return Write(path, *pFormat, image);
    CImage expanded;
    CResult result = ExpandTwoChannels(image, expanded);
    return result.IsSuccess() ? Write(path, *pFormat, expanded) : result;
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
