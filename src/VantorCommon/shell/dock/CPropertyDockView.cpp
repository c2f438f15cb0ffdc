// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CPropertyDockView.h>

CPropertyDockView::CPropertyDockView(QWidget* parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
}
