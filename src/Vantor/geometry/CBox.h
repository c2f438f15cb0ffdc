// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CPointClass.h>

namespace Vantor::Geometry
{

/// What a rectangle and an ellipse share: a box given by a corner, a width and a height. Negative sizes are
/// legal and are kept: x and y are the corner where the drawing began, and "top-left" names that raw corner.
/// The corner setters keep the opposite corner and never normalise.
class VANTOR_EXPORT CBox : public CGeometry
{
public:
    /// @{
    /// Raw corner and raw, possibly negative size, in pixels.
    double x() const { return m_dblX; }
    double y() const { return m_dblY; }
    double width() const { return m_dblWidth; }
    double height() const { return m_dblHeight; }
    /// @}

    /// @{
    /// The raw corners: "left" is where x is, "right" where x + width is, whatever the signs.
    CPoint<double> topLeft() const { return {m_dblX, m_dblY}; }
    CPoint<double> topRight() const { return {m_dblOtherX, m_dblY}; }
    CPoint<double> bottomRight() const { return {m_dblOtherX, m_dblOtherY}; }
    CPoint<double> bottomLeft() const { return {m_dblX, m_dblOtherY}; }
    /// @}

    /// @{
    /// Moves a corner to the point. The opposite corner stays, and the size becomes their difference.
    void SetTopLeft(const CPoint<double>& point);
    void SetTopRight(const CPoint<double>& point);
    void SetBottomRight(const CPoint<double>& point);
    void SetBottomLeft(const CPoint<double>& point);
    /// @}

    /// Puts the opposite corner where a rounding has left it, and keeps the size. A corner that differs from
    /// x + width and y + height by more than rounding is SetBottomRight's.
    void SetRoundedCorner(const CPoint<double>& point);

    CRectangle GetBoundingRectangle() const override;
    void MoveTopLeftTo(const CPoint<double>& point) override;
    int GetPoints(CPointList& outline, CPointList& handles) const override;
    bool MoveHandle(const CPoint<double>& handle, const CPoint<double>& to) override;

protected:
    CBox() = default;
    /// Takes the corner and the size as they are given, negative sizes too.
    CBox(double x, double y, double width, double height)
        : m_dblX(x), m_dblY(y), m_dblWidth(width), m_dblHeight(height), m_dblOtherX(x + width),
          m_dblOtherY(y + height)
    {
    }

private:
    void SetCorners(double x, double y, double otherX, double otherY);

    // The box stores the opposite corner beside the size, although one follows from the other: neither is
    // ever rounded, so a corner that was set compares equal.
    double m_dblX = 0.0;
    double m_dblY = 0.0;
    double m_dblWidth = 0.0;
    double m_dblHeight = 0.0;
    double m_dblOtherX = 0.0;
    double m_dblOtherY = 0.0;
};

} // namespace Vantor::Geometry
