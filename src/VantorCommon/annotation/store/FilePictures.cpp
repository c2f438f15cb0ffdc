// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/FilePictures_p.h>

#include <Vantor/image/CImage.h>

const CFilePictures::SEntry* CFilePictures::Find(const ImagePtr& pImage) const
{
    const auto it = pImage ? m_entries.find(pImage->GetUID()) : m_entries.end();
    return it != m_entries.end() ? &it->second : nullptr;
}

CFilePictures::SPicture CFilePictures::Of(const ImagePtr& pImage) const
{
    if (const SEntry* pEntry = Find(pImage))
        return pEntry->picture;
    return pImage ? SPicture{pImage->GetWidth(), pImage->GetHeight(), {}} : SPicture();
}

void CFilePictures::Follow(const ImagePtr& pBefore, const ImagePtr& pAfter, const SPlaneMap& map)
{
    for (auto it = m_entries.begin(); it != m_entries.end();)
        it = it->second.pImage.expired() ? m_entries.erase(it) : std::next(it);
    if (!Find(pBefore))
        m_entries[pBefore->GetUID()] = SEntry{pBefore, m_nNext++, Of(pBefore)};
    SEntry entry = *Find(pBefore);
    entry.pImage = pAfter;
    entry.picture.map = entry.picture.map.Then(map);
    m_entries[pAfter->GetUID()] = entry;
}

void CFilePictures::SetSaved(const ImagePtr& pImage)
{
    const SEntry* pSaved = Find(pImage);
    if (!pSaved)
        return;
    const SPlaneMap back = pSaved->picture.map.Inverse();
    const int nPicture = pSaved->nPicture;
    for (auto& [nUID, entry] : m_entries)
        if (entry.nPicture == nPicture)
            entry.picture = {pImage->GetWidth(), pImage->GetHeight(), back.Then(entry.picture.map)};
}

bool CFilePictures::AreOfOne(const ImagePtr& pOne, const ImagePtr& pOther) const
{
    const SEntry* pFirst = Find(pOne);
    const SEntry* pSecond = Find(pOther);
    return pOne == pOther || (pFirst && pSecond && pFirst->nPicture == pSecond->nPicture);
}

CFilePictures::ImagePtr CFilePictures::ImageOf(unsigned int nUID) const
{
    const auto it = m_entries.find(nUID);
    return it != m_entries.end() ? it->second.pImage.lock() : nullptr;
}
