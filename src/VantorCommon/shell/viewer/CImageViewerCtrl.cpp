// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/dock/CStatusBarModel.h>
#include <VantorCommon/shell/dock/CStatusBarView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DCtrl.h>
#include <VantorCommon/view3d/CImageView3DModel.h>
#include <VantorCommon/view3d/CImageView3DNotSupported.h>
#include <VantorCommon/view3d/OpenGLHelpers_p.h>

#include <QCoreApplication>
#include <QEvent>
#include <QIcon>
#include <QOpenGLContext>
#include <initializer_list>

namespace
{
constexpr int kNoView = -1;
} // namespace

CImageViewerCtrl::CImageViewerCtrl(CImageViewer* pViewer, CImageViewerModel* pModel,
                                   CImageView2DToolModel* pToolModel, CToolBoxDockView* pToolBoxDockView,
                                   CPropertyDockView* pPropertyDockView,
                                   CStatusBarDockView* pStatusBarDockView)
    : m_pViewer(pViewer), m_pModel(pModel), m_pToolModel(pToolModel)
{
    Create2D(pToolBoxDockView, pPropertyDockView, pStatusBarDockView);
    m_pStatusBarModel = std::make_unique<CStatusBarModel>();
    m_pStatusBarView = new CStatusBarView(m_pStatusBarModel.get(), pViewer);
    connect(m_pStatusBarModel.get(), &CStatusBarModel::signal_MaxRangeChanged, this,
            &CImageViewerCtrl::UpdateStatusBar);
    connect(m_pStatusBarModel.get(), &CStatusBarModel::signal_ValueChanged, this,
            &CImageViewerCtrl::UpdateStatusBar);
    m_pView3D = Create3D(pToolBoxDockView, pPropertyDockView, pStatusBarDockView);
    if (pViewer) {
        pViewer->SetImageView(m_pView2D, m_pView3D, m_pStatusBarView, m_pImageModel.get(), pToolModel);
        ConnectButtons();
        ConnectModels();
    }
    CMVCManager::PushMVC(pModel, pViewer, this);
}

CImageViewerCtrl::~CImageViewerCtrl()
{
    // No other object owns what is in no viewer.
    for (QWidget* pWidget : std::initializer_list<QWidget*>{m_pView2D, m_pStatusBarView, m_pView3D})
        if (pWidget && !pWidget->parent())
            delete pWidget;
}

bool CImageViewerCtrl::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::FocusIn && m_pCtrl2D)
        m_pCtrl2D->slot_Active();
    return CBaseCtrl::eventFilter(pWatched, pEvent);
}

void CImageViewerCtrl::Create2D(CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                                CStatusBarDockView* pStatusBarDockView)
{
    m_pImageModel = std::make_unique<CImageView2DModel>();
    m_pGeometryModel = std::make_unique<CImageView2DGeometryModel>();
    m_pView2D =
        new CImageView2D(m_pImageModel.get(), m_pGeometryModel.get(), m_pToolModel, GetViewID(), m_pViewer);
    m_pCtrl2D = std::make_unique<CImageView2DCtrl>(m_pImageModel.get(), m_pGeometryModel.get(), m_pToolModel,
                                                   m_pView2D, pToolBoxDockView, pPropertyDockView,
                                                   pStatusBarDockView);
    m_pView2D->installEventFilter(this);
    connect(m_pCtrl2D.get(), &CImageView2DCtrl::signal_Failed, this, &CImageViewerCtrl::signal_Failed);
    connect(m_pCtrl2D.get(), &CImageView2DCtrl::signal_ChangeProgressMaxRange, this,
            &CImageViewerCtrl::slot_ChangeProgressMaxRange);
    connect(m_pCtrl2D.get(), &CImageView2DCtrl::signal_ChangeProgressValue, this, [this](int nValue) {
        slot_ChangeProgressValue(nValue);
        PaintStatusBar();
    });
}

void CImageViewerCtrl::PaintStatusBar()
{
    if (!m_pStatusBarView || !m_pStatusBarView->isVisible())
        return;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    m_pStatusBarView->repaint();
}

QWidget* CImageViewerCtrl::Create3D(CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                                    CStatusBarDockView* pStatusBarDockView)
{
    if (QOpenGLContext::openGLModuleType() != QOpenGLContext::LibGL)
        return new CImageView3DNotSupported(m_pViewer);
    m_pModel3D = std::make_unique<CImageView3DModel>();
    auto* pView = new CImageView3D(m_pModel3D.get(), StartsWithoutOpenGL() ? nullptr : m_pViewer.data());
    m_pCtrl3D = std::make_unique<CImageView3DCtrl>(m_pModel3D.get(), m_pImageModel.get(), pView,
                                                   pToolBoxDockView, pPropertyDockView, pStatusBarDockView);
    connect(m_pCtrl3D.get(), &CImageView3DCtrl::signal_Failed, this, &CImageViewerCtrl::signal_Failed);
    connect(m_pModel3D.get(), &CImageView3DModel::signal_ChangeProgressMaxRange, this,
            &CImageViewerCtrl::slot_ChangeProgressMaxRange);
    connect(m_pModel3D.get(), &CImageView3DModel::signal_ChangeProgressValue, this,
            &CImageViewerCtrl::slot_ChangeProgressValue);
    return pView;
}

void CImageViewerCtrl::ConnectButtons()
{
    using V = CImageViewer;
    using C = CImageView2DCtrl;
    const auto on = [this](auto pSignal, auto pSlot) {
        connect(m_pViewer.data(), pSignal, m_pCtrl2D.get(), pSlot);
    };
    on(&V::signal_SelectMode, &C::slot_ChangeSelectMode);
    on(&V::signal_PanningMode, &C::slot_ChangePanningMode);
    on(&V::signal_RotateLeft, &C::slot_RotateLeft);
    on(&V::signal_RotateRight, &C::slot_RotateRight);
    on(&V::signal_Previous, &C::slot_Previous);
    on(&V::signal_Next, &C::slot_Next);
    on(&V::signal_Ruler, &C::slot_DrawRuler);
    on(&V::signal_OpenSnipTool, &C::slot_OpenSnipTool);
    on(&V::signal_SelectImage, &C::slot_SelectImage);
    on(&V::signal_ClearImage, &C::slot_ClearImage);
    on(&V::signal_AddImage, &C::slot_AddImage);
    on(&V::signal_OpenFile, &C::slot_LoadFile);
    on(&V::signal_SaveFile, &C::slot_SaveImage);
    connect(m_pViewer.data(), &V::signal_ZoomFit, m_pView2D.data(), &CImageView2D::slot_ZoomFit);
}

void CImageViewerCtrl::ConnectModels()
{
    using V = CImageViewer;
    using M = CImageView2DModel;
    using G = CImageView2DGeometryModel;
    const auto image = [this](auto pSignal, auto pSlot) {
        connect(m_pImageModel.get(), pSignal, m_pViewer.data(), pSlot);
    };
    image(&M::signal_MousePositionChanged, &V::slot_ChangeMousePosition);
    image(&M::signal_ChangeCurrentImage, &V::slot_ChangeCurrentImage);
    image(&M::signal_ChangeImageList, &V::slot_ChangeImageList);
    image(&M::signal_ChangeCurrentIndex, &V::slot_ChangeCurrentIndex);
    const auto geometry = [this](auto pSignal, auto pTarget) {
        connect(m_pGeometryModel.get(), pSignal, m_pViewer.data(), pTarget);
    };
    geometry(&G::signal_AddDrawableObject, &V::slot_AddDrawableObject);
    geometry(&G::signal_DeleteDrawableObject, &V::slot_DeleteDrawableObject);
    geometry(&G::signal_BeforeDeleteDrawableObject, &V::slot_BeforeDeleteDrawableObject);
    geometry(&G::signal_ChangeDrawableObjectProperty, &V::slot_ChangeDrawableObjectProperty);
    geometry(&G::signal_ClearObject, &V::signal_ClearDrawableObject);
}

bool CImageViewerCtrl::Undo()
{
    m_pCtrl2D->Undo();
    if (m_pCtrl3D)
        m_pCtrl3D->Undo();
    return false;
}

bool CImageViewerCtrl::Redo()
{
    m_pCtrl2D->Redo();
    if (m_pCtrl3D)
        m_pCtrl3D->Redo();
    return false;
}

CImageView2D* CImageViewerCtrl::Get2DView() const
{
    return m_pView2D;
}

void CImageViewerCtrl::SetOptions(const SCenterOptions& sOptions)
{
    m_pCtrl2D->SetOptions(sOptions);
    if (!m_pViewer)
        return;
    m_pViewer->SetClearApart(sOptions.bClearApart);
    m_pViewer->SetViewKeys(sOptions.bViewKeys);
}

void CImageViewerCtrl::LoadFile(const QString& strPath)
{
    m_pCtrl2D->LoadFile(strPath);
}

void CImageViewerCtrl::AddImage(const QString& strPath)
{
    m_pCtrl2D->AddImage(strPath);
}

void CImageViewerCtrl::SaveFile(const QString& strPath)
{
    m_pCtrl2D->SaveFile(strPath);
}

void CImageViewerCtrl::Convert()
{
}

CImageViewerCtrl::ImagePtr CImageViewerCtrl::GetImage() const
{
    return m_pImageModel->GetCurrentImage();
}

unsigned int CImageViewerCtrl::GetImageID() const
{
    const ImagePtr pImage = GetImage();
    return pImage ? pImage->GetUID() : Vantor::CVObject::kNoUID;
}

int CImageViewerCtrl::GetViewID() const
{
    return m_pViewer ? m_pViewer->GetViewID() : kNoView;
}

std::vector<std::shared_ptr<CImageView2DDrawableObject>> CImageViewerCtrl::Get2DDrawableObjects() const
{
    return m_pViewer ? m_pViewer->Get2DDrawableObjects()
                     : std::vector<std::shared_ptr<CImageView2DDrawableObject>>();
}

bool CImageViewerCtrl::Delete2DDrawableObject(unsigned int nUID)
{
    return m_pCtrl2D->DeleteDrawableObject(nUID);
}

void CImageViewerCtrl::CloseCurrentImage()
{
    m_pCtrl2D->CloseCurrentImage();
}

void CImageViewerCtrl::ChangeCurrentImage(ImagePtr pImage)
{
    m_pCtrl2D->ChangeCurrentImage(std::move(pImage));
}

void CImageViewerCtrl::ChangeCurrentImage(ImagePtr pImage, const SImageChange& sChange)
{
    m_pCtrl2D->ChangeCurrentImage(std::move(pImage), sChange);
}

void CImageViewerCtrl::AddRectangle(std::shared_ptr<CImageView2DDrawableGeometry> pObject)
{
    m_pCtrl2D->AddRectangle(std::move(pObject));
}

void CImageViewerCtrl::RegisterGeometryAction(const QString& strText, const QIcon& icon,
                                              std::function<void(int, unsigned int)> func)
{
    if (m_pView2D)
        m_pView2D->RegisterGeometryAction(strText, icon, std::move(func));
}

void CImageViewerCtrl::slot_ChangeProgressMaxRange(int nMaxRange)
{
    m_pStatusBarModel->SetMaxRange(nMaxRange);
}

void CImageViewerCtrl::slot_ChangeProgressValue(int nValue)
{
    m_pStatusBarModel->SetValue(nValue);
}

void CImageViewerCtrl::UpdateStatusBar()
{
    const int nValue = m_pStatusBarModel->GetValue();
    if (m_pStatusBarView)
        m_pStatusBarView->setVisible(nValue > 0 && nValue < m_pStatusBarModel->GetMaxRange());
}
