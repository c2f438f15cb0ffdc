// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CBox.h>

namespace Vantor::Geometry
{

/// An upright ellipse (kind 4), given by its bounding box.
class VANTOR_EXPORT CEllipse : public CBox
{
public:
    CEllipse() = default;
    /// Takes the box as it is given, negative sizes too.
    CEllipse(double x, double y, double width, double height) : CBox(x, y, width, height) {}

    /// @{
    /// The centre, in pixels.
    double centerX() const { return x() + width() * 0.5; }
    double centerY() const { return y() + height() * 0.5; }
    /// @}
    /// Half the width, >= 0.
    double radiusA() const;
    /// Half the height, >= 0.
    double radiusB() const;

    EGeometryType GetType() const override { return EGeometryType_Ellipse; }
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::vector<SOutline> GetOutline() const override;
    std::shared_ptr<CGeometry> Clone() const override;
};

} // namespace Vantor::Geometry
