// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/median/CImage2DProcessMedianDlg.h>

#include <VantorCommon/process/median/CImage2DProcessMedianDlgParameterDelegate.h>
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>

CImage2DProcessMedianDlg::CImage2DProcessMedianDlg(CImage2DProcessMedianModel* pModel, QWidget* pParent)
    : CImage2DProcessToolDlg(QStringLiteral("Median Filter"), pModel, pParent)
{
    const QString strType = pModel ? EnumKey::FromValue(pModel->GetType()) : QString();
    SetupParameter({{QStringLiteral("Type"), strType}}, new CImage2DProcessMedianDlgParameterDelegate(this));
    SetupResult();
    SetupButton();
}

CImage2DProcessMedianDlg::~CImage2DProcessMedianDlg() = default;
