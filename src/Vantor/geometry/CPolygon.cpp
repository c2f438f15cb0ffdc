// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CPolygon.h>

#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>

namespace Vantor::Geometry
{

namespace
{
using Vertices = std::vector<CPoint<double>>;

/// An edge that crosses the centres of the rows nFirst to nLast - 1 of the image.
struct SEdge {
    const CPoint<double>* pFrom;
    const CPoint<double>* pTo;
    int nFirst;
    int nLast;
};

const CPoint<double>& Next(const Vertices& vertices, std::size_t index)
{
    return vertices[index + 1 < vertices.size() ? index + 1 : 0];
}

/// The edges that cross the centre of a row of the image, from the topmost first row on.
std::vector<SEdge> CrossingEdges(const Vertices& vertices, int height)
{
    std::vector<SEdge> vctEdges;
    vctEdges.reserve(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const CPoint<double>& from = vertices[i];
        const CPoint<double>& to = Next(vertices, i);
        const int nFirst = FirstCentreFrom(std::min(from.y(), to.y()), height);
        const int nLast = FirstCentreFrom(std::max(from.y(), to.y()), height);
        if (nFirst < nLast)
            vctEdges.push_back({&from, &to, nFirst, nLast});
    }
    std::sort(vctEdges.begin(), vctEdges.end(),
              [](const SEdge& a, const SEdge& b) { return a.nFirst < b.nFirst; });
    return vctEdges;
}

/// The row after the last one that an edge crosses.
int EndOf(const std::vector<SEdge>& edges)
{
    int nEnd = 0;
    for (const SEdge& edge : edges)
        nEnd = std::max(nEnd, edge.nLast);
    return nEnd;
}

/// Appends the runs between pairs of crossings, which lie in ascending order. Touching runs become one.
void AppendRuns(std::vector<SPixelRun>& runs, int nRow, const std::vector<double>& crossings, int width)
{
    for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
        const int nBegin = FirstCentreFrom(crossings[i], width);
        const int nEnd = FirstCentreFrom(crossings[i + 1], width);
        if (nBegin >= nEnd)
            continue;
        if (!runs.empty() && runs.back().nRow == nRow && runs.back().nEnd == nBegin)
            runs.back().nEnd = nEnd;
        else
            runs.push_back({nRow, nBegin, nEnd});
    }
}

bool LiesOnEdge(const CPoint<double>& a, const CPoint<double>& b, const CPoint<double>& point)
{
    if (point.x() < std::min(a.x(), b.x()) || point.x() > std::max(a.x(), b.x()) ||
        point.y() < std::min(a.y(), b.y()) || point.y() > std::max(a.y(), b.y()))
        return false;
    if (a.y() == b.y() || a.x() == b.x())
        return true;
    return AbscissaAt(a, b, point.y()) == point.x();
}

bool AllFinite(const Vertices& vertices)
{
    return std::all_of(vertices.begin(), vertices.end(), [](const CPoint<double>& p) { return IsFinite(p); });
}
} // namespace

void CPolygon::AddEdge(const CLine& edge)
{
    for (const CPoint<double>& point : {edge.start(), edge.end()}) {
        if (m_vctVertices.empty() || m_vctVertices.back() != point)
            m_vctVertices.push_back(point);
    }
    if (m_vctVertices.size() > 1 && m_vctVertices.back() == m_vctVertices.front())
        m_vctVertices.pop_back();
}

int CPolygon::SetPoints(const CPointList& points)
{
    Vertices vctVertices;
    for (int i = 0; i < points.Size(); ++i) {
        if (const auto* pPoint = dynamic_cast<const CPoint<double>*>(points.At(i).get()))
            vctVertices.push_back(*pPoint);
    }
    m_vctVertices = std::move(vctVertices);
    return 0;
}

CRectangle CPolygon::GetBoundingRectangle() const
{
    CBounds bounds;
    for (const CPoint<double>& vertex : m_vctVertices)
        bounds.Include(vertex.x(), vertex.y());
    return bounds.GetRectangle();
}

void CPolygon::MoveTopLeftTo(const CPoint<double>& point)
{
    if (!IsFinite(point))
        return;
    const CRectangle box = GetBoundingRectangle();
    for (CPoint<double>& vertex : m_vctVertices)
        vertex = CPoint<double>((vertex.x() - box.x()) + point.x(), (vertex.y() - box.y()) + point.y());
}

int CPolygon::GetPoints(CPointList& outline, CPointList& handles) const
{
    outline.Clear();
    handles.Clear();
    for (const CPoint<double>& vertex : m_vctVertices) {
        outline.Add(vertex);
        handles.Add(vertex);
    }
    return 0;
}

bool CPolygon::Contains(const CPoint<double>& point) const
{
    if (!IsFinite(point) || !AllFinite(m_vctVertices))
        return false;
    bool bInside = false;
    for (std::size_t i = 0; i < m_vctVertices.size(); ++i) {
        const CPoint<double>& a = m_vctVertices[i];
        const CPoint<double>& b = Next(m_vctVertices, i);
        if (LiesOnEdge(a, b, point))
            return true;
        if ((a.y() <= point.y()) != (b.y() <= point.y()) && AbscissaAt(a, b, point.y()) <= point.x())
            bInside = !bInside;
    }
    return bInside;
}

std::vector<SPixelRun> CPolygon::GetPixelRuns(int width, int height) const
{
    std::vector<SPixelRun> vctRuns;
    if (width < 1 || !AllFinite(m_vctVertices))
        return vctRuns;
    const std::vector<SEdge> vctEdges = CrossingEdges(m_vctVertices, height);
    std::vector<const SEdge*> vctActive;
    std::vector<double> vctCrossings;
    std::size_t nNext = 0;
    if (vctEdges.empty())
        return vctRuns;
    const int nEnd = EndOf(vctEdges);
    for (int nRow = vctEdges.front().nFirst; nRow < nEnd; ++nRow) {
        while (nNext < vctEdges.size() && vctEdges[nNext].nFirst == nRow)
            vctActive.push_back(&vctEdges[nNext++]);
        vctActive.erase(std::remove_if(vctActive.begin(), vctActive.end(),
                                       [nRow](const SEdge* pEdge) { return pEdge->nLast <= nRow; }),
                        vctActive.end());
        vctCrossings.clear();
        for (const SEdge* pEdge : vctActive)
            vctCrossings.push_back(AbscissaAt(*pEdge->pFrom, *pEdge->pTo, nRow + 0.5));
        std::sort(vctCrossings.begin(), vctCrossings.end());
        AppendRuns(vctRuns, nRow, vctCrossings, width);
    }
    return vctRuns;
}

bool CPolygon::MoveHandle(const CPoint<double>& handle, const CPoint<double>& to)
{
    const auto it = std::find(m_vctVertices.begin(), m_vctVertices.end(), handle);
    if (it == m_vctVertices.end())
        return false;
    *it = to;
    return true;
}

std::vector<SOutline> CPolygon::GetOutline() const
{
    SOutline polygon{EOutlineForm_Polygon, {}};
    for (const CPoint<double>& vertex : m_vctVertices)
        polygon.vctPlaces.push_back({vertex.x(), vertex.y()});
    return {polygon};
}

std::shared_ptr<CGeometry> CPolygon::Clone() const
{
    return std::make_shared<CPolygon>(*this);
}

} // namespace Vantor::Geometry
