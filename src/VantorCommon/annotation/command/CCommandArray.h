// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <memory>
#include <vector>

/// Several commands as one step. GUI thread only.
class VANTORCOMMON_EXPORT CCommandArray : public CCommand
{
public:
    CCommandArray();
    ~CCommandArray() override;

    /// Appends a command and takes ownership of it. A null pointer is ignored.
    void addCommand(CCommand* pCommand);

    /// From first to last.
    void exec() override;
    /// From last to first.
    void undo() override;

private:
    std::vector<std::unique_ptr<CCommand>> m_vctCommands;
};
