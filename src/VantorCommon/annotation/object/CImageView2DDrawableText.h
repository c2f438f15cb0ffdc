// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

/// A text. It cannot be moved, resized or hit: its boundary is the null rectangle and it has no handles. GUI
/// thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableText : public CImageView2DDrawableObject
{
    Q_OBJECT

public:
    CImageView2DDrawableText();
    ~CImageView2DDrawableText() override;

    QString GetText() const { return m_strText; }            ///< empty: nothing sets it yet
    QPointF GetPosition() const { return {m_dblX, m_dblY}; } ///< (0, 0): nothing sets it yet

    QRectF GetBoundary() const override;
    void MoveTopLeftTo(const QPointF& point) override;
    bool FindResizePoint(double dblTolerance, const QPointF& point, QPointF& handle, double) const override;
    void MoveResizePoint(const QPointF& handle, const QPointF& newPoint) override;

private:
    QString m_strText;
    double m_dblX = 0.0;
    double m_dblY = 0.0;
};
