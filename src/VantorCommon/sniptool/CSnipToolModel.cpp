// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/CSnipToolModel.h>

CSnipToolModel::CSnipToolModel(QObject* parent) : CBaseModel(parent)
{
}

CSnipToolModel::~CSnipToolModel() = default;
