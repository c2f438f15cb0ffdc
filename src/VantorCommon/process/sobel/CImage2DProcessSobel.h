// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessBase.h>

/// The Sobel operation as an object; the tool does its work in the controller.
class VANTORCOMMON_EXPORT CImage2DProcessSobel : public CImage2DProcessBase
{
public:
    ~CImage2DProcessSobel() override;

    /// Deliberate: does nothing. A derived operation overrides it to act at its end.
    virtual void End();
};
