// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/CAnnotationStore.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/command/CCommandCall.h>
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QDateTime>
#include <algorithm>
#include <utility>

using Vantor::Annotations::SContext;
using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;
using Vantor::Annotations::SReport;

namespace
{
constexpr const char* kNoMemory = "There is not enough memory.";

/// On a thread of the store's.
SReport WriteFile(SDocument document, const QString& strImage, const QString& strPath,
                  const QString& strFormat, const SContext& context)
{
    try {
        if (!strImage.isEmpty())
            document.source = Vantor::Annotations::IdentityOf(strImage.toStdString());
        document.saved = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toStdString();
        return Vantor::Annotations::Save(document, strPath.toStdString(), strFormat.toStdString(), context);
    } catch (const std::bad_alloc&) {
        return SReport{kNoMemory, {}};
    }
}

/// On a thread of the store's.
SReport ReadFile(const QString& strPath, const SContext& context, SDocument& document)
{
    try {
        return Vantor::Annotations::Load(strPath.toStdString(), {}, context, document);
    } catch (const std::bad_alloc&) {
        return SReport{kNoMemory, {}};
    }
}

SContext ContextOf(const Vantor::Algorithms::CImage* pImage)
{
    SContext context;
    if (pImage) {
        context.imageName = QString::fromStdWString(pImage->GetName()).toStdString();
        context.width = pImage->GetWidth();
        context.height = pImage->GetHeight();
    }
    return context;
}
} // namespace

/// A step of the controller's that the store hears of.
class CAnnotationStore::CWatched : public CCommand
{
public:
    CWatched(CAnnotationStore& store, std::unique_ptr<CCommand> pStep)
        : m_store(store), m_pStep(std::move(pStep))
    {
    }

    void exec() override { Run(&CCommand::exec, true); }
    void undo() override { Run(&CCommand::undo, false); }
    void redo() override { Run(&CCommand::redo, true); }

private:
    void Run(void (CCommand::*pDo)(), bool bDone)
    {
        ++m_store.m_p->nRunning;
        (m_pStep.get()->*pDo)();
        --m_store.m_p->nRunning;
        m_store.m_p->EndStep(m_store, *this, bDone);
    }

    CAnnotationStore& m_store;
    std::unique_ptr<CCommand> m_pStep;
};

CAnnotationStore::SPrivate::SPrivate(CAnnotationStore& store, CImageView2DCtrl& owner, Execute run)
    : ctrl(owner), execute(std::move(run)), pImages(owner.GetImageModel()),
      pGeometry(owner.GetGeometryModel()),
      tracker(
          pGeometry, [this, &store](int nCount) { Clear(store, nCount); },
          [this, &store] { ChangeOutside(store); })
{
    files.setMaxThreadCount(1);
}

CAnnotationStore::CAnnotationStore(CImageView2DCtrl& ctrl, Execute execute)
    : m_p(std::make_unique<SPrivate>(*this, ctrl, std::move(execute)))
{
}

CAnnotationStore::~CAnnotationStore()
{
    m_p->files.waitForDone();
}

void CAnnotationStore::SetOptions(const SCenterOptions& sOptions)
{
    m_p->sOptions = sOptions;
    m_p->UseJournal(*this, sOptions.bAnnotationJournal);
}

bool CAnnotationStore::IsCarrying() const
{
    return m_p->sOptions.bCarryAnnotations;
}

std::unique_ptr<CCommand> CAnnotationStore::Watch(std::unique_ptr<CCommand> pCommand)
{
    return std::make_unique<CWatched>(*this, std::move(pCommand));
}

void CAnnotationStore::Clear(EAnnotationsGone eReason)
{
    if (!m_p->pGeometry)
        return;
    m_p->eReason = eReason;
    m_p->pGeometry->ClearObject();
    m_p->eReason = EAnnotationsGone_Cleared;
}

void CAnnotationStore::SPrivate::Clear(CAnnotationStore& store, int nCount)
{
    const EAnnotationsGone eWhy = eReason;
    const bool bNewImage = eWhy == EAnnotationsGone_Loaded || eWhy == EAnnotationsGone_Closed;
    if (bNewImage) {
        file = {};
        nPage = 0;
        sNow.vctSteps.clear();
        sSaved = sNow;
        tracker.Take();
        BeginJournal(store);
    } else if (nRunning == 0 && nCount > 0) {
        ++sNow.nOutside;
        WriteJournal(store, tracker.Take());
    }
    TellUnsaved(store);
    if (nCount > 0)
        Q_EMIT store.signal_AnnotationsGone(eWhy, nCount);
}

/// Objects come and go within steps, as a rule.
void CAnnotationStore::SPrivate::ChangeOutside(CAnnotationStore& store)
{
    if (std::exchange(nObjects, tracker.Count()) == 0 && pImages)
        nPage = std::max(0, pImages->GetCurrentIndex());
    if (nRunning > 0)
        return;
    ++sNow.nOutside;
    WriteJournalSoon(store);
    TellUnsaved(store);
}

void CAnnotationStore::SPrivate::EndStep(CAnnotationStore& store, const CCommand& step, bool bDone)
{
    const SAnnotationChanges sChanges = tracker.Take();
    auto& vctSteps = sNow.vctSteps;
    const auto it = std::find(vctSteps.rbegin(), vctSteps.rend(), &step);
    if (!bDone && it != vctSteps.rend())
        vctSteps.erase(std::next(it).base());
    else if (!bDone && sChanges.Any())
        ++sNow.nOutside;
    else if (bDone && sChanges.Any())
        vctSteps.push_back(&step);
    if (!bLoading)
        WriteJournal(store, sChanges);
    TellUnsaved(store);
    Q_EMIT store.signal_StepFinished();
}

void CAnnotationStore::SPrivate::TellUnsaved(CAnnotationStore& store)
{
    const bool bUnsaved = store.HasUnsaved();
    if (std::exchange(bToldUnsaved, bUnsaved) != bUnsaved)
        Q_EMIT store.signal_ChangeUnsaved(bUnsaved);
}

bool CAnnotationStore::HasUnsaved() const
{
    return !(m_p->sNow == m_p->sSaved);
}

void CAnnotationStore::SetSaved()
{
    m_p->sSaved = m_p->sNow;
    m_p->BeginJournal(*this);
    m_p->TellUnsaved(*this);
}

SPage& CAnnotationStore::SPrivate::FilePage()
{
    for (SPage& page : file.pages)
        if (page.page == nPage)
            return page;
    SPage page;
    page.page = nPage;
    file.pages.push_back(page);
    return file.pages.back();
}

void CAnnotationStore::SPrivate::MeasurePage(SPage& page) const
{
    const auto pImage = pImages ? pImages->GetImage(page.page) : nullptr;
    if (!pImage)
        return;
    page.width = pImage->GetWidth();
    page.height = pImage->GetHeight();
}

SDocument CAnnotationStore::TakeDocument() const
{
    m_p->MeasurePage(m_p->FilePage());
    SDocument document = m_p->file;
    document.generator = "Vantor";
    for (SPage& page : document.pages)
        if (page.page == m_p->nPage && m_p->pGeometry)
            page = AnnotationDocument::Pack(page, m_p->pGeometry->GetObjects());
    return document;
}

void CAnnotationStore::Apply(const SDocument& document)
{
    if (!m_p->pGeometry || !m_p->pImages)
        return;
    struct SSet {
        SDocument file;
        int nPage = 0;
        ObjectList vctObjects;
    };
    const auto pAfter =
        std::make_shared<SSet>(SSet{document, std::max(0, m_p->pImages->GetCurrentIndex()), ObjectList()});
    for (SPage& page : pAfter->file.pages)
        if (page.page == pAfter->nPage)
            pAfter->vctObjects = AnnotationDocument::Unpack(page);
    const auto pBefore = std::make_shared<SSet>();
    const auto show = [this](const SSet& set) {
        m_p->file = set.file;
        m_p->nPage = set.nPage;
        m_p->tracker.Replace(set.vctObjects);
    };
    RunCall(
        [=] {
            *pBefore = SSet{m_p->file, m_p->nPage, m_p->pGeometry->GetObjects()};
            show(*pAfter);
        },
        [=] { show(*pBefore); });
}

QString CAnnotationStore::SPrivate::ImagePath() const
{
    const auto pImage = pImages ? pImages->GetCurrentImage() : nullptr;
    if (!pImage || pImage->GetName().empty())
        return {};
    const QString strFolder = QString::fromStdWString(pImage->GetFolder());
    const QString strName = QString::fromStdWString(pImage->GetName());
    if (strFolder.isEmpty())
        return strName;
    return strFolder.endsWith(QLatin1Char('/')) ? strFolder + strName
                                                : strFolder + QLatin1Char('/') + strName;
}

QString CAnnotationStore::GetSidecarPath() const
{
    const QString strImage = m_p->ImagePath();
    return strImage.isEmpty()
               ? QString()
               : QString::fromStdString(Vantor::Annotations::SidecarOf(strImage.toStdString()));
}

void CAnnotationStore::Save(const QString& strPath, const QString& strFormat)
{
    const SContext context = ContextOf(m_p->ctrl.GetCurrentImgage().get());
    const bool bOwn = strFormat == QLatin1String(Vantor::Annotations::kOwnFormat);
    m_p->files.start([=, document = TakeDocument(), strImage = m_p->ImagePath(), sVersion = m_p->sNow] {
        const SReport report = WriteFile(document, strImage, strPath, strFormat, context);
        QMetaObject::invokeMethod(
            this,
            [=] {
                if (bOwn && report.failure.empty()) {
                    m_p->sSaved = sVersion;
                    if (!HasUnsaved())
                        m_p->BeginJournal(*this);
                    m_p->TellUnsaved(*this);
                }
                Q_EMIT signal_Saved(strPath, report);
            },
            Qt::QueuedConnection);
    });
}

void CAnnotationStore::Load(const QString& strPath)
{
    const auto pImage = m_p->ctrl.GetCurrentImgage();
    m_p->files.start([=, context = ContextOf(pImage.get())] {
        const auto pDocument = std::make_shared<SDocument>();
        const SReport report = ReadFile(strPath, context, *pDocument);
        QMetaObject::invokeMethod(
            this,
            [=] {
                SReport told = report;
                if (told.failure.empty() && pImage != m_p->ctrl.GetCurrentImgage())
                    told.failure = "Another image is shown by now.";
                if (told.failure.empty()) {
                    m_p->bLoading = true;
                    Apply(*pDocument);
                    m_p->bLoading = false;
                    SetSaved();
                }
                Q_EMIT signal_Loaded(strPath, told);
            },
            Qt::QueuedConnection);
    });
}
