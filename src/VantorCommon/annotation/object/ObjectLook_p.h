// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <QBrush>
#include <QColor>
#include <QPen>

/// The colours and lines of an annotation.
struct SObjectLook {
    QPen pen;     ///< its width is in widget pixels, whatever the zoom
    QBrush brush; ///< of what is filled

    /// A fill in the shades of the outline follows it.
    void ChangeColor(const QColor& color)
    {
        QColor fill = color;
        fill.setAlpha(brush.color().alpha());
        if (brush.style() != Qt::NoBrush && brush.color().rgb() == pen.color().rgb())
            brush.setColor(fill);
        pen.setColor(color);
    }

    bool operator==(const SObjectLook& other) const { return pen == other.pen && brush == other.brush; }
};

namespace ObjectLook
{
const QColor kSelectedColor(255, 0, 0, 255);
const QColor kSelectedFill(255, 0, 0, 50);
const QColor kColor(0, 255, 0, 255);
const QColor kFill(0, 255, 0, 50);

/// Whether the object has a pen or a brush of its own; then both apply unchanged.
inline bool IsOwn(const CImageView2DDrawableObject& object)
{
    return object.GetPen().style() != Qt::NoPen || object.GetBrushFilled().style() != Qt::NoBrush;
}

/// Its own look, or the common look of unselected objects.
inline SObjectLook Of(const CImageView2DDrawableObject& object)
{
    if (IsOwn(object))
        return {object.GetPen(), object.GetBrushFilled()};
    return {QPen(kColor), ShapeKinds::IsRegion(object) ? QBrush(kFill) : QBrush(Qt::NoBrush)};
}
} // namespace ObjectLook
