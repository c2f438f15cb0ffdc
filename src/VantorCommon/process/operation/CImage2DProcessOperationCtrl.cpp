// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/CImage2DProcessOperationCtrl.h>

#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationDlg.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationModel.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <exception>

using Vantor::Algorithms::CImage;
using Vantor::Geometry::CGeometry;

/// What a run has found, in an image of a viewer.
struct SProcessFound {
    SProcessOperation::Shapes vctShapes;
    QString strReason; ///< of a failure
    QPointer<CImageViewerCtrl> pViewer;
    std::shared_ptr<CImage> pImage;
};

namespace
{
/// The exception by which a cancelled operation is left.
struct SCancelled : std::exception {
    const char* what() const noexcept override { return "cancelled"; }
};

ProcessProgress ShownBy(const QPointer<CImage2DProcessOperationDlg>& pDlg)
{
    return [pDlg](double dblDone) {
        if (pDlg)
            pDlg->ShowProgress(dblDone);
    };
}

/// On the thread of a job.
void TellJob(double dblDone)
{
    if (!Vantor::CProgress::Tell(dblDone))
        throw SCancelled();
}

/// On any thread.
SProcessFound FindIn(SProcessFound found, const CGeometry* pRegion, const SProcessOperation& operation,
                     const ProcessValues& vctValues, const ProcessProgress& progress)
{
    try {
        found.strReason = operation.find(*found.pImage, pRegion, vctValues, progress, found.vctShapes);
    } catch (const std::exception& problem) {
        found.strReason =
            QStringLiteral("The operation failed: %1.").arg(QString::fromLocal8Bit(problem.what()));
    }
    return found;
}
} // namespace

CImage2DProcessOperationCtrl::CImage2DProcessOperationCtrl(CImage2DProcessOperationModel* pModel,
                                                           CImage2DProcessOperationDlg* pDlg)
    : CImage2DProcessBaseCtrl(pDlg), m_pDlg(pDlg), m_pModel(pModel)
{
    connect(pDlg, &CImage2DProcessOperationDlg::signal_Run, this, &CImage2DProcessOperationCtrl::slot_Run);
    connect(pDlg, &CImage2DProcessOperationDlg::signal_ChangeValue, this,
            &CImage2DProcessOperationCtrl::slot_ChangeValue);
    connect(this, &CImage2DProcessBaseCtrl::signal_Failed, pDlg, &CImage2DProcessBaseDlg::SetMessage);
}

CImage2DProcessOperationCtrl::~CImage2DProcessOperationCtrl() = default;

void CImage2DProcessOperationCtrl::slot_ChangeValue(int nRow, const QVariant& varValue)
{
    if (!m_pModel || !m_pDlg)
        return;
    const QString strRefusal = m_pModel->SetValue(nRow, varValue);
    if (strRefusal.isEmpty())
        return;
    m_pDlg->SetMessage(strRefusal);
    const auto& vctParameters = m_pModel->GetOperation().vctParameters;
    const auto nIndex = static_cast<std::size_t>(nRow);
    if (nRow >= 0 && nIndex < vctParameters.size())
        m_pDlg->ShowValue(nRow, vctParameters[nIndex].Shown(m_pModel->GetValues()[nIndex]));
}

void CImage2DProcessOperationCtrl::slot_Run()
{
    if (!m_pDlg || !m_pModel)
        return;
    if (m_pModel->GetOperation().find)
        return Find();
    const ProcessProgress progress = IsBackground() ? TellJob : ShownBy(m_pDlg);
    RunOn([operation = m_pModel->GetOperation(), values = m_pModel->GetValues(),
           progress](CImage& image, const CGeometry* pRegion) {
        return operation.apply(image, pRegion, values, progress);
    });
}

void CImage2DProcessOperationCtrl::Find()
{
    const SSource source = TakeSource();
    if (!source.pImage)
        return;
    const auto find = [operation = m_pModel->GetOperation(), values = m_pModel->GetValues(),
                       pViewer = QPointer<CImageViewerCtrl>(GetSourceViewCtrl())](
                          const SSource& taken, const ProcessProgress& progress) {
        return FindIn({{}, {}, pViewer, taken.pImage}, taken.pRegion.get(), operation, values, progress);
    };
    if (IsBackground())
        return StartJob(source, 1, [this, find](const SSource& taken) {
            return [this, found = find(taken, TellJob)] { ShowFound(found); };
        });
    StartProcess();
    ShowFound(find(source, ShownBy(m_pDlg)));
}

void CImage2DProcessOperationCtrl::ShowFound(const SProcessFound& found)
{
    if (!found.strReason.isEmpty())
        return Fail(found.strReason);
    CAnnotationStore* pStore = found.pViewer ? found.pViewer->Get2DCtrl()->GetAnnotationStore() : nullptr;
    if (!pStore || found.pViewer->GetImage() != found.pImage)
        return Fail(QStringLiteral("Another image is shown by now; the result was dropped."));
    EndProcess();
    CAnnotationStore::ObjectList vctObjects;
    for (const auto& pShape : found.vctShapes) {
        if (!pShape)
            continue;
        vctObjects.push_back(ShapeKinds::Wrap(pShape));
        vctObjects.back()->SetDisplayName(false); // names would cover what is small
    }
    const int nRegion = m_pDlg ? m_pDlg->GetSourceROIIndex() : -1;
    pStore->Add(vctObjects);
    if (!m_pDlg)
        return;
    m_pDlg->SetSourceROIIndex(nRegion); // the dialog may have chosen what was found
    m_pDlg->SetMessage(QStringLiteral("Found: %1").arg(vctObjects.size()));
}
