// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <memory>
#include <vector>

/// Shapes: regions of images, and what annotations are made of.
namespace Vantor::Geometry
{

template <class T> class CPoint;
class CRectangle;
class CPointList;

/// The kinds of geometry; the values are part of the interface.
enum EGeometryType : int {
    EGeometryType_Point = 0,         ///< CPoint
    EGeometryType_Line = 1,          ///< CLine
    EGeometryType_Rectangle = 2,     ///< CRectangle
    EGeometryType_Circle = 3,        ///< CCircle
    EGeometryType_Ellipse = 4,       ///< CEllipse
    EGeometryType_Polygon = 6,       ///< CPolygon; 5 stands for nothing
    EGeometryType_GeometryArray = 7, ///< CGeometryArray
    EGeometryType_Arrow = 8,         ///< CArrow
    EGeometryType_ScaleBar = 9,      ///< CScaleBar
    EGeometryType_Host = 1000        ///< this and all above are for hosts' own classes
};

/// A run of pixels of one row: columns nBegin to nEnd - 1 of row nRow.
struct SPixelRun {
    int nRow;   ///< from the top, 0 first
    int nBegin; ///< first column
    int nEnd;   ///< column after the last one
};

/// A place in the image, in pixels.
struct SPlace {
    double x; ///< to the right
    double y; ///< downwards
};

/// The forms that outlines are made of.
enum EOutlineForm : int {
    EOutlineForm_Dot,     ///< one place, drawn as large as the painter likes
    EOutlineForm_Chain,   ///< straight lines from place to place, open
    EOutlineForm_Polygon, ///< straight lines, the last place joined to the first; filled even-odd
    EOutlineForm_Box,     ///< an upright rectangle between two opposite corners, filled
    EOutlineForm_Ellipse  ///< an upright ellipse in the box between two opposite corners, filled
};

/// One piece of an outline.
struct SOutline {
    EOutlineForm eForm;            ///< what the places mean
    std::vector<SPlace> vctPlaces; ///< as many as the form has
};

/// Base of all shapes. Coordinates are image coordinates in pixels, y downwards; the pixel (i, j) covers
/// [i, i+1) x [j, j+1) and its centre is (i + 0.5, j + 0.5). Shapes are plain values without an identity;
/// nothing throws but std::bad_alloc inside the containers. One shape is used by one thread at a time;
/// several may read it.
class VANTOR_EXPORT CGeometry
{
public:
    virtual ~CGeometry();

    /// The kind; it tells the class.
    virtual EGeometryType GetType() const = 0;

    /// The smallest upright rectangle around the shape, with width and height >= 0. An empty shape (a
    /// polygon without vertices, an empty array) gives (0, 0, 0, 0).
    virtual CRectangle GetBoundingRectangle() const = 0;

    /// Translates the shape so that the top-left corner of its bounding rectangle lies on the point. Signs
    /// of widths and heights are kept. An empty shape stays as it is; so does any with a point that is not
    /// finite.
    virtual void MoveTopLeftTo(const CPoint<double>& point) = 0;

    /// Fills two lists of points: the outline (corners or vertices, in drawing order) and the handles by
    /// which the shape is resized. It empties both first. The handles are a line's two ends; a rectangle's
    /// and an ellipse's raw corners top-left, top-right, bottom-right, bottom-left; a polygon's vertices;
    /// none for points, circles and arrays.
    /// @return 0
    virtual int GetPoints(CPointList& outline, CPointList& handles) const = 0;

    /// Whether the point lies in the shape, edges included: a rectangle normalised, an ellipse by its
    /// equation, a polygon even-odd, a line within 0.5, a point itself, an array any of its members.
    virtual bool Contains(const CPoint<double>& point) const = 0;

    /// The runs of pixels of a width x height image that belong to the shape, ordered by row and column,
    /// never overlapping, clipped to the image. A pixel belongs to a shape if its centre does: a rectangle
    /// normalised and half-open, an ellipse by its equation, a polygon even-odd, an array the union of its
    /// members; a line has the pixels that it crosses, a point the pixel it lies in. The base asks Contains
    /// for every centre within the bounding rectangle.
    virtual std::vector<SPixelRun> GetPixelRuns(int width, int height) const;

    /// A deep copy.
    virtual std::shared_ptr<CGeometry> Clone() const = 0;

    /// Moves the handle that equals the point exactly, the first of several that coincide, and so reshapes
    /// the shape. The base has no handles to move.
    /// @return whether there was one
    virtual bool MoveHandle(const CPoint<double>& handle, const CPoint<double>& to);

    /// What a painter draws of the shape, piece by piece, without its handles. The base derives it from
    /// GetPoints: a dot for one point, a polygon for several, nothing for none. A class that derives from a
    /// shape and claims another kind has only its own outline.
    virtual std::vector<SOutline> GetOutline() const;

    /// Whether a painter also draws the shape's bounding rectangle; true in the base.
    virtual bool HasFrame() const { return true; }

protected:
    CGeometry() = default;
    /// @{
    /// Only derived classes copy, so that a shape is never sliced down to its base; others use Clone.
    CGeometry(const CGeometry&) = default;
    CGeometry& operator=(const CGeometry&) = default;
    /// @}
};

} // namespace Vantor::Geometry
