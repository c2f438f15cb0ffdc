// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Which annotations are on the screen, and the documents that they make: one set for the whole list, or one
// for each of its images.
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <Vantor/image/CImage.h>

#include <algorithm>
#include <utility>

using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;

namespace
{
void PutPage(SDocument& document, SPage page)
{
    auto& vctPages = document.pages;
    vctPages.erase(std::remove_if(vctPages.begin(), vctPages.end(),
                                  [&page](const SPage& other) { return other.page == page.page; }),
                   vctPages.end());
    const auto it = std::find_if(vctPages.begin(), vctPages.end(),
                                 [&page](const SPage& other) { return other.page > page.page; });
    vctPages.insert(it, std::move(page));
}

void Measure(SPage& page, const Vantor::Algorithms::CImage* pImage)
{
    if (!pImage)
        return;
    page.width = pImage->GetWidth();
    page.height = pImage->GetHeight();
    if (pImage->GetPageResolution() > 0.0)
        page.dpi = pImage->GetPageResolution();
}
} // namespace

void CAnnotationStore::SPrivate::UsePages(bool bUse)
{
    if (bUse == bPages || !pImages || !pGeometry)
        return;
    bPages = bUse;
    nShown = -1;
    pages.Restart(*pImages);
    if (!bPages)
        return;
    const int nIndex = pImages->GetCurrentIndex();
    if (nIndex >= 0 && nIndex < pImages->GetImageCount())
        nShown = pages.All()[static_cast<std::size_t>(nIndex)].nId;
    now[FileKey()] = SVersion(now[QString()]);
    saved[FileKey()] = SVersion(saved[QString()]);
    if (nShown < 0)
        return;
    now.erase(QString());
    saved.erase(QString());
}

/// The list has changed, or another image of it is shown.
void CAnnotationStore::SPrivate::FollowList(CAnnotationStore& store)
{
    if (!bPages || !pImages || !pGeometry)
        return;
    if (SAnnotatedPage* pShown = pages.Find(nShown))
        pShown->vctObjects = pGeometry->GetObjects();
    const std::size_t nBefore = pages.All().size();
    const auto vctGone = pages.Follow(*pImages);
    std::vector<SCleared> vctCleared;
    for (const SAnnotatedPage& page : vctGone) {
        nGone += static_cast<int>(page.vctObjects.size());
        if (!page.vctObjects.empty())
            vctCleared.push_back({page.strFile, page.file.page, page.vctObjects});
        // The annotations of a page that is closed stay in its file.
        PutPage(rest[page.strFile], AnnotationDocument::Pack(page.file, page.vctObjects));
    }
    if (!vctCleared.empty())
        cleared = std::move(vctCleared);
    ForgetFiles();
    const int nIndex = pImages->GetCurrentIndex();
    const auto& vctPages = pages.All();
    const bool bNone = nIndex < 0 || nIndex >= static_cast<int>(vctPages.size());
    const int nWanted = bNone ? -1 : vctPages[static_cast<std::size_t>(nIndex)].nId;
    if (nWanted != nShown) {
        WriteJournal(store, tracker.Take());
        nShown = nWanted;
        tracker.Replace(bNone ? ObjectList() : std::exchange(pages.Find(nShown)->vctObjects, {}));
        tracker.Take();
    }
    if (!vctGone.empty() || vctPages.size() != nBefore)
        RewriteJournal(store);
    if (vctPages.empty() && !bReplacing)
        TellGone(store, EAnnotationsGone_Closed, 0);
}

/// What is known of files none of whose pages is there any more.
void CAnnotationStore::SPrivate::ForgetFiles()
{
    const auto isGone = [this](const QString& strFile) {
        return std::none_of(pages.All().begin(), pages.All().end(),
                            [&](const SAnnotatedPage& page) { return page.strFile == strFile; });
    };
    const auto forget = [&isGone](auto& map) {
        for (auto it = map.begin(); it != map.end();)
            it = isGone(it->first) ? map.erase(it) : std::next(it);
    };
    forget(rest);
    forget(now);
    forget(saved);
}

void CAnnotationStore::ClearImage(int nIndex)
{
    auto& vctPages = m_p->pages.All();
    const bool bOther = m_p->bPages && m_p->pImages && nIndex != m_p->pImages->GetCurrentIndex();
    if (!bOther)
        return Clear(EAnnotationsGone_Filtered);
    if (nIndex < 0 || nIndex >= static_cast<int>(vctPages.size()))
        return;
    SAnnotatedPage& page = vctPages[static_cast<std::size_t>(nIndex)];
    const auto vctGone = std::exchange(page.vctObjects, {});
    if (vctGone.empty())
        return;
    m_p->cleared = {{page.strFile, page.file.page, vctGone}};
    ++m_p->now[page.strFile].nOutside;
    m_p->RewriteJournal(*this);
    m_p->TellGone(*this, EAnnotationsGone_Filtered, static_cast<int>(vctGone.size()));
}

/// Shows the page of a step. @return false when it is gone
bool CAnnotationStore::SPrivate::ShowPage(int nId)
{
    if (!bPages || nId < 0 || nId == nShown)
        return true;
    const int nIndex = pages.IndexOf(nId);
    if (nIndex < 0)
        return false;
    pImages->SetCurrentIndex(nIndex);
    return nShown == nId;
}

QString CAnnotationStore::SPrivate::FileKey()
{
    const SAnnotatedPage* pShown = bPages ? pages.Find(nShown) : nullptr;
    return pShown ? pShown->strFile : QString();
}

SPage& CAnnotationStore::SPrivate::FilePage()
{
    if (SAnnotatedPage* pShown = bPages ? pages.Find(nShown) : nullptr)
        return pShown->file;
    for (SPage& page : file.pages)
        if (page.page == nPage)
            return page;
    SPage page;
    page.page = nPage;
    file.pages.push_back(page);
    return file.pages.back();
}

SDocument CAnnotationStore::SPrivate::WholeSet()
{
    Measure(FilePage(), pImages ? pImages->GetImage(nPage).get() : nullptr);
    SDocument document = file;
    for (SPage& page : document.pages)
        if (page.page == nPage && pGeometry)
            page = AnnotationDocument::Pack(page, pGeometry->GetObjects());
    return document;
}

SPage CAnnotationStore::SPrivate::Packed(const SAnnotatedPage& page) const
{
    SPage packed =
        AnnotationDocument::Pack(page.file, page.nId == nShown ? pGeometry->GetObjects() : page.vctObjects);
    Measure(packed, page.pImage.get());
    return packed;
}

SDocument CAnnotationStore::TakeDocument() const
{
    SDocument document;
    if (!m_p->bPages) {
        document = m_p->WholeSet();
    } else {
        const QString strFile = m_p->FileKey();
        document = m_p->rest[strFile];
        for (const SAnnotatedPage& page : m_p->pages.All())
            if (page.strFile == strFile)
                PutPage(document, m_p->Packed(page));
    }
    document.generator = "Vantor";
    return document;
}

/// A journal is about the whole list: its pages are those of the list, each with the path of its image.
SDocument CAnnotationStore::SPrivate::JournalDocument(const CAnnotationStore& store)
{
    if (!bPages)
        return store.TakeDocument();
    SDocument document;
    for (const SAnnotatedPage& page : pages.All()) {
        document.pages.push_back(Packed(page));
        document.pages.back().page = static_cast<int>(document.pages.size()) - 1;
        document.pages.back().image = page.strFile.toStdString();
    }
    return document;
}

int CAnnotationStore::SPrivate::JournalPage() const
{
    return bPages ? std::max(0, pages.IndexOf(nShown)) : nPage;
}

void CAnnotationStore::SPrivate::MeasureJournalPage(SPage& page) const
{
    Measure(page, pImages ? pImages->GetImage(page.page).get() : nullptr);
}

void CAnnotationStore::SPrivate::ApplySet(CAnnotationStore& store, const SDocument& document)
{
    struct SSet {
        SDocument file;
        int nPage = 0;
        ObjectList vctObjects;
    };
    const auto pAfter =
        std::make_shared<SSet>(SSet{document, std::max(0, pImages->GetCurrentIndex()), ObjectList()});
    for (SPage& page : pAfter->file.pages)
        if (page.page == pAfter->nPage)
            pAfter->vctObjects = AnnotationDocument::Unpack(page);
    const auto pBefore = std::make_shared<SSet>();
    const auto show = [this](const SSet& set) {
        file = set.file;
        nPage = set.nPage;
        tracker.Replace(set.vctObjects);
    };
    store.RunCall(
        [=] {
            *pBefore = SSet{file, nPage, pGeometry->GetObjects()};
            show(*pAfter);
        },
        [=] { show(*pBefore); });
}

/// All pages of the file of the shown image.
void CAnnotationStore::SPrivate::ApplyPages(CAnnotationStore& store, const SDocument& document)
{
    struct SSets {
        SDocument rest;
        CAnnotationPages::Pages vctPages;
    };
    const QString strFile = FileKey();
    const auto pAfter = std::make_shared<SSets>(SSets{document, {}});
    for (const SAnnotatedPage& page : pages.All()) {
        if (page.strFile != strFile)
            continue;
        pAfter->vctPages.push_back(page);
        SAnnotatedPage& changed = pAfter->vctPages.back();
        const int nInFile = page.file.page;
        changed.file = {};
        changed.file.page = nInFile;
        auto& vctRest = pAfter->rest.pages;
        const auto it = std::find_if(vctRest.begin(), vctRest.end(),
                                     [nInFile](const SPage& other) { return other.page == nInFile; });
        if (it != vctRest.end()) {
            changed.file = std::move(*it);
            vctRest.erase(it);
        }
        changed.vctObjects = AnnotationDocument::Unpack(changed.file);
    }
    const auto pBefore = std::make_shared<SSets>();
    const auto show = [this, strFile](const SSets& sets) {
        rest[strFile] = sets.rest;
        for (const SAnnotatedPage& page : sets.vctPages) {
            SAnnotatedPage* pPage = pages.Find(page.nId);
            if (!pPage)
                continue;
            pPage->file = page.file;
            if (page.nId == nShown)
                tracker.Replace(page.vctObjects);
            else
                pPage->vctObjects = page.vctObjects;
        }
    };
    store.RunCall(
        [=] {
            *pBefore = SSets{rest[strFile], {}};
            for (const SAnnotatedPage& page : pages.All())
                if (page.strFile == strFile) {
                    pBefore->vctPages.push_back(page);
                    if (page.nId == nShown)
                        pBefore->vctPages.back().vctObjects = pGeometry->GetObjects();
                }
            show(*pAfter);
        },
        [=] { show(*pBefore); });
}

void CAnnotationStore::Apply(const SDocument& document)
{
    if (!m_p->pGeometry || !m_p->pImages)
        return;
    if (m_p->bPages)
        m_p->ApplyPages(*this, document);
    else
        m_p->ApplySet(*this, document);
}
