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
#include <optional>
#include <utility>

using Vantor::Annotations::SContext;
using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;
using Vantor::Annotations::SReport;

namespace
{
constexpr const char* kOtherVersion = "The annotations were made for another version of this picture.";
constexpr const char* kNoMemory = "There is not enough memory.";

/// On a thread of the store's.
SReport WriteFile(SDocument document, const QString& strImage, const QString& strPath,
                  const QString& strFormat, const SContext& context, const std::optional<std::string>& known)
{
    try {
        if (!strImage.isEmpty())
            document.source = Vantor::Annotations::IdentityOf(strImage.toStdString());
        document.saved = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toStdString();
        return Vantor::Annotations::Save(document, strPath.toStdString(), strFormat.toStdString(), context,
                                         known);
    } catch (const std::bad_alloc&) {
        return SReport{kNoMemory, {}};
    }
}

/// On a thread of the store's.
SReport ReadFile(const QString& strPath, const QString& strImage, const SContext& context,
                 SDocument& document)
{
    try {
        SReport report = Vantor::Annotations::Load(strPath.toStdString(), {}, context, document);
        if (report.failure.empty() && Vantor::Annotations::IsOther(document.source, strImage.toStdString()))
            report.remarks.push_back({{}, kOtherVersion});
        return report;
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
        : m_store(store), m_pStep(std::move(pStep)), m_nPage(store.m_p->nShown),
          m_strFile(store.m_p->FileKey())
    {
    }

    const QString& GetFile() const { return m_strFile; }

    void exec() override { Run(&CCommand::exec, true); }
    void undo() override { Run(&CCommand::undo, false); }
    void redo() override { Run(&CCommand::redo, true); }

private:
    void Run(void (CCommand::*pDo)(), bool bDone)
    {
        if (!m_store.m_p->ShowPage(m_nPage))
            return;
        ++m_store.m_p->nRunning;
        (m_pStep.get()->*pDo)();
        --m_store.m_p->nRunning;
        m_store.m_p->EndStep(m_store, *this, bDone);
    }

    CAnnotationStore& m_store;
    std::unique_ptr<CCommand> m_pStep;
    int m_nPage; ///< on which it is made, -1 for the only set
    QString m_strFile;
};

CAnnotationStore::SPrivate::SPrivate(CAnnotationStore& store, CImageView2DCtrl& owner, Execute run)
    : ctrl(owner), execute(std::move(run)), pImages(owner.GetImageModel()),
      pGeometry(owner.GetGeometryModel()),
      tracker(
          pGeometry, [this, &store](const ObjectList& vctGone) { Clear(store, vctGone); },
          [this, &store] { ChangeOutside(store); })
{
    files.setMaxThreadCount(1);
    if (!pImages)
        return;
    const auto follow = [this, &store] { FollowList(store); };
    QObject::connect(pImages, &CImageView2DModel::signal_ChangeImageList, &store, follow);
    QObject::connect(pImages, &CImageView2DModel::signal_ChangeCurrentIndex, &store, follow);
    QObject::connect(pImages, &CImageView2DModel::signal_ChangeCurrentImage, &store, follow);
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
    m_p->UsePages(sOptions.bAnnotationsPerImage);
    m_p->UseJournal(*this, sOptions.bAnnotationJournal);
}

bool CAnnotationStore::IsCarrying() const
{
    return m_p->sOptions.bCarryAnnotations;
}

void CAnnotationStore::TellNotCarried()
{
    if (const int nKept = AnnotationDocument::CountKept(m_p->FilePage()))
        Q_EMIT signal_NotCarried(nKept);
}

std::unique_ptr<CCommand> CAnnotationStore::Watch(std::unique_ptr<CCommand> pCommand)
{
    return std::make_unique<CWatched>(*this, std::move(pCommand));
}

void CAnnotationStore::BeginLoading()
{
    m_p->bReplacing = true;
}

void CAnnotationStore::Clear(EAnnotationsGone eReason)
{
    m_p->bReplacing = false;
    if (!m_p->pGeometry)
        return;
    if (m_p->bPages && eReason == EAnnotationsGone_Closed) // the next image shows its own by now
        return m_p->TellGone(*this, eReason, 0);
    m_p->eReason = eReason;
    m_p->pGeometry->ClearObject();
    m_p->eReason = EAnnotationsGone_Cleared;
}

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
        BeginJournal(store);
    } else if (nRunning == 0 && nCount > 0) {
        ++now[FileKey()].nOutside;
        WriteJournal(store, tracker.Take());
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
    ++now[FileKey()].nOutside;
    WriteJournalSoon(store);
    TellUnsaved(store);
}

void CAnnotationStore::SPrivate::EndStep(CAnnotationStore& store, const CWatched& step, bool bDone)
{
    const SAnnotationChanges sChanges = tracker.Take();
    SVersion& version = now[bPages ? step.GetFile() : QString()];
    auto& vctSteps = version.vctSteps;
    const auto it = std::find(vctSteps.rbegin(), vctSteps.rend(), &step);
    if (!bDone && it != vctSteps.rend())
        vctSteps.erase(std::next(it).base());
    else if (!bDone && sChanges.Any())
        ++version.nOutside;
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
    const auto differs = [](const SPrivate::Versions& a, const SPrivate::Versions& b) {
        return std::any_of(a.begin(), a.end(), [&b](const auto& entry) {
            const auto it = b.find(entry.first);
            return !(entry.second == (it != b.end() ? it->second : SPrivate::SVersion()));
        });
    };
    return differs(m_p->now, m_p->saved) || differs(m_p->saved, m_p->now);
}

void CAnnotationStore::SetSaved()
{
    m_p->saved = m_p->now;
    m_p->BeginJournal(*this);
    m_p->TellUnsaved(*this);
}

void CAnnotationStore::SPrivate::SetSaved(CAnnotationStore& store, const QString& strFile,
                                          const SVersion& sVersion)
{
    saved[strFile] = sVersion;
    if (!store.HasUnsaved())
        BeginJournal(store);
    else
        RewriteJournal(store);
    TellUnsaved(store);
}

QString CAnnotationStore::SPrivate::ImagePath() const
{
    const auto pImage = pImages ? pImages->GetCurrentImage() : nullptr;
    if (!pImage || pImage->GetName().empty())
        return {};
    const QString strFolder = QString::fromStdWString(pImage->GetFolder());
    QString strName = QString::fromStdWString(pImage->GetName());
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

void CAnnotationStore::SetKnownFile(const QString& strPath, const std::string& digest)
{
    m_p->files.start([=] { m_p->known[strPath] = digest; });
}

void CAnnotationStore::Save(const QString& strPath, const QString& strFormat, EAnnotationsReplace eReplace)
{
    const SContext context = ContextOf(m_p->ctrl.GetCurrentImgage().get());
    const bool bOwn = strFormat == QLatin1String(Vantor::Annotations::kOwnFormat);
    m_p->files.start([=, document = TakeDocument(), strImage = m_p->ImagePath(), strFile = m_p->FileKey(),
                      sVersion = m_p->now[m_p->FileKey()]] {
        std::optional<std::string> known;
        if (eReplace == EAnnotationsReplace_Known)
            known = m_p->known[strPath];
        const SReport report = WriteFile(document, strImage, strPath, strFormat, context, known);
        if (report.failure.empty())
            m_p->known[strPath] = report.digest;
        QMetaObject::invokeMethod(
            this,
            [=] {
                if (bOwn && report.failure.empty()) {
                    m_p->SetSaved(*this, strFile, sVersion);
                }
                Q_EMIT signal_Saved(strPath, report);
            },
            Qt::QueuedConnection);
    });
}

void CAnnotationStore::SetAskSize(AskSize ask)
{
    m_p->askSize = std::move(ask);
}

void CAnnotationStore::Load(const QString& strPath)
{
    const auto pImage = m_p->ctrl.GetCurrentImgage();
    m_p->files.start([=, context = ContextOf(pImage.get()), strImage = m_p->ImagePath()] {
        const auto pDocument = std::make_shared<SDocument>();
        const SReport report = ReadFile(strPath, strImage, context, *pDocument);
        QMetaObject::invokeMethod(
            this, [=] { ShowLoaded(strPath, pImage, report, *pDocument); }, Qt::QueuedConnection);
    });
}

void CAnnotationStore::ShowLoaded(const QString& strPath,
                                  const std::shared_ptr<Vantor::Algorithms::CImage>& pImage, SReport report,
                                  SDocument& document)
{
    const auto checkImage = [&] {
        if (report.failure.empty() && pImage != m_p->ctrl.GetCurrentImgage())
            report.failure = "Another image is shown by now.";
        return report.failure.empty();
    };
    const QPointer<CAnnotationStore> self(this); // a dialog may be open for long
    const EOtherSize eSize = checkImage() ? m_p->Fit(document, report.remarks) : EOtherSize_Leave;
    if (!self)
        return;
    if (checkImage() && eSize != EOtherSize_Leave) {
        m_p->bLoading = eSize != EOtherSize_Scale;
        Apply(document);
        if (std::exchange(m_p->bLoading, false))
            m_p->SetSaved(*this, m_p->FileKey(), m_p->now[m_p->FileKey()]);
        SetKnownFile(strPath, report.digest);
    }
    Q_EMIT signal_Loaded(strPath, report);
}
