// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageLoad_p.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QFile>

#include <new>

namespace Vantor::Algorithms
{

CResult LoadImageFrom(QIODevice& device, CImage& image, Notes& notes)
{
    try {
        if (device.size() == 0)
            return CResult::Failure("The file is empty.");
        const SImageFormat* pFormat = FormatOfContent(device);
        if (!pFormat)
            return CResult::Failure(NotAnImage());
        return pFormat->pLoad(device, image, notes);
    } catch (const std::bad_alloc&) {
        return CResult::Failure("There is not enough memory for the image.");
    }
}

int CImage::Load(const std::wstring& path)
{
    try {
        QFile file;
        std::string strReason;
        if (!OpenRegularFile(path, file, &strReason))
            return m_pFailure->Fail(strReason.c_str());
        // Build name and folder first: nothing may fail once the pixels are in place.
        const std::size_t nSlash = path.rfind(L'/');
        std::wstring strName = nSlash == std::wstring::npos ? path : path.substr(nSlash + 1);
        std::wstring strFolder = nSlash == std::wstring::npos ? std::wstring() : path.substr(0, nSlash);
        if (nSlash == 0)
            strFolder = L"/";
        CImage loaded;
        Notes notes;
        const CResult result = LoadImageFrom(file, loaded, notes);
        if (!result.IsSuccess())
            return m_pFailure->Note(result);
        loaded.SetNotes(std::move(notes));
        m_pPixels.swap(loaded.m_pPixels);
        m_strName.swap(strName);
        m_strFolder.swap(strFolder);
        m_dPageResolution = 0.0;
        return m_pFailure->Succeed();
    } catch (const std::bad_alloc&) {
        return m_pFailure->Fail("There is not enough memory for the image.");
    }
}

} // namespace Vantor::Algorithms
