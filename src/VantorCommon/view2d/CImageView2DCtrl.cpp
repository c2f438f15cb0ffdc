// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandChangeCurrentImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrlParts_p.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

CImageView2DCtrl::SParts::SParts(const SImageView2DCtrlContext& given,
                                 const CImageView2DCtrlPanels::SDocks& sDocks)
    : context(given), navigation(context),
      gestures(context, [this](std::unique_ptr<CCommand> pCommand) { return Execute(std::move(pCommand)); }),
      images(context), pages(context), files(context, images), clipboard(context, files),
      panels(context, sDocks, gestures.Select()), capture(context)
{
}

/// Every editing step is pushed first, then executed. A step in the middle of a drag must not find the drag's
/// unfinished shapes.
CCommand* CImageView2DCtrl::SParts::Execute(std::unique_ptr<CCommand> pCommand)
{
    ++context.nSteps;
    gestures.Interrupt();
    CCommand* pStep = pStore->Watch(std::move(pCommand)).release();
    commands.PushUndo(pStep);
    pStep->exec();
    return pStep;
}

CImageView2DCtrl::CImageView2DCtrl(CImageView2DModel* pModel, CImageView2DGeometryModel* pGeometryModel,
                                   CImageView2DToolModel* pToolModel, CImageView2D* pView,
                                   CToolBoxDockView* pToolBoxDockView, CPropertyDockView* pPropertyDockView,
                                   CStatusBarDockView* pStatusBarDockView)
    : m_pParts(std::make_unique<SParts>(
          SImageView2DCtrlContext{this, pModel, pGeometryModel, pToolModel, pView, {}, 0},
          CImageView2DCtrlPanels::SDocks{pToolBoxDockView, pPropertyDockView, pStatusBarDockView}))
{
    m_pParts->pStore = std::make_unique<CAnnotationStore>(
        *this, [this](std::unique_ptr<CCommand> pCommand) { m_pParts->Execute(std::move(pCommand)); });
    if (pView) {
        m_pParts->ConnectView();
        m_pParts->navigation.Watch();
        m_pParts->gestures.Watch(); // last, because its keys come first
    }
}

CImageView2DCtrl::~CImageView2DCtrl() = default;

void CImageView2DCtrl::SetOptions(const SCenterOptions& sOptions)
{
    if (m_pParts->context.sOptions.bBackground && !sOptions.bBackground) {
        m_pParts->files.CancelJobs();
        m_pParts->images.CancelJobs();
    }
    m_pParts->context.sOptions = sOptions;
    m_pParts->pStore->SetOptions(sOptions);
    m_pParts->panels.FollowOptions();
    if (CImageView2D* pView = m_pParts->context.pView) {
        pView->SetOwnColors(sOptions.bOwnColors);
        pView->SetPlaceOptions(sOptions.bKeepPlace, sOptions.bGotoCentres);
        pView->GetLayerDrawing()->SetOwnColors(sOptions.bOwnColors);
        pView->SetImageLook(sOptions.bSmoothReduction, sOptions.bCheckerboard);
    }
}

bool CImageView2DCtrl::Undo()
{
    if (!m_pParts->context.pView || !m_pParts->context.pView->hasFocus())
        return false;
    ++m_pParts->context.nSteps;
    m_pParts->gestures.Interrupt();
    m_pParts->commands.Undo();
    return true;
}

bool CImageView2DCtrl::Redo()
{
    if (!m_pParts->context.pView || !m_pParts->context.pView->hasFocus())
        return false;
    ++m_pParts->context.nSteps;
    m_pParts->gestures.Interrupt();
    m_pParts->commands.Redo();
    return true;
}

bool CImageView2DCtrl::CanUndo() const
{
    return m_pParts->commands.CanUndo();
}

bool CImageView2DCtrl::CanRedo() const
{
    return m_pParts->commands.CanRedo();
}

void CImageView2DCtrl::LoadFile(const QString& strPath)
{
    m_pParts->files.Load(strPath);
}

std::vector<CImageView2DCtrl::ImagePtr> CImageView2DCtrl::LoadImage(const QString& strPath)
{
    return m_pParts->files.LoadImage(strPath);
}

std::vector<CImageView2DCtrl::ImagePtr> CImageView2DCtrl::LoadPDF(const QString& strPath)
{
    return m_pParts->files.LoadPDF(strPath);
}

void CImageView2DCtrl::AddImage(const QString& strPath)
{
    m_pParts->files.Add(strPath);
}

void CImageView2DCtrl::SaveFile(const QString& strPath)
{
    m_pParts->files.Save(strPath);
}

void CImageView2DCtrl::CopyToClipBoard()
{
    m_pParts->clipboard.Copy();
}

void CImageView2DCtrl::SetApplicationVisible(bool bVisible)
{
    m_pParts->capture.SetApplicationVisible(bVisible);
}

void CImageView2DCtrl::CloseCurrentImage()
{
    m_pParts->images.CloseCurrent();
}

void CImageView2DCtrl::ChangeImage(ImagePtr pImage, int nIndex)
{
    m_pParts->images.Replace(std::move(pImage), nIndex);
}

void CImageView2DCtrl::SetCurrentImage(ImagePtr pImage)
{
    SetCurrentImage(std::move(pImage), EAnnotationsGone_Filtered);
}

void CImageView2DCtrl::SetCurrentImage(ImagePtr pImage, EAnnotationsGone eReason)
{
    m_pParts->images.ReplaceCurrent(std::move(pImage), eReason);
}

bool CImageView2DCtrl::PushImage(ImagePtr pImage)
{
    return m_pParts->images.Push(std::move(pImage));
}

CImageView2DCtrl::ImagePtr CImageView2DCtrl::GetCurrentImgage() const
{
    return m_pParts->images.Current();
}

void CImageView2DCtrl::ChangeCurrentImage(ImagePtr pImage)
{
    ChangeCurrentImage(std::move(pImage), SImageChange());
}

void CImageView2DCtrl::ChangeCurrentImage(ImagePtr pImage, const SImageChange& sChange)
{
    m_pParts->Execute(
        std::make_unique<CImageView2DCommandChangeCurrentImage>(this, std::move(pImage), sChange));
}

void CImageView2DCtrl::RotateLeft()
{
    m_pParts->images.RotateLeft();
}

void CImageView2DCtrl::RotateRight()
{
    m_pParts->images.RotateRight();
}

void CImageView2DCtrl::EditImage(const QString& strTitle, const QString& strFailure, ImageEdit edit)
{
    m_pParts->images.Edit({strTitle, strFailure, std::move(edit)});
}

void CImageView2DCtrl::AddRectangle(std::shared_ptr<CImageView2DDrawableGeometry> pObject)
{
    if (pObject)
        m_pParts->Execute(std::make_unique<CImageView2DCommandAddGeometry>(this, std::move(pObject)));
}

void CImageView2DCtrl::AddDrawableObject(ObjectPtr pObject)
{
    if (!m_pParts->context.pGeometryModel)
        return;
    m_pParts->context.pGeometryModel->UnSelectedAll();
    m_pParts->context.pGeometryModel->AddObject(std::move(pObject));
}

bool CImageView2DCtrl::DeleteDrawableObject(ObjectPtr pObject)
{
    return m_pParts->context.pGeometryModel &&
           m_pParts->context.pGeometryModel->DeleteObject(std::move(pObject));
}

bool CImageView2DCtrl::DeleteDrawableObject(unsigned int nUID)
{
    return m_pParts->context.pGeometryModel && m_pParts->context.pGeometryModel->DeleteObject(nUID);
}

void CImageView2DCtrl::MoveDrawableObject(ObjectPtr pObject, double dx, double dy, QPointF& point)
{
    if (!pObject)
        return;
    pObject->MoveTopLeftTo(QPointF(point.x() - dx, point.y() - dy));
    if (m_pParts->context.pView)
        m_pParts->context.pView->update();
}

void CImageView2DCtrl::ResizeDrawableObject(ObjectPtr pObject, const QPointF& from, const QPointF& to,
                                            const QPointF&)
{
    QPointF handle;
    if (pObject && pObject->FindResizePoint(HandleTolerance(), from, handle, 0.0))
        pObject->MoveResizePoint(handle, to - m_pParts->gestures.Select().ResizeOffset());
}

void CImageView2DCtrl::DeleteSelectedObjects()
{
    m_pParts->gestures.Select().DeleteSelected();
}

double CImageView2DCtrl::HandleTolerance() const
{
    return m_pParts->gestures.HandleTolerance();
}

CImageView2DModel* CImageView2DCtrl::GetImageModel() const
{
    return m_pParts->context.pModel;
}

CImageView2DGeometryModel* CImageView2DCtrl::GetGeometryModel() const
{
    return m_pParts->context.pGeometryModel;
}

CImageView2DToolModel* CImageView2DCtrl::GetToolModel() const
{
    return m_pParts->context.pToolModel;
}

CAnnotationStore* CImageView2DCtrl::GetAnnotationStore() const
{
    return m_pParts->pStore.get();
}
