// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

/// A scale bar: a shape whose geometry is a CScaleBar. At each zoom the bar has the longest length of 1, 2 or
/// 5 times a power of ten units for which there is room, in the segment and in 200 pixels of the widget, and
/// that length is written above it. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DDrawableScaleBar : public CImageView2DDrawableGeometry
{
    Q_OBJECT

public:
    CImageView2DDrawableScaleBar();
    ~CImageView2DDrawableScaleBar() override;

    /// The length of the bar in units.
    /// @param s  the size of a widget pixel in image pixels
    /// @return 0 when there is no geometry or no room
    double GetLength(double s) const;
    /// Nothing: the length says enough.
    SObjectLabel GetLabel() const override { return {}; }
    /// The bar and the text, both in the colour of the pen on light ground.
    void PaintContents(QPainter& painter, double s) const override;
    double GetReach() const override;
    void SetCalibration(const Vantor::Algorithms::CCalibration& calibration, bool bLabel) override;

private:
    Vantor::Algorithms::CCalibration m_calibration;
};
