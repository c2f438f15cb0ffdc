// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CLine.h>

#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>
#include <cmath>

namespace Vantor::Geometry
{

namespace
{
/// The distance from the segment up to which a point counts as on it, in pixels.
constexpr double kTolerance = 0.5;

/// The part of the segment in the row of pixels nRow <= y < nRow + 1, as a closed range of columns,
/// unclipped. The segment runs downwards from top to bottom.
std::pair<double, double> ColumnsInRow(const CPoint<double>& top, const CPoint<double>& bottom, int nRow)
{
    const bool bLeavesBelow = bottom.y() >= nRow + 1.0;
    if (top.y() == bottom.y())
        return {std::floor(std::min(top.x(), bottom.x())), std::floor(std::max(top.x(), bottom.x()))};
    const double enter = AbscissaAt(top, bottom, std::max(top.y(), static_cast<double>(nRow)));
    const double leave = AbscissaAt(top, bottom, std::min(bottom.y(), nRow + 1.0));
    // Where the segment leaves the row, that point itself belongs to the next row.
    if (bLeavesBelow && leave > enter)
        return {std::floor(enter), std::ceil(leave) - 1.0};
    return {std::floor(std::min(enter, leave)), std::floor(std::max(enter, leave))};
}
} // namespace

CRectangle CLine::GetBoundingRectangle() const
{
    CBounds bounds;
    bounds.Include(m_start.x(), m_start.y());
    bounds.Include(m_end.x(), m_end.y());
    return bounds.GetRectangle();
}

void CLine::MoveTopLeftTo(const CPoint<double>& point)
{
    if (!IsFinite(point))
        return;
    const CRectangle box = GetBoundingRectangle();
    m_start = CPoint<double>((m_start.x() - box.x()) + point.x(), (m_start.y() - box.y()) + point.y());
    m_end = CPoint<double>((m_end.x() - box.x()) + point.x(), (m_end.y() - box.y()) + point.y());
}

int CLine::GetPoints(CPointList& outline, CPointList& handles) const
{
    outline.Clear();
    handles.Clear();
    for (const CPoint<double>& point : {m_start, m_end}) {
        outline.Add(point);
        handles.Add(point);
    }
    return 0;
}

bool CLine::Contains(const CPoint<double>& point) const
{
    const double length = GetLength();
    if (!(length > 0.0))
        return m_start.GetDistance(point) <= kTolerance;
    const double ux = (m_end.x() - m_start.x()) / length;
    const double uy = (m_end.y() - m_start.y()) / length;
    const double dx = point.x() - m_start.x();
    const double dy = point.y() - m_start.y();
    const double along = dx * ux + dy * uy;
    if (along <= 0.0)
        return m_start.GetDistance(point) <= kTolerance;
    if (along >= length)
        return m_end.GetDistance(point) <= kTolerance;
    return std::abs(dx * uy - dy * ux) <= kTolerance;
}

std::vector<SPixelRun> CLine::GetPixelRuns(int width, int height) const
{
    std::vector<SPixelRun> vctRuns;
    if (!IsFinite(m_start) || !IsFinite(m_end))
        return vctRuns;
    const CPoint<double>& top = m_start.y() <= m_end.y() ? m_start : m_end;
    const CPoint<double>& bottom = m_start.y() <= m_end.y() ? m_end : m_start;
    const int nLastRow = std::min(PixelOf(bottom.y(), height), height - 1);
    for (int nRow = std::max(PixelOf(top.y(), height), 0); nRow <= nLastRow; ++nRow) {
        const auto columns = ColumnsInRow(top, bottom, nRow);
        const int nBegin = std::max(PixelOf(columns.first, width), 0);
        const int nEnd = std::min(PixelOf(columns.second, width) + 1, width);
        if (nBegin < nEnd)
            vctRuns.push_back({nRow, nBegin, nEnd});
    }
    return vctRuns;
}

bool CLine::MoveHandle(const CPoint<double>& handle, const CPoint<double>& to)
{
    if (m_start == handle)
        m_start = to;
    else if (m_end == handle)
        m_end = to;
    else
        return false;
    return true;
}

std::vector<SOutline> CLine::GetOutline() const
{
    if (GetType() != EGeometryType_Line)
        return {};
    return {{EOutlineForm_Chain, {{m_start.x(), m_start.y()}, {m_end.x(), m_end.y()}}}};
}

std::shared_ptr<CGeometry> CLine::Clone() const
{
    return std::make_shared<CLine>(*this);
}

} // namespace Vantor::Geometry
