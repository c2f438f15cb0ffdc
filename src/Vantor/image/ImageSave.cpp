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
        if (!pSave)
            return m_pFailure->Note("The name must end in bmp, jpg, jpeg, png, tif, tiff or gif.");
        if (!GetData())
            return m_pFailure->Note("There is no image to save.");
        if (GetBitDepth() != 8)
            return m_pFailure->Note("Only images of 8 bits per channel can be saved.");
        CImage expanded;
        if (GetChannel() == 2 && !ExpandTwoChannels(*this, expanded))
            return m_pFailure->Note(kNoMemory);
        AtomicFile file;
        if (!file.Open(strPath))
            return m_pFailure->Note("The file or its folder cannot be written.");
        if (!pSave(file.Device(), GetChannel() == 2 ? expanded : *this) || !file.Commit())
            return m_pFailure->Note("The file could not be written whole.");
        return m_pFailure->Note(nullptr);
    } catch (const std::bad_alloc&) {
        return m_pFailure->Note(kNoMemory);
    }
}

} // namespace Vantor::Algorithms
