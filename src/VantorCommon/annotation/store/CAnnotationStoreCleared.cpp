// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What CAnnotationStore brings back after all annotations have left a view at once.
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <algorithm>
#include <unordered_set>

/// Only the last ones, so that they take little memory.
void CAnnotationStore::SPrivate::KeepCleared(const ObjectList& vctGone)
{
    if (vctGone.empty())
        return;
    const SAnnotatedPage* pShown = bPages ? pages.Find(nShown) : nullptr;
    cleared = {{FileKey(), pShown ? pShown->file.page : nPage, vctGone}};
}

/// Those that are not in the view again.
CAnnotationStore::ObjectList CAnnotationStore::SPrivate::Cleared() const
{
    if (cleared.empty() || !pGeometry)
        return {};
    const SAnnotatedPage* pShown = nullptr;
    for (const SAnnotatedPage& page : pages.All())
        if (bPages && page.nId == nShown)
            pShown = &page;
    const auto isShown = [pShown](const SCleared& of) {
        return pShown && of.strFile == pShown->strFile && of.nPage == pShown->file.page;
    };
    const auto it = std::find_if(cleared.begin(), cleared.end(), isShown);
    const ObjectList& vctObjects = it != cleared.end() ? it->vctObjects : cleared.front().vctObjects;
    const ObjectList vctPresent = pGeometry->GetObjects();
    const std::unordered_set<ObjectPtr> present(vctPresent.begin(), vctPresent.end());
    ObjectList vctMissing;
    for (const ObjectPtr& pObject : vctObjects)
        if (present.count(pObject) == 0)
            vctMissing.push_back(pObject);
    return vctMissing;
}

int CAnnotationStore::CountCleared() const
{
    return static_cast<int>(m_p->Cleared().size());
}

/// What has the same identity, because it was loaded again, gives way.
void CAnnotationStore::RestoreCleared()
{
    ObjectList vctAfter = m_p->Cleared();
    if (vctAfter.empty() || !m_p->pImages)
        return;
    std::unordered_set<std::string> ids;
    for (const ObjectPtr& pObject : vctAfter)
        ids.insert(pObject->GetId().toStdString());
    const ObjectList vctBefore = m_p->pGeometry->GetObjects();
    for (const ObjectPtr& pObject : vctBefore)
        if (ids.count(pObject->GetId().toStdString()) == 0)
            vctAfter.push_back(pObject);
    const auto show = [this](const ObjectList& vctObjects) {
        return [=] {
            if (m_p->tracker.Count() == 0 && m_p->pImages)
                m_p->nPage = std::max(0, m_p->pImages->GetCurrentIndex());
            m_p->tracker.Replace(vctObjects);
            m_p->nObjects = m_p->tracker.Count();
        };
    };
    RunCall(show(vctAfter), show(vctBefore));
}
