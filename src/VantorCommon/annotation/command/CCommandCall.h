// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>

#include <functional>
#include <memory>

/// A step of two functions, one to do it and one to undo it. They keep alive what they need and run on the
/// caller's thread.
class VANTORCOMMON_EXPORT CCommandCall : public CCommand
{
public:
    /// Calls nothing yet; an empty function does nothing.
    CCommandCall(std::function<void()> funcDo, std::function<void()> funcUndo);
    ~CCommandCall() override;

    /// A step that writes a value; its undo writes the one that it has found, each time that it is made anew.
    template <class T, class Read, class Write>
    static std::unique_ptr<CCommandCall> Exchange(T value, Read read, Write write)
    {
        const auto pFound = std::make_shared<T>();
        return std::make_unique<CCommandCall>(
            [=] {
                *pFound = read();
                write(value);
            },
            [=] { write(*pFound); });
    }

    void exec() override;
    void undo() override;

private:
    std::function<void()> m_funcDo;
    std::function<void()> m_funcUndo;
};
