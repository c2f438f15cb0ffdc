// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/CAnnotationTableCtrl.h>

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/view/CAnnotationTableView.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

CAnnotationTableCtrl::CAnnotationTableCtrl(CAnnotationTableView* pTable, QObject* pParent)
    : QObject(pParent), m_pTable(pTable)
{
    if (!pTable)
        return;
    using M = CAnnotationTableModel;
    const auto onStore = [this, pTable](auto pSignal, auto pStep) {
        connect(pTable->GetModel(), pSignal, this, [this, pStep](const auto& target, const auto& value) {
            if (m_pCtrl)
                (m_pCtrl->GetAnnotationStore()->*pStep)(target, value);
        });
    };
    onStore(&M::signal_Rename, &CAnnotationStore::Rename);
    onStore(&M::signal_SetLocked, &CAnnotationStore::SetLocked);
    onStore(&M::signal_SetVisible, &CAnnotationStore::SetVisible);
    onStore(&M::signal_MoveTo, &CAnnotationStore::MoveTo);
    connect(pTable, &CAnnotationTableView::signal_Delete, this, [this] {
        if (m_pCtrl)
            m_pCtrl->DeleteSelectedObjects();
    });
    connect(pTable, &CAnnotationTableView::signal_Show, this, [this](const M::ObjectPtr& pObject) {
        if (m_pView)
            m_pView->BringIntoView(pObject->GetBoundary());
    });
}

CAnnotationTableCtrl::~CAnnotationTableCtrl() = default;

void CAnnotationTableCtrl::SetTarget(CImageView2DCtrl* pCtrl, CImageView2D* pView)
{
    using M = CImageView2DModel;
    if (M* pBefore = m_pCtrl ? m_pCtrl->GetImageModel() : nullptr)
        disconnect(pBefore, nullptr, this, nullptr);
    m_pCtrl = pCtrl;
    m_pView = pView;
    if (!m_pTable)
        return;
    m_pTable->GetModel()->SetGeometryModel(pCtrl ? pCtrl->GetGeometryModel() : nullptr);
    if (M* pImages = pCtrl ? pCtrl->GetImageModel() : nullptr) {
        connect(pImages, &M::signal_ChangeImageList, this, &CAnnotationTableCtrl::TellPage);
        connect(pImages, &M::signal_ChangeCurrentIndex, this, &CAnnotationTableCtrl::TellPage);
    }
    TellPage();
}

/// The only set of a list is on no page.
void CAnnotationTableCtrl::TellPage()
{
    const CImageView2DModel* pImages = m_pCtrl ? m_pCtrl->GetImageModel() : nullptr;
    const bool bSeveral =
        pImages && pImages->GetImageCount() > 1 && m_pCtrl->GetAnnotationStore()->GetPageId() > 0;
    if (m_pTable)
        m_pTable->GetModel()->SetPage(bSeveral ? pImages->GetCurrentIndex() + 1 : 0);
}
