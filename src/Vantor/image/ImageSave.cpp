// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

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
bool ExpandTwoChannels(const CImage& from, CImage& image)
{
    if (image.Create(from.GetWidth(), from.GetHeight(), 4, 8, EImageType::Interleaved, 1) != 0)
        return false;
    const int nWidth = from.GetWidth();
    for (int y = 0; y < from.GetHeight(); ++y) {
        const unsigned char* pFrom = from.GetRows()[y];
        unsigned char* pTo = image.GetRows()[y];
        for (int x = 0; x < nWidth; ++x, pFrom += 2, pTo += 4) {
            std::memset(pTo, pFrom[0], 3);
            pTo[3] = pFrom[1];
        }
    }
    return true;
}
} // namespace

int CImage::Save(const std::wstring& path) const
{
    try {
        const std::string strPath = ToSystemPath(path);
        const Saver pSave = FindSaver(strPath);
        if (!pSave || !GetData() || GetBitDepth() != 8)
            return 1;
        CImage expanded;
        if (GetChannel() == 2 && !ExpandTwoChannels(*this, expanded))
            return 1;
        AtomicFile file;
        if (!file.Open(strPath) || !pSave(file.Device(), GetChannel() == 2 ? expanded : *this))
            return 1;
        return file.Commit() ? 0 : 1;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

} // namespace Vantor::Algorithms
