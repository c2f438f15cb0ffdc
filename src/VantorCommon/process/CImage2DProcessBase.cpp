// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/CImage2DProcessBase.h>

CImage2DProcessBase::~CImage2DProcessBase() = default;
