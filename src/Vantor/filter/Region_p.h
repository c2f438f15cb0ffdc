// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Result_p.h>
#include <Vantor/geometry/CGeometry.h>
#include <Vantor/image/CImage.h>

#include <vector>

namespace Vantor::Algorithms
{

using PixelRuns = std::vector<Geometry::SPixelRun>;

/// The pixels of a width x height image that a filter is to write, as runs in ascending order.
/// @param geometry   null means the whole image, and the tolerance then does not apply
/// @param tolerance  the distance in pixels by which the region grows (or shrinks when negative): a pixel
///                   belongs to the grown region when its centre is no farther than that from the centre of
///                   a pixel of the region. A shape that reaches beyond the image is taken whole: its edge
///                   grows into the image and does not shrink from the image's border.
/// Throws std::bad_alloc.
CResult FindRegion(int width, int height, const Geometry::CGeometry* geometry, ERegionMode mode,
                   double tolerance, PixelRuns& runs);

} // namespace Vantor::Algorithms
