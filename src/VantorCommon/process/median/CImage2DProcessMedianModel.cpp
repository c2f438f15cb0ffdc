// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>

CImage2DProcessMedianModel::CImage2DProcessMedianModel() = default;

CImage2DProcessMedianModel::~CImage2DProcessMedianModel() = default;
