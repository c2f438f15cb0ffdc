// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/view2d/CImageView2DCtrlGestures_p.h>

#include <VantorCommon/annotation/command/CCommand.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace
{
constexpr double kHandleReach = 10.0; // widget pixels
} // namespace

CImageView2DCtrlGestures::CImageView2DCtrlGestures(
    const SImageView2DCtrlContext& context,
    const std::function<CCommand*(std::unique_ptr<CCommand>)>& execute)
    : m_context(context), m_edit{context.pCtrl,
                                 context.pView,
                                 context.pGeometryModel,
                                 context.pToolModel,
                                 execute,
                                 [this](std::shared_ptr<CImageView2DDrawableText> pText) {
                                     m_text.Begin(pText);
                                 }},
      m_draw(m_edit), m_select(m_edit), m_text(m_edit), m_keys(m_edit, m_draw)
{
}

void CImageView2DCtrlGestures::Watch()
{
    m_context.pView->installEventFilter(this);
    if (m_context.pToolModel)
        connect(m_context.pToolModel.data(), &CImageView2DToolModel::signal_ChangeViewMode, this,
                &CImageView2DCtrlGestures::Interrupt);
}

bool CImageView2DCtrlGestures::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // Null for the last events of a view, which arrive when only its QWidget base still exists.
    auto* pView = qobject_cast<CImageView2D*>(pWatched);
    if (pView && m_context.sOptions.bEditKeys && IsForKeys(*pEvent))
        return true;
    if (pView && pEvent->type() == QEvent::MouseButtonDblClick &&
        EditTextAt(*static_cast<QMouseEvent*>(pEvent)))
        return true;
    const bool bEnded = pView && ((pEvent->type() == QEvent::Hide && pView->CancelDrag()) ||
                                  (pEvent->type() == QEvent::MouseMove &&
                                   pView->CancelLostDrag(static_cast<QMouseEvent*>(pEvent)->buttons())));
    if (bEnded)
        Interrupt();
    return QObject::eventFilter(pWatched, pEvent);
}

/// A key, or the double click that acts as Enter. The second click of a polygon has already added its point.
bool CImageView2DCtrlGestures::IsForKeys(QEvent& event)
{
    if (event.type() == QEvent::KeyPress)
        return m_keys.Press(static_cast<QKeyEvent&>(event));
    if (event.type() == QEvent::MouseButtonPress)
        m_keys.EndBurst();
    if (event.type() != QEvent::MouseButtonDblClick || !m_draw.IsClicking() ||
        static_cast<QMouseEvent&>(event).button() != Qt::LeftButton)
        return false;
    m_draw.CloseClicks();
    return true;
}

/// With Shift the point that the kind's constraint allows.
QPointF CImageView2DCtrlGestures::Constrained(const SShapeKind& kind, const QPointF& start,
                                              const QPointF& point) const
{
    const bool bShift = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    if (!bShift || !m_context.sOptions.bEditKeys || !kind.constrain)
        return point;
    return kind.constrain(kind.fromClicks && m_draw.IsClicking() ? m_draw.LastCorner() : start, point);
}

bool CImageView2DCtrlGestures::EditTextAt(const QMouseEvent& event)
{
    return event.button() == Qt::LeftButton && Mode() == EImageView2DMode_Selecting &&
           m_text.BeginAt(m_context.pView->MapToImage(event.localPos()));
}

void CImageView2DCtrlGestures::Interrupt()
{
    if (m_context.pView)
        m_context.pView->CancelDrag();
    m_select.Abandon();
    m_draw.AbandonDrag();
    m_keys.EndBurst();
}

int CImageView2DCtrlGestures::Mode() const
{
    return m_context.pToolModel ? m_context.pToolModel->GetViewMode() : EImageView2DMode_Selecting;
}

void CImageView2DCtrlGestures::SetMode(int nMode)
{
    if (m_context.pToolModel)
        m_context.pToolModel->SetViewMode(static_cast<EImageView2DMode>(nMode));
}

double CImageView2DCtrlGestures::HandleTolerance() const
{
    const double dblSize = m_context.pView ? m_context.pView->GetSizePixel() : 0.0;
    return dblSize > 0.0 ? kHandleReach / dblSize : 0.0;
}

void CImageView2DCtrlGestures::StartShape(int nMode, const QPointF& point)
{
    if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode)) {
        m_select.Leave();
        m_draw.Start(*pKind, point);
    }
}

void CImageView2DCtrlGestures::DoShape(int nMode, const QPointF& start, const QPointF& current)
{
    if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode))
        m_draw.Doing(*pKind, start, Constrained(*pKind, start, current));
}

void CImageView2DCtrlGestures::EndShape(int nMode, const QPointF& start, const QPointF& end)
{
    if (const SShapeKind* pKind = ShapeKinds::OfMode(nMode))
        m_draw.End(*pKind, start, Constrained(*pKind, start, end));
}

void CImageView2DCtrlGestures::WaitForClick(const QPointF& point)
{
    const SShapeKind* pKind = ShapeKinds::OfMode(Mode());
    m_draw.Waiting(pKind ? Constrained(*pKind, m_draw.LastCorner(), point) : point);
}

void CImageView2DCtrlGestures::StartSelecting(const QPointF& point)
{
    m_draw.AbandonClicks();
    m_select.Press(point);
}

void CImageView2DCtrlGestures::ShowMenuAt(const QPointF& point)
{
    if (!m_context.pGeometryModel || !m_context.pView)
        return;
    for (const auto& pObject : m_context.pGeometryModel->GetObjects()) {
        if (!pObject->IsVisible() || !pObject->GetBoundary().contains(point))
            continue;
        pObject->SetSelected(true);
        m_context.pView->ShowContextMenuDrawableObject(point, pObject->GetUID());
        return;
    }
    m_context.pView->ShowContextMenu(point);
}

void CImageView2DCtrlGestures::PressKey(int nKey)
{
    if (!m_context.pView)
        return;
    if (nKey == Qt::Key_Delete || nKey == Qt::Key_Backspace)
        m_select.DeleteSelected();
    else if (nKey == Qt::Key_Escape && m_context.pView->isVisible() && m_context.pToolModel) {
        Interrupt();
        SetMode(EImageView2DMode_Selecting);
    }
}
