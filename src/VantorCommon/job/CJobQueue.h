// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QThreadPool>
#include <functional>

/// A thread of its own for small tasks that come one after another and all are carried out, such as the
/// writing of a file. Long work is for CJobs. One thread uses the object.
class VANTORCOMMON_EXPORT CJobQueue
{
public:
    CJobQueue();
    /// Waits for the tasks.
    ~CJobQueue();

    /// Appends a task. No exception may leave it.
    void Start(std::function<void()> task);
    /// Waits until every task is done.
    void Wait();

private:
    QThreadPool m_thread;
};
