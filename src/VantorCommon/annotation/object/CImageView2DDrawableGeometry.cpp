// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Vantor::Geometry;

namespace
{
using Point = CPoint<double>;

constexpr double kBoxRounding = 1e-12; // of a coordinate, far above what a few additions cost

QString NamePrefix(EGeometryType eType)
{
    switch (eType) {
    case EGeometryType_Point:
        return QStringLiteral("Point_");
    case EGeometryType_Line:
        return QStringLiteral("Line_");
    case EGeometryType_Rectangle:
        return QStringLiteral("Rectangle_");
    case EGeometryType_Circle:
        return QStringLiteral("Circle_");
    case EGeometryType_Ellipse:
        return QStringLiteral("Ellipse_");
    case EGeometryType_Polygon:
        return QStringLiteral("Polygon_");
    case EGeometryType_GeometryArray:
        return QStringLiteral("GeometryArray_");
    }
    return QStringLiteral("Object_");
}

// Each overload moves the handle that equals the point exactly and tells whether there was one.

bool MoveHandle(CLine& line, const Point& handle, const Point& to)
{
    if (line.start() == handle)
        line.SetStart(to);
    else if (line.end() == handle)
        line.SetEnd(to);
    else
        return false;
    return true;
}

bool MoveHandle(CBox& box, const Point& handle, const Point& to)
{
    if (box.topLeft() == handle)
        box.SetTopLeft(to);
    else if (box.topRight() == handle)
        box.SetTopRight(to);
    else if (box.bottomRight() == handle)
        box.SetBottomRight(to);
    else if (box.bottomLeft() == handle)
        box.SetBottomLeft(to);
    else
        return false;
    return true;
}

bool MoveHandle(CPolygon& polygon, const Point& handle, const Point& to)
{
    CPointList moved;
    bool bFound = false;
    for (const Point& vertex : polygon.GetVertices()) {
        const bool bHit = !bFound && vertex == handle;
        moved.Add(bHit ? to : vertex);
        bFound = bFound || bHit;
    }
    if (bFound)
        polygon.SetPoints(moved);
    return bFound;
}

bool MoveHandle(CGeometry& geometry, const Point& handle, const Point& to)
{
    if (auto* pLine = dynamic_cast<CLine*>(&geometry))
        return MoveHandle(*pLine, handle, to);
    if (auto* pBox = dynamic_cast<CBox*>(&geometry))
        return MoveHandle(*pBox, handle, to);
    if (auto* pPolygon = dynamic_cast<CPolygon*>(&geometry))
        return MoveHandle(*pPolygon, handle, to);
    return false;
}
} // namespace

CImageView2DDrawableGeometry::CImageView2DDrawableGeometry()
    : CImageView2DDrawableGeometry(EImageView2DDrawbleObjectType_Geometry)
{
}

CImageView2DDrawableGeometry::CImageView2DDrawableGeometry(EImageView2DDrawbleObjectType eType)
    : CImageView2DDrawableObject(eType)
{
}

CImageView2DDrawableGeometry::~CImageView2DDrawableGeometry() = default;

void CImageView2DDrawableGeometry::SetData(std::shared_ptr<CGeometry> pGeometry)
{
    m_pGeometry = std::move(pGeometry);
}

void CImageView2DDrawableGeometry::ChangeData(std::shared_ptr<CGeometry> pGeometry)
{
    SetData(std::move(pGeometry));
    NotifyChange();
}

QString CImageView2DDrawableGeometry::GetName() const
{
    return m_pGeometry ? NameOr(NamePrefix(m_pGeometry->GetType())) : QString();
}

QRectF CImageView2DDrawableGeometry::GetBoundary() const
{
    if (!m_pGeometry)
        return {};
    const CRectangle box = m_pGeometry->GetBoundingRectangle();
    return {box.x(), box.y(), box.width(), box.height()};
}

void CImageView2DDrawableGeometry::MoveTopLeftTo(const QPointF& point)
{
    if (!m_pGeometry)
        return;
    m_pGeometry->MoveTopLeftTo(Point(point.x(), point.y()));
    NotifyChange();
}

/// All handles lie in the bounding box, but for its rounding, so most objects are ruled out by it without a
/// list of points.
bool CImageView2DDrawableGeometry::IsFarFrom(const QPointF& point, double dblTolerance) const
{
    const QRectF box = GetBoundary();
    const double dblLargest =
        std::max({std::abs(box.left()), std::abs(box.right()), std::abs(box.top()), std::abs(box.bottom())});
    const double dblReach = 2.0 * dblTolerance + kBoxRounding * (dblLargest + box.width() + box.height());
    return point.x() < box.left() - dblReach || point.x() > box.right() + dblReach ||
           point.y() < box.top() - dblReach || point.y() > box.bottom() + dblReach;
}

bool CImageView2DDrawableGeometry::FindResizePoint(double dblTolerance, const QPointF& point, QPointF& handle,
                                                   double) const
{
    CPointList outline;
    CPointList handles;
    if (!m_pGeometry || IsFarFrom(point, dblTolerance) || m_pGeometry->GetPoints(outline, handles) != 0)
        return false;
    const Point mouse(point.x(), point.y());
    for (int i = 0; i < handles.Size(); ++i) {
        const auto pHandle = std::dynamic_pointer_cast<Point>(handles.At(i));
        if (pHandle && pHandle->GetDistance(mouse) <= dblTolerance) {
            handle = QPointF(pHandle->x(), pHandle->y());
            return true;
        }
    }
    return false;
}

void CImageView2DDrawableGeometry::MoveResizePoint(const QPointF& handle, const QPointF& newPoint)
{
    if (m_pGeometry &&
        MoveHandle(*m_pGeometry, Point(handle.x(), handle.y()), Point(newPoint.x(), newPoint.y())))
        NotifyChange();
}
