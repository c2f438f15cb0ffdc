// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageLoad_p.h>

#include <Vantor/CProgress.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/file/CWatchedFile_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/ImagePixels_p.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <new>
#include <utility>

namespace Vantor::Algorithms
{

CResult LoadImageFrom(QIODevice& device, CImage& image, SFound& found)
{
    try {
        if (device.size() == 0)
            return CResult::Failure("The file is empty.");
        const SImageFormat* pFormat = FormatOfContent(device);
        if (!pFormat)
            return CResult::Failure(NotAnImage());
        return pFormat->pLoad(device, image, found);
    } catch (const std::bad_alloc&) {
        return CResult::Failure("There is not enough memory for the image.");
    }
}

SImagePath PartsOf(const std::wstring& path)
{
    const std::size_t nSlash = path.rfind(L'/');
    if (nSlash == std::wstring::npos)
        return {path, {}};
    return {path.substr(nSlash + 1), nSlash == 0 ? L"/" : path.substr(0, nSlash)};
}

int CImage::Load(const std::wstring& path)
{
    try {
        CWatchedFile file;
        std::string strReason;
        if (!OpenRegularFile(path, file, &strReason))
            return m_pFailure->Fail(strReason.c_str());
        // Build name and folder first: nothing may fail once the pixels are in place.
        SImagePath parts = PartsOf(path);
        CImage loaded;
        SFound found;
        const CResult result = LoadImageFrom(file, loaded, found);
        // A part of the file would do for some formats.
        if (CProgress::IsThreadCancelled())
            return m_pFailure->Fail(kCancelled);
        if (!result.IsSuccess())
            return m_pFailure->Note(result);
        loaded.m_pPixels->pMetadata = MetadataOf(found);
        loaded.SetNotes(std::move(found.notes));
        m_pPixels.swap(loaded.m_pPixels);
        m_strName.swap(parts.strName);
        m_strFolder.swap(parts.strFolder);
        m_dPageResolution = 0.0;
        return m_pFailure->Succeed();
    } catch (const std::bad_alloc&) {
        return m_pFailure->Fail("There is not enough memory for the image.");
    }
}

} // namespace Vantor::Algorithms
