// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/measure/CCalibration.h>
#include <Vantor/measure/MeasurementTable.h>
#include <Vantor/measure/RegionStatistics.h>
#include <Vantor/measure/ShapeMeasures.h>

#include <vector>

namespace Vantor::Algorithms
{

/// What the columns of one row are taken from.
struct SMeasured {
    int page;
    const SShapeMeasures& outline;
    const SRegionStatistics& pixels; ///< without channels when there is no image
    const CCalibration& calibration;
};

/// The values of all columns.
std::vector<double> ValuesOf(const SMeasured& measured);

} // namespace Vantor::Algorithms
