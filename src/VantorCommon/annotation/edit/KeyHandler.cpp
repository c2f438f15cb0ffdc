// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/edit/KeyHandler_p.h>

#include <Vantor/geometry/CGeometry.h>
#include <VantorCommon/annotation/command/CCommandCall.h>
#include <VantorCommon/annotation/edit/DrawHandler_p.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <QKeyEvent>
#include <algorithm>
#include <utility>

namespace
{
constexpr double kFarStep = 10.0; // image pixels
constexpr int kBurstMs = 1000;    // between two keys

/// One image pixel into the direction of an arrow key; null for other keys.
QPointF DirectionOf(int nKey)
{
    switch (nKey) {
    case Qt::Key_Left:
        return {-1.0, 0.0};
    case Qt::Key_Right:
        return {1.0, 0.0};
    case Qt::Key_Up:
        return {0.0, -1.0};
    case Qt::Key_Down:
        return {0.0, 1.0};
    default:
        return {};
    }
}
} // namespace

bool CKeyHandler::Press(const QKeyEvent& event)
{
    if (!m_context.IsComplete())
        return false;
    const int nKey = event.key();
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    CAnnotationStore* pStore = m_context.pCtrl->GetAnnotationStore();
    if (modifiers == Qt::ControlModifier && nKey == Qt::Key_A) {
        pStore->SelectAll();
        return true;
    }
    if (modifiers == Qt::ControlModifier && nKey == Qt::Key_D) {
        pStore->Duplicate(pStore->GetSelected(),
                          {CAnnotationStore::kCopyOffset, CAnnotationStore::kCopyOffset});
        return true;
    }
    if (m_draw.IsClicking())
        return PressDrawing(nKey);
    const QPointF direction = DirectionOf(nKey);
    if (direction.isNull() || (modifiers & ~Qt::ShiftModifier) != Qt::NoModifier)
        return false;
    return MoveSelected(modifiers == Qt::ShiftModifier ? direction * kFarStep : direction);
}

bool CKeyHandler::PressDrawing(int nKey)
{
    if (nKey == Qt::Key_Return || nKey == Qt::Key_Enter) {
        m_draw.CloseClicks();
        return true;
    }
    if (nKey == Qt::Key_Backspace) {
        m_draw.TakeBackClick();
        return true;
    }
    if (nKey == Qt::Key_Escape)
        m_draw.AbandonClicks(); // leaving the mode is still to come
    return false;
}

bool CKeyHandler::MoveSelected(const QPointF& by)
{
    std::vector<ObjectPtr> vctMoved;
    for (const ObjectPtr& pObject : m_context.pCtrl->GetAnnotationStore()->GetSelected())
        if (pObject->IsVisible() && !pObject->IsLocked())
            vctMoved.push_back(pObject);
    if (vctMoved.empty())
        return false;
    const bool bGoesOn = m_pStep && m_vctMoved == vctMoved && m_sinceKey.elapsed() < kBurstMs;
    if (bGoesOn) {
        m_pStep->undo();
        *m_pBy += by;
        m_pStep->exec();
    } else {
        BeginBurst(std::move(vctMoved), by);
    }
    m_sinceKey.start();
    return true;
}

void CKeyHandler::BeginBurst(std::vector<ObjectPtr> vctMoved, const QPointF& by)
{
    struct SMoved {
        ObjectPtr pObject;
        QPointF corner;
        std::shared_ptr<Vantor::Geometry::CGeometry> pBefore;
    };
    const auto pFound = std::make_shared<std::vector<SMoved>>(); // when the step was last made
    const auto pBy = std::make_shared<QPointF>(by);
    CCommand* pStep = m_context.execute(std::make_unique<CCommandCall>(
        [=] {
            pFound->clear();
            for (const ObjectPtr& pObject : vctMoved) {
                pFound->push_back({pObject, pObject->GetBoundary().topLeft(), pObject->CloneShape()});
                pObject->MoveTopLeftTo(pFound->back().corner + *pBy);
            }
        },
        [=] {
            for (const SMoved& moved : *pFound)
                if (moved.pBefore)
                    moved.pObject->RestoreShape(*moved.pBefore);
                else
                    moved.pObject->MoveTopLeftTo(moved.corner);
        }));
    m_pStep = pStep;
    m_pBy = pBy;
    m_vctMoved = std::move(vctMoved);
}
