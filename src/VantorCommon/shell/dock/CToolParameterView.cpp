// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CToolParameterView.h>

CToolParameterView::CToolParameterView(QWidget* parent) : QWidget(parent)
{
}
