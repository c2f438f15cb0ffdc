// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/operation/SProcessOperation.h>

#include <vector>

/// The operations that the library provides.
namespace ProcessOperations
{
/// In the order of the centre's list of tools. GUI thread only.
VANTORCOMMON_EXPORT const std::vector<SProcessOperation>& All();
} // namespace ProcessOperations
