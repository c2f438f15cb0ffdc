// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <functional>

/// A step of two functions, one to do it and one to undo it. They keep alive what they need and run on the
/// caller's thread.
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
