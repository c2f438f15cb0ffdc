// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageEdits.h"

#include "Viewers.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>

using Vantor::Algorithms::CImage;

QString ImageEdits::Apply(const SViewer& viewer, const Edit& edit)
{
    const auto pCurrent = viewer.pCtrl->GetImage();
    const auto pCopy = std::make_shared<CImage>();
    SImageChange sChange;
    if (pCopy->CopyFrom(pCurrent.get()) != 0 || edit(*pCopy, sChange) != 0)
        return QString::fromStdString(pCopy->GetFailureReason());
    viewer.pCtrl->ChangeCurrentImage(pCopy, sChange);
    return {};
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
