// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/edit/DrawHandler_p.h>

#include <Vantor/geometry/CLine.h>
#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <algorithm>
#include <utility>

using Vantor::Geometry::CLine;
using Vantor::Geometry::CPoint;

namespace
{
/// Fewer edges than this do not close.
constexpr std::size_t kMinOpenEdges = 3;
/// Fewer corners than this are not closed by hand.
constexpr int kMinCorners = 3;

CLine CoreLine(const QPointF& start, const QPointF& end)
{
    return {CPoint<double>(start.x(), start.y()), CPoint<double>(end.x(), end.y())};
}

std::shared_ptr<CImageView2DDrawableObject> MakeEdge(const QPointF& start, const QPointF& end)
{
    const auto pEdge = ShapeKinds::Wrap(std::make_shared<CLine>(CoreLine(start, end)));
    pEdge->SetDisplayName(false);
    return pEdge;
}
} // namespace

void CDrawHandler::Start(const SShapeKind& kind, const QPointF& point)
{
    if (!m_context.IsComplete() || (kind.fromClicks && m_pClicked == &kind))
        return;
    m_bPreview = false;
    m_context.ClearDrawing();
    if (kind.fromClicks || m_context.pModel->GetObjectDrawingWaiting())
        m_context.pModel->ClearObjectDrawingWaiting();
    m_pClicked = kind.fromClicks ? &kind : nullptr;
    m_ptLast = point;
}

void CDrawHandler::Doing(const SShapeKind& kind, const QPointF& start, const QPointF& current)
{
    if (!m_context.IsComplete())
        return;
    if (kind.fromClicks) {
        if (m_pClicked)
            m_context.pModel->AddObjectDrawing(MakeEdge(m_ptLast, current));
        return;
    }
    m_context.ClearDrawing();
    const auto pPreview = kind.fromDrag(start, current);
    if (!pPreview)
        return;
    pPreview->SetDisplayName(false);
    if (const CAnnotationStore* pStore = m_context.pCtrl->GetAnnotationStore())
        pStore->Calibrate(*pPreview);
    m_bPreview = true;
    m_context.pModel->AddObjectDrawing(pPreview);
}

void CDrawHandler::End(const SShapeKind& kind, const QPointF& start, const QPointF& end)
{
    if (!m_context.IsComplete())
        return;
    if (kind.fromClicks)
        return EndEdge(end);
    m_bPreview = false;
    const std::shared_ptr<CImageView2DDrawableObject> pObject = kind.fromDrag(start, end);
    const auto pText = std::dynamic_pointer_cast<CImageView2DDrawableText>(pObject);
    if (!pText)
        Add(pObject);
    m_context.ClearDrawing();
    ReturnToSelecting();
    if (pText)
        m_context.write(pText);
}

void CDrawHandler::AbandonDrag()
{
    if (std::exchange(m_bPreview, false) && m_context.IsComplete())
        m_context.ClearDrawing();
}

void CDrawHandler::AbandonClicks()
{
    if (!std::exchange(m_pClicked, nullptr) || !m_context.IsComplete())
        return;
    m_context.ClearDrawing();
    m_context.pModel->ClearObjectDrawingWaiting();
}

void CDrawHandler::Waiting(const QPointF& point)
{
    if (!m_context.IsComplete() || !m_pClicked)
        return;
    m_ptMouse = point;
    m_context.pModel->AddObjectDrawingWaiting(MakeEdge(m_ptLast, point));
}

void CDrawHandler::CloseClicks()
{
    if (!m_context.IsComplete() || !m_pClicked)
        return;
    const std::vector<QLineF> vctEdges = Edges();
    // A click that began the drawing has left an edge without a length.
    const auto nLong = std::count_if(vctEdges.begin(), vctEdges.end(),
                                     [](const QLineF& edge) { return edge.p1() != edge.p2(); });
    if (nLong + 1 < kMinCorners)
        return;
    AddEdge(vctEdges.front().p1());
    Close();
}

void CDrawHandler::TakeBackClick()
{
    if (!m_context.IsComplete() || !m_pClicked)
        return;
    std::vector<QLineF> vctEdges = Edges();
    bool bCorner = false; // one beside the first
    if (!vctEdges.empty())
        m_ptLast = vctEdges.back().p1();
    while (!vctEdges.empty() && vctEdges.back().p1() == m_ptLast) {
        bCorner = bCorner || vctEdges.back().p2() != m_ptLast;
        vctEdges.pop_back();
    }
    if (!bCorner && vctEdges.empty())
        return AbandonClicks();
    m_context.ClearDrawing();
    for (const QLineF& edge : vctEdges)
        m_context.pModel->AddObjectDrawing(MakeEdge(edge.p1(), edge.p2()));
    Waiting(m_ptMouse);
}

void CDrawHandler::EndEdge(const QPointF& end)
{
    if (!m_pClicked)
        return;
    const std::vector<QLineF> vctEdges = Edges();
    // Deliberate: three edges count whatever their lengths.
    const bool bCloses =
        vctEdges.size() >= kMinOpenEdges &&
        CoreLine(vctEdges.front().p1(), end).GetLength() <= m_context.pCtrl->HandleTolerance();
    AddEdge(bCloses ? vctEdges.front().p1() : end);
    if (bCloses)
        Close();
}

void CDrawHandler::AddEdge(const QPointF& end)
{
    m_context.pModel->AddObjectDrawing(MakeEdge(m_ptLast, end));
    m_ptLast = end;
    m_ptMouse = end;
}

/// The edges that clicks have drawn so far, in their order.
std::vector<QLineF> CDrawHandler::Edges() const
{
    std::vector<QLineF> vctEdges;
    for (const auto& pObject : m_context.pModel->GetObjectDrawing())
        if (const auto* pLine = ShapeKinds::GeometryOf<CLine>(*pObject))
            vctEdges.emplace_back(pLine->start().x(), pLine->start().y(), pLine->end().x(), pLine->end().y());
    return vctEdges;
}

void CDrawHandler::Close()
{
    const SShapeKind* pKind = std::exchange(m_pClicked, nullptr);
    Add(pKind->fromClicks(Edges()));
    m_context.pModel->ClearObjectDrawing();
    m_context.pModel->ClearObjectDrawingWaiting();
    ReturnToSelecting();
}

void CDrawHandler::Add(std::shared_ptr<CImageView2DDrawableObject> pObject)
{
    if (pObject)
        m_context.execute(
            std::make_unique<CImageView2DCommandAddGeometry>(m_context.pCtrl, std::move(pObject)));
}

void CDrawHandler::ReturnToSelecting()
{
    if (m_context.pToolModel)
        m_context.pToolModel->SetViewMode(EImageView2DMode_Selecting);
}
