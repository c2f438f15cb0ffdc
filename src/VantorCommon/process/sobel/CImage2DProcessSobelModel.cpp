// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

CImage2DProcessSobelModel::CImage2DProcessSobelModel() = default;

CImage2DProcessSobelModel::~CImage2DProcessSobelModel() = default;
