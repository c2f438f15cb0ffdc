// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <functional>

struct SImageChange;
struct SViewer;

namespace Vantor::Algorithms
{
class CImage;
}

/// Changes of a viewer's current image as a whole.
namespace ImageEdits
{
/// Changes a copy of the current image in place, on any thread, and returns in sChange how that moves its
/// annotations.
/// @return 0, or non-zero with the image's reason
using Edit = std::function<int(Vantor::Algorithms::CImage& image, SImageChange& sChange)>;

/// Replaces the current image by a changed copy, with its annotations, when it is made: an undoable step. The
/// viewer reports a failure.
void Apply(const SViewer& viewer, const Edit& edit);
/// The pixels of the current image that the box of the first selected shape touches; empty without one.
QRect SelectedBox(const SViewer& viewer);
} // namespace ImageEdits
