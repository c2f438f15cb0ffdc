// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Which annotations of CAnnotationStore are unsaved, and how they go.
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <algorithm>
#include <utility>

void CAnnotationStore::SPrivate::Clear(CAnnotationStore& store, const ObjectList& vctGone)
{
    const int nCount = static_cast<int>(vctGone.size());
    nObjects = 0;
    KeepCleared(vctGone);
    if (eReason == EAnnotationsGone_Loaded || eReason == EAnnotationsGone_Closed) {
        file = {};
        nPage = 0;
        rest.clear();
        now.clear();
        saved.clear();
        tracker.Take();
        if (std::exchange(bPages, false))
            UsePages(true);
        BeginJournal();
        TellCalibration(store);
    } else if (nRunning == 0 && nCount > 0) {
        ++now[KeyOf(nShown)].nOutside;
        WriteJournal(tracker.Take());
    }
    TellGone(store, eReason, nCount);
}

void CAnnotationStore::SPrivate::TellGone(CAnnotationStore& store, EAnnotationsGone eWhy, int nCount)
{
    TellUnsaved(store);
    const int nAll = nCount + std::exchange(nGone, 0);
    if (nAll > 0)
        Q_EMIT store.signal_AnnotationsGone(eWhy, nAll);
}

/// Objects come and go within steps, as a rule.
void CAnnotationStore::SPrivate::ChangeOutside(CAnnotationStore& store)
{
    if (std::exchange(nObjects, tracker.Count()) == 0 && pImages)
        nPage = std::max(0, pImages->GetCurrentIndex());
    if (nRunning > 0)
        return;
    if (const auto pTopmost = pGeometry ? pGeometry->GetAt(0) : nullptr) // as a rule the new one
        store.Calibrate(*pTopmost);
    ++now[KeyOf(nShown)].nOutside;
    WriteJournalSoon(store);
    TellUnsaved(store);
}

/// @param nId  of the page on which it was made, which is there
void CAnnotationStore::SPrivate::EndStep(CAnnotationStore& store, int nId, std::uint64_t nStep, bool bDone)
{
    const SAnnotationChanges sChanges = tracker.Take();
    SVersion& version = now[KeyOf(nId)];
    auto& vctSteps = version.vctSteps;
    const auto it = std::find(vctSteps.rbegin(), vctSteps.rend(), nStep);
    if (!bDone && it != vctSteps.rend())
        vctSteps.erase(std::next(it).base());
    else if (!bDone && sChanges.Any())
        ++version.nOutside;
    else if (bDone && sChanges.Any())
        vctSteps.push_back(nStep);
    if (!bLoading)
        WriteJournal(sChanges);
    TellCalibration(store);
    TellUnsaved(store);
    Q_EMIT store.signal_StepFinished();
}

void CAnnotationStore::SPrivate::TellUnsaved(CAnnotationStore& store)
{
    std::set<PageKey> unsaved = Unsaved();
    if (unsaved == toldUnsaved)
        return;
    toldUnsaved = std::move(unsaved);
    Q_EMIT store.signal_ChangeUnsaved(!toldUnsaved.empty());
}

std::set<PageKey> CAnnotationStore::SPrivate::Unsaved() const
{
    std::set<PageKey> unsaved;
    for (const auto& [key, version] : now) {
        const auto it = saved.find(key);
        if (!(version == (it != saved.end() ? it->second : SVersion())))
            unsaved.insert(key);
    }
    return unsaved;
}

CAnnotationStore::SPrivate::Versions CAnnotationStore::SPrivate::VersionsOf(const QString& strFile) const
{
    Versions versions;
    for (const auto& entry : now)
        if (entry.first.first == strFile)
            versions.insert(entry);
    return versions;
}

bool CAnnotationStore::HasUnsaved() const
{
    return !m_p->Unsaved().empty();
}

bool CAnnotationStore::HasUnsaved(int nImage) const
{
    const SAnnotatedPage* pPage = m_p->At(nImage);
    const QString strFile = pPage ? pPage->strFile : QString();
    const auto unsaved = m_p->Unsaved();
    return std::any_of(unsaved.begin(), unsaved.end(),
                       [&](const PageKey& key) { return key.first == strFile; });
}

bool CAnnotationStore::IsUnsaved(int nImage) const
{
    const SAnnotatedPage* pPage = m_p->At(nImage);
    return m_p->Unsaved().count(pPage ? pPage->Key() : m_p->KeyOf(-1)) != 0;
}

void CAnnotationStore::SetSaved()
{
    m_p->SetSaved(*this, m_p->now);
}

void CAnnotationStore::SetSaved(int nImage)
{
    m_p->SetSaved(*this, m_p->VersionsOf(m_p->FileOf(m_p->PageAt(nImage))));
}

/// What is gone from the list by now stays gone.
void CAnnotationStore::SPrivate::SetSaved(CAnnotationStore& store, const Versions& versions)
{
    for (const auto& [key, version] : versions)
        if (now.count(key) != 0)
            saved[key] = version;
    RewriteJournal();
    TellUnsaved(store);
}
