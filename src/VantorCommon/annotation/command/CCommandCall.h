// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <functional>

/// A step that two functions make and take back. They keep alive what they need. Thread: that of whoever
/// calls the command.
class VANTORCOMMON_EXPORT CCommandCall : public CCommand
{
public:
    /// Calls nothing yet; an empty function does nothing.
    CCommandCall(std::function<void()> funcDo, std::function<void()> funcUndo);
    ~CCommandCall() override;

    void exec() override;
    void undo() override;

private:
    std::function<void()> m_funcDo;
    std::function<void()> m_funcUndo;
};
