// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>

namespace Vantor::Algorithms
{

/// A rotation, as the way from points of the canvas back into the source image; in pixels, (0, 0) being the
/// top-left corner of the top-left pixel of either.
struct SInverse {
    double c; ///< cosine and sine of the angle
    double s;
    double fromX, fromY; ///< the point of the source that the rotation is about
    double toX, toY;     ///< the same point on the canvas

    double X(double x, double y) const { return fromX + c * (x - toX) + s * (y - toY); }
    double Y(double x, double y) const { return fromY - s * (x - toX) + c * (y - toY); }
};

/// Draws the source, rotated by any angle, into every pixel of the canvas whose centre lies in it, by
/// bilinear interpolation between the centres of its pixels; sets every byte of the others to the fill value.
/// Both images have the same channels and depth, sides of at most 8 million pixels. Throws std::bad_alloc.
/// Ends early when the progress of the thread is cancelled.
void Resample(const CImage& from, CImage& to, const SInverse& inverse, unsigned char fill);

} // namespace Vantor::Algorithms
