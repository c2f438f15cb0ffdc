// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/CImage2DProcessToolCtrl.h>

#include <VantorCommon/process/CImage2DProcessToolDlg.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

CImage2DProcessToolCtrl::CImage2DProcessToolCtrl(CBaseModel* pModel, CImage2DProcessToolDlg* pDlg)
    : CImage2DProcessBaseCtrl(pDlg), m_pToolModel(pModel), m_pToolDlg(pDlg)
{
    if (!pDlg)
        return;
    connect(pDlg, &CImage2DProcessToolDlg::signal_Run, this, &CImage2DProcessToolCtrl::slot_Run);
    connect(pDlg, &CImage2DProcessToolDlg::signal_ChangeData, this,
            &CImage2DProcessToolCtrl::slot_ChangeData);
}

CImage2DProcessToolCtrl::~CImage2DProcessToolCtrl() = default;

void CImage2DProcessToolCtrl::slot_Run()
{
    if (m_pToolModel && m_pToolDlg)
        Run();
}

void CImage2DProcessToolCtrl::slot_ChangeData(int nCode, const QString& strValue)
{
    if (m_pToolModel)
        ChangeData(nCode, strValue);
}
