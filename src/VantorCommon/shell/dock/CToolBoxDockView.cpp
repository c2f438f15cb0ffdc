// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CToolBoxDockView.h>

CToolBoxDockView::CToolBoxDockView(QWidget* parent) : QScrollArea(parent)
{
    setWidgetResizable(true);
    // A click on a tool must not take the focus from the image view, whose undo and Escape need it.
    setFocusPolicy(Qt::TabFocus);
}
