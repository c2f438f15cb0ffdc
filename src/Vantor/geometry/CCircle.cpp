// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CCircle.h>

#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/geometry/GeometryMath_p.h>

#include <cmath>

namespace Vantor::Geometry
{

CCircle::CCircle(const CPoint<double>& centre, double radius)
    : m_centre(centre), m_dblRadius(std::abs(radius))
{
}

CRectangle CCircle::GetBoundingRectangle() const
{
    return {m_centre.x() - m_dblRadius, m_centre.y() - m_dblRadius, 2.0 * m_dblRadius, 2.0 * m_dblRadius};
}

void CCircle::MoveTopLeftTo(const CPoint<double>& point)
{
    if (IsFinite(point))
        m_centre = CPoint<double>(point.x() + m_dblRadius, point.y() + m_dblRadius);
}

int CCircle::GetPoints(CPointList& outline, CPointList& handles) const
{
    handles.Clear();
    CPointList unused;
    return GetBoundingRectangle().GetPoints(outline, unused);
}

bool CCircle::Contains(const CPoint<double>& point) const
{
    return SUprightEllipse{m_centre.x(), m_centre.y(), m_dblRadius, m_dblRadius}.Contains(point.x(),
                                                                                          point.y());
}

std::vector<SPixelRun> CCircle::GetPixelRuns(int width, int height) const
{
    return SUprightEllipse{m_centre.x(), m_centre.y(), m_dblRadius, m_dblRadius}.GetPixelRuns(width, height);
}

std::shared_ptr<CGeometry> CCircle::Clone() const
{
    return std::make_shared<CCircle>(*this);
}

} // namespace Vantor::Geometry
