// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/CAnnotationStore.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/command/CCommand.h>
#include <VantorCommon/annotation/store/AnnotationDocument_p.h>
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QDateTime>
#include <algorithm>
#include <optional>
#include <utility>

using Vantor::Annotations::SContext;
using Vantor::Annotations::SDocument;
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
} // namespace

/// A step of the controller's that the store hears of.
class CAnnotationStore::CWatched : public CCommand
{
public:
    CWatched(CAnnotationStore& store, std::unique_ptr<CCommand> pStep)
        : m_store(store), m_pStep(std::move(pStep)),
          m_nPage(store.m_p->nTarget >= 0 ? store.m_p->nTarget : store.m_p->nShown),
          m_nNumber(++store.m_p->nSteps)
    {
    }

    void exec() override { Run(&CCommand::exec, true); }
    void undo() override
    {
        if (m_store.m_p->ShowPage(m_nPage))
            Run(&CCommand::undo, false);
    }
    void redo() override
    {
        if (m_store.m_p->ShowPage(m_nPage))
            Run(&CCommand::redo, true);
    }

private:
    void Run(void (CCommand::*pDo)(), bool bDone)
    {
        ++m_store.m_p->nRunning;
        (m_pStep.get()->*pDo)();
        --m_store.m_p->nRunning;
        m_store.m_p->EndStep(m_store, m_nPage, m_nNumber, bDone);
    }

    CAnnotationStore& m_store;
    std::unique_ptr<CCommand> m_pStep;
    int m_nPage; ///< on which it is made, -1 for the only set
    std::uint64_t m_nNumber;
};

CAnnotationStore::SPrivate::SPrivate(CAnnotationStore& store, CImageView2DCtrl& owner, Execute run)
    : ctrl(owner), execute(std::move(run)), pImages(owner.GetImageModel()),
      pGeometry(owner.GetGeometryModel()),
      tracker(
          pGeometry, [this, &store](const ObjectList& vctGone) { Clear(store, vctGone); },
          [this, &store] { ChangeOutside(store); })
{
    QObject::connect(&owner, &CImageView2DCtrl::signal_ImageSaved, &store,
                     [this, &store](const QString& strPath, unsigned int nImageUID) {
                         FollowSave(store, strPath, nImageUID);
                     });
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
    m_p->files.Wait();
}

void CAnnotationStore::SetOptions(const SCenterOptions& sOptions)
{
    m_p->sOptions = sOptions;
    m_p->UsePages(sOptions.bAnnotationsPerImage);
    m_p->UseJournal(sOptions.bAnnotationJournal);
    m_p->TellCalibration(*this);
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

void CAnnotationStore::FollowChange(const ImagePtr& pBefore, const ImagePtr& pAfter,
                                    const SImageChange& sChange)
{
    if (!pBefore || !pAfter)
        return;
    const bool bSameSize =
        pBefore->GetWidth() == pAfter->GetWidth() && pBefore->GetHeight() == pAfter->GetHeight();
    if (bSameSize || sChange.eKind != SImageChange::EKind_Other)
        m_p->pictures.Follow(pBefore, pAfter, sChange.MapOf(pBefore->GetWidth(), pBefore->GetHeight()));
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

QString CAnnotationStore::SPrivate::PathOf(int nImage) const
{
    if (bPages) {
        const SAnnotatedPage* pPage = At(nImage);
        return pPage && pPage->IsFile() ? pPage->strFile : QString();
    }
    if (!pImages)
        return {};
    return CAnnotationPages::PathOf(nImage == kShown ? pImages->GetCurrentImage()
                                                     : pImages->GetImage(nImage));
}

QString CAnnotationStore::GetImageFile(int nImage) const
{
    return m_p->PathOf(nImage);
}

QString CAnnotationStore::GetSidecarPath(int nImage) const
{
    const QString strImage = GetImageFile(nImage);
    return strImage.isEmpty()
               ? QString()
               : QString::fromStdString(Vantor::Annotations::SidecarOf(strImage.toStdString()));
}

void CAnnotationStore::SetKnownFile(const QString& strPath, const std::string& digest)
{
    m_p->files.Start([=] { m_p->known[strPath] = digest; });
}

int CAnnotationStore::GetPageId(int nImage) const
{
    return std::max(0, m_p->PageAt(nImage));
}

SContext CAnnotationStore::GetContext(int nImage) const
{
    const int nId = m_p->PageAt(nImage);
    return m_p->Context(nId, m_p->Document(nId));
}

void CAnnotationStore::Save(const QString& strPath, const QString& strFormat, int nImage,
                            EAnnotationsReplace eReplace)
{
    const int nId = m_p->PageAt(nImage);
    const SDocument document = TakeDocument(nImage);
    const bool bOwn = strFormat == QLatin1String(Vantor::Annotations::kOwnFormat);
    m_p->files.Start([=, context = m_p->Context(nId, document), strImage = GetImageFile(nImage),
                      versions = m_p->VersionsOf(m_p->FileOf(nId))] {
        std::optional<std::string> known;
        if (eReplace == EAnnotationsReplace_Known)
            known = m_p->known[strPath];
        const SReport report = WriteFile(document, strImage, strPath, strFormat, context, known);
        if (report.failure.empty())
            m_p->known[strPath] = report.digest;
        QMetaObject::invokeMethod(
            this,
            [=] {
                if (bOwn && report.failure.empty())
                    m_p->SetSaved(*this, versions);
                Q_EMIT signal_Saved(strPath, report);
            },
            Qt::QueuedConnection);
    });
}

void CAnnotationStore::SetAskSize(AskSize ask)
{
    m_p->askSize = std::move(ask);
}

void CAnnotationStore::Load(const QString& strPath, int nImage)
{
    const int nId = m_p->PageAt(nImage);
    const auto pImage = m_p->ctrl.GetCurrentImgage();
    const auto whyLate = [=, versions = m_p->VersionsOf(m_p->FileOf(nId))]() -> const char* {
        const bool bThere =
            m_p->bPages ? m_p->pages.Find(nId) != nullptr : nId < 0 && pImage == m_p->ctrl.GetCurrentImgage();
        if (!bThere)
            return "Another image is shown by now.";
        // The only set has always been replaced.
        return m_p->bPages && versions != m_p->VersionsOf(m_p->FileOf(nId))
                   ? "The annotations were changed meanwhile."
                   : "";
    };
    m_p->files.Start([=, context = GetContext(nImage), strImage = GetImageFile(nImage)] {
        const auto pDocument = std::make_shared<SDocument>();
        const SReport report = ReadFile(strPath, strImage, context, *pDocument);
        QMetaObject::invokeMethod(
            this, [=] { ShowLoaded(strPath, nId, whyLate, report, *pDocument); }, Qt::QueuedConnection);
    });
}

void CAnnotationStore::ShowLoaded(const QString& strPath, int nId,
                                  const std::function<const char*()>& whyLate, SReport report,
                                  SDocument& document)
{
    const auto isInTime = [&] {
        if (report.failure.empty())
            report.failure = whyLate();
        return report.failure.empty();
    };
    const QPointer<CAnnotationStore> self(this); // a dialog may be open for long
    const EOtherSize eSize = isInTime() ? m_p->Fit(document, nId, report.remarks) : EOtherSize_Leave;
    if (!self)
        return;
    if (isInTime() && eSize != EOtherSize_Leave) {
        m_p->bLoading = eSize != EOtherSize_Scale;
        m_p->Apply(*this, document, nId);
        if (std::exchange(m_p->bLoading, false))
            m_p->SetSaved(*this, m_p->VersionsOf(m_p->FileOf(nId)));
        SetKnownFile(strPath, report.digest);
    }
    Q_EMIT signal_Loaded(strPath, report);
}
