// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessEnumDelegate.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

/// Offers the types of the Sobel tool for editing. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessSobelDlgParameterDelegate
    : public CImage2DProcessEnumDelegate<EImage2DProcessSobel>
{
public:
    /// The parent, if any, owns the delegate.
    explicit CImage2DProcessSobelDlgParameterDelegate(QObject* pParent = nullptr);
    ~CImage2DProcessSobelDlgParameterDelegate() override;
};
