// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/AnnotationPages_p.h>

#include <Vantor/image/CImage.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <utility>

using Vantor::Algorithms::CImage;

namespace
{
/// Whether an image may be the other one, changed: what makes images gives them no other file.
bool MayReplace(const std::shared_ptr<CImage>& pNew, const SAnnotatedPage& old)
{
    const QString strNew = CAnnotationPages::PathOf(pNew);
    return strNew.isEmpty() || strNew == old.strImage;
}
} // namespace

void SAnnotatedPage::Watch(const std::shared_ptr<CImage>& pImage)
{
    if (pImage && pImage == Image())
        return;
    pWatched = pImage;
    pHeld = pImage && !pImage->IsDeferred() ? pImage : nullptr;
    strImage = CAnnotationPages::PathOf(pImage);
}

QString CAnnotationPages::CleanPath(const QString& strPath)
{
    return QDir::cleanPath(QFileInfo(strPath).absoluteFilePath());
}

QString CAnnotationPages::PathOf(const std::shared_ptr<CImage>& pImage)
{
    if (!pImage || pImage->GetName().empty())
        return {};
    return CleanPath(QDir(QString::fromStdWString(pImage->GetFolder()))
                         .filePath(QString::fromStdWString(pImage->GetName())));
}

SAnnotatedPage CAnnotationPages::MakePage(const std::shared_ptr<CImage>& pImage)
{
    SAnnotatedPage page;
    page.nId = m_nNextId++;
    page.Watch(pImage);
    page.strFile = page.strImage;
    if (page.strFile.isEmpty())
        page.strFile = QLatin1Char('#') + QString::number(page.nId);
    page.file.page = m_mapPages[page.strFile]++;
    return page;
}

void CAnnotationPages::Move(SAnnotatedPage& page, const QString& strPath)
{
    page.strFile = CleanPath(strPath);
    page.file.page = m_mapPages[page.strFile]++;
    ForgetCounts();
}

std::set<QString> CAnnotationPages::Files() const
{
    std::set<QString> files;
    for (const SAnnotatedPage& page : m_vctPages)
        files.insert(page.strFile);
    return files;
}

void CAnnotationPages::ForgetCounts()
{
    const std::set<QString> files = Files();
    for (auto it = m_mapPages.begin(); it != m_mapPages.end();)
        it = files.count(it->first) != 0 ? std::next(it) : m_mapPages.erase(it);
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
        places.emplace(vctOld[i].Image().get(), i);
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
        if (vctFrom[nPlace] < 0 && bReplaced && !vctTaken[nPlace] &&
            MayReplace(model.GetImage(i), vctOld[nPlace])) {
            vctFrom[nPlace] = i;
            vctTaken[nPlace] = true;
        }
        m_vctPages.push_back(vctFrom[nPlace] < 0
                                 ? MakePage(model.GetImage(i))
                                 : std::move(vctOld[static_cast<std::size_t>(vctFrom[nPlace])]));
        m_vctPages.back().Watch(model.GetImage(i));
    }
    Pages vctGone;
    for (std::size_t i = 0; i < vctOld.size(); ++i)
        if (!vctTaken[i])
            vctGone.push_back(std::move(vctOld[i]));
    if (!vctGone.empty())
        ForgetCounts();
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
