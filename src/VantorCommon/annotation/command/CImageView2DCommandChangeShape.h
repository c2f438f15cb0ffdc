// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <memory>

class CImageView2DCtrl;
class CImageView2DDrawableObject;

namespace Vantor::Geometry
{
class CGeometry;
}

/// The common base of moving and resizing. The controller makes the step once, from points; from then on the
/// command keeps the shapes before and after it, so that undo and redo are exact at any zoom and for shapes
/// of any size.
///
/// A gesture that has already changed the object live passes the shape from before the gesture: the present
/// shape is then the result, and the first exec() does not change it. The kept shapes apply only while the
/// object still has the shape from which the step starts; if another step came in between (redo on top of a
/// new step), the points decide again. The command does nothing without a controller or an object. The
/// controller is not owned. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DCommandChangeShape : public CCommand
{
public:
    /// @{
    /// Shared with the model and the other steps.
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
    using GeometryPtr = std::shared_ptr<Vantor::Geometry::CGeometry>;
    /// @}

    ~CImageView2DCommandChangeShape() override;

    void exec() override;
    void undo() override;

protected:
    /// @param pCtrl    carries the step out; not owned, may be null
    /// @param pObject  what is moved or resized; may be null
    /// @param pBefore  the shape before a live gesture, or null; it is copied
    CImageView2DCommandChangeShape(CImageView2DCtrl* pCtrl, ObjectPtr pObject, const GeometryPtr& pBefore);

    /// @{
    /// Do and undo the step, from the points. Called only when there are a controller and an object.
    virtual void Do(CImageView2DCtrl& ctrl, const ObjectPtr& pObject) = 0;
    virtual void Revert(CImageView2DCtrl& ctrl, const ObjectPtr& pObject) = 0;
    /// @}

private:
    CImageView2DCtrl* m_pCtrl;
    ObjectPtr m_pObject;
    GeometryPtr m_pBefore;
    GeometryPtr m_pAfter;
    bool m_bDoneLive;
};
