// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/mvc/CBaseModel.h>

CBaseModel::CBaseModel(QObject* parent) : QObject(parent)
{
}

CBaseModel::~CBaseModel() = default;
