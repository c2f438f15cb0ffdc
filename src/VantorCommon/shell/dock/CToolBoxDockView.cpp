// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CToolBoxDockView.h>

CToolBoxDockView::CToolBoxDockView(QWidget* parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
}
