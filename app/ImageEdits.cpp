// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageEdits.h"

#include "Viewers.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

void ImageEdits::Apply(const SViewer& viewer, const Edit& edit)
{
    viewer.Ctrl2D()->EditImage(QStringLiteral("Change the image"), QStringLiteral("Cannot change the image."),
                               edit);
}

QRect ImageEdits::SelectedBox(const SViewer& viewer)
{
    const auto pImage = viewer.pCtrl->GetImage();
    if (!pImage)
        return {};
    const QRectF whole(0.0, 0.0, pImage->GetWidth(), pImage->GetHeight());
    for (const auto& pObject : viewer.pCtrl->Get2DDrawableObjects())
        if (pObject->GetSelected() && pObject->GetType() == EImageView2DDrawbleObjectType_Geometry)
            return pObject->GetBoundary().intersected(whole).toAlignedRect();
    return {};
}
