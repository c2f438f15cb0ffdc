// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <memory>

/// A shape: a drawable object around a geometry of the core library.
///
/// Without a geometry the boundary is null, the name empty, and moving and resizing do nothing. A geometry of
/// a kind that has no handles can only be moved. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableGeometry : public CImageView2DDrawableObject
{
    Q_OBJECT

public:
    CImageView2DDrawableGeometry();
    ~CImageView2DDrawableGeometry() override;

    /// Replaces the geometry, which stays shared with the caller. Emits nothing.
    void SetData(std::shared_ptr<Vantor::Geometry::CGeometry> pGeometry);
    /// The same, and announces the change.
    void ChangeData(std::shared_ptr<Vantor::Geometry::CGeometry> pGeometry);
    /// The shape itself, not a copy, in image coordinates; changing it emits nothing. May be null.
    std::shared_ptr<Vantor::Geometry::CGeometry> GetData() const { return m_pGeometry; }

    /// Empty without a geometry, even when a name was given; otherwise the given name, or the kind and the
    /// identifier: a rectangle whose identifier is 12 is Rectangle_12.
    QString GetName() const override;
    /// The name at the top-left corner of the boundary, while it is displayed.
    SObjectLabel GetLabel() const override;
    std::shared_ptr<Vantor::Geometry::CGeometry> CloneShape() const override;
    void RestoreShape(const Vantor::Geometry::CGeometry& shape) override;
    QRectF GetBoundary() const override;
    void MoveTopLeftTo(const QPointF& point) override;
    bool FindResizePoint(double dblTolerance, const QPointF& point, QPointF& handle, double) const override;
    /// The handles are those of the geometry; where two coincide the first of them moves. Deliberate: a
    /// circle has none, it keeps its size once drawn.
    void MoveResizePoint(const QPointF& handle, const QPointF& newPoint) override;

protected:
    /// For derived classes of another kind, such as the ruler.
    explicit CImageView2DDrawableGeometry(EImageView2DDrawbleObjectType eType);

private:
    bool IsFarFrom(const QPointF& point, double dblTolerance) const;

    std::shared_ptr<Vantor::Geometry::CGeometry> m_pGeometry;
};
