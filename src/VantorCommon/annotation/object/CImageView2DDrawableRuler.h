// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

/// A measured line: a shape whose geometry is a CLine, beside which the widget writes the length. GUI thread
/// only.
class VANTORCOMMON_EXPORT CImageView2DDrawableRuler : public CImageView2DDrawableGeometry
{
    Q_OBJECT

public:
    CImageView2DDrawableRuler();
    ~CImageView2DDrawableRuler() override;

    /// Where the length is written: the end of the line; (0, 0) when the geometry is missing or no line.
    QPointF GetPointText() const;
    /// Deliberate: the length, whether the name is displayed or not; nothing when the geometry is no line.
    /// The second line is the length in units, if labels tell units and the unit is not a pixel.
    SObjectLabel GetLabel() const override;
    void SetCalibration(const Vantor::Algorithms::CCalibration& calibration, bool bLabel) override;

private:
    Vantor::Algorithms::CCalibration m_calibration;
    bool m_bUnits = false;
};
