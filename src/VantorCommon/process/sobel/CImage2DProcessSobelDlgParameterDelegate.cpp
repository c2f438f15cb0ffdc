// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlgParameterDelegate.h>

CImage2DProcessSobelDlgParameterDelegate::CImage2DProcessSobelDlgParameterDelegate(QObject* pParent)
    : CImage2DProcessEnumDelegate(pParent)
{
}

CImage2DProcessSobelDlgParameterDelegate::~CImage2DProcessSobelDlgParameterDelegate() = default;
