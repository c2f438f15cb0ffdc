// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

/// Marks what libVantor offers to other programs; everything else is hidden.
#ifdef Vantor_EXPORTS
#define VANTOR_EXPORT __attribute__((visibility("default")))
#else
#define VANTOR_EXPORT
#endif
