// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CImageView2DCommandChangeShape.h>

#include <QPointF>

/// Drags a resize handle of an object to another place. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DCommandResizeGeometry : public CImageView2DCommandChangeShape
{
public:
    /// @param pCtrl    carries the step out; not owned, may be null
    /// @param pObject  what is resized; may be null
    /// @param p1, p2   where the drag of the handle began and ended, in image coordinates
    /// @param p3       passed to the controller; no effect on the shape
    /// @param pBefore  the shape before the drag when the object was already reshaped live, or null
    CImageView2DCommandResizeGeometry(CImageView2DCtrl* pCtrl, ObjectPtr pObject, const QPointF& p1,
                                      const QPointF& p2, const QPointF& p3,
                                      const GeometryPtr& pBefore = nullptr);
    ~CImageView2DCommandResizeGeometry() override;

protected:
    /// @{
    /// Call the controller, with the points as they are and swapped.
    void Do(CImageView2DCtrl& ctrl, const ObjectPtr& pObject) override;
    void Revert(CImageView2DCtrl& ctrl, const ObjectPtr& pObject) override;
    /// @}

private:
    QPointF m_p1;
    QPointF m_p2;
    QPointF m_p3;
};
