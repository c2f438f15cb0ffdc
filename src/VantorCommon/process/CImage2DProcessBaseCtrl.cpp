// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

#include <Vantor/geometry/CGeometry.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>

#include <exception>

using Vantor::Algorithms::CImage;
using Vantor::Geometry::CGeometry;

namespace
{
/// Of its image, that a run may need at once: the copy and what a filter keeps of it.
constexpr int kCopies = 2;

/// @return why the change could not be made; empty for a success
QString Apply(const std::function<QString(CImage&, const CGeometry*)>& change, CImage& image,
              const CGeometry* pRegion)
{
    try {
        return change(image, pRegion);
    } catch (const std::exception& problem) {
        return QStringLiteral("The operation failed: %1.").arg(QString::fromLocal8Bit(problem.what()));
    }
}
} // namespace

CImage2DProcessBaseCtrl::CImage2DProcessBaseCtrl(CImage2DProcessBaseDlg* pDlg) : m_pDlg(pDlg)
{
    if (!m_pDlg)
        return;
    connect(m_pDlg.data(), &CImage2DProcessBaseDlg::signal_ChangeSourceImageView, this,
            &CImage2DProcessBaseCtrl::slot_ChangeSourceImageView);
    ChangeSourceImageView(m_pDlg->GetSourceImage());
}

CImage2DProcessBaseCtrl::~CImage2DProcessBaseCtrl() = default;

bool CImage2DProcessBaseCtrl::Undo()
{
    return false;
}

bool CImage2DProcessBaseCtrl::Redo()
{
    return false;
}

void CImage2DProcessBaseCtrl::SetOptions(const SCenterOptions& sOptions)
{
    if (m_bBackground && !sOptions.bBackground)
        CJobs::Get().CancelAndWait(this);
    m_bBackground = sOptions.bBackground;
}

CImageViewerCtrl* CImage2DProcessBaseCtrl::GetSourceViewCtrl() const
{
    return m_pSourceViewCtrl;
}

CImageViewer* CImage2DProcessBaseCtrl::GetSourceView() const
{
    return m_pSourceView;
}

void CImage2DProcessBaseCtrl::ChangeSourceImageView(const QString& strTitle)
{
    const auto item = CMVCManager::FindFirst(
        [&](const SMVC& each) { return each.pView && each.pView->windowTitle() == strTitle; });
    ConnectSource(false);
    m_pSourceViewCtrl = item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl) : nullptr;
    m_pSourceView = item ? dynamic_cast<CImageViewer*>(item->pView) : nullptr;
    if (!m_pSourceViewCtrl || !m_pSourceView)
        return;
    ConnectSource(true);
    FillSourceROI();
}

void CImage2DProcessBaseCtrl::WorkOn(const QString& strTitle)
{
    if (!m_pDlg)
        return;
    m_pDlg->SetSourceImage(strTitle);
    ChangeSourceImageView(strTitle);
    if (!m_pSourceView)
        return;
    int nRegion = -1;
    int nListed = 0;
    for (const auto& pObject : m_pSourceView->Get2DDrawableObjects()) {
        if (pObject->GetType() != EImageView2DDrawbleObjectType_Geometry)
            continue;
        if (pObject->GetSelected() && nRegion < 0)
            nRegion = nListed;
        ++nListed;
    }
    m_pDlg->SetSourceROIIndex(nRegion);
}

void CImage2DProcessBaseCtrl::slot_ChangeSourceImageView(const QString& strTitle)
{
    ChangeSourceImageView(strTitle);
}

void CImage2DProcessBaseCtrl::ConnectSource(bool bConnect)
{
    if (!m_pSourceView)
        return;
    using V = CImageViewer;
    using C = CImage2DProcessBaseCtrl;
    const auto change = [&](auto pSignal, auto pSlot) {
        if (bConnect)
            connect(m_pSourceView.data(), pSignal, this, pSlot);
        else
            disconnect(m_pSourceView.data(), pSignal, this, pSlot);
    };
    change(&V::signal_ChangeDrawableObjectProperty, &C::slot_ChangeDrawableObjectProperty);
    change(&V::signal_AddDrawableObjectWithViewID, &C::slot_AddDrawableObjectWithViewID);
    change(&V::signal_DeleteDrawableObjectWithViewID, &C::slot_DeleteDrawableObjectWithViewID);
    change(&V::signal_ClearDrawableObject, &C::FillSourceROI);
}

void CImage2DProcessBaseCtrl::FillSourceROI()
{
    if (!m_pDlg || !m_pSourceView)
        return;
    std::vector<QString> vctNames;
    for (const auto& pObject : m_pSourceView->Get2DDrawableObjects())
        if (ShapeKinds::IsRegion(*pObject))
            vctNames.push_back(pObject->GetName());
    m_pDlg->SetSourceROITitle(vctNames);
}

void CImage2DProcessBaseCtrl::slot_AddDrawableObjectWithViewID(int, unsigned int, unsigned int nGeometryUID,
                                                               QString)
{
    if (!m_pDlg || !m_pSourceView)
        return;
    for (const auto& pObject : m_pSourceView->Get2DDrawableObjects())
        if (pObject->GetUID() == nGeometryUID && ShapeKinds::IsRegion(*pObject))
            return m_pDlg->AddSourceROI(pObject->GetName());
}

void CImage2DProcessBaseCtrl::slot_DeleteDrawableObjectWithViewID(int, unsigned int, unsigned int,
                                                                  QString strName)
{
    if (m_pDlg)
        m_pDlg->DeleteSourceROI(strName);
}

void CImage2DProcessBaseCtrl::slot_ChangeDrawableObjectProperty(unsigned int)
{
}

void CImage2DProcessBaseCtrl::StartProcess()
{
    m_timer.start();
    ++m_nRunning;
    Q_EMIT signal_Started();
}

void CImage2DProcessBaseCtrl::End()
{
    if (m_nRunning == 0)
        return;
    --m_nRunning;
    Q_EMIT signal_Ended();
}

void CImage2DProcessBaseCtrl::Fail(const QString& strReason)
{
    m_strFailureReason = strReason;
    End();
    Q_EMIT signal_Failed(strReason);
}

void CImage2DProcessBaseCtrl::EndProcess()
{
    End();
    if (!m_pDlg)
        return;
    const long long nElapsed = m_timer.isValid() ? m_timer.elapsed() : 0;
    const QString strMessage = QString::asprintf("Processing Time %lld ms", nElapsed);
    m_pDlg->SetMessage(strMessage);
    CLogger::Write(NORMAL, "%s", qUtf8Printable(strMessage));
}

CImage2DProcessBaseCtrl::SSource CImage2DProcessBaseCtrl::TakeSource()
{
    m_strFailureReason.clear();
    SSource source;
    if (!m_pDlg || !m_pSourceViewCtrl || !m_pSourceView)
        Fail(QStringLiteral("No source viewer is chosen."));
    else if (!(source.pImage = m_pSourceViewCtrl->GetImage()))
        Fail(QStringLiteral("The source viewer shows no image."));
    else
        source.pRegion = FindRegion();
    return source;
}

std::shared_ptr<CGeometry> CImage2DProcessBaseCtrl::FindRegion() const
{
    const QString strName = m_pDlg->GetSourceROIName();
    if (strName.isEmpty())
        return nullptr;
    std::shared_ptr<CGeometry> pRegion;
    for (const auto& pObject : m_pSourceView->Get2DDrawableObjects())
        if (const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(pObject))
            if (pShape->GetName() == strName)
                pRegion = pShape->GetData();
    return pRegion;
}

CImage2DProcessBaseCtrl::ImagePtr CImage2DProcessBaseCtrl::CopyOf(const SSource& source)
{
    if (!source.pImage)
        return nullptr;
    auto pCopy = std::make_shared<CImage>();
    if (pCopy->CopyFrom(source.pImage.get()) == 0)
        return pCopy;
    Fail(QString::fromStdString(pCopy->GetFailureReason()));
    return nullptr;
}

void CImage2DProcessBaseCtrl::ShowResult(const ImagePtr& pImage)
{
    EndProcess();
    if (m_pSourceViewCtrl)
        m_pSourceViewCtrl->ChangeCurrentImage(pImage);
}

void CImage2DProcessBaseCtrl::RunOn(const Change& change, bool bShowFailed)
{
    const SSource source = TakeSource();
    if (source.pImage && m_bBackground) {
        const QPointer<CImageViewerCtrl> pViewer = m_pSourceViewCtrl;
        return StartJob(source, kCopies, [=](const SSource& taken) {
            const SOutcome outcome = ChangedCopy(taken, change);
            return [=] { ShowOutcome(outcome, pViewer, taken.pImage, bShowFailed); };
        });
    }
    const ImagePtr pCopy = CopyOf(source);
    if (!pCopy)
        return;
    StartProcess();
    const QString strReason = Apply(change, *pCopy, source.pRegion.get());
    if (!strReason.isEmpty())
        Fail(strReason);
    if (strReason.isEmpty() || bShowFailed)
        ShowResult(pCopy);
}

void CImage2DProcessBaseCtrl::StartJob(const SSource& source, int nCopies, const JobWork& work)
{
    // The shape may be changed while the job runs.
    const SSource taken{source.pImage, source.pRegion ? source.pRegion->Clone() : nullptr};
    SJob sJob;
    sJob.strKind = QStringLiteral("run");
    sJob.strTitle = m_pDlg ? m_pDlg->windowTitle() : QString();
    sJob.nMemory = nCopies * qint64(taken.pImage->GetStride()) * taken.pImage->GetHeight();
    sJob.dropped = [this] {
        End();
        if (m_pDlg)
            m_pDlg->SetMessage(QStringLiteral("Cancelled"));
    };
    const QPointer<CImage2DProcessBaseCtrl> pThis = this;
    StartProcess();
    const auto pJob = CJobs::Get().Start(this, sJob, [=](Vantor::CProgress&) { return work(taken); });
    if (!pJob && pThis)
        End();
}

/// On any thread.
CImage2DProcessBaseCtrl::SOutcome CImage2DProcessBaseCtrl::ChangedCopy(const SSource& source,
                                                                       const Change& change)
{
    auto pCopy = std::make_shared<CImage>();
    if (pCopy->CopyFrom(source.pImage.get()) != 0)
        return {nullptr, QString::fromStdString(pCopy->GetFailureReason())};
    const QString strReason = Apply(change, *pCopy, source.pRegion.get());
    return {std::move(pCopy), strReason};
}

void CImage2DProcessBaseCtrl::ShowOutcome(const SOutcome& outcome, CImageViewerCtrl* pViewer,
                                          const ImagePtr& pSource, bool bShowFailed)
{
    if (!outcome.strReason.isEmpty())
        Fail(outcome.strReason);
    if (!outcome.pImage || !(outcome.strReason.isEmpty() || bShowFailed))
        return;
    if (!pViewer || pViewer->GetImage() != pSource)
        return Fail(QStringLiteral("Another image is shown by now; the result was dropped."));
    EndProcess();
    pViewer->ChangeCurrentImage(outcome.pImage);
}

bool CImage2DProcessBaseCtrl::Succeeded(int nResult, const std::string& strReason)
{
    if (nResult != 0)
        Fail(QString::fromStdString(strReason));
    return nResult == 0;
}
