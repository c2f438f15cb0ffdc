// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <QRgb>
#include <vector>

class QImage;
class QPainter;

/// The pixels of a painter's target, if code can write opaque ones to them directly: an RGB32 image or, as on
/// the screen, an ARGB32_Premultiplied one, and a painter without clipping, opacity or composition mode,
/// moved by whole pixels at most.
struct SPaintTarget {
    QImage* pImage = nullptr; ///< null if only the painter can write
    QPoint origin;            ///< of the painter's coordinates, in the image
    std::vector<QRect> parts; ///< where writing is allowed, in the image's coordinates

    static SPaintTarget Of(const QPainter& painter);
    /// The pixels of a row, without detaching the painter's image.
    QRgb* Row(int y) const;
};
