// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageLoad_p.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats_p.h>
#include <Vantor/image/file/OpenFile_p.h>

#include <QFile>

#include <new>

namespace Vantor::Algorithms
{

namespace
{
struct SFormat {
    const char* pMagic;
    int nMagic;
    CResult (*pLoad)(QIODevice& device, CImage& image, Notes& notes);
};

const SFormat kFormats[] = {
    {"\x89PNG\r\n\x1a\n", 8, LoadPng},
    {"\xff\xd8\xff", 3, LoadJpeg},
    {"GIF87a", 6, LoadGif},
    {"GIF89a", 6, LoadGif},
    {"II*\0", 4, LoadTiff},
    {"MM\0*", 4, LoadTiff},
    {"II+\0", 4, LoadTiff}, // BigTIFF
    {"MM\0+", 4, LoadTiff},
    {"BM", 2, LoadBmp},
};
constexpr qint64 kLongestMagic = 8;

/// The format of what follows in the device; null when it is none of ours.
const SFormat* FindFormat(QIODevice& device)
{
    const QByteArray head = device.peek(kLongestMagic);
    for (const SFormat& format : kFormats) {
        if (head.startsWith(QByteArray::fromRawData(format.pMagic, format.nMagic)))
            return &format;
    }
    return nullptr;
}

} // namespace

CResult LoadImageFrom(QIODevice& device, CImage& image, Notes& notes)
{
    try {
        if (device.size() == 0)
            return CResult::Failure("The file is empty.");
        const SFormat* pFormat = FindFormat(device);
        if (!pFormat)
            return CResult::Failure("It is not an image in BMP, JPEG, PNG, GIF or TIFF format.");
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
        // Name and folder are made first: nothing may fail once the pixels are in place.
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
        return m_pFailure->Succeed();
    } catch (const std::bad_alloc&) {
        return m_pFailure->Fail("There is not enough memory for the image.");
    }
}

} // namespace Vantor::Algorithms
