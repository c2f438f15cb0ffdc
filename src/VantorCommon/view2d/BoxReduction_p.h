// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <QSizeF>

class QImage;

/// Reduces an image to a picture of fewer pixels, each the mean of what it covers.
namespace BoxReduction
{
/// How large the whole image and the whole picture are.
struct SScale {
    QSizeF source; ///< in pixels of the source; in a half-size level an odd image ends within the last pixel
    QSize picture; ///< in pixels
};

/// The format of the picture of a source.
int FormatFor(const QImage& source);

/// Makes a part of the picture: every pixel becomes the mean of the source's pixels below it, weighted by the
/// area that it covers of each, rounded once. With alpha the mean is that of premultiplied colours. Any
/// thread; asks its progress.
/// @param source  Grayscale8, RGB888, RGBA8888 or RGBA8888_Premultiplied
/// @param part    within the picture, in its pixels
/// @param target  of the format for the source
/// @param origin  of the target within the picture
/// @return whether it was done; false when it was cancelled
bool Reduce(const QImage& source, const SScale& scale, const QRect& part, QImage& target,
            const QPoint& origin);
} // namespace BoxReduction
