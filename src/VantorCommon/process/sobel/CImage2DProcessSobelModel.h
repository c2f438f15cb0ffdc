// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessEnumModel.h>

#include <QObject>

/// Holds the enumeration, whose keys are printable; code uses its names without the namespace.
namespace Image2DProcessSobelType
{
Q_NAMESPACE_EXPORT(VANTORCOMMON_EXPORT)

/// The values are part of the interface; -1 stands for any other text.
enum EImage2DProcessSobel : int {
    EImage2DProcessSobelX = 0,  ///< from left to right
    EImage2DProcessSobelY = 1,  ///< from top to bottom
    EImage2DProcessSobelXY = 2, ///< in any direction
};
Q_ENUM_NS(EImage2DProcessSobel)
} // namespace Image2DProcessSobelType

using Image2DProcessSobelType::EImage2DProcessSobel;
using Image2DProcessSobelType::EImage2DProcessSobelX;
using Image2DProcessSobelType::EImage2DProcessSobelXY;
using Image2DProcessSobelType::EImage2DProcessSobelY;

/// The state of the Sobel tool: the direction in which it looks for edges, X at first. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessSobelModel : public CImage2DProcessEnumModel<EImage2DProcessSobel>
{
public:
    CImage2DProcessSobelModel();
    ~CImage2DProcessSobelModel() override;
};
