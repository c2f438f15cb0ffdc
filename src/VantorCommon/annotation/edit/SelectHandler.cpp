// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/edit/SelectHandler_p.h>

#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/command/CCommandArray.h>
#include <VantorCommon/annotation/command/CCommandCall.h>
#include <VantorCommon/annotation/command/CImageView2DCommandDeleteGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandMoveGeometry.h>
#include <VantorCommon/annotation/command/CImageView2DCommandResizeGeometry.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/ObjectLook_p.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QGuiApplication>
#include <algorithm>
#include <unordered_set>
#include <utility>

using Vantor::Geometry::CPoint;
using Vantor::Geometry::CRectangle;

namespace
{
using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

bool Hits(const ObjectPtr& pObject, const QPointF& point)
{
    return pObject->IsVisible() && pObject->GetBoundary().contains(point);
}

bool CanBeChanged(const ObjectPtr& pObject)
{
    return pObject->IsVisible() && !pObject->IsLocked();
}

void RefreshOffset(const ObjectPtr& pObject, const QPointF& point)
{
    pObject->SetMouseOffset(point - pObject->GetBoundary().topLeft());
}

/// A text without letters has no position, so the band cannot catch it.
bool IsCaught(const CRectangle& band, const ObjectPtr& pObject)
{
    const QRectF box = pObject->GetBoundary();
    if (!pObject->IsVisible())
        return false;
    if (pObject->GetType() == EImageView2DDrawbleObjectType_Text && box.isNull())
        return false;
    const QPointF corners[] = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
    return std::any_of(std::begin(corners), std::end(corners), [&](const QPointF& corner) {
        return band.Contains(CPoint<double>(corner.x(), corner.y()));
    });
}
} // namespace

void CSelectHandler::Hover(const QPointF& point)
{
    if (!m_context.IsComplete())
        return;
    Abandon();
    const double dblTolerance = m_context.pCtrl->HandleTolerance();
    const auto vctObjects = m_context.pModel->GetObjects();
    m_bResize = std::any_of(vctObjects.begin(), vctObjects.end(), [&](const ObjectPtr& pObject) {
        return CanBeChanged(pObject) && pObject->FindResizePoint(dblTolerance, point, m_ptHandle, 0.0);
    });
    m_context.pView->setCursor(m_bResize ? Qt::CrossCursor : Qt::ArrowCursor);
}

void CSelectHandler::Press(const QPointF& point)
{
    if (!m_context.IsComplete())
        return;
    Abandon();
    SelectAt(point, QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier));
    const auto vctObjects = m_context.pModel->GetObjects();
    m_bPressHitSelected = std::any_of(vctObjects.begin(), vctObjects.end(), [&](const ObjectPtr& pObject) {
        return pObject->GetSelected() && Hits(pObject, point);
    });
    if (m_bResize)
        m_ptHandle = point;
}

void CSelectHandler::SelectAt(const QPointF& point, bool bAdd)
{
    const auto vctObjects = m_context.pModel->GetObjects();
    const auto hits = [&](const ObjectPtr& pObject) { return Hits(pObject, point); };
    const auto hitsSelected = [&](const ObjectPtr& pObject) {
        return pObject->GetSelected() && hits(pObject);
    };
    if (bAdd) {
        for (const ObjectPtr& pObject : vctObjects)
            if (hits(pObject))
                pObject->SetSelected(true);
    } else if (std::none_of(vctObjects.begin(), vctObjects.end(), hitsSelected)) {
        m_context.pModel->UnSelectedAll();
        const auto it = std::find_if(vctObjects.begin(), vctObjects.end(), hits);
        if (it != vctObjects.end())
            (*it)->SetSelected(true);
    }
    for (const ObjectPtr& pObject : vctObjects)
        if (pObject->GetSelected())
            RefreshOffset(pObject, point);
}

void CSelectHandler::Drag(const QPointF& start, const QPointF& current)
{
    if (!m_context.IsComplete())
        return;
    if (m_bResize) {
        if (!m_vctDragged.empty() || TakeHandle(m_ptHandle))
            PullHandle(current);
    } else if (!m_bPressHitSelected) {
        Band(start, current);
    } else {
        MoveSelected(current);
    }
}

/// Keeps the first object with a handle near the press point for the rest of the drag.
bool CSelectHandler::TakeHandle(const QPointF& point)
{
    for (const ObjectPtr& pObject : m_context.pModel->GetObjects()) {
        QPointF handle;
        if (!CanBeChanged(pObject) ||
            !pObject->FindResizePoint(m_context.pCtrl->HandleTolerance(), point, handle, 0.0))
            continue;
        pObject->SetSelected(true);
        m_ptResizeOffset = point - handle;
        m_ptHandle = handle;
        m_vctDragged.push_back(SDragged{pObject, pObject->CloneShape()});
        return true;
    }
    return false;
}

/// Start from the shape before the drag, which has the handle at its exact position.
void CSelectHandler::PullHandle(const QPointF& current)
{
    const SDragged& dragged = m_vctDragged.front();
    const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(dragged.pObject);
    if (!pShape || !dragged.pBefore)
        return;
    pShape->SetData(dragged.pBefore->Clone());
    pShape->MoveResizePoint(m_ptHandle, current - m_ptResizeOffset);
}

void CSelectHandler::KeepSelected()
{
    for (const ObjectPtr& pObject : m_context.pModel->GetObjects())
        if (pObject->GetSelected() && CanBeChanged(pObject))
            m_vctDragged.push_back(SDragged{pObject, pObject->CloneShape()});
}

void CSelectHandler::MoveSelected(const QPointF& current)
{
    if (m_vctDragged.empty())
        KeepSelected();
    for (const SDragged& dragged : m_vctDragged)
        dragged.pObject->MoveTopLeftTo(current - dragged.pObject->GetMouseOffset());
}

void CSelectHandler::Band(const QPointF& start, const QPointF& current)
{
    const auto pRectangle =
        std::make_shared<CRectangle>(start.x(), start.y(), current.x() - start.x(), current.y() - start.y());
    const auto pBand = ShapeKinds::Wrap(pRectangle);
    pBand->SetDisplayName(false);
    m_bBand = true;
    m_context.pModel->ClearObjectDrawing();
    m_context.pModel->AddObjectDrawing(pBand);
    for (const ObjectPtr& pObject : m_context.pModel->GetObjects())
        if (!pObject->GetSelected() && IsCaught(*pRectangle, pObject)) {
            pObject->SetSelected(true);
            RefreshOffset(pObject, current);
        }
}

void CSelectHandler::Release(const QPointF& start, const QPointF& end)
{
    if (!m_context.IsComplete())
        return;
    if (m_bResize)
        CommitResize(start, end);
    else if (m_bPressHitSelected)
        CommitMove(start, end);
    m_bPressHitSelected = false;
    m_bBand = false;
    m_context.ClearDrawing();
}

void CSelectHandler::CommitResize(const QPointF& start, const QPointF& end)
{
    if (m_vctDragged.empty())
        return;
    PullHandle(end);
    const SDragged dragged = std::exchange(m_vctDragged, {}).front();
    if (m_context.pModel->FindObject(dragged.pObject->GetUID()))
        m_context.execute(std::make_unique<CImageView2DCommandResizeGeometry>(
            m_context.pCtrl, dragged.pObject, start, end, m_ptResizeOffset, dragged.pBefore));
    else
        TakeBack(dragged);
    m_ptResizeOffset = QPointF();
}

/// An object that left the model in mid-drag gets its shape back and is not part of the step.
void CSelectHandler::CommitMove(const QPointF& start, const QPointF& end)
{
    MoveSelected(end);
    const auto vctDragged = std::exchange(m_vctDragged, {});
    const auto vctObjects = m_context.pModel->GetObjects();
    const std::unordered_set<ObjectPtr> present(vctObjects.begin(), vctObjects.end());
    auto pSteps = std::make_unique<CCommandArray>();
    bool bAny = false;
    for (const SDragged& dragged : vctDragged) {
        if (present.count(dragged.pObject) == 0) {
            TakeBack(dragged);
            continue;
        }
        const QPointF offset = dragged.pObject->GetMouseOffset();
        pSteps->addCommand(new CImageView2DCommandMoveGeometry(m_context.pCtrl, dragged.pObject, start, end,
                                                               offset.x(), offset.y(), dragged.pBefore));
        bAny = true;
    }
    if (bAny)
        m_context.execute(std::move(pSteps));
}

void CSelectHandler::DeleteSelected()
{
    if (!m_context.IsComplete())
        return;
    auto pSteps = std::make_unique<CCommandArray>();
    bool bAny = false;
    for (const ObjectPtr& pObject : m_context.pModel->GetObjects()) {
        if (!pObject->GetSelected() || pObject->IsLocked())
            continue;
        pSteps->addCommand(new CImageView2DCommandDeleteGeometry(m_context.pCtrl, pObject));
        bAny = true;
    }
    if (bAny)
        m_context.execute(std::move(pSteps));
}

void CSelectHandler::ChangeLooks(const std::function<void(SObjectLook&)>& change)
{
    if (!m_context.IsComplete())
        return;
    auto pSteps = std::make_unique<CCommandArray>();
    bool bAny = false;
    for (const ObjectPtr& pObject : m_context.pModel->GetObjects()) {
        SObjectLook look = ObjectLook::Of(*pObject);
        change(look);
        if (!pObject->GetSelected() || look == ObjectLook::Of(*pObject))
            continue;
        pSteps->addCommand(CCommandCall::Exchange(
                               look,
                               [pObject] {
                                   return SObjectLook{pObject->GetPen(), pObject->GetBrushFilled()};
                               },
                               [pObject](const SObjectLook& to) {
                                   pObject->SetPen(to.pen);
                                   pObject->SetBrushFilled(to.brush);
                               })
                               .release());
        bAny = true;
    }
    if (bAny)
        m_context.execute(std::move(pSteps));
}

void CSelectHandler::Abandon()
{
    const auto vctDragged = std::exchange(m_vctDragged, {});
    m_bPressHitSelected = false;
    m_ptResizeOffset = QPointF();
    for (const SDragged& dragged : vctDragged)
        TakeBack(dragged);
    if (std::exchange(m_bBand, false) && m_context.IsComplete())
        m_context.ClearDrawing();
}

void CSelectHandler::Leave()
{
    Abandon();
    m_bResize = false;
}

void CSelectHandler::TakeBack(const SDragged& dragged)
{
    if (dragged.pBefore)
        dragged.pObject->RestoreShape(*dragged.pBefore);
}
