// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

/// Marks what libVantorCommon offers to other programs; everything else is hidden.
#ifdef VantorCommon_EXPORTS
#define VANTORCOMMON_EXPORT __attribute__((visibility("default")))
#else
#define VANTORCOMMON_EXPORT
#endif
