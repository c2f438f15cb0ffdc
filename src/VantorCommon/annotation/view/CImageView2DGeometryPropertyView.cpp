// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/view/CImageView2DGeometryPropertyView.h>

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>

namespace
{
constexpr int kMinimumWidth = 200;
}

CImageView2DGeometryPropertyView::CImageView2DGeometryPropertyView(CImageView2DGeometryModel* pModel,
                                                                   QWidget* pParent)
    : QWidget(pParent)
{
    setMinimumWidth(kMinimumWidth);
    if (pModel)
        connect(pModel, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty, this,
                &CImageView2DGeometryPropertyView::slot_ChangeDrawableObjectProperty);
}

CImageView2DGeometryPropertyView::~CImageView2DGeometryPropertyView() = default;

void CImageView2DGeometryPropertyView::slot_ChangeDrawableObjectProperty(unsigned int)
{
}
