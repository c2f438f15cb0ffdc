// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/edit/DrawHandler_p.h>

#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/command/CImageView2DCommandAddGeometry.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>

#include <cmath>
#include <utility>

using namespace Vantor::Geometry;

namespace
{
/// Fewer edges than this do not close.
constexpr std::size_t kMinOpenEdges = 3;

CPoint<double> CorePoint(const QPointF& point)
{
    return {point.x(), point.y()};
}

std::shared_ptr<CImageView2DDrawableGeometry> Wrap(std::shared_ptr<CGeometry> pGeometry)
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::move(pGeometry));
    return pObject;
}

std::shared_ptr<CImageView2DDrawableGeometry> MakeEdge(const QPointF& start, const QPointF& end)
{
    auto pEdge = Wrap(std::make_shared<CLine>(CorePoint(start), CorePoint(end)));
    pEdge->SetDisplayName(false);
    return pEdge;
}

const CLine* LineOf(const std::shared_ptr<CImageView2DDrawableObject>& pObject)
{
    const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(pObject);
    return pShape ? dynamic_cast<const CLine*>(pShape->GetData().get()) : nullptr;
}
} // namespace

std::shared_ptr<CImageView2DDrawableGeometry> CDrawHandler::MakeRectangle(const QPointF& start,
                                                                          const QPointF& end)
{
    return Wrap(std::make_shared<CRectangle>(start.x(), start.y(), end.x() - start.x(), end.y() - start.y()));
}

std::shared_ptr<CImageView2DDrawableGeometry> CDrawHandler::MakeEllipse(const QPointF& start,
                                                                        const QPointF& end)
{
    return Wrap(std::make_shared<CEllipse>(start.x(), start.y(), end.x() - start.x(), end.y() - start.y()));
}

std::shared_ptr<CImageView2DDrawableGeometry> CDrawHandler::MakeCircle(const QPointF& start,
                                                                       const QPointF& end)
{
    const double r = std::hypot(end.x() - start.x(), end.y() - start.y());
    return Wrap(std::make_shared<CEllipse>(start.x() - r, start.y() - r, 2 * r, 2 * r));
}

std::shared_ptr<CImageView2DDrawableGeometry> CDrawHandler::MakeRuler(const QPointF& start,
                                                                      const QPointF& end)
{
    auto pRuler = std::make_shared<CImageView2DDrawableRuler>();
    pRuler->SetData(std::make_shared<CLine>(CorePoint(start), CorePoint(end)));
    return pRuler;
}

void CDrawHandler::Start()
{
    if (!m_context.IsComplete())
        return;
    m_bPreview = false;
    m_bPolygon = false;
    m_context.ClearDrawing();
    if (m_context.pModel->GetObjectDrawingWaiting())
        m_context.pModel->ClearObjectDrawingWaiting();
}

void CDrawHandler::Doing(Maker make, const QPointF& start, const QPointF& current)
{
    if (!m_context.IsComplete())
        return;
    m_context.ClearDrawing();
    const auto pPreview = make(start, current);
    pPreview->SetDisplayName(false);
    m_bPreview = true;
    m_context.pModel->AddObjectDrawing(pPreview);
}

void CDrawHandler::End(Maker make, const QPointF& start, const QPointF& end)
{
    if (!m_context.IsComplete())
        return;
    m_bPreview = false;
    m_context.execute(std::make_unique<CImageView2DCommandAddGeometry>(m_context.pCtrl, make(start, end)));
    m_context.ClearDrawing();
    ReturnToSelecting();
}

void CDrawHandler::AbandonDrag()
{
    if (std::exchange(m_bPreview, false) && m_context.IsComplete())
        m_context.ClearDrawing();
}

void CDrawHandler::AbandonPolygon()
{
    if (m_bPolygon)
        Start();
}

void CDrawHandler::PolygonStart(const QPointF& point)
{
    if (!m_context.IsComplete() || m_bPolygon)
        return;
    m_bPreview = false;
    m_context.ClearDrawing();
    m_context.pModel->ClearObjectDrawingWaiting();
    m_bPolygon = true;
    m_ptLast = point;
}

void CDrawHandler::PolygonWaiting(const QPointF& point)
{
    if (m_context.IsComplete() && m_bPolygon)
        m_context.pModel->AddObjectDrawingWaiting(MakeEdge(m_ptLast, point));
}

void CDrawHandler::PolygonDoing(const QPointF& current)
{
    if (m_context.IsComplete() && m_bPolygon)
        m_context.pModel->AddObjectDrawing(MakeEdge(m_ptLast, current));
}

void CDrawHandler::AddEdge(const QPointF& end)
{
    m_context.pModel->AddObjectDrawing(MakeEdge(m_ptLast, end));
    m_ptLast = end;
}

void CDrawHandler::PolygonEnd(const QPointF& end)
{
    if (!m_context.IsComplete() || !m_bPolygon)
        return;
    if (ClosesPolygon(end))
        ClosePolygon();
    else
        AddEdge(end);
}

/// Deliberate: three edges count whatever their lengths.
bool CDrawHandler::ClosesPolygon(const QPointF& end) const
{
    const auto vctEdges = m_context.pModel->GetObjectDrawing();
    const CLine* pFirst = vctEdges.size() < kMinOpenEdges ? nullptr : LineOf(vctEdges.front());
    return pFirst && pFirst->start().GetDistance(CorePoint(end)) <= m_context.pCtrl->HandleTolerance();
}

void CDrawHandler::ClosePolygon()
{
    const auto vctEdges = m_context.pModel->GetObjectDrawing();
    const CLine* pFirst = LineOf(vctEdges.front());
    AddEdge(QPointF(pFirst->start().x(), pFirst->start().y()));
    auto pPolygon = std::make_shared<CPolygon>();
    for (const auto& pEdge : m_context.pModel->GetObjectDrawing())
        if (const CLine* pLine = LineOf(pEdge))
            pPolygon->AddEdge(*pLine);
    m_bPolygon = false;
    m_context.execute(
        std::make_unique<CImageView2DCommandAddGeometry>(m_context.pCtrl, Wrap(std::move(pPolygon))));
    m_context.pModel->ClearObjectDrawing();
    m_context.pModel->ClearObjectDrawingWaiting();
    ReturnToSelecting();
}

void CDrawHandler::ReturnToSelecting()
{
    if (m_context.pToolModel)
        m_context.pToolModel->SetViewMode(EImageView2DMode_Selecting);
}
