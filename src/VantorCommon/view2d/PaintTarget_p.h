// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <QRgb>
#include <vector>

class QImage;
class QPainter;

/// The pixels that a painter writes to, where they can be written to directly: in a plain RGB32 image, with
/// no clipping, opacity or composition mode of the painter's own, moved by whole pixels at most.
struct SPaintTarget {
    QImage* pImage = nullptr; ///< null where the painter has to be used
    QPoint origin;            ///< of the painter's coordinates, in the image
    std::vector<QRect> parts; ///< what may be written, in the image's coordinates

    static SPaintTarget Of(const QPainter& painter);
    /// The pixels of a row, without detaching what the painter holds.
    QRgb* Row(int y) const;
};
