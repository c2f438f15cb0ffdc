// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The slots of CImageView2DCtrl, and their connections with the signals of the view.
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrlParts_p.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

void CImageView2DCtrl::SParts::ConnectView()
{
    const auto on = [this](auto pSignal, auto pSlot) {
        connect(context.pView.data(), pSignal, context.pCtrl, pSlot);
    };
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
    on(&V::signal_DrawRectangleStart, &C::slot_DrawRectangleStart);
    on(&V::signal_DrawRectangleDoing, &C::slot_DrawRectangleDoing);
    on(&V::signal_DrawRectangleEnd, &C::slot_DrawRectangleEnd);
    on(&V::signal_DrawEllipseStart, &C::slot_DrawEllipseStart);
    on(&V::signal_DrawEllipseDoing, &C::slot_DrawEllipseDoing);
    on(&V::signal_DrawEllipseEnd, &C::slot_DrawEllipseEnd);
    on(&V::signal_DrawCircleStart, &C::slot_DrawCircleStart);
    on(&V::signal_DrawCircleDoing, &C::slot_DrawCircleDoing);
    on(&V::signal_DrawCircleEnd, &C::slot_DrawCircleEnd);
    on(&V::signal_DrawLineStart, &C::slot_DrawLineStart);
    on(&V::signal_DrawLineDoing, &C::slot_DrawLineDoing);
    on(&V::signal_DrawLineEnd, &C::slot_DrawLineEnd);
    on(&V::signal_DrawPolygonStart, &C::slot_DrawPolygonStart);
    on(&V::signal_DrawPolygonDoing, &C::slot_DrawPolygonDoing);
    on(&V::signal_DrawPolygonWaiting, &C::slot_DrawPolygonWaiting);
    on(&V::signal_DrawPolygonEnd, &C::slot_DrawPolygonEnd);
    on(&V::signal_DrawShapeStart, &C::slot_DrawShapeStart);
    on(&V::signal_DrawShapeDoing, &C::slot_DrawShapeDoing);
    on(&V::signal_DrawShapeWaiting, &C::slot_DrawShapeWaiting);
    on(&V::signal_DrawShapeEnd, &C::slot_DrawShapeEnd);
    on(&V::signal_CheckResizeRotate, &C::slot_CheckResizeRotate);
    on(&V::signal_SelectMovingStart, &C::slot_SelectMovingStart);
    on(&V::signal_SelectMovingDoing, &C::slot_SelectMovingDoing);
    on(&V::signal_SelectMovingEnd, &C::slot_SelectMovingEnd);
    on(&V::signal_SelectResizeStart, &C::slot_SelectResizeStart);
    on(&V::signal_SelectResizeDoing, &C::slot_SelectResizeDoing);
    on(&V::signal_SelectResizeEnd, &C::slot_SelectResizeEnd);
    on(&V::signal_DeleteDrawableObject, &C::slot_DeleteDrawableObject);
    on(&V::signal_PressKey, &C::slot_PressKey);
}

void CImageView2DCtrl::slot_Active()
{
    m_pParts->panels.PutIntoDocks();
}

void CImageView2DCtrl::slot_LoadFile()
{
    m_pParts->files.AskAndLoad();
}

void CImageView2DCtrl::slot_LoadImage()
{
    m_pParts->files.AskAndLoadImage();
}

void CImageView2DCtrl::slot_LoadPdf()
{
    m_pParts->files.AskAndLoadPdf();
}

void CImageView2DCtrl::slot_AddImage()
{
    m_pParts->files.AskAndAdd();
}

void CImageView2DCtrl::slot_AddImageDragDrop(const QString& strPath)
{
    AddImage(strPath);
}

void CImageView2DCtrl::slot_SaveImage()
{
    m_pParts->files.AskAndSave();
}

void CImageView2DCtrl::slot_CloseImage()
{
    CloseCurrentImage();
}

void CImageView2DCtrl::slot_Copy()
{
    CopyToClipBoard();
}

void CImageView2DCtrl::slot_Paste()
{
    m_pParts->clipboard.Paste();
}

void CImageView2DCtrl::slot_Undo()
{
    Undo();
}

void CImageView2DCtrl::slot_Redo()
{
    Redo();
}

void CImageView2DCtrl::slot_Previous()
{
    const auto& pModel = m_pParts->context.pModel;
    if (pModel && pModel->GetCurrentIndex() == 0)
        Q_EMIT signal_BeyondList(-1);
    else if (pModel)
        pModel->Previous();
}

void CImageView2DCtrl::slot_Next()
{
    const auto& pModel = m_pParts->context.pModel;
    if (pModel && pModel->GetImageCount() > 0 && pModel->GetCurrentIndex() == pModel->GetImageCount() - 1)
        Q_EMIT signal_BeyondList(1);
    else if (pModel)
        pModel->Next();
}

void CImageView2DCtrl::slot_SelectImage(int nIndex)
{
    if (m_pParts->context.pModel)
        m_pParts->context.pModel->SetCurrentIndex(nIndex);
}

void CImageView2DCtrl::slot_ClearImage()
{
    if (m_pParts->context.pModel)
        m_pParts->context.pModel->Clear();
}

void CImageView2DCtrl::slot_RotateLeft()
{
    RotateLeft();
}

void CImageView2DCtrl::slot_RotateRight()
{
    RotateRight();
}

void CImageView2DCtrl::slot_OpenSnipTool()
{
    m_pParts->capture.Open();
}

void CImageView2DCtrl::slot_ChangeMousePosition(QPointF& mousePos)
{
    if (m_pParts->context.pModel)
        m_pParts->context.pModel->SetMousePosition(mousePos);
}

void CImageView2DCtrl::slot_ShowContextMenu(const QPointF& point)
{
    m_pParts->gestures.ShowMenuAt(point);
}

void CImageView2DCtrl::slot_ChangeSelectMode()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Selecting);
}

void CImageView2DCtrl::slot_ChangePanningMode()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Panning);
}

void CImageView2DCtrl::slot_SelectROIRectangle()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Drawing_Rectanlge);
}

void CImageView2DCtrl::slot_SelectROIEllipse()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Drawing_Ellipse);
}

void CImageView2DCtrl::slot_SelectROICircle()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Drawing_Circle);
}

void CImageView2DCtrl::slot_SelectROIPolygon()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Drawing_Polygon);
}

void CImageView2DCtrl::slot_DrawRuler()
{
    m_pParts->gestures.SetMode(EImageView2DMode_Drawing_Line);
}

void CImageView2DCtrl::slot_SelectShape(int nMode)
{
    m_pParts->gestures.SetMode(nMode);
}

void CImageView2DCtrl::slot_DrawRectangleStart(QPointF& pointStart)
{
    m_pParts->gestures.StartShape(EImageView2DMode_Drawing_Rectanlge, pointStart);
}

void CImageView2DCtrl::slot_DrawRectangleDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.DoShape(EImageView2DMode_Drawing_Rectanlge, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawRectangleEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.EndShape(EImageView2DMode_Drawing_Rectanlge, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawEllipseStart(QPointF& pointStart)
{
    m_pParts->gestures.StartShape(EImageView2DMode_Drawing_Ellipse, pointStart);
}

void CImageView2DCtrl::slot_DrawEllipseDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.DoShape(EImageView2DMode_Drawing_Ellipse, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawEllipseEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.EndShape(EImageView2DMode_Drawing_Ellipse, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawCircleStart(QPointF& pointStart)
{
    m_pParts->gestures.StartShape(EImageView2DMode_Drawing_Circle, pointStart);
}

void CImageView2DCtrl::slot_DrawCircleDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.DoShape(EImageView2DMode_Drawing_Circle, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawCircleEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.EndShape(EImageView2DMode_Drawing_Circle, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawLineStart(QPointF& pointStart)
{
    m_pParts->gestures.StartShape(EImageView2DMode_Drawing_Line, pointStart);
}

void CImageView2DCtrl::slot_DrawLineDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.DoShape(EImageView2DMode_Drawing_Line, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawLineEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.EndShape(EImageView2DMode_Drawing_Line, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawPolygonStart(QPointF& pointStart)
{
    m_pParts->gestures.StartShape(EImageView2DMode_Drawing_Polygon, pointStart);
}

void CImageView2DCtrl::slot_DrawPolygonDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.DoShape(EImageView2DMode_Drawing_Polygon, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawPolygonEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.EndShape(EImageView2DMode_Drawing_Polygon, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawPolygonWaiting(QPointF& point)
{
    m_pParts->gestures.WaitForClick(point);
}

void CImageView2DCtrl::slot_DrawShapeStart(QPointF& pointStart)
{
    m_pParts->gestures.StartShape(m_pParts->gestures.Mode(), pointStart);
}

void CImageView2DCtrl::slot_DrawShapeDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.DoShape(m_pParts->gestures.Mode(), pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawShapeEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.EndShape(m_pParts->gestures.Mode(), pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawShapeWaiting(QPointF& point)
{
    m_pParts->gestures.WaitForClick(point);
}

void CImageView2DCtrl::slot_CheckResizeRotate(QPointF& point)
{
    m_pParts->gestures.Select().Hover(point);
}

void CImageView2DCtrl::slot_SelectMovingStart(QPointF& pointStart)
{
    m_pParts->gestures.StartSelecting(pointStart);
}

void CImageView2DCtrl::slot_SelectMovingDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.Select().Drag(pointStart, pointEnd);
}

void CImageView2DCtrl::slot_SelectMovingEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pParts->gestures.Select().Release(pointStart, pointEnd);
}

void CImageView2DCtrl::slot_SelectResizeStart(QPointF&)
{
}

void CImageView2DCtrl::slot_SelectResizeDoing(QPointF&, QPointF&)
{
}

void CImageView2DCtrl::slot_SelectResizeEnd(QPointF&, QPointF&)
{
}

void CImageView2DCtrl::slot_DeleteDrawableObject()
{
    DeleteSelectedObjects();
}

void CImageView2DCtrl::slot_PressKey(int nKey)
{
    m_pParts->gestures.PressKey(nKey);
}
