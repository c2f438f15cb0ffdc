// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "CActionTable.h"

/// What the menu shows for a processing tool of the centre, by its title. A tool that is not in the table is
/// shown by its title alone. Those with an icon stand in the tool bar, too.
SActionFace ToolFace(const QString& strTitle);
