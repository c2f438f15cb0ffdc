// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CViewParameterView.h>

CViewParameterView::CViewParameterView(QWidget* parent) : QWidget(parent)
{
}
