// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/edit/EditContext_p.h>

#include <QLineF>
#include <QPointF>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;
struct SShapeKind;

/// Turns the drags and clicks of the drawing modes into shapes. A shape under construction is a preview in
/// the model's drawing list; an undoable step adds the finished one, and the mode returns to selecting.
/// Points are image coordinates.
class CDrawHandler
{
public:
    explicit CDrawHandler(const SEditContext& context) : m_context(context) {}

    /// @{
    /// The press, the moves and the release of a drag. Deliberate: there is no least size; a click leaves a
    /// shape of 0 x 0. Kinds that are drawn by clicks get an edge from each drag or click; a release within
    /// 10 widget pixels of the first press closes them.
    void Start(const SShapeKind& kind, const QPointF& point);
    void Doing(const SShapeKind& kind, const QPointF& start, const QPointF& current);
    void End(const SShapeKind& kind, const QPointF& start, const QPointF& end);
    /// @}
    /// The mouse between two clicks.
    void Waiting(const QPointF& point);

    /// Drops a drag whose release will not come; clicks in progress stay.
    void AbandonDrag();
    /// Drops clicks in progress, if there are any.
    void AbandonClicks();

    /// Whether there are clicks in progress.
    bool IsClicking() const { return m_pClicked != nullptr; }
    /// The corner from which the next edge begins.
    const QPointF& LastCorner() const { return m_ptLast; }
    /// Ends clicks in progress with an edge back to the first corner; nothing before the third corner.
    void CloseClicks();
    /// Takes the last corner back; with the first one the clicks are given up.
    void TakeBackClick();

private:
    void EndEdge(const QPointF& end);
    void AddEdge(const QPointF& end);
    std::vector<QLineF> Edges() const;
    void Close();
    void Add(std::shared_ptr<CImageView2DDrawableObject> pObject);
    void ReturnToSelecting();

    const SEditContext& m_context;
    bool m_bPreview = false;                ///< a drag has put its shape into the drawing list
    const SShapeKind* m_pClicked = nullptr; ///< the kind that clicks are drawing; null: none
    QPointF m_ptLast;
    QPointF m_ptMouse; ///< where clicks in progress have seen it last
};
