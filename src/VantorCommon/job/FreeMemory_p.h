// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QtGlobal>

/// The memory in bytes that the machine can give without swapping; -1 when it does not say. Any thread.
qint64 FreeMemory();
