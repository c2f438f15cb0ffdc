// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobel.h>

CImage2DProcessSobel::~CImage2DProcessSobel() = default;

void CImage2DProcessSobel::End()
{
}
