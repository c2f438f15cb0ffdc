// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CGeometry.h>

#include <type_traits>

namespace Vantor::Geometry
{

/// A point (kind 0) of any arithmetic type; lists and handles hold double ones. CPoint.h implements the
/// members and is the header to include; this one serves the headers that CPoint.h itself needs.
template <class T = double> class VANTOR_EXPORT CPoint : public CGeometry
{
    static_assert(std::is_arithmetic_v<T>, "A coordinate is a number.");

public:
    CPoint() = default;
    /// In pixels; any value is stored.
    CPoint(T x, T y) : m_x(x), m_y(y) {}

    /// @{
    /// The coordinates, in pixels; any value is stored.
    T x() const { return m_x; }
    T y() const { return m_y; }
    void SetX(T x) { m_x = x; }
    void SetY(T y) { m_y = y; }
    /// @}

    /// Euclidean distance in pixels.
    double GetDistance(const CPoint& other) const;

    /// @{
    /// Exact equality of both coordinates, without a tolerance.
    bool operator==(const CPoint& other) const { return m_x == other.m_x && m_y == other.m_y; }
    bool operator!=(const CPoint& other) const { return !(*this == other); }
    /// @}

    EGeometryType GetType() const override { return EGeometryType_Point; }
    CRectangle GetBoundingRectangle() const override;
    /// Coordinates of a whole type become the nearest numbers that it has, halves away from zero.
    void MoveTopLeftTo(const CPoint<double>& point) override;
    int GetPoints(CPointList& outline, CPointList& handles) const override;
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::shared_ptr<CGeometry> Clone() const override;

private:
    T m_x = 0;
    T m_y = 0;
};

// The library holds these two instances.
extern template class CPoint<double>;
extern template class CPoint<float>;

} // namespace Vantor::Geometry
