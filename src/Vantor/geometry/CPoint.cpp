// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CPoint.h>

#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/GeometryMath_p.h>

#include <cmath>

namespace Vantor::Geometry
{

template <class T> double CPoint<T>::GetDistance(const CPoint& other) const
{
    return std::hypot(static_cast<double>(m_x) - static_cast<double>(other.m_x),
                      static_cast<double>(m_y) - static_cast<double>(other.m_y));
}

template <class T> CRectangle CPoint<T>::GetBoundingRectangle() const
{
    return {static_cast<double>(m_x), static_cast<double>(m_y), 0.0, 0.0};
}

template <class T> void CPoint<T>::MoveTopLeftTo(const CPoint<double>& point)
{
    if (!IsFinite(point))
        return;
    m_x = static_cast<T>(point.x());
    m_y = static_cast<T>(point.y());
}

template <class T> int CPoint<T>::GetPoints(CPointList& outline, CPointList& handles) const
{
    outline.Clear();
    handles.Clear();
    outline.Add(CPoint<double>(static_cast<double>(m_x), static_cast<double>(m_y)));
    return 0;
}

template <class T> bool CPoint<T>::Contains(const CPoint<double>& point) const
{
    return static_cast<double>(m_x) == point.x() && static_cast<double>(m_y) == point.y();
}

template <class T> std::vector<SPixelRun> CPoint<T>::GetPixelRuns(int width, int height) const
{
    const int nColumn = PixelOf(static_cast<double>(m_x), width);
    const int nRow = PixelOf(static_cast<double>(m_y), height);
    if (nColumn < 0 || nColumn >= width || nRow < 0 || nRow >= height)
        return {};
    return {{nRow, nColumn, nColumn + 1}};
}

template <class T> std::shared_ptr<CGeometry> CPoint<T>::Clone() const
{
    return std::make_shared<CPoint<T>>(*this);
}

template class CPoint<double>;
template class CPoint<float>;

} // namespace Vantor::Geometry
