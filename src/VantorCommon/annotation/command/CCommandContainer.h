// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QMutex>
#include <deque>

class CCommand;

/// The undo and the redo history of one controller, each oldest first and without a limit.
///
/// It owns every command in either history and deletes them in its destructor, not before. Each history has a
/// mutex, so that another thread may push; no mutex is held while a command runs, so that a command may push
/// further ones.
class VANTORCOMMON_EXPORT CCommandContainer
{
public:
    CCommandContainer();
    virtual ~CCommandContainer();
    CCommandContainer(const CCommandContainer&) = delete;
    CCommandContainer& operator=(const CCommandContainer&) = delete;

    /// Records a command, which must be in no history yet, and takes ownership. The caller executes it right
    /// after. Deliberate: a new step does not clear the redo history.
    virtual void PushUndo(CCommand* pCommand);
    /// Moves the newest step to the redo history, then undoes it. Drops a null command without further
    /// effect; does nothing when the history is empty.
    virtual void Undo();
    /// The reverse, from the redo history.
    virtual void Redo();

    /// @{
    /// Whether there is a step to take back, or one to repeat. Any thread.
    bool CanUndo() const;
    bool CanRedo() const;
    /// @}

private:
    using History = std::deque<CCommand*>;

    static void Push(History& history, QMutex& mutex, CCommand* pCommand);
    static bool TakeNewest(History& history, QMutex& mutex, CCommand*& pCommand);
    static void DeleteAll(History& history, QMutex& mutex);

    History m_deqUndo;
    History m_deqRedo;
    mutable QMutex m_mutexUndo;
    mutable QMutex m_mutexRedo;
};
