// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <QString>
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
/// Changes a copy of the current image in place, and returns in sChange how that moves its annotations.
/// @return 0, or non-zero with the image's reason
using Edit = std::function<int(Vantor::Algorithms::CImage& image, SImageChange& sChange)>;

/// Replaces the current image by a changed copy, with its annotations, as an undoable step.
/// @return empty; otherwise why nothing changed, in English
QString Apply(const SViewer& viewer, const Edit& edit);
/// The pixels of the current image that the box of the first selected shape touches; empty without one.
QRect SelectedBox(const SViewer& viewer);
} // namespace ImageEdits
