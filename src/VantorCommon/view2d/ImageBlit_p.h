// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>

class CImageGround;
class QImage;
class QPainter;

/// A fast way to paint the background and the image of the 2D view.
namespace ImageBlit
{
/// The place of an image: the painter's viewport and window, and the part of the image to draw.
struct SPlace {
    QRect widget;
    QRect viewPort;
    QRect window;
    QRectF source;
};

/// Fills the widget with the ground and draws a part of the image over it, pixel for pixel as its Fill and
/// drawImage(source, image, source) do with that viewport and window. It is several times faster, because
/// it looks each pixel of the image up once and copies repeated rows.
///
/// The painter must be in widget pixels and otherwise as new. Paint does nothing and returns false where it
/// does not pay or apply: at a scale of 1 (below 3 for RGBA8888), for formats other than Grayscale8, RGB888
/// and RGBA8888, for images of more than 32,767 pixels a side, and on targets that SPaintTarget does
/// not know.
bool Paint(QPainter& painter, const QImage& image, const SPlace& place, const CImageGround& ground);
} // namespace ImageBlit
