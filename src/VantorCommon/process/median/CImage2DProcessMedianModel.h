// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessEnumModel.h>

#include <QObject>

/// Holds the enumeration, whose keys are printable; code uses its names without the namespace.
namespace Image2DProcessMedianType
{
Q_NAMESPACE_EXPORT(VANTORCOMMON_EXPORT)

/// The values are part of the interface; -1 stands for any other text.
enum EImage2DProcessMedian : int {
    EImage2DProcessMedian3x3 = 0, ///< a window of 3 x 3 pixels
    EImage2DProcessMedian5x5 = 1, ///< of 5 x 5
    EImage2DProcessMedianNxN = 2, ///< of any size
};
Q_ENUM_NS(EImage2DProcessMedian)
} // namespace Image2DProcessMedianType

using Image2DProcessMedianType::EImage2DProcessMedian;
using Image2DProcessMedianType::EImage2DProcessMedian3x3;
using Image2DProcessMedianType::EImage2DProcessMedian5x5;
using Image2DProcessMedianType::EImage2DProcessMedianNxN;

/// The state of the median tool: the type that the user chose, 3 x 3 at first. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessMedianModel : public CImage2DProcessEnumModel<EImage2DProcessMedian>
{
public:
    CImage2DProcessMedianModel();
    ~CImage2DProcessMedianModel() override;
};
