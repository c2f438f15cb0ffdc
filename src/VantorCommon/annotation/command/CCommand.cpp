// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CCommand.h>

CCommand::~CCommand() = default;

void CCommand::redo()
{
    exec();
}
