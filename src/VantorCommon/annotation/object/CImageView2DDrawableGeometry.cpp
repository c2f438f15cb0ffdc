// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Vantor::Geometry;

namespace
{
using Point = CPoint<double>;

constexpr double kBoxRounding = 1e-12; // of a coordinate, far above what a few additions cost
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
    return m_pGeometry ? NameOr(ShapeKinds::PrefixOf(m_pGeometry->GetType())) : QString();
}

SObjectLabel CImageView2DDrawableGeometry::GetLabel() const
{
    return GetDisplayName() ? SObjectLabel{GetName(), GetBoundary().topLeft()} : SObjectLabel();
}

std::shared_ptr<CGeometry> CImageView2DDrawableGeometry::CloneShape() const
{
    return m_pGeometry ? m_pGeometry->Clone() : nullptr;
}

void CImageView2DDrawableGeometry::RestoreShape(const CGeometry& shape)
{
    ChangeData(shape.Clone());
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

/// All handles lie in the bounding box, except for rounding, so it excludes most objects without a list of
/// points.
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
        m_pGeometry->MoveHandle(Point(handle.x(), handle.y()), Point(newPoint.x(), newPoint.y())))
        NotifyChange();
}
