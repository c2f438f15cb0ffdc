// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

/// One undoable step of editing. undo() restores the state before exec(), and exec() after undo() gives the
/// same result again. GUI thread only.
class VANTORCOMMON_EXPORT CCommand
{
public:
    CCommand() = default;
    virtual ~CCommand();
    CCommand(const CCommand&) = delete;
    CCommand& operator=(const CCommand&) = delete;

    /// Does the step, or repeats it after undo().
    virtual void exec() = 0;
    /// Takes the step back. Called only after exec().
    virtual void undo() = 0;
    /// Calls exec().
    virtual void redo();
};
