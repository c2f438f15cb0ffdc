// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QThread>

class IVRunnable;

/// Runs one piece of work on a thread of its own and ends the work object's life afterwards, on the thread
/// that owns the CVThread object and by way of that thread's event loop.
///
/// The work object's storage belongs to whoever provided it: its destructor is called in place, so the
/// provider gives the storage back and must not destroy the object again. Hence the class is good for one
/// start() only. Work whose CVThread dies before the event loop came round is not destroyed.
class VANTORCOMMON_EXPORT CVThread : public QThread
{
    Q_OBJECT

public:
    /// @param pRunnable  the work, may be null; it must live until finished() has been delivered
    explicit CVThread(IVRunnable* pRunnable);
    /// Deliberate: neither waits for the thread nor touches the work. Let the thread finish first.
    ~CVThread() override;

    /// Called on the new thread; does the work, if there is any.
    void run() override;

public Q_SLOTS:
    /// Destroys the work object in place. Deliberate: its memory is not freed and the pointer is kept.
    void slot_Finished();

private:
    IVRunnable* m_pRunnable;
};
