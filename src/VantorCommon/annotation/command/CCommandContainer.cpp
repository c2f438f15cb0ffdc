// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/command/CCommandContainer.h>

#include <VantorCommon/annotation/command/CCommand.h>

#include <QMutexLocker>

CCommandContainer::CCommandContainer() = default;

CCommandContainer::~CCommandContainer()
{
    DeleteAll(m_deqUndo, m_mutexUndo);
    DeleteAll(m_deqRedo, m_mutexRedo);
}

void CCommandContainer::PushUndo(CCommand* pCommand)
{
    Push(m_deqUndo, m_mutexUndo, pCommand);
}

void CCommandContainer::Undo()
{
    CCommand* pCommand = nullptr;
    if (!TakeNewest(m_deqUndo, m_mutexUndo, pCommand) || !pCommand)
        return;
    Push(m_deqRedo, m_mutexRedo, pCommand);
    pCommand->undo();
}

void CCommandContainer::Redo()
{
    CCommand* pCommand = nullptr;
    if (!TakeNewest(m_deqRedo, m_mutexRedo, pCommand) || !pCommand)
        return;
    Push(m_deqUndo, m_mutexUndo, pCommand);
    pCommand->redo();
}

void CCommandContainer::Push(History& history, QMutex& mutex, CCommand* pCommand)
{
    const QMutexLocker lock(&mutex);
    history.push_back(pCommand);
}

bool CCommandContainer::TakeNewest(History& history, QMutex& mutex, CCommand*& pCommand)
{
    const QMutexLocker lock(&mutex);
    if (history.empty())
        return false;
    pCommand = history.back();
    history.pop_back();
    return true;
}

void CCommandContainer::DeleteAll(History& history, QMutex& mutex)
{
    CCommand* pCommand = nullptr;
    while (TakeNewest(history, mutex, pCommand))
        delete pCommand;
}

bool CCommandContainer::CanUndo() const
{
    const QMutexLocker lock(&m_mutexUndo);
    return !m_deqUndo.empty();
}

bool CCommandContainer::CanRedo() const
{
    const QMutexLocker lock(&m_mutexRedo);
    return !m_deqRedo.empty();
}
