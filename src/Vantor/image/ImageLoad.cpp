// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageLoad_p.h>

#include <Vantor/CProgress.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/ImagePixels_p.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QFile>

#include <algorithm>
#include <new>

namespace Vantor::Algorithms
{

namespace
{
/// Tells how much of the file has been read; cancelled, it cannot be read any more.
class CWatchedFile : public QFile
{
protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const double dblSize = static_cast<double>(std::max<qint64>(size(), 1));
        if (!CProgress::Tell(std::min(1.0, static_cast<double>(m_nRead) / dblSize)))
            return -1;
        const qint64 nBytes = QFile::readData(data, maxSize);
        m_nRead += std::max<qint64>(nBytes, 0);
        return nBytes;
    }

private:
    qint64 m_nRead = 0;
};
} // namespace

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

int CImage::Load(const std::wstring& path)
{
    try {
        CWatchedFile file;
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
        m_strName.swap(strName);
        m_strFolder.swap(strFolder);
        m_dPageResolution = 0.0;
        return m_pFailure->Succeed();
    } catch (const std::bad_alloc&) {
        return m_pFailure->Fail("There is not enough memory for the image.");
    }
}

} // namespace Vantor::Algorithms
