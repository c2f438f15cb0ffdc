// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Viewers.h"

#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QCursor>

CImageView2D* SViewer::View2D() const
{
    return pCtrl->Get2DView();
}

CImageView2DCtrl* SViewer::Ctrl2D() const
{
    return pCtrl->Get2DCtrl();
}

bool SViewer::HasImage() const
{
    return pCtrl->GetImage() != nullptr;
}

namespace
{
/// Updates the readout for another image: its point under the mouse, or nothing if the mouse is elsewhere.
void RenewReadout(const SViewer& viewer)
{
    CImageView2DModel* pModel = viewer.Ctrl2D()->GetImageModel();
    const CImageView2D* pView = viewer.View2D();
    pModel->ForgetMousePosition();
    if (pView && pView->underMouse() && viewer.HasImage())
        pModel->SetMousePosition(pView->MapToImage(QPointF(pView->mapFromGlobal(QCursor::pos()))));
}
} // namespace

CViewers::CViewers(CCenterView* pCentre)
{
    for (int i = 0; CImageViewer* pView = pCentre->GetViewer(i); ++i) {
        const auto item = CMVCManager::FindFirst([&](const SMVC& mvc) { return mvc.pView == pView; });
        if (auto* pCtrl = item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl) : nullptr)
            m_vctViewers.push_back({pView, pCtrl});
    }
    for (const SViewer& viewer : m_vctViewers)
        connect(viewer.Ctrl2D()->GetImageModel(), &CImageView2DModel::signal_ChangeCurrentImage, this,
                [viewer] { RenewReadout(viewer); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* pNow) { FollowFocus(pNow); });
}

const SViewer& CViewers::Active() const
{
    const SViewer& active = m_vctViewers[m_nActive];
    return active.pView->isHidden() ? m_vctViewers.front() : active;
}

void CViewers::FocusActive()
{
    Active().pView->FocusVisibleView();
}

void CViewers::FollowFocus(QWidget* pNow)
{
    const std::size_t nBefore = m_nActive;
    for (std::size_t i = 0; i < m_vctViewers.size(); ++i)
        if (m_vctViewers[i].pView == pNow || m_vctViewers[i].pView->isAncestorOf(pNow))
            m_nActive = i;
    if (m_nActive != nBefore)
        Q_EMIT signal_ChangeActive();
}
