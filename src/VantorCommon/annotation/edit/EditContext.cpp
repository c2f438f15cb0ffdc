// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/edit/EditContext_p.h>

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/view2d/CImageView2D.h>

bool SEditContext::IsComplete() const
{
    return pView && pView->GetLayerDrawing() && pModel;
}

void SEditContext::ClearDrawing() const
{
    pView->GetLayerDrawing()->Clear();
    pModel->ClearObjectDrawing();
}
