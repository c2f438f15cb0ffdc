// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/ImageLoad_p.h>

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
    bool (*pLoad)(QIODevice& device, CImage& image);
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

} // namespace

bool LoadImageFrom(QIODevice& device, CImage& image)
{
    try {
        const QByteArray head = device.peek(kLongestMagic);
        for (const SFormat& format : kFormats) {
            if (head.startsWith(QByteArray::fromRawData(format.pMagic, format.nMagic)))
                return format.pLoad(device, image);
        }
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

int CImage::Load(const std::wstring& path)
{
    try {
        QFile file;
        if (!OpenRegularFile(path, file))
            return 1;
        // Name and folder are made first: nothing may fail once the pixels are in place.
        const std::size_t nSlash = path.rfind(L'/');
        std::wstring strName = nSlash == std::wstring::npos ? path : path.substr(nSlash + 1);
        std::wstring strFolder = nSlash == std::wstring::npos ? std::wstring() : path.substr(0, nSlash);
        if (nSlash == 0)
            strFolder = L"/";
        CImage loaded;
        if (!LoadImageFrom(file, loaded))
            return 1;
        m_pPixels.swap(loaded.m_pPixels);
        m_strName.swap(strName);
        m_strFolder.swap(strFolder);
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

} // namespace Vantor::Algorithms
