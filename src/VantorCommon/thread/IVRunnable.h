// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

/// One piece of work for a worker thread. It guards the data that it shares with other threads.
class IVRunnable
{
public:
    /// The work; called on the worker thread. No exception may leave it.
    virtual void run() = 0;
    virtual ~IVRunnable() = default;
};
