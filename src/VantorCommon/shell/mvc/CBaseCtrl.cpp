// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/mvc/CBaseCtrl.h>

CBaseCtrl::CBaseCtrl(QObject* parent) : QObject(parent)
{
}

CBaseCtrl::~CBaseCtrl() = default;
