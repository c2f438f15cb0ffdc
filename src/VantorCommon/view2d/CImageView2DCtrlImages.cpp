// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlImages_p.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERotationMode;

namespace
{
/// Of its image, that an edit may need at once: the copy and what is made of it.
constexpr int kCopies = 2;
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

/// On any thread.
CImageView2DCtrlImages::SEdited CImageView2DCtrlImages::EditCopy(const ImagePtr& pImage, const SEdit& edit)
{
    SEdited edited{std::make_shared<CImage>(), {}, {}};
    if (edited.pImage->CopyFrom(pImage.get()) != 0 || edit.edit(*edited.pImage, edited.sChange) != 0)
        edited.strReason = edited.pImage->GetFailureReason();
    return edited;
}

void CImageView2DCtrlImages::ShowEdited(const SEdited& edited, const SEdit& edit)
{
    if (edited.strReason.empty())
        m_context.pCtrl->ChangeCurrentImage(edited.pImage, edited.sChange);
    else
        Q_EMIT m_context.pCtrl->signal_Failed(edit.strFailure + QLatin1Char(' ') +
                                              QString::fromStdString(edited.strReason));
}

void CImageView2DCtrlImages::Edit(const SEdit& edit)
{
    const ImagePtr pCurrent = Current();
    if (!pCurrent)
        return;
    if (!m_context.sOptions.bBackground)
        return ShowEdited(EditCopy(pCurrent, edit), edit);
    m_waiting.push_back(edit);
    if (!m_pJob)
        StartNext();
}

/// Each edit begins with what the one before it has made.
void CImageView2DCtrlImages::StartNext()
{
    m_pJob.reset();
    const ImagePtr pCurrent = Current();
    if (!pCurrent)
        m_waiting.clear();
    if (m_waiting.empty())
        return;
    const SEdit edit = m_waiting.front();
    m_waiting.pop_front();
    const QPointer<CImageView2DCtrl> pCtrl = m_context.pCtrl;
    SJob sJob;
    sJob.strTitle = edit.strTitle;
    sJob.nMemory = kCopies * qint64(pCurrent->GetStride()) * pCurrent->GetHeight();
    sJob.dropped = [this] { StartNext(); };
    const auto pJob = CJobs::Get().Start(pCtrl, sJob, [=](Vantor::CProgress&) -> CJob::Finish {
        const SEdited edited = EditCopy(pCurrent, edit);
        return [=] {
            if (Current() == pCurrent)
                ShowEdited(edited, edit);
            else
                Q_EMIT pCtrl->signal_Failed(edit.strFailure +
                                            QLatin1String(" Another image is shown by now."));
            if (pCtrl)
                StartNext();
        };
    });
    if (pCtrl)
        m_pJob = pJob;
}

void CImageView2DCtrlImages::CancelJobs()
{
    m_waiting.clear();
    if (m_pJob)
        CJobs::Get().Cancel(m_pJob);
}

void CImageView2DCtrlImages::RotateLeft()
{
    Rotate(-kQuarterTurn, SImageChange::EKind_TurnedLeft);
}

void CImageView2DCtrlImages::RotateRight()
{
    Rotate(kQuarterTurn, SImageChange::EKind_TurnedRight);
}

void CImageView2DCtrlImages::Rotate(double dblAngle, SImageChange::EKind eKind)
{
    if (!m_context.pView)
        return;
    const auto rotate = [=](CImage& image, SImageChange& sChange) {
        sChange.eKind = eKind;
        const Vantor::Geometry::CPoint<double> centre(image.GetWidth() * 0.5, image.GetHeight() * 0.5);
        return image.Rotate(centre, dblAngle, 0.0, ERotationMode::GrowCanvas);
    };
    Edit({QStringLiteral("Rotate"), QStringLiteral("Cannot rotate the image."), rotate});
}
