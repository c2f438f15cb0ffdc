// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CImageView2DCommandChangeShape.h>

#include <QPointF>

/// Moves an object, so that its top-left corner lies on the new mouse position minus the mouse offset. GUI
/// thread only.
class VANTORCOMMON_EXPORT CImageView2DCommandMoveGeometry : public CImageView2DCommandChangeShape
{
public:
    /// @param pCtrl               carries the step out; not owned, may be null
    /// @param pObject             what is moved; may be null
    /// @param oldPoint, newPoint  mouse positions in image coordinates
    /// @param dx, dy              the offset from the object's top-left corner to the mouse, in image pixels
    /// @param pBefore             the shape before the drag when the object was already moved live, or null
    CImageView2DCommandMoveGeometry(CImageView2DCtrl* pCtrl, ObjectPtr pObject, const QPointF& oldPoint,
                                    const QPointF& newPoint, double dx, double dy,
                                    const GeometryPtr& pBefore = nullptr);
    ~CImageView2DCommandMoveGeometry() override;

protected:
    /// @{
    /// Call the controller, with the points as they are and swapped.
    void Do(CImageView2DCtrl& ctrl, const ObjectPtr& pObject) override;
    void Revert(CImageView2DCtrl& ctrl, const ObjectPtr& pObject) override;
    /// @}

private:
    QPointF m_ptOld;
    QPointF m_ptNew;
    double m_dx;
    double m_dy;
};
