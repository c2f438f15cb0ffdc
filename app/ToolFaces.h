// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "CActionTable.h"

/// The menu entry of a processing tool of the centre, by its title. A tool outside the table shows only its
/// title. Tools with an icon are in the tool bar, too.
SActionFace ToolFace(const QString& strTitle);
