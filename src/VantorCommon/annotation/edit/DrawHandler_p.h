// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/edit/EditContext_p.h>

#include <QPointF>
#include <memory>

class CImageView2DDrawableGeometry;

/// Turns the drags and clicks of the drawing modes into shapes. A shape under construction is a preview in
/// the model's drawing list; the finished one is added by an undoable step, and the mode returns to
/// selecting. Points are image coordinates.
class CDrawHandler
{
public:
    /// Makes the object of one drag shape from the press point and the current point.
    using Maker = std::shared_ptr<CImageView2DDrawableGeometry> (*)(const QPointF&, const QPointF&);

    explicit CDrawHandler(const SEditContext& context) : m_context(context) {}

    static std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle(const QPointF& start,
                                                                       const QPointF& end);
    static std::shared_ptr<CImageView2DDrawableGeometry> MakeEllipse(const QPointF& start,
                                                                     const QPointF& end);
    /// The press point is the centre, the distance the radius; the shape is an ellipse with equal axes.
    static std::shared_ptr<CImageView2DDrawableGeometry> MakeCircle(const QPointF& start, const QPointF& end);
    static std::shared_ptr<CImageView2DDrawableGeometry> MakeRuler(const QPointF& start, const QPointF& end);

    void Start();
    void Doing(Maker make, const QPointF& start, const QPointF& current);
    /// Deliberate: there is no least size; a click leaves a shape of 0 x 0.
    void End(Maker make, const QPointF& start, const QPointF& end);

    /// A polygon is built from clicks and closed by a release within 10 widget pixels of its first vertex.
    void PolygonStart(const QPointF& point);
    void PolygonWaiting(const QPointF& point);
    void PolygonDoing(const QPointF& current);
    void PolygonEnd(const QPointF& end);

    /// Gives up a drag whose release will not come; a polygon in progress stays.
    void AbandonDrag();
    /// Gives up a polygon in progress, if there is one.
    void AbandonPolygon();

private:
    void AddEdge(const QPointF& end);
    bool ClosesPolygon(const QPointF& end) const;
    void ClosePolygon();
    void ReturnToSelecting();

    const SEditContext& m_context;
    bool m_bPreview = false; ///< a drag has put its shape into the drawing list
    bool m_bPolygon = false;
    QPointF m_ptLast;
};
