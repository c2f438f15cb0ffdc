// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlPanels_p.h>

#include <VantorCommon/annotation/edit/SelectHandler_p.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ObjectLook_p.h>
#include <VantorCommon/annotation/view/CImageView2DGeometryPropertyView.h>
#include <VantorCommon/annotation/view/CImageView2DToolView.h>
#include <VantorCommon/shell/dock/CViewParameterView.h>
#include <VantorCommon/shell/dock/PutIntoDock_p.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CImageView2DPropertyView.h>
#include <VantorCommon/view2d/CImageView2DStatusView.h>

#include <QApplication>
#include <QVBoxLayout>

CImageView2DCtrlPanels::CImageView2DCtrlPanels(const SImageView2DCtrlContext& context, const SDocks& sDocks,
                                               CSelectHandler& select)
    : m_context(context), m_sDocks(sDocks)
{
    CreateToolPanel();
    CreatePropertyPanel(select);
    m_pStatusPanel = new CImageView2DStatusView(nullptr);
}

CImageView2DCtrlPanels::~CImageView2DCtrlPanels()
{
    // The controller deletes its panels, whether they are in a dock or nowhere.
    delete m_pToolPanel;
    delete m_pPropertyPanel;
    delete m_pStatusPanel;
}

void CImageView2DCtrlPanels::CreateToolPanel()
{
    m_pToolPanel = new CImageView2DToolView(m_context.pToolModel, nullptr);
    if (m_context.pView)
        KeepFocusInView();
    using V = CImageView2DToolView;
    using C = CImageView2DCtrl;
    const auto on = [this](auto pSignal, auto pSlot) {
        QObject::connect(m_pToolPanel.data(), pSignal, m_context.pCtrl, pSlot);
    };
    on(&V::signal_SelectMode, &C::slot_ChangeSelectMode);
    on(&V::signal_PanningMode, &C::slot_ChangePanningMode);
    on(&V::signal_ROIRectangleSelected, &C::slot_SelectROIRectangle);
    on(&V::signal_ROICircleSelected, &C::slot_SelectROICircle);
    on(&V::signal_ROIEllipseSelected, &C::slot_SelectROIEllipse);
    on(&V::signal_ROIPolygonSelected, &C::slot_SelectROIPolygon);
    on(&V::signal_ShapeSelected, &C::slot_SelectShape);
}

/// A click on a tool leaves the focus in the image view, whose undo and Escape need it. A focus proxy would
/// also divert the Tab key.
void CImageView2DCtrlPanels::KeepFocusInView()
{
    CImageView2DToolView* pPanel = m_pToolPanel;
    pPanel->setFocusPolicy(Qt::ClickFocus);
    QObject::connect(qApp, &QApplication::focusChanged, pPanel, [this, pPanel](QWidget* pOld, QWidget* pNow) {
        // First, because the focus also moves while the view is destroyed.
        if (pNow != pPanel)
            return;
        CImageView2D* pView = m_context.pView;
        QWidget* pKeeper = pView && pView->isVisible() ? pView : pOld;
        if (pKeeper)
            pKeeper->setFocus(Qt::MouseFocusReason);
    });
}

void CImageView2DCtrlPanels::CreatePropertyPanel(CSelectHandler& select)
{
    auto* pPage = new CViewParameterView(nullptr);
    m_pPropertyPanel = pPage;
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(new CImageView2DPropertyView(m_context.pModel, pPage));
    m_pPropertyView = new CImageView2DGeometryPropertyView(m_context.pGeometryModel, pPage);
    pLayout->addWidget(m_pPropertyView);
    pLayout->addStretch();

    using View = CImageView2DGeometryPropertyView;
    const auto on = [this](auto pSignal, auto func) {
        QObject::connect(m_pPropertyView.data(), pSignal, m_context.pCtrl, func);
    };
    on(&View::signal_ChangeColor, [&select](const QColor& color) {
        select.ChangeLooks([&color](SObjectLook& look) { look.ChangeColor(color); });
    });
    on(&View::signal_ChangeWidth, [&select](double dblWidth) {
        select.ChangeLooks([dblWidth](SObjectLook& look) { look.pen.setWidthF(dblWidth); });
    });
    on(&View::signal_ChangeFill, [&select](const QBrush& brush) {
        select.ChangeLooks([&brush](SObjectLook& look) { look.brush = brush; });
    });
}

void CImageView2DCtrlPanels::PutIntoDocks()
{
    PutIntoDock(m_sDocks.pToolBox, m_pToolPanel);
    PutIntoDock(m_sDocks.pProperty, m_pPropertyPanel);
    PutIntoDock(m_sDocks.pStatus, m_pStatusPanel);
}

void CImageView2DCtrlPanels::FollowOptions()
{
    if (m_pToolPanel)
        m_pToolPanel->ShowOptionalShapes(m_context.sOptions.bMoreShapes);
    if (m_pPropertyView)
        m_pPropertyView->SetEditable(m_context.sOptions.bOwnColors);
}
