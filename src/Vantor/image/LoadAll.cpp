// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/LoadAll.h>

#include <Vantor/file/CWatchedFile_p.h>
#include <Vantor/file/OpenFile_p.h>
#include <Vantor/file/SharedFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageLoad_p.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/OtherImages_p.h>

#include <algorithm>
#include <new>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
/// @return null with a reason
std::shared_ptr<CImage> LoadFirst(QIODevice& device, std::string& strReason)
{
    auto pFirst = std::make_shared<CImage>();
    SFound found;
    found.bTellOthers = false;
    const CResult result = LoadImageFrom(device, *pFirst, found);
    if (!result.IsSuccess()) {
        strReason = result.GetReason();
        return nullptr;
    }
    if (const auto pMetadata = MetadataOf(found))
        pFirst->SetMetadata(*pMetadata);
    pFirst->SetNotes(std::move(found.notes));
    return pFirst;
}

void NameAll(const std::wstring& path, const SImagesOfFile& images)
{
    const SImagePath parts = PartsOf(path);
    for (const auto& pImage : images.vctImages) {
        pImage->SetName(parts.strName);
        pImage->SetFolder(parts.strFolder);
    }
}
} // namespace

std::vector<std::shared_ptr<CImage>> LoadAll(const std::wstring& path, int limit, std::string& strFailure)
try {
    strFailure.clear();
    auto pFile = std::make_unique<CWatchedFile>();
    if (!OpenRegularFile(path, *pFile, &strFailure))
        return {};
    SImagesOfFile images;
    images.nMost = std::clamp(limit, 1, kMostImagesOfFile);
    const auto pFirst = LoadFirst(*pFile, strFailure);
    if (pFirst) {
        images.vctImages.push_back(pFirst);
        pFile->seek(0);
        const SImageFormat* pFormat = FormatOfContent(*pFile);
        images.pFile = std::make_shared<const CSharedFile>(std::move(pFile));
        if (pFormat && pFormat->pAddOthers)
            pFormat->pAddOthers(images);
        NameAll(path, images);
        strFailure = images.strLeftOut;
    }
    // A part of the file would do for some formats.
    if (CProgress::IsThreadCancelled()) {
        strFailure = kCancelled;
        return {};
    }
    return images.vctImages;
} catch (const std::bad_alloc&) {
    strFailure = "There is not enough memory for the images.";
    return {};
}

} // namespace Vantor::Algorithms
