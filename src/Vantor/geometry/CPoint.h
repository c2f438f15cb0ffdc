// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPointClass.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>

#include <cmath>
#include <limits>

namespace Vantor::Geometry
{

/// The coordinate as a number of the type: the nearest one for whole types; floating-point types keep it.
template <class T> T ToCoordinate(double coordinate)
{
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(coordinate);
    } else {
        // Converting the largest number of a long type to double rounds it up, hence >=.
        if (coordinate >= static_cast<double>(std::numeric_limits<T>::max()))
            return std::numeric_limits<T>::max();
        if (coordinate <= static_cast<double>(std::numeric_limits<T>::lowest()))
            return std::numeric_limits<T>::lowest();
        return static_cast<T>(std::round(coordinate));
    }
}

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
    if (!std::isfinite(point.x()) || !std::isfinite(point.y()))
        return;
    m_x = ToCoordinate<T>(point.x());
    m_y = ToCoordinate<T>(point.y());
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
    const double column = std::floor(static_cast<double>(m_x));
    const double row = std::floor(static_cast<double>(m_y));
    if (!(column >= 0.0 && column < width && row >= 0.0 && row < height)) // nor NaN
        return {};
    const int nColumn = static_cast<int>(column);
    return {{static_cast<int>(row), nColumn, nColumn + 1}};
}

template <class T> std::shared_ptr<CGeometry> CPoint<T>::Clone() const
{
    return std::make_shared<CPoint<T>>(*this);
}

} // namespace Vantor::Geometry
