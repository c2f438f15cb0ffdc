// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DStatusView.h>

CImageView2DStatusView::CImageView2DStatusView(QWidget* parent) : QWidget(parent)
{
}
