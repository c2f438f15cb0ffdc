// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlg.h>

#include <VantorCommon/process/sobel/CImage2DProcessSobelDlgParameterDelegate.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

CImage2DProcessSobelDlg::CImage2DProcessSobelDlg(CImage2DProcessSobelModel* pModel, QWidget* pParent)
    : CImage2DProcessToolDlg(QStringLiteral("Sobel Filter"), pModel, pParent)
{
    const QString strType = pModel ? EnumKey::FromValue(pModel->GetType()) : QString();
    SetupParameter({{QStringLiteral("Type"), strType}}, new CImage2DProcessSobelDlgParameterDelegate(this));
    SetupResult();
    SetupButton();
}

CImage2DProcessSobelDlg::~CImage2DProcessSobelDlg() = default;
