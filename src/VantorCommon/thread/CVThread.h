// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QThread>

class IVRunnable;

/// Runs one piece of work on its own thread and then destroys the work object, in the event loop of the
/// thread that owns the CVThread object.
///
/// The provider owns the work object's storage: the class calls the destructor in place, so the provider
/// frees the storage and must not destroy the object again. Hence only one start() is possible. If the
/// CVThread is destroyed before the event loop runs, the work is not destroyed.
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
