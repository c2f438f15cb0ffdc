// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What CAnnotationStore writes into its journal.
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <QTimer>
#include <algorithm>
#include <unordered_map>
#include <utility>

using Vantor::Annotations::SDocument;
using Vantor::Annotations::SObject;
using Vantor::Annotations::SPage;

namespace
{
using ObjectList = CAnnotationStore::ObjectList;

/// For each of some objects of the list the id of the one below it; empty for the lowest.
std::vector<std::string> IdsBelow(const CImageView2DGeometryModel& model, const ObjectList& vctObjects)
{
    std::vector<std::string> vctIds;
    // New ones stand at the top, as a rule: a walk from there ends soon.
    std::unordered_map<const CImageView2DDrawableObject*, std::string> below;
    for (const auto& pObject : vctObjects)
        below[pObject.get()];
    std::size_t nMissing = below.size();
    for (int i = 0; i < model.Size() && nMissing > 0; ++i) {
        const auto it = below.find(model.GetAt(i).get());
        if (it == below.end())
            continue;
        const auto pBelow = model.GetAt(i + 1);
        it->second = pBelow ? pBelow->GetId().toStdString() : std::string();
        --nMissing;
    }
    for (const auto& pObject : vctObjects)
        vctIds.push_back(below[pObject.get()]);
    return vctIds;
}
} // namespace

void CAnnotationStore::SPrivate::UseJournal(bool bUse)
{
    if (bUse == bool(pJournal))
        return;
    pJournal = bUse ? std::make_unique<CAnnotationJournal>() : nullptr;
    RewriteJournal();
}

/// A journal is about the whole list: each page has the path of its file.
SDocument CAnnotationStore::SPrivate::JournalDocument()
{
    if (!bPages)
        return Document(-1);
    std::map<QString, SDocument> byFile;
    for (const SAnnotatedPage& page : pages.All()) {
        const auto it = rest.find(page.strFile);
        SDocument& ofFile =
            byFile.try_emplace(page.strFile, it != rest.end() ? it->second : SDocument()).first->second;
        AnnotationDocument::Put(ofFile, Packed(page));
    }
    SDocument document;
    for (auto& [strFile, ofFile] : byFile)
        for (SPage& page : ofFile.pages) {
            page.image = strFile.toStdString();
            document.pages.push_back(std::move(page));
        }
    return document;
}

std::vector<std::string> CAnnotationStore::SPrivate::JournalUnsaved() const
{
    std::set<std::string> unsaved;
    for (const PageKey& key : Unsaved())
        unsaved.insert(key.first.toStdString());
    return {unsaved.begin(), unsaved.end()};
}

void CAnnotationStore::SPrivate::BeginJournal()
{
    if (pJournal)
        pJournal->Begin(std::make_shared<const SDocument>(JournalDocument()), PathOf(kShown));
}

SObject CAnnotationStore::SPrivate::ObjectOf(const CImageView2DDrawableObject& object)
{
    SObject written = AnnotationDocument::WriteObject(object);
    const auto& vctMarks = FilePage().objects;
    const auto it = std::find_if(vctMarks.begin(), vctMarks.end(), [&written](const SObject& mark) {
        return !mark.unknown.empty() && mark.id == written.id;
    });
    if (it != vctMarks.end())
        written.unknown = it->unknown;
    return written;
}

/// The page of the set that is shown, with what has changed on it.
void CAnnotationStore::SPrivate::AddChanges(SJournalStep& step, const SAnnotationChanges& sChanges)
{
    const SAnnotatedPage* pShown = bPages ? pages.Find(nShown) : nullptr;
    step.nPage = pShown ? pShown->file.page : nPage;
    step.strImage = pShown ? pShown->strFile.toStdString() : std::string();
    step.vctDeleted = sChanges.vctDeleted;
    SPage page;
    page.page = step.nPage;
    const auto vctBelow = IdsBelow(*pGeometry, sChanges.vctCame);
    for (std::size_t i = 0; i < vctBelow.size(); ++i) {
        page.objects.push_back(ObjectOf(*sChanges.vctCame[i]));
        step.vctAbove.emplace_back(vctBelow[i]);
    }
    for (const auto& pObject : sChanges.vctChanged) {
        page.objects.push_back(ObjectOf(*pObject));
        step.vctAbove.emplace_back();
    }
    if (!page.objects.empty()) {
        step.document.emplace();
        step.document->pages.push_back(
            OnPicture(std::move(page), pShown ? pShown->Image() : pImages->GetImage(nPage)));
    }
    if (sChanges.bOrder)
        for (const auto& pObject : pGeometry->GetObjects())
            step.vctOrder.push_back(pObject->GetId().toStdString());
}

void CAnnotationStore::SPrivate::WriteJournal(const SAnnotationChanges& sChanges)
{
    if (!pJournal || !pGeometry || !pImages || !sChanges.Any())
        return;
    SJournalStep step;
    step.vctUnsaved = JournalUnsaved();
    step.bSaved = step.vctUnsaved.empty();
    step.bAll = sChanges.bAll || pJournal->IsBehind() || (bPages && !pages.Find(nShown));
    if (step.bAll)
        step.document = JournalDocument();
    else
        AddChanges(step, sChanges);
    pJournal->Write(step);
}

/// The pages have become others, or a part of them is saved.
void CAnnotationStore::SPrivate::RewriteJournal()
{
    if (!pJournal)
        return;
    if (Unsaved().empty())
        return BeginJournal();
    SAnnotationChanges sChanges;
    sChanges.bAll = true;
    WriteJournal(sChanges);
}

/// What changes without a step is written when the present event has been dealt with.
void CAnnotationStore::SPrivate::WriteJournalSoon(CAnnotationStore& store)
{
    if (!pJournal || std::exchange(bWriteSoon, true))
        return;
    QTimer::singleShot(0, &store, [this] {
        bWriteSoon = false;
        WriteJournal(tracker.Take());
    });
}
