// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QSizeF>

/// A text of one line or more on the image, which grows and shrinks with it. It can be moved, not resized.
/// Without letters, as at first, it has no position: its boundary is the null rectangle, and nobody can move,
/// hit or see it. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableText : public CImageView2DDrawableObject
{
    Q_OBJECT

public:
    CImageView2DDrawableText();
    ~CImageView2DDrawableText() override;

    /// @{
    /// Plain text; lines end with a line feed. An equal one changes nothing.
    void SetText(const QString& strText);
    QString GetText() const { return m_strText; }
    /// @}
    /// @{
    /// The top-left corner, in image coordinates; (0, 0) at first. Ignores values that are not finite.
    void SetPosition(const QPointF& point);
    QPointF GetPosition() const { return {m_dblX, m_dblY}; }
    /// @}
    /// @{
    /// The height of one line, in image pixels, 16 at first. Ignores values that are not finite or not above
    /// 0.
    void SetLineHeight(double dblHeight);
    double GetLineHeight() const { return m_dblLineHeight; }
    /// @}

    /// Around the letters, from the position on.
    QRectF GetBoundary() const override;
    void MoveTopLeftTo(const QPointF& point) override;
    bool FindResizePoint(double dblTolerance, const QPointF& point, QPointF& handle, double) const override;
    void MoveResizePoint(const QPointF& handle, const QPointF& newPoint) override;
    /// The position, as a point.
    std::shared_ptr<Vantor::Geometry::CGeometry> CloneShape() const override;
    void RestoreShape(const Vantor::Geometry::CGeometry& shape) override;
    /// The letters in the painter's pen, on its brush or, without one, on black; a red frame when selected.
    void PaintContents(QPainter& painter, double s) const override;

private:
    QString m_strText;
    double m_dblX = 0.0;
    double m_dblY = 0.0;
    double m_dblLineHeight = 16.0;
    QSizeF m_size; ///< of the letters, in heights of a line
};
