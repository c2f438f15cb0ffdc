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

void CAnnotationStore::SPrivate::UseJournal(const CAnnotationStore& store, bool bUse)
{
    if (bUse == bool(pJournal))
        return;
    pJournal = bUse ? std::make_unique<CAnnotationJournal>() : nullptr;
    if (!bUse || !store.HasUnsaved())
        return BeginJournal(store);
    SAnnotationChanges sChanges;
    sChanges.bAll = true;
    WriteJournal(store, sChanges);
}

void CAnnotationStore::SPrivate::BeginJournal(const CAnnotationStore& store)
{
    if (pJournal)
        pJournal->Begin(std::make_shared<const SDocument>(JournalDocument(store)), ImagePath());
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

void CAnnotationStore::SPrivate::WriteJournal(const CAnnotationStore& store,
                                              const SAnnotationChanges& sChanges)
{
    if (!pJournal || !pGeometry || !sChanges.Any())
        return;
    SJournalStep step;
    step.nPage = JournalPage();
    step.bSaved = !store.HasUnsaved();
    step.bAll = sChanges.bAll || pJournal->IsBehind();
    step.vctDeleted = sChanges.vctDeleted;
    if (step.bAll) {
        step.document = JournalDocument(store);
    } else {
        SPage page;
        page.page = step.nPage;
        const auto vctBelow = IdsBelow(*pGeometry, sChanges.vctAdded);
        for (std::size_t i = 0; i < vctBelow.size(); ++i) {
            page.objects.push_back(ObjectOf(*sChanges.vctAdded[i]));
            step.vctAbove.emplace_back(vctBelow[i]);
        }
        for (const auto& pObject : sChanges.vctChanged) {
            page.objects.push_back(ObjectOf(*pObject));
            step.vctAbove.emplace_back();
        }
        if (!page.objects.empty()) {
            MeasureJournalPage(page);
            step.document.emplace();
            step.document->pages.push_back(std::move(page));
        }
    }
    if (sChanges.bOrder)
        for (const auto& pObject : pGeometry->GetObjects())
            step.vctOrder.push_back(pObject->GetId().toStdString());
    pJournal->Write(step);
}

/// The pages have become others, or a part of them is saved.
void CAnnotationStore::SPrivate::RewriteJournal(CAnnotationStore& store)
{
    if (!store.HasUnsaved())
        return BeginJournal(store);
    SAnnotationChanges sChanges;
    sChanges.bAll = true;
    WriteJournal(store, sChanges);
}

/// What changes without a step is written when the present event has been dealt with.
void CAnnotationStore::SPrivate::WriteJournalSoon(CAnnotationStore& store)
{
    if (!pJournal || std::exchange(bWriteSoon, true))
        return;
    QTimer::singleShot(0, &store, [this, &store] {
        bWriteSoon = false;
        WriteJournal(store, tracker.Take());
    });
}
