// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QColor>
#include <QRect>

class QImage;
class QPainter;

/// A fast way to paint the background and the image of the 2D view.
namespace ImageBlit
{
/// Where an image lies: the painter's viewport and window, and the part of the image to be drawn.
struct SPlace {
    QRect widget;
    QRect viewPort;
    QRect window;
    QRectF source;
};

/// Fills the widget with an opaque colour and draws a part of the image over it, pixel for pixel what
/// fillRect and drawImage(source, image, source) give with that viewport and window. Several times faster,
/// for a pixel of the image is looked up once and repeated rows are copied.
///
/// The painter must be in widget pixels and as new otherwise. Nothing is painted, and false returned, where
/// this does not pay or apply: at a scale of 1 (below 3 for RGBA8888), for formats other than Grayscale8,
/// RGB888 and RGBA8888, for images beyond 32,767 pixels a side, and on targets that are not plain RGB32
/// images.
bool Paint(QPainter& painter, const QImage& image, const SPlace& place, const QColor& background);
} // namespace ImageBlit
