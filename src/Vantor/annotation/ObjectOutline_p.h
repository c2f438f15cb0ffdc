// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>

#include <vector>

/// The geometry of annotations as files of other programs need it. The objects' numbers are finite and as
/// many as their kinds have (IsWellFormed). All values are pixels of the image.
namespace Vantor::Annotations
{

/// An upright box with left <= right and top <= bottom.
struct SBounds {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;

    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
    bool operator==(const SBounds& other) const
    {
        return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
    }
};

/// Whether the kind is one of SObject's list; the others are hosts' own.
bool IsBuiltIn(const SObject& object);
/// Whether there are as many numbers as the kind has, finite and at most kMaxCoordinate, and no negative
/// radius or height. Of hosts' kinds only the values are judged.
bool IsWellFormed(const SObject& object);
constexpr double kMaxCoordinate = 1e9;

/// @{
/// The families of kinds. IsRegion: what has an area. IsTwoPoints: a ruler, a line, an arrow.
bool IsBox(const SObject& object);     ///< a rectangle or an ellipse: described by a box
bool IsEllipse(const SObject& object); ///< an ellipse or a circle
bool IsRegion(const SObject& object);
bool IsTwoPoints(const SObject& object);
/// @}

/// The corners, x and y of each, the first is not repeated. Of a rectangle 4, clockwise on the screen from
/// the top-left one; of a circle or an ellipse so many that no chord is further than 0.05 pixels from it (16
/// to 720, a multiple of 4), clockwise from the rightmost one, its four extreme points among them exactly; of
/// a ruler, line or arrow its two ends; of a point or text its place; of a host's kind none.
std::vector<double> OutlineOf(const SObject& object);

/// The box around the outline, the exact one of an ellipse. Of a host's kind: all zero.
SBounds BoundsOf(const SObject& object);
/// The box around points, x and y of each; all zero for none.
SBounds BoundsOfPoints(const std::vector<double>& points);

/// The area in square pixels: exact for boxes, ellipses and circles, by the shoelace formula for polygons,
/// 0 for what is no region.
double AreaOf(const SObject& object);

/// The numbers of a rectangle or ellipse that fills the box: four, or six where the opposite corner is not
/// exactly x + width and y + height.
std::vector<double> NumbersOf(const SBounds& box);
/// The same annotation with sizes that are not negative: the form that files of other programs can have.
SObject Normalised(const SObject& object);

} // namespace Vantor::Annotations
