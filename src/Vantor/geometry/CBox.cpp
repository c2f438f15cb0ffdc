// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CBox.h>

#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/geometry/GeometryMath_p.h>

#include <algorithm>
#include <cmath>

namespace Vantor::Geometry
{

namespace
{
/// But for what the last few digits cannot hold.
bool IsSum(double a, double b, double sum)
{
    return std::abs(a + b - sum) <= 1e-12 * std::max({std::abs(a), std::abs(b), std::abs(sum)});
}
} // namespace

void CBox::SetCorners(double x, double y, double otherX, double otherY)
{
    m_dblX = x;
    m_dblY = y;
    m_dblOtherX = otherX;
    m_dblOtherY = otherY;
    m_dblWidth = otherX - x;
    m_dblHeight = otherY - y;
}

void CBox::SetTopLeft(const CPoint<double>& point)
{
    SetCorners(point.x(), point.y(), m_dblOtherX, m_dblOtherY);
}

void CBox::SetTopRight(const CPoint<double>& point)
{
    SetCorners(m_dblX, point.y(), point.x(), m_dblOtherY);
}

void CBox::SetBottomRight(const CPoint<double>& point)
{
    SetCorners(m_dblX, m_dblY, point.x(), point.y());
}

void CBox::SetBottomLeft(const CPoint<double>& point)
{
    SetCorners(point.x(), m_dblY, m_dblOtherX, point.y());
}

void CBox::SetRoundedCorner(const CPoint<double>& point)
{
    const double dblWidth = m_dblWidth;
    const double dblHeight = m_dblHeight;
    const bool bRounding = IsSum(m_dblX, dblWidth, point.x()) && IsSum(m_dblY, dblHeight, point.y());
    SetBottomRight(point);
    if (bRounding) {
        m_dblWidth = dblWidth;
        m_dblHeight = dblHeight;
    }
}

CRectangle CBox::GetBoundingRectangle() const
{
    return {std::min(m_dblX, m_dblOtherX), std::min(m_dblY, m_dblOtherY), std::abs(m_dblWidth),
            std::abs(m_dblHeight)};
}

void CBox::MoveTopLeftTo(const CPoint<double>& point)
{
    if (!IsFinite(point))
        return;
    m_dblX = m_dblWidth < 0.0 ? point.x() - m_dblWidth : point.x();
    m_dblY = m_dblHeight < 0.0 ? point.y() - m_dblHeight : point.y();
    m_dblOtherX = m_dblWidth < 0.0 ? point.x() : point.x() + m_dblWidth;
    m_dblOtherY = m_dblHeight < 0.0 ? point.y() : point.y() + m_dblHeight;
}

int CBox::GetPoints(CPointList& outline, CPointList& handles) const
{
    outline.Clear();
    handles.Clear();
    for (const CPoint<double>& corner : {topLeft(), topRight(), bottomRight(), bottomLeft()}) {
        outline.Add(corner);
        handles.Add(corner);
    }
    return 0;
}

bool CBox::MoveHandle(const CPoint<double>& handle, const CPoint<double>& to)
{
    if (topLeft() == handle)
        SetTopLeft(to);
    else if (topRight() == handle)
        SetTopRight(to);
    else if (bottomRight() == handle)
        SetBottomRight(to);
    else if (bottomLeft() == handle)
        SetBottomLeft(to);
    else
        return false;
    return true;
}

} // namespace Vantor::Geometry
