// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/geometry/CBox.h>

namespace Vantor::Geometry
{

/// An upright rectangle (kind 2).
class VANTOR_EXPORT CRectangle : public CBox
{
public:
    CRectangle() = default;
    /// Takes corner and size as they are given, negative sizes too.
    CRectangle(double x, double y, double width, double height) : CBox(x, y, width, height) {}

    EGeometryType GetType() const override { return EGeometryType_Rectangle; }
    bool Contains(const CPoint<double>& point) const override;
    std::vector<SPixelRun> GetPixelRuns(int width, int height) const override;
    std::vector<SOutline> GetOutline() const override;
    std::shared_ptr<CGeometry> Clone() const override;
};

} // namespace Vantor::Geometry
