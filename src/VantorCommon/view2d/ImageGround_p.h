// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QRect>
#include <QRgb>

class QPainter;

/// What the 2D view shows around its image and behind a transparent one: a grey, or squares of two greys that
/// keep their places in the widget.
class CImageGround
{
public:
    static constexpr int kSquare = 8;                         ///< widget pixels
    static constexpr QRgb kGrey = qRgb(120, 120, 120);        ///< around the image
    static constexpr QRgb kLightSquare = qRgb(153, 153, 153); ///< that of the widget's top-left corner
    static constexpr QRgb kDarkSquare = qRgb(102, 102, 102);

    /// @param bSquares  whether they stand behind the image, in place of the grey
    explicit CImageGround(bool bSquares) : m_bSquares(bSquares) {}

    bool HasSquares() const { return m_bSquares; }
    /// The colour behind a pixel of the image, in widget pixels.
    QRgb At(int x, int y) const
    {
        if (!m_bSquares)
            return kGrey;
        return ((x / kSquare) ^ (y / kSquare)) & 1 ? kDarkSquare : kLightSquare;
    }
    /// Fills the widget; the image, at least where it is seen, stands in its rectangle. The painter is in
    /// widget pixels.
    void Fill(QPainter& painter, const QRect& widget, const QRect& image) const;
    /// Fills all but the image.
    static void FillAround(QPainter& painter, const QRect& widget, const QRect& image);

private:
    bool m_bSquares;
};
