// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/CImage2DProcessOperationCtrl.h>

#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationDlg.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationModel.h>

#include <exception>

using Vantor::Algorithms::CImage;
using Vantor::Geometry::CGeometry;

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
    const ProcessProgress progress = IsBackground() ? TellJob : ShownBy(m_pDlg);
    RunOn([operation = m_pModel->GetOperation(), values = m_pModel->GetValues(),
           progress](CImage& image, const CGeometry* pRegion) {
        return operation.apply(image, pRegion, values, progress);
    });
}
