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
    const char* pName;
    const char* pMagic;
    int nMagic;
    bool (*pLoad)(QIODevice& device, CImage& image);
};

const SFormat kFormats[] = {
    {"PNG", "\x89PNG\r\n\x1a\n", 8, LoadPng},
    {"JPEG", "\xff\xd8\xff", 3, LoadJpeg},
    {"GIF", "GIF87a", 6, LoadGif},
    {"GIF", "GIF89a", 6, LoadGif},
    {"TIFF", "II*\0", 4, LoadTiff},
    {"TIFF", "MM\0*", 4, LoadTiff},
    {"TIFF", "II+\0", 4, LoadTiff}, // BigTIFF
    {"TIFF", "MM\0+", 4, LoadTiff},
    {"BMP", "BM", 2, LoadBmp},
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

std::string WhyNotLoaded(QFile& file)
{
    if (file.size() == 0)
        return "The file is empty.";
    file.seek(0);
    const SFormat* pFormat = FindFormat(file);
    if (!pFormat)
        return "It is not an image in BMP, JPEG, PNG, GIF or TIFF format.";
    return std::string("The ") + pFormat->pName + " file is damaged, too large or of an unsupported kind.";
}

} // namespace

bool LoadImageFrom(QIODevice& device, CImage& image)
{
    try {
        const SFormat* pFormat = FindFormat(device);
        return pFormat && pFormat->pLoad(device, image);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

int CImage::Load(const std::wstring& path)
{
    try {
        QFile file;
        std::string strReason;
        if (!OpenRegularFile(path, file, &strReason))
            return m_pFailure->Note(strReason);
        // Name and folder are made first: nothing may fail once the pixels are in place.
        const std::size_t nSlash = path.rfind(L'/');
        std::wstring strName = nSlash == std::wstring::npos ? path : path.substr(nSlash + 1);
        std::wstring strFolder = nSlash == std::wstring::npos ? std::wstring() : path.substr(0, nSlash);
        if (nSlash == 0)
            strFolder = L"/";
        CImage loaded;
        if (!LoadImageFrom(file, loaded))
            return m_pFailure->Note(WhyNotLoaded(file));
        m_pPixels.swap(loaded.m_pPixels);
        m_strName.swap(strName);
        m_strFolder.swap(strFolder);
        return m_pFailure->Note(nullptr);
    } catch (const std::bad_alloc&) {
        return m_pFailure->Note("There is not enough memory for the image.");
    }
}

} // namespace Vantor::Algorithms
