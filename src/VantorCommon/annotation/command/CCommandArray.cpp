// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CCommandArray.h>

CCommandArray::CCommandArray() = default;

CCommandArray::~CCommandArray() = default;

void CCommandArray::addCommand(CCommand* pCommand)
{
    if (pCommand)
        m_vctCommands.emplace_back(pCommand);
}

void CCommandArray::exec()
{
    for (const auto& pCommand : m_vctCommands)
        pCommand->exec();
}

void CCommandArray::undo()
{
    for (auto it = m_vctCommands.rbegin(); it != m_vctCommands.rend(); ++it)
        (*it)->undo();
}
