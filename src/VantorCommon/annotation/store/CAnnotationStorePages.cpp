// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Which annotations are on the screen, and the documents that they make: one set for the whole list, or one
// for each of its images.
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <Vantor/image/CImage.h>

#include <QFileInfo>
#include <algorithm>
#include <utility>

using Vantor::Annotations::SContext;
using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;

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
    if (nShown < 0)
        return;
    const PageKey only(QString(), -1);
    now[KeyOf(nShown)] = std::exchange(now[only], {});
    saved[KeyOf(nShown)] = std::exchange(saved[only], {});
}

/// The list has changed, or another image of it is shown.
void CAnnotationStore::SPrivate::FollowList(CAnnotationStore& store)
{
    if (!bPages)
        TellCalibration(store); // the image may have been turned
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
        AnnotationDocument::Put(rest[page.strFile], Packed(page));
    }
    if (!vctCleared.empty())
        cleared = std::move(vctCleared);
    if (!vctGone.empty() || nBefore == 0)
        ForgetFiles();
    const int nIndex = pImages->GetCurrentIndex();
    const auto& vctPages = pages.All();
    const bool bNone = nIndex < 0 || nIndex >= static_cast<int>(vctPages.size());
    const int nWanted = bNone ? -1 : vctPages[static_cast<std::size_t>(nIndex)].nId;
    if (nWanted != nShown) {
        WriteJournal(tracker.Take());
        nShown = nWanted;
        tracker.Replace(bNone ? ObjectList() : std::exchange(pages.Find(nShown)->vctObjects, {}));
        tracker.Take();
    }
    if (!vctGone.empty() || vctPages.size() != nBefore)
        RewriteJournal();
    TellCalibration(store);
    TellUnsaved(store);
    if (vctPages.empty() && !bReplacing)
        TellGone(store, EAnnotationsGone_Closed, 0);
}

/// What is known of files none of whose pages is there any more.
void CAnnotationStore::SPrivate::ForgetFiles()
{
    const std::set<QString> present = pages.Files();
    const auto forget = [&present](auto& map, const auto& fileOf) {
        for (auto it = map.begin(); it != map.end();)
            it = present.count(fileOf(it->first)) != 0 ? std::next(it) : map.erase(it);
    };
    const auto fileOfKey = [](const PageKey& key) { return key.first; };
    forget(rest, [](const QString& strFile) { return strFile; });
    forget(now, fileOfKey);
    forget(saved, fileOfKey);
}

/// An image of the list, or one that has become another since, stands in a file now. When that is another
/// file, the image becomes its only page; what the file before knows of it stays there.
void CAnnotationStore::SPrivate::FollowSave(CAnnotationStore& store, const QString& strPath,
                                            unsigned int nImageUID)
{
    if (!pImages)
        return;
    ImagePtr pSaved = pictures.ImageOf(nImageUID);
    for (int i = 0; !pSaved && i < pImages->GetImageCount(); ++i)
        if (const ImagePtr pImage = pImages->GetImage(i); pImage && pImage->GetUID() == nImageUID)
            pSaved = pImage;
    if (!pSaved)
        return;
    auto& vctPages = pages.All();
    const auto it = std::find_if(vctPages.begin(), vctPages.end(), [&](const SAnnotatedPage& page) {
        return bPages && pictures.AreOfOne(page.Image(), pSaved);
    });
    SAnnotatedPage* pPage = it != vctPages.end() ? &*it : nullptr;
    if (bPages && !pPage) // closed by now
        return;
    if (pPage && pPage->strFile != CAnnotationPages::CleanPath(strPath)) {
        const PageKey before = pPage->Key();
        AnnotationDocument::Put(rest[pPage->strFile], Packed(*pPage));
        pages.Move(*pPage, strPath);
        now[pPage->Key()] = now[before];
        ForgetFiles();
    }
    // What was saved before has the places on the picture before.
    const bool bShown = !pPage || pPage->nId == nShown;
    const bool bAny = bShown ? pGeometry && pGeometry->Size() > 0 : !pPage->vctObjects.empty();
    if (!pictures.Of(pSaved).map.IsIdentity() && bAny)
        ++now[KeyOf(pPage ? pPage->nId : -1)].nOutside;
    pictures.SetSaved(pSaved);
    TellCalibration(store);
    RewriteJournal();
    TellUnsaved(store);
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
    ++m_p->now[page.Key()].nOutside;
    m_p->RewriteJournal();
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

/// Null when there is no such image, and for the only set.
const SAnnotatedPage* CAnnotationStore::SPrivate::At(int nImage) const
{
    if (!bPages || nImage == kShown)
        return bPages ? pages.Find(nShown) : nullptr;
    const bool bThere = nImage >= 0 && nImage < static_cast<int>(pages.All().size());
    return bThere ? &pages.All()[static_cast<std::size_t>(nImage)] : nullptr;
}

CAnnotationStore::ObjectList CAnnotationStore::GetObjects(int nImage) const
{
    const SAnnotatedPage* pPage = m_p->At(nImage);
    if (pPage && pPage->nId != m_p->nShown)
        return pPage->vctObjects;
    return m_p->pGeometry && (pPage || !m_p->bPages) ? m_p->pGeometry->GetObjects() : ObjectList();
}

/// The identifier of the page of an image; -1 when there is none.
int CAnnotationStore::SPrivate::PageAt(int nImage) const
{
    const SAnnotatedPage* pPage = At(nImage);
    return pPage ? pPage->nId : -1;
}

/// Empty for the only set.
QString CAnnotationStore::SPrivate::FileOf(int nId) const
{
    const SAnnotatedPage* pPage = bPages ? pages.Find(nId) : nullptr;
    return pPage ? pPage->strFile : QString();
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

/// A page of an image as files have it: on the picture in the image's file.
SPage CAnnotationStore::SPrivate::OnPicture(SPage page, const ImagePtr& pImage) const
{
    if (!pImage)
        return page;
    const CFilePictures::SPicture picture = pictures.Of(pImage);
    AnnotationDocument::Move(page, picture.map.Inverse());
    page.width = picture.nWidth;
    page.height = picture.nHeight;
    if (pImage->GetPageResolution() > 0.0)
        page.dpi = pImage->GetPageResolution();
    return page;
}

SDocument CAnnotationStore::SPrivate::WholeSet()
{
    FilePage();
    SDocument document = file;
    for (SPage& page : document.pages)
        if (page.page == nPage && pGeometry)
            page = OnPicture(AnnotationDocument::Pack(page, pGeometry->GetObjects()),
                             pImages ? pImages->GetImage(nPage) : nullptr);
    return document;
}

SPage CAnnotationStore::SPrivate::Packed(const SAnnotatedPage& page) const
{
    return OnPicture(
        AnnotationDocument::Pack(page.file, page.nId == nShown ? pGeometry->GetObjects() : page.vctObjects),
        page.Image());
}

SDocument CAnnotationStore::SPrivate::FileDocument(const QString& strFile) const
{
    const auto it = rest.find(strFile);
    SDocument document = it != rest.end() ? it->second : SDocument();
    for (const SAnnotatedPage& page : pages.All())
        if (page.strFile == strFile)
            AnnotationDocument::Put(document, Packed(page));
    return document;
}

SDocument CAnnotationStore::SPrivate::Document(int nId)
{
    SDocument document = bPages ? FileDocument(FileOf(nId)) : WholeSet();
    document.generator = "Vantor";
    return document;
}

SDocument CAnnotationStore::TakeDocument(int nImage) const
{
    return m_p->Document(m_p->PageAt(nImage));
}

SContext CAnnotationStore::SPrivate::Context(int nId, const SDocument& document) const
{
    SContext context;
    const SAnnotatedPage* pPage = bPages ? pages.Find(nId) : nullptr;
    const ImagePtr pImage = pPage                ? pPage->Image()
                            : pImages && !bPages ? pImages->GetCurrentImage()
                                                 : nullptr;
    if (!pImage)
        return context;
    const CFilePictures::SPicture picture = pictures.Of(pImage);
    const QString strPath = pPage && pPage->IsFile() ? pPage->strFile : CAnnotationPages::PathOf(pImage);
    context.imageName = QFileInfo(strPath).fileName().toStdString();
    context.width = picture.nWidth;
    context.height = picture.nHeight;
    const int nInFile = pPage ? pPage->file.page : nPage;
    for (std::size_t i = 0; i < document.pages.size(); ++i)
        if (document.pages[i].page == nInFile)
            context.page = static_cast<int>(i);
    return context;
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
        if (page.page == pAfter->nPage) {
            AnnotationDocument::Move(page, pictures.Of(pImages->GetImage(pAfter->nPage)).map);
            pAfter->vctObjects = AnnotationDocument::Unpack(page);
        }
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

/// What a document has for the pages of a file.
CAnnotationStore::SPrivate::SFileSets CAnnotationStore::SPrivate::SetsIn(const SDocument& document,
                                                                         const QString& strFile) const
{
    SFileSets sets{document, {}};
    for (const SAnnotatedPage& page : pages.All()) {
        if (page.strFile != strFile)
            continue;
        sets.vctPages.push_back(page);
        SAnnotatedPage& changed = sets.vctPages.back();
        const int nInFile = page.file.page;
        changed.file = {};
        changed.file.page = nInFile;
        auto& vctRest = sets.rest.pages;
        const auto it = std::find_if(vctRest.begin(), vctRest.end(),
                                     [nInFile](const SPage& other) { return other.page == nInFile; });
        if (it != vctRest.end()) {
            changed.file = std::move(*it);
            vctRest.erase(it);
        }
        AnnotationDocument::Move(changed.file, pictures.Of(page.Image()).map);
        changed.vctObjects = AnnotationDocument::Unpack(changed.file);
    }
    return sets;
}

CAnnotationStore::SPrivate::SFileSets CAnnotationStore::SPrivate::SetsNow(const QString& strFile)
{
    SFileSets sets{rest[strFile], {}};
    for (const SAnnotatedPage& page : pages.All())
        if (page.strFile == strFile) {
            sets.vctPages.push_back(page);
            if (page.nId == nShown)
                sets.vctPages.back().vctObjects = pGeometry->GetObjects();
        }
    return sets;
}

void CAnnotationStore::SPrivate::ShowSets(const SFileSets& sets, const QString& strFile)
{
    rest[strFile] = sets.rest;
    for (const SAnnotatedPage& page : sets.vctPages) {
        SAnnotatedPage* pPage = pages.Find(page.nId);
        if (!pPage)
            continue;
        const int nInFile = std::exchange(pPage->file, page.file).page;
        pPage->file.page = nInFile;
        if (page.nId == nShown)
            tracker.Replace(page.vctObjects);
        else
            pPage->vctObjects = page.vctObjects;
    }
    tracker.ChangeAll();
}

/// All pages of the file of a page.
void CAnnotationStore::SPrivate::ApplyPages(CAnnotationStore& store, const SDocument& document, int nId)
{
    const QString strFile = FileOf(nId);
    const auto pAfter = std::make_shared<SFileSets>(SetsIn(document, strFile));
    const auto pBefore = std::make_shared<SFileSets>();
    nTarget = nId;
    store.RunCall(
        [=] {
            *pBefore = SetsNow(strFile);
            ShowSets(*pAfter, strFile);
        },
        [=] { ShowSets(*pBefore, strFile); });
    nTarget = -1;
}

void CAnnotationStore::SPrivate::Apply(CAnnotationStore& store, const SDocument& document, int nId)
{
    if (!pGeometry || !pImages)
        return;
    if (!bPages)
        ApplySet(store, document);
    else if (pages.Find(nId))
        ApplyPages(store, document, nId);
}

void CAnnotationStore::Apply(const SDocument& document, int nImage)
{
    m_p->Apply(*this, document, m_p->PageAt(nImage));
}
