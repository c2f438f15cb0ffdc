// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/command/CCommandContainer.h>
#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandChangeCurrentImage.h>
#include <VantorCommon/annotation/edit/DrawHandler_p.h>
#include <VantorCommon/annotation/edit/SelectHandler_p.h>
#include <VantorCommon/annotation/edit/TextHandler_p.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/object/ObjectLook_p.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/view/CImageView2DGeometryPropertyView.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/annotation/view/CImageView2DToolView.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/dock/CViewParameterView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/sniptool/CSnipToolCtrl.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CImageView2DPropertyView.h>
#include <VantorCommon/view2d/CImageView2DStatusView.h>

#include <QApplication>
#include <QMainWindow>
#include <QScreen>
#include <QVBoxLayout>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERotationMode;

namespace
{
constexpr double kQuarterTurn = 1.5707963267948966; // pi / 2
constexpr double kHandleReach = 10.0;               // widget pixels

/// The first registered main window; null when there is none.
QWidget* FindMainWindow()
{
    const auto item = CMVCManager::FindFirst(
        [](const SMVC& mvc) { return dynamic_cast<QMainWindow*>(mvc.pView) != nullptr; });
    return item ? item->pView : nullptr;
}
} // namespace

CImageView2DCtrl::CImageView2DCtrl(CImageView2DModel* pModel, CImageView2DGeometryModel* pGeometryModel,
                                   CImageView2DToolModel* pToolModel, CImageView2D* pView,
                                   CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                                   CStatusBarDockView* pStatusBarDockView)
    : m_pModel(pModel), m_pGeometryModel(pGeometryModel), m_pToolModel(pToolModel), m_pView(pView),
      m_pToolBoxDockView(pToolBoxDockView), m_pPropertyDockView(pPropertyDockView),
      m_pStatusBarDockView(pStatusBarDockView), m_pCommands(std::make_unique<CCommandContainer>())
{
    m_pEdit = std::make_unique<SEditContext>(
        SEditContext{this, pView, pGeometryModel, pToolModel,
                     [this](std::unique_ptr<CCommand> pCommand) { Execute(std::move(pCommand)); },
                     [this](std::shared_ptr<CImageView2DDrawableText> pText) { m_pText->Begin(pText); }});
    m_pDraw = std::make_unique<CDrawHandler>(*m_pEdit);
    m_pSelect = std::make_unique<CSelectHandler>(*m_pEdit);
    m_pText = std::make_unique<CTextHandler>(*m_pEdit);
    m_pStore = std::make_unique<CAnnotationStore>(*this, m_pEdit->execute);
    CreatePanels();
    CreateSnipTool();
    if (m_pView) {
        ConnectView();
        ConnectGestures();
    }
}

CImageView2DCtrl::~CImageView2DCtrl()
{
    // A panel is in a dock or nowhere; in both cases it goes with its controller.
    delete m_pToolPanel;
    delete m_pPropertyPanel;
    delete m_pStatusPanel;
    delete m_pSnipTool;
}

/// The tool has no parent and belongs to the controller, for the view may die first.
void CImageView2DCtrl::CreateSnipTool()
{
    m_pSnipToolModel = std::make_unique<CSnipToolModel>();
    auto* pSnipTool = new CSnipTool(m_pSnipToolModel.get(), nullptr);
    m_pSnipTool = pSnipTool;
    m_pSnipToolCtrl = std::make_unique<CSnipToolCtrl>(m_pSnipToolModel.get(), pSnipTool, this);
    connect(m_pSnipToolCtrl.get(), &CSnipToolCtrl::signal_Failed, this, &CImageView2DCtrl::signal_Failed);
}

void CImageView2DCtrl::CreatePanels()
{
    auto* pToolView = new CImageView2DToolView(m_pToolModel, nullptr);
    m_pToolPanel = pToolView;
    if (m_pView) {
        // A click on a tool leaves the keyboard to the image view, whose undo and Escape need it. A focus
        // proxy would do that to the Tab key, too.
        pToolView->setFocusPolicy(Qt::ClickFocus);
        connect(qApp, &QApplication::focusChanged, pToolView,
                [this, pToolView](QWidget* pOld, QWidget* pNow) {
                    // First, for while the view goes the focus moves, too.
                    if (pNow != pToolView)
                        return;
                    QWidget* pKeeper = m_pView && m_pView->isVisible() ? m_pView : pOld;
                    if (pKeeper)
                        pKeeper->setFocus(Qt::MouseFocusReason);
                });
    }
    connect(pToolView, &CImageView2DToolView::signal_SelectMode, this,
            &CImageView2DCtrl::slot_ChangeSelectMode);
    connect(pToolView, &CImageView2DToolView::signal_PanningMode, this,
            &CImageView2DCtrl::slot_ChangePanningMode);
    connect(pToolView, &CImageView2DToolView::signal_ROIRectangleSelected, this,
            &CImageView2DCtrl::slot_SelectROIRectangle);
    connect(pToolView, &CImageView2DToolView::signal_ROICircleSelected, this,
            &CImageView2DCtrl::slot_SelectROICircle);
    connect(pToolView, &CImageView2DToolView::signal_ROIEllipseSelected, this,
            &CImageView2DCtrl::slot_SelectROIEllipse);
    connect(pToolView, &CImageView2DToolView::signal_ROIPolygonSelected, this,
            &CImageView2DCtrl::slot_SelectROIPolygon);
    connect(pToolView, &CImageView2DToolView::signal_ShapeSelected, this,
            &CImageView2DCtrl::slot_SelectShape);

    CreatePropertyPanel();
    m_pStatusPanel = new CImageView2DStatusView(nullptr);
}

void CImageView2DCtrl::CreatePropertyPanel()
{
    auto* pPage = new CViewParameterView(nullptr);
    m_pPropertyPanel = pPage;
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(new CImageView2DPropertyView(m_pModel, pPage));
    m_pPropertyView = new CImageView2DGeometryPropertyView(m_pGeometryModel, pPage);
    pLayout->addWidget(m_pPropertyView);
    pLayout->addStretch();

    using View = CImageView2DGeometryPropertyView;
    connect(m_pPropertyView.data(), &View::signal_ChangeColor, this, [this](const QColor& color) {
        m_pSelect->ChangeLooks([&color](SObjectLook& look) { look.ChangeColor(color); });
    });
    connect(m_pPropertyView.data(), &View::signal_ChangeWidth, this, [this](double dblWidth) {
        m_pSelect->ChangeLooks([dblWidth](SObjectLook& look) { look.pen.setWidthF(dblWidth); });
    });
    connect(m_pPropertyView.data(), &View::signal_ChangeFill, this, [this](const QBrush& brush) {
        m_pSelect->ChangeLooks([&brush](SObjectLook& look) { look.brush = brush; });
    });
}

void CImageView2DCtrl::ConnectView()
{
    const auto on = [this](auto pSignal, auto pSlot) { connect(m_pView.data(), pSignal, this, pSlot); };
    using V = CImageView2D;
    using C = CImageView2DCtrl;
    on(&V::signal_Active, &C::slot_Active);
    on(&V::signal_LoadImage, &C::slot_LoadImage);
    on(&V::signal_LoadPdf, &C::slot_LoadPdf);
    on(&V::signal_SaveImage, &C::slot_SaveImage);
    on(&V::signal_CloseImage, &C::slot_CloseImage);
    on(&V::signal_Copy, &C::slot_Copy);
    on(&V::signal_Paste, &C::slot_Paste);
    on(&V::signal_AddImage, &C::slot_AddImageDragDrop);
    on(&V::signal_Undo, &C::slot_Undo);
    on(&V::signal_Redo, &C::slot_Redo);
    on(&V::signal_ChangeMousePosition, &C::slot_ChangeMousePosition);
    on(&V::signal_ShowContextMenu, &C::slot_ShowContextMenu);
}

void CImageView2DCtrl::SetOptions(const SCenterOptions& sOptions)
{
    m_sOptions = sOptions;
    m_pStore->SetOptions(sOptions);
    if (m_pToolPanel)
        m_pToolPanel->ShowOptionalShapes(sOptions.bMoreShapes);
    if (m_pPropertyView)
        m_pPropertyView->SetEditable(sOptions.bOwnColors);
    if (m_pView) {
        m_pView->SetOwnColors(sOptions.bOwnColors);
        m_pView->GetLayerDrawing()->SetOwnColors(sOptions.bOwnColors);
    }
}

bool CImageView2DCtrl::Undo()
{
    if (!m_pView || !m_pView->hasFocus() || !m_pCommands)
        return false;
    Interrupt();
    m_pCommands->Undo();
    return true;
}

bool CImageView2DCtrl::Redo()
{
    if (!m_pView || !m_pView->hasFocus() || !m_pCommands)
        return false;
    Interrupt();
    m_pCommands->Redo();
    return true;
}

bool CImageView2DCtrl::CanUndo() const
{
    return m_pCommands->CanUndo();
}

bool CImageView2DCtrl::CanRedo() const
{
    return m_pCommands->CanRedo();
}

void CImageView2DCtrl::slot_Undo()
{
    Undo();
}

void CImageView2DCtrl::slot_Redo()
{
    Redo();
}

/// Push first, then execute: the order of every editing step. A step that comes in the middle of a drag must
/// not find the drag's unfinished shapes.
void CImageView2DCtrl::Execute(std::unique_ptr<CCommand> pCommand)
{
    Interrupt();
    CCommand* pStep = m_pStore->Watch(std::move(pCommand)).release();
    m_pCommands->PushUndo(pStep);
    pStep->exec();
}

void CImageView2DCtrl::slot_Active()
{
    PutIntoDock(m_pToolBoxDockView, m_pToolPanel);
    PutIntoDock(m_pPropertyDockView, m_pPropertyPanel);
    PutIntoDock(m_pStatusBarDockView, m_pStatusPanel);
}

void CImageView2DCtrl::PutIntoDock(QScrollArea* pDock, QWidget* pPanel)
{
    if (!pDock || !pPanel || pDock->widget() == pPanel)
        return;
    // setWidget would delete the panel of another viewer.
    pDock->takeWidget();
    pDock->setWidget(pPanel);
    pPanel->show();
}

void CImageView2DCtrl::CloseCurrentImage()
{
    if (!m_pModel)
        return;
    m_pModel->CloseCurrentImage();
    m_pStore->Clear(EAnnotationsGone_Closed);
}

void CImageView2DCtrl::slot_CloseImage()
{
    CloseCurrentImage();
}

void CImageView2DCtrl::ChangeImage(ImagePtr pImage, int nIndex)
{
    if (!m_pModel)
        return;
    m_pModel->SetImage(std::move(pImage), nIndex);
    m_pStore->ClearImage(nIndex);
}

void CImageView2DCtrl::SetCurrentImage(ImagePtr pImage)
{
    SetCurrentImage(std::move(pImage), EAnnotationsGone_Filtered);
}

void CImageView2DCtrl::SetCurrentImage(ImagePtr pImage, EAnnotationsGone eReason)
{
    if (!m_pModel)
        return;
    m_pModel->SetCurrentImage(std::move(pImage));
    m_pStore->Clear(eReason);
}

bool CImageView2DCtrl::PushImage(ImagePtr pImage)
{
    if (!m_pModel)
        return false;
    m_pModel->PushImage(std::move(pImage));
    return true;
}

CImageView2DCtrl::ImagePtr CImageView2DCtrl::GetCurrentImgage() const
{
    return m_pModel ? m_pModel->GetCurrentImage() : nullptr;
}

void CImageView2DCtrl::ChangeCurrentImage(ImagePtr pImage)
{
    ChangeCurrentImage(std::move(pImage), SImageChange());
}

void CImageView2DCtrl::ChangeCurrentImage(ImagePtr pImage, const SImageChange& sChange)
{
    if (m_pCommands)
        Execute(std::make_unique<CImageView2DCommandChangeCurrentImage>(this, std::move(pImage), sChange));
}

void CImageView2DCtrl::slot_Previous()
{
    if (m_pModel)
        m_pModel->Previous();
}

void CImageView2DCtrl::slot_Next()
{
    if (m_pModel)
        m_pModel->Next();
}

void CImageView2DCtrl::slot_SelectImage(int nIndex)
{
    if (m_pModel)
        m_pModel->SetCurrentIndex(nIndex);
}

void CImageView2DCtrl::slot_ClearImage()
{
    if (m_pModel)
        m_pModel->Clear();
}

void CImageView2DCtrl::RotateLeft()
{
    Rotate(-kQuarterTurn);
}

void CImageView2DCtrl::RotateRight()
{
    Rotate(kQuarterTurn);
}

void CImageView2DCtrl::slot_RotateLeft()
{
    RotateLeft();
}

void CImageView2DCtrl::slot_RotateRight()
{
    RotateRight();
}

void CImageView2DCtrl::Rotate(double dblAngle)
{
    const ImagePtr pCurrent = GetCurrentImgage();
    if (!pCurrent || !m_pView || !m_pCommands)
        return;
    const auto pRotated = std::make_shared<CImage>();
    const Vantor::Geometry::CPoint<double> centre(pCurrent->GetWidth() * 0.5, pCurrent->GetHeight() * 0.5);
    if (pRotated->CopyFrom(pCurrent.get()) == 0 &&
        pRotated->Rotate(centre, dblAngle, 0.0, ERotationMode::GrowCanvas) == 0)
        ChangeCurrentImage(
            pRotated, {dblAngle < 0.0 ? SImageChange::EKind_TurnedLeft : SImageChange::EKind_TurnedRight});
    else
        Fail(QStringLiteral("Cannot rotate the image."),
             QString::fromStdString(pRotated->GetFailureReason()));
}

void CImageView2DCtrl::SetApplicationVisible(bool bVisible)
{
    QWidget* pWindow = FindMainWindow();
    if (!m_pView || !pWindow)
        return;
    if (!bVisible) {
        m_bWasMaximised = pWindow->isMaximized();
        m_bWasFullScreen = pWindow->isFullScreen();
        pWindow->showMinimized();
        return;
    }
    if (m_sOptions.bRestoreAfterCapture && m_bWasFullScreen)
        pWindow->showFullScreen();
    else if (m_sOptions.bRestoreAfterCapture && !m_bWasMaximised)
        pWindow->showNormal();
    else
        pWindow->showMaximized();
    pWindow->raise();
    pWindow->activateWindow();
}

void CImageView2DCtrl::slot_OpenSnipTool()
{
    if (!m_pSnipTool)
        return;
    SetApplicationVisible(false);
    if (const QWidget* pWindow = FindMainWindow())
        m_pSnipTool->setGeometry(pWindow->screen()->geometry());
    m_pSnipTool->showMaximized();
    m_pSnipTool->show();
    m_pSnipTool->activateWindow();
    m_pSnipTool->raise();
}

void CImageView2DCtrl::slot_ChangeMousePosition(QPointF& mousePos)
{
    if (m_pModel)
        m_pModel->SetMousePosition(mousePos);
}

void CImageView2DCtrl::slot_ShowContextMenu(const QPointF& point)
{
    if (!m_pGeometryModel || !m_pView)
        return;
    for (const ObjectPtr& pObject : m_pGeometryModel->GetObjects()) {
        if (!pObject->IsVisible() || !pObject->GetBoundary().contains(point))
            continue;
        pObject->SetSelected(true);
        m_pView->ShowContextMenuDrawableObject(point, pObject->GetUID());
        return;
    }
    m_pView->ShowContextMenu(point);
}

void CImageView2DCtrl::AddRectangle(std::shared_ptr<CImageView2DDrawableGeometry> pObject)
{
    if (pObject && m_pCommands)
        Execute(std::make_unique<CImageView2DCommandAddGeometry>(this, std::move(pObject)));
}

void CImageView2DCtrl::AddDrawableObject(ObjectPtr pObject)
{
    if (!m_pGeometryModel)
        return;
    m_pGeometryModel->UnSelectedAll();
    m_pGeometryModel->AddObject(std::move(pObject));
}

bool CImageView2DCtrl::DeleteDrawableObject(ObjectPtr pObject)
{
    return m_pGeometryModel && m_pGeometryModel->DeleteObject(std::move(pObject));
}

bool CImageView2DCtrl::DeleteDrawableObject(unsigned int nUID)
{
    return m_pGeometryModel && m_pGeometryModel->DeleteObject(nUID);
}

void CImageView2DCtrl::MoveDrawableObject(ObjectPtr pObject, double dx, double dy, QPointF& point)
{
    if (!pObject)
        return;
    pObject->MoveTopLeftTo(QPointF(point.x() - dx, point.y() - dy));
    if (m_pView)
        m_pView->update();
}

double CImageView2DCtrl::HandleTolerance() const
{
    const double dblSize = m_pView ? m_pView->GetSizePixel() : 0.0;
    return dblSize > 0.0 ? kHandleReach / dblSize : 0.0;
}

void CImageView2DCtrl::ResizeDrawableObject(ObjectPtr pObject, const QPointF& from, const QPointF& to,
                                            const QPointF&)
{
    QPointF handle;
    if (pObject && pObject->FindResizePoint(HandleTolerance(), from, handle, 0.0))
        pObject->MoveResizePoint(handle, to - m_pSelect->ResizeOffset());
}

CAnnotationStore* CImageView2DCtrl::GetAnnotationStore() const
{
    return m_pStore.get();
}

CImageView2DModel* CImageView2DCtrl::GetImageModel() const
{
    return m_pModel;
}

CImageView2DGeometryModel* CImageView2DCtrl::GetGeometryModel() const
{
    return m_pGeometryModel;
}

int CImageView2DCtrl::Mode() const
{
    return m_pToolModel ? m_pToolModel->GetViewMode() : EImageView2DMode_Selecting;
}

void CImageView2DCtrl::SetMode(int nMode)
{
    if (m_pToolModel)
        m_pToolModel->SetViewMode(static_cast<EImageView2DMode>(nMode));
}

void CImageView2DCtrl::slot_ChangeSelectMode()
{
    SetMode(EImageView2DMode_Selecting);
}

void CImageView2DCtrl::slot_ChangePanningMode()
{
    SetMode(EImageView2DMode_Panning);
}

void CImageView2DCtrl::slot_SelectROIRectangle()
{
    SetMode(EImageView2DMode_Drawing_Rectanlge);
}

void CImageView2DCtrl::slot_SelectROIEllipse()
{
    SetMode(EImageView2DMode_Drawing_Ellipse);
}

void CImageView2DCtrl::slot_SelectROICircle()
{
    SetMode(EImageView2DMode_Drawing_Circle);
}

void CImageView2DCtrl::slot_SelectROIPolygon()
{
    SetMode(EImageView2DMode_Drawing_Polygon);
}

void CImageView2DCtrl::slot_DrawRuler()
{
    SetMode(EImageView2DMode_Drawing_Line);
}

void CImageView2DCtrl::slot_SelectShape(int nMode)
{
    SetMode(nMode);
}
