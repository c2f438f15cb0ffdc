// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/median/CImage2DProcessMedianDlgParameterDelegate.h>

CImage2DProcessMedianDlgParameterDelegate::CImage2DProcessMedianDlgParameterDelegate(QObject* pParent)
    : CImage2DProcessEnumDelegate(pParent)
{
}

CImage2DProcessMedianDlgParameterDelegate::~CImage2DProcessMedianDlgParameterDelegate() = default;
