// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

CImage2DProcessSobelModel::CImage2DProcessSobelModel() = default;

CImage2DProcessSobelModel::~CImage2DProcessSobelModel() = default;

void CImage2DProcessSobelModel::SetType(EImage2DProcessSobel eType)
{
    m_eType = eType;
}
