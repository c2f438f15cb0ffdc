// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CStatusBarDockView.h>

CStatusBarDockView::CStatusBarDockView(QWidget* parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
}
