// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlImages_p.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERotationMode;

namespace
{
constexpr double kQuarterTurn = 1.5707963267948966; // pi / 2
} // namespace

CImageView2DCtrlImages::ImagePtr CImageView2DCtrlImages::Current() const
{
    return m_context.pModel ? m_context.pModel->GetCurrentImage() : nullptr;
}

bool CImageView2DCtrlImages::Push(ImagePtr pImage)
{
    if (!m_context.pModel)
        return false;
    m_context.pModel->PushImage(std::move(pImage));
    return true;
}

void CImageView2DCtrlImages::CloseCurrent()
{
    if (!m_context.pModel)
        return;
    m_context.pModel->CloseCurrentImage();
    m_context.pCtrl->GetAnnotationStore()->Clear(EAnnotationsGone_Closed);
}

void CImageView2DCtrlImages::ReplaceAll(const std::vector<ImagePtr>& vctImages)
{
    if (!m_context.pModel)
        return;
    m_context.pCtrl->GetAnnotationStore()->BeginLoading();
    m_context.pModel->SetImages(vctImages);
    m_context.pCtrl->GetAnnotationStore()->Clear(EAnnotationsGone_Loaded);
}

void CImageView2DCtrlImages::Replace(ImagePtr pImage, int nIndex)
{
    if (!m_context.pModel)
        return;
    m_context.pModel->SetImage(std::move(pImage), nIndex);
    m_context.pCtrl->GetAnnotationStore()->ClearImage(nIndex);
}

void CImageView2DCtrlImages::ReplaceCurrent(ImagePtr pImage, EAnnotationsGone eReason)
{
    if (!m_context.pModel)
        return;
    m_context.pModel->SetCurrentImage(std::move(pImage));
    m_context.pCtrl->GetAnnotationStore()->Clear(eReason);
}

void CImageView2DCtrlImages::RotateLeft()
{
    Rotate(-kQuarterTurn);
}

void CImageView2DCtrlImages::RotateRight()
{
    Rotate(kQuarterTurn);
}

void CImageView2DCtrlImages::Rotate(double dblAngle)
{
    const ImagePtr pCurrent = Current();
    if (!pCurrent || !m_context.pView)
        return;
    const auto pRotated = std::make_shared<CImage>();
    const Vantor::Geometry::CPoint<double> centre(pCurrent->GetWidth() * 0.5, pCurrent->GetHeight() * 0.5);
    if (pRotated->CopyFrom(pCurrent.get()) == 0 &&
        pRotated->Rotate(centre, dblAngle, 0.0, ERotationMode::GrowCanvas) == 0)
        m_context.pCtrl->ChangeCurrentImage(
            pRotated, {dblAngle < 0.0 ? SImageChange::EKind_TurnedLeft : SImageChange::EKind_TurnedRight});
    else
        Q_EMIT m_context.pCtrl->signal_Failed(QStringLiteral("Cannot rotate the image. ") +
                                              QString::fromStdString(pRotated->GetFailureReason()));
}
