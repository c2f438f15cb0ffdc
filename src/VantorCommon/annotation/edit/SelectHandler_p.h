// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/edit/EditContext_p.h>

#include <QPointF>
#include <functional>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;
class QRectF;
struct SObjectLook;

namespace Vantor::Geometry
{
class CGeometry;
}

/// The gestures of the selecting mode: hovering over handles, selecting by click, Ctrl-click and rubber band,
/// dragging the selection, pulling a handle, deleting.
///
/// A drag changes the objects live and keeps their former shapes; the release makes an undoable step of both.
/// If the release never comes, the next gesture undoes the drag. Points are image coordinates.
class CSelectHandler
{
public:
    explicit CSelectHandler(const SEditContext& context) : m_context(context) {}

    /// Deliberate: the handles of every object count, selected or not.
    void Hover(const QPointF& point);
    void Press(const QPointF& point);
    void Drag(const QPointF& start, const QPointF& current);
    void Release(const QPointF& start, const QPointF& end);
    void DeleteSelected();
    /// Changes the look of the selected objects, as one step; no step when nothing changes.
    void ChangeLooks(const std::function<void(SObjectLook&)>& change);
    /// Undoes a drag in progress.
    void Abandon();
    /// The same, and forgets the handle under the mouse, because another mode begins.
    void Leave();

    /// From the handle to the mouse, while a handle is pulled.
    const QPointF& ResizeOffset() const { return m_ptResizeOffset; }

private:
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

    /// An object under the mouse and its shape before the drag.
    struct SDragged {
        ObjectPtr pObject;
        std::shared_ptr<Vantor::Geometry::CGeometry> pBefore;
    };

    static void TakeBack(const SDragged& dragged);

    void SelectAt(const QPointF& point, bool bAdd);
    void KeepSelected();
    bool TakeHandle(const QPointF& point);
    void PullHandle(const QPointF& current);
    void MoveSelected(const QPointF& current);
    void Band(const QPointF& start, const QPointF& current);
    void CommitResize(const QPointF& start, const QPointF& end);
    void CommitMove(const QPointF& start, const QPointF& end);

    const SEditContext& m_context;
    bool m_bResize = false;
    bool m_bPressHitSelected = false;
    bool m_bBand = false; ///< a rubber band is in the drawing list
    QPointF m_ptHandle;
    QPointF m_ptResizeOffset;
    std::vector<SDragged> m_vctDragged;
};
