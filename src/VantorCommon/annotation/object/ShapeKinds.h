// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CGeometry.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

#include <QLineF>
#include <QString>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

/// What a file keeps of one annotation's shape; its name, pen and so on are not part of it.
struct SShapeData {
    std::vector<double> vctNumbers; ///< image pixels; their meaning is the kind's own
    QString strText;                ///< empty for what is no text
};

/// Takes what is on an image to where it is after a quarter turn, a flip or a cut: the coordinates change
/// places (bSwap), then their signs, then they move.
struct SPlaneMap {
    bool bSwap = false;    ///< x and y change places
    double dblSignX = 1.0; ///< 1 or -1
    double dblSignY = 1.0; ///< 1 or -1
    double dblMoveX = 0.0; ///< image pixels
    double dblMoveY = 0.0; ///< image pixels

    /// x and y of a place.
    void MovePlace(double& x, double& y) const
    {
        MoveSize(x, y);
        x += dblMoveX;
        y += dblMoveY;
    }
    /// Width and height, with their signs.
    void MoveSize(double& w, double& h) const
    {
        const double dblWidth = bSwap ? h : w;
        h = dblSignY * (bSwap ? w : h);
        w = dblSignX * dblWidth;
    }
    /// Nothing is turned or flipped.
    bool IsShift() const { return !bSwap && dblSignX > 0.0 && dblSignY > 0.0; }
    /// Everything stays where it is.
    bool IsIdentity() const { return IsShift() && dblMoveX == 0.0 && dblMoveY == 0.0; }
    /// The way back.
    SPlaneMap Inverse() const
    {
        const double dblX = -dblSignX * dblMoveX;
        const double dblY = -dblSignY * dblMoveY;
        return bSwap ? SPlaneMap{true, dblSignY, dblSignX, dblY, dblX}
                     : SPlaneMap{false, dblSignX, dblSignY, dblX, dblY};
    }
    /// This map, and behind it another one.
    SPlaneMap Then(const SPlaneMap& next) const
    {
        SPlaneMap both{bSwap != next.bSwap, next.bSwap ? dblSignY : dblSignX,
                       next.bSwap ? dblSignX : dblSignY, dblMoveX, dblMoveY};
        both.dblSignX *= next.dblSignX;
        both.dblSignY *= next.dblSignY;
        next.MovePlace(both.dblMoveX, both.dblMoveY);
        return both;
    }
};

/// One kind of annotation: everything that is to be known of it beside its geometry. Views, cursors,
/// gestures, the regions of the processing tools and menus walk the table of kinds; nothing else knows kinds.
struct SShapeKind {
    using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>; ///< objects are always shared

    static constexpr int kNone = -1; ///< as a mode or a kind of geometry: there is none

    QString strName;    ///< such as "Rectangle": unique whatever its case, and the kind's key in files
    QString strPrefix;  ///< such as "Rectangle_": objects that nobody named are called so, with their number
    QString strMenu;    ///< for menus, in English with a mnemonic; empty: for no menu
    QString strButton;  ///< of the tool panel, in English; empty: no button
    QString strIcon;    ///< path of the picture for menus and button; may be empty
    QString strToolTip; ///< of the button, in English; may be empty
    /// The value of EImageView2DMode in which it is drawn; Register chooses it. kNone: it is not drawn.
    int nMode = kNone;
    Qt::CursorShape eCursor = Qt::CrossCursor; ///< while it is drawn
    /// By the type of the object and the kind of its geometry (EGeometryType; kNone for objects without one)
    /// an object is found to be of this kind.
    EImageView2DDrawbleObjectType eObject = EImageView2DDrawbleObjectType_Geometry;
    int nGeometry = kNone;  ///< see eObject
    bool bRegion = true;    ///< processing tools offer it as a region, and views fill it
    bool bOptional = false; ///< its button is shown only with SCenterOptions::bMoreShapes

    /// Makes the object of a drag from its press point and the present one, in image coordinates. Kinds that
    /// are drawn have this or the next function. A null object: nothing comes of it.
    std::function<ObjectPtr(const QPointF& start, const QPointF& end)> fromDrag;
    /// Where a drag, or an edge by clicks, from the first point ends instead of at the second while Shift is
    /// held; null: Shift means nothing. See SCenterOptions::bEditKeys.
    std::function<QPointF(const QPointF& start, const QPointF& current)> constrain;
    /// Makes the object of the edges that clicks have drawn, the last of which ends where the first begins.
    std::function<ObjectPtr(const std::vector<QLineF>& vctEdges)> fromClicks;

    /// @{
    /// To and from a file. What cannot be of this kind, such as too few or too many numbers or some that are
    /// not finite, is read as a null object. Null functions: files leave the kind out.
    std::function<SShapeData(const CImageView2DDrawableObject& object)> write;
    std::function<ObjectPtr(const SShapeData& data)> read;
    /// @}
    /// Moves what write has given. Null: objects of the kind go when the image is turned, flipped or cut.
    std::function<void(SShapeData& data, const SPlaneMap& map)> move;
};

/// The table of kinds. GUI thread only.
namespace ShapeKinds
{
/// All kinds, those that are built in first. Rows stay where they are until the process ends.
VANTORCOMMON_EXPORT const std::deque<SShapeKind>& All();

/// Appends a kind of a host's own. It should come before the centre is made: tool panels show the kinds that
/// were there when they were made; everything else knows a kind from its registration on.
/// @return the mode in which it is drawn, chosen here (100 or more), SShapeKind::kNone when it is not drawn.
///         A name that is empty or taken, or a geometry that is taken, registers nothing, gives kNone too and
///         is told in the log.
VANTORCOMMON_EXPORT int Register(SShapeKind kind);

/// @{
/// The kind that is drawn in a mode of EImageView2DMode, has the name, or that the object is of; null when
/// there is none.
VANTORCOMMON_EXPORT const SShapeKind* OfMode(int nMode);
VANTORCOMMON_EXPORT const SShapeKind* OfName(const QString& strName);
/// By the key in files, which is the name in lower case.
VANTORCOMMON_EXPORT const SShapeKind* OfKey(const QString& strKey);
VANTORCOMMON_EXPORT const SShapeKind* Of(const CImageView2DDrawableObject& object);
/// @}

/// Whether processing tools offer the object as a region. A shape of an unknown kind is one.
VANTORCOMMON_EXPORT bool IsRegion(const CImageView2DDrawableObject& object);

/// The prefix of the names of shapes with a geometry; "Object_" for an unknown one.
VANTORCOMMON_EXPORT QString PrefixOf(Vantor::Geometry::EGeometryType eGeometry);

/// A shape around a geometry, which stays shared with the caller.
VANTORCOMMON_EXPORT std::shared_ptr<CImageView2DDrawableGeometry>
Wrap(std::shared_ptr<Vantor::Geometry::CGeometry> pGeometry);

/// The geometry of an object if it is of class T, else null. It lives as long as the object keeps it.
template <class T> const T* GeometryOf(const CImageView2DDrawableObject& object)
{
    const auto* pShape = dynamic_cast<const CImageView2DDrawableGeometry*>(&object);
    return pShape ? dynamic_cast<const T*>(pShape->GetData().get()) : nullptr;
}
} // namespace ShapeKinds
