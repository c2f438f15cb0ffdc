// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The gestures half of CImageView2DCtrl: connections and forwards to the private handlers.
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <VantorCommon/annotation/edit/DrawHandler_p.h>
#include <VantorCommon/annotation/edit/SelectHandler_p.h>
#include <VantorCommon/annotation/edit/TextHandler_p.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QMouseEvent>

void CImageView2DCtrl::ConnectGestures()
{
    const auto on = [this](auto pSignal, auto pSlot) { connect(m_pView.data(), pSignal, this, pSlot); };
    using V = CImageView2D;
    using C = CImageView2DCtrl;
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
    m_pView->installEventFilter(this);
    if (m_pToolModel)
        connect(m_pToolModel.data(), &CImageView2DToolModel::signal_ChangeViewMode, this, &C::Interrupt);
}

bool CImageView2DCtrl::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // Null for the last events of a view, which come when only the QWidget in it is left.
    auto* pView = qobject_cast<CImageView2D*>(pWatched);
    if (pView && pEvent->type() == QEvent::MouseButtonDblClick &&
        EditTextAt(*static_cast<QMouseEvent*>(pEvent)))
        return true;
    const bool bEnded = pView && ((pEvent->type() == QEvent::Hide && pView->CancelDrag()) ||
                                  (pEvent->type() == QEvent::MouseMove &&
                                   pView->CancelLostDrag(static_cast<QMouseEvent*>(pEvent)->buttons())));
    if (bEnded)
        Interrupt();
    return CBaseCtrl::eventFilter(pWatched, pEvent);
}

bool CImageView2DCtrl::EditTextAt(const QMouseEvent& event)
{
    return event.button() == Qt::LeftButton && Mode() == EImageView2DMode_Selecting &&
           m_pText->BeginAt(m_pView->MapToImage(event.localPos()));
}

void CImageView2DCtrl::Interrupt()
{
    if (m_pView)
        m_pView->CancelDrag();
    m_pSelect->Abandon();
    m_pDraw->AbandonDrag();
}

void CImageView2DCtrl::StartShape(int nMode, const QPointF& point)
{
    if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode)) {
        m_pSelect->Leave();
        m_pDraw->Start(*pKind, point);
    }
}

void CImageView2DCtrl::DoShape(int nMode, const QPointF& start, const QPointF& current)
{
    if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode))
        m_pDraw->Doing(*pKind, start, current);
}

void CImageView2DCtrl::EndShape(int nMode, const QPointF& start, const QPointF& end)
{
    if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode))
        m_pDraw->End(*pKind, start, end);
}

void CImageView2DCtrl::slot_DrawRectangleStart(QPointF& pointStart)
{
    StartShape(EImageView2DMode_Drawing_Rectanlge, pointStart);
}

void CImageView2DCtrl::slot_DrawRectangleDoing(QPointF& pointStart, QPointF& pointEnd)
{
    DoShape(EImageView2DMode_Drawing_Rectanlge, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawRectangleEnd(QPointF& pointStart, QPointF& pointEnd)
{
    EndShape(EImageView2DMode_Drawing_Rectanlge, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawEllipseStart(QPointF& pointStart)
{
    StartShape(EImageView2DMode_Drawing_Ellipse, pointStart);
}

void CImageView2DCtrl::slot_DrawEllipseDoing(QPointF& pointStart, QPointF& pointEnd)
{
    DoShape(EImageView2DMode_Drawing_Ellipse, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawEllipseEnd(QPointF& pointStart, QPointF& pointEnd)
{
    EndShape(EImageView2DMode_Drawing_Ellipse, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawCircleStart(QPointF& pointStart)
{
    StartShape(EImageView2DMode_Drawing_Circle, pointStart);
}

void CImageView2DCtrl::slot_DrawCircleDoing(QPointF& pointStart, QPointF& pointEnd)
{
    DoShape(EImageView2DMode_Drawing_Circle, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawCircleEnd(QPointF& pointStart, QPointF& pointEnd)
{
    EndShape(EImageView2DMode_Drawing_Circle, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawLineStart(QPointF& pointStart)
{
    StartShape(EImageView2DMode_Drawing_Line, pointStart);
}

void CImageView2DCtrl::slot_DrawLineDoing(QPointF& pointStart, QPointF& pointEnd)
{
    DoShape(EImageView2DMode_Drawing_Line, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawLineEnd(QPointF& pointStart, QPointF& pointEnd)
{
    EndShape(EImageView2DMode_Drawing_Line, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawPolygonStart(QPointF& pointStart)
{
    StartShape(EImageView2DMode_Drawing_Polygon, pointStart);
}

void CImageView2DCtrl::slot_DrawPolygonDoing(QPointF& pointStart, QPointF& pointEnd)
{
    DoShape(EImageView2DMode_Drawing_Polygon, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawPolygonEnd(QPointF& pointStart, QPointF& pointEnd)
{
    EndShape(EImageView2DMode_Drawing_Polygon, pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawPolygonWaiting(QPointF& point)
{
    m_pDraw->Waiting(point);
}

void CImageView2DCtrl::slot_DrawShapeStart(QPointF& pointStart)
{
    StartShape(Mode(), pointStart);
}

void CImageView2DCtrl::slot_DrawShapeDoing(QPointF& pointStart, QPointF& pointEnd)
{
    DoShape(Mode(), pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawShapeEnd(QPointF& pointStart, QPointF& pointEnd)
{
    EndShape(Mode(), pointStart, pointEnd);
}

void CImageView2DCtrl::slot_DrawShapeWaiting(QPointF& point)
{
    m_pDraw->Waiting(point);
}

void CImageView2DCtrl::slot_CheckResizeRotate(QPointF& point)
{
    m_pSelect->Hover(point);
}

void CImageView2DCtrl::slot_SelectMovingStart(QPointF& pointStart)
{
    m_pDraw->AbandonClicks();
    m_pSelect->Press(pointStart);
}

void CImageView2DCtrl::slot_SelectMovingDoing(QPointF& pointStart, QPointF& pointEnd)
{
    m_pSelect->Drag(pointStart, pointEnd);
}

void CImageView2DCtrl::slot_SelectMovingEnd(QPointF& pointStart, QPointF& pointEnd)
{
    m_pSelect->Release(pointStart, pointEnd);
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

void CImageView2DCtrl::DeleteSelectedObjects()
{
    m_pSelect->DeleteSelected();
}

void CImageView2DCtrl::slot_DeleteDrawableObject()
{
    DeleteSelectedObjects();
}

void CImageView2DCtrl::slot_PressKey(int nKey)
{
    if (!m_pView)
        return;
    if (nKey == Qt::Key_Delete || nKey == Qt::Key_Backspace)
        DeleteSelectedObjects();
    else if (nKey == Qt::Key_Escape && m_pView->isVisible() && m_pToolModel) {
        Interrupt();
        slot_ChangeSelectMode();
    }
}
