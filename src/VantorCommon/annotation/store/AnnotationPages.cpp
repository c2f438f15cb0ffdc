// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationPages_p.h>

#include <Vantor/image/CImage.h>

#include <algorithm>
#include <utility>

using Vantor::Algorithms::CImage;

SAnnotatedPage CAnnotationPages::MakePage(const std::shared_ptr<CImage>& pImage)
{
    SAnnotatedPage page;
    page.nId = m_nNextId++;
    page.pImage = pImage;
    page.strFile = QLatin1Char('#') + QString::number(page.nId);
    if (pImage && !pImage->GetName().empty())
        page.strFile = QString::fromStdWString(pImage->GetFolder()) + QLatin1Char('/') +
                       QString::fromStdWString(pImage->GetName());
    page.file.page = m_mapPages[page.strFile]++;
    return page;
}

void CAnnotationPages::Restart(const CImageView2DModel& model)
{
    m_vctPages.clear();
    m_mapPages.clear();
    Follow(model);
}

CAnnotationPages::Pages CAnnotationPages::Follow(const CImageView2DModel& model)
{
    Pages vctOld = std::exchange(m_vctPages, {});
    const bool bSameCount = static_cast<int>(vctOld.size()) == model.GetImageCount();
    std::map<const CImage*, std::size_t> places;
    for (std::size_t i = 0; i < vctOld.size(); ++i)
        places.emplace(vctOld[i].pImage.get(), i);
    std::vector<bool> vctTaken(vctOld.size(), false);
    std::vector<int> vctFrom; // for each image its page before, or -1
    for (int i = 0; i < model.GetImageCount(); ++i) {
        const auto it = places.find(model.GetImage(i).get());
        const bool bKnown = it != places.end() && !vctTaken[it->second];
        vctFrom.push_back(bKnown ? static_cast<int>(it->second) : -1);
        if (bKnown)
            vctTaken[it->second] = true;
    }
    // One new image at the place of one that went has replaced it.
    const bool bReplaced = bSameCount && std::count(vctFrom.begin(), vctFrom.end(), -1) == 1;
    for (int i = 0; i < model.GetImageCount(); ++i) {
        const auto nPlace = static_cast<std::size_t>(i);
        if (vctFrom[nPlace] < 0 && bReplaced && !vctTaken[nPlace]) {
            vctFrom[nPlace] = i;
            vctTaken[nPlace] = true;
        }
        m_vctPages.push_back(vctFrom[nPlace] < 0
                                 ? MakePage(model.GetImage(i))
                                 : std::move(vctOld[static_cast<std::size_t>(vctFrom[nPlace])]));
        m_vctPages.back().pImage = model.GetImage(i);
    }
    Pages vctGone;
    for (std::size_t i = 0; i < vctOld.size(); ++i)
        if (!vctTaken[i])
            vctGone.push_back(std::move(vctOld[i]));
    for (const SAnnotatedPage& page : vctGone)
        if (std::none_of(m_vctPages.begin(), m_vctPages.end(),
                         [&page](const SAnnotatedPage& other) { return other.strFile == page.strFile; }))
            m_mapPages.erase(page.strFile); // added again, it begins with its first page
    return vctGone;
}

int CAnnotationPages::IndexOf(int nId) const
{
    const auto it = std::find_if(m_vctPages.begin(), m_vctPages.end(),
                                 [nId](const SAnnotatedPage& page) { return page.nId == nId; });
    return it != m_vctPages.end() ? static_cast<int>(it - m_vctPages.begin()) : -1;
}

SAnnotatedPage* CAnnotationPages::Find(int nId)
{
    const int nIndex = IndexOf(nId);
    return nIndex < 0 ? nullptr : &m_vctPages[static_cast<std::size_t>(nIndex)];
}
