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
/// A drag changes the objects live and keeps their shapes from before it; the release makes an undoable step
/// of both. A drag whose release never came is taken back when the next gesture begins. Points are image
/// coordinates.
class CSelectHandler
{
public:
    explicit CSelectHandler(const SEditContext& context) : m_context(context) {}

    /// Deliberate: every object's handles are looked at, selected or not.
    void Hover(const QPointF& point);
    void Press(const QPointF& point);
    void Drag(const QPointF& start, const QPointF& current);
    void Release(const QPointF& start, const QPointF& end);
    void DeleteSelected();
    /// Changes how the selected objects look, as one step; nothing when nothing comes of it.
    void ChangeLooks(const std::function<void(SObjectLook&)>& change);
    /// Takes back a drag that is still open.
    void Abandon();
    /// The same, and forgets the handle under the mouse: another mode takes over.
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
