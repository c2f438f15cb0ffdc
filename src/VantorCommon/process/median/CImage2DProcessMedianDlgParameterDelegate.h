// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessEnumDelegate.h>
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>

/// Offers the types of the median tool for editing. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessMedianDlgParameterDelegate
    : public CImage2DProcessEnumDelegate<EImage2DProcessMedian>
{
public:
    /// The parent, if any, owns the delegate.
    explicit CImage2DProcessMedianDlgParameterDelegate(QObject* pParent = nullptr);
    ~CImage2DProcessMedianDlgParameterDelegate() override;
};
