// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CCommandCall.h>

#include <utility>

CCommandCall::CCommandCall(std::function<void()> funcDo, std::function<void()> funcUndo)
    : m_funcDo(std::move(funcDo)), m_funcUndo(std::move(funcUndo))
{
}

CCommandCall::~CCommandCall() = default;

void CCommandCall::exec()
{
    if (m_funcDo)
        m_funcDo();
}

void CCommandCall::undo()
{
    if (m_funcUndo)
        m_funcUndo();
}
