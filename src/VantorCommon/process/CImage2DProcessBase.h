// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

/// The common base of processing operations. It has no state; any thread.
class VANTORCOMMON_EXPORT CImage2DProcessBase
{
public:
    virtual ~CImage2DProcessBase();
};
