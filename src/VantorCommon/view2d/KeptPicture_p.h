// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QImage>
#include <QRect>
#include <functional>
#include <vector>

class QPainter;
class QRegion;

/// A copy of what a widget shows. What moves above the widget costs only a copy, and a change costs only the
/// painting of the rectangles in which it lies. All rectangles are in widget pixels.
///
/// Marks are rectangles that the widget paints differently for a while, such as a crosshair; the picture
/// keeps the pixels beneath them, so that nothing is painted where they have been.
class CKeptPicture
{
public:
    /// Paints a part of the widget; the painter is limited to it.
    using PaintPart = std::function<void(QPainter&, const QRect&)>;

    /// The part has to be painted again.
    void Invalidate(const QRect& part);
    void InvalidateAll() { m_bAllInvalid = true; }
    /// Where the widget paints marks from now on.
    void SetMarks(const std::vector<QRect>& vctMarks) { m_vctMarks = vctMarks; }
    const std::vector<QRect>& Marks() const { return m_vctMarks; }
    /// Frees the memory.
    void Drop();
    /// Paints what is invalid.
    /// @param screen  has the resolution that the picture gets
    /// @param size    of the widget
    void Renew(const QImage& screen, const QSize& size, const PaintPart& paint);
    /// Copies a region to the same place of the painter's widget.
    void Copy(QPainter& painter, const QRegion& region) const;

private:
    /// A mark in the picture, and the pixels beneath it.
    struct SMark {
        QRect rect;
        QImage beneath;
    };

    void Adapt(const QImage& screen, const QSize& size);
    QRect ToPixels(const QRect& part) const;
    void RemoveMarks();
    void AddMarks(const PaintPart& paint);
    void Paint(const QRect& part, const PaintPart& paint);

    QImage m_image;
    QSize m_size;
    bool m_bAllInvalid = true;
    std::vector<QRect> m_vctInvalid;
    std::vector<QRect> m_vctMarks;
    std::vector<SMark> m_vctDrawn;        ///< the marks that the picture shows
    std::vector<QRect> m_vctStaleBeneath; ///< where the kept pixels beneath marks are out of date
};
