// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CProgress.h>
#include <VantorCommon/Export.h>

#include <QPointer>
#include <QString>
#include <functional>

/// What a job is, beside its work.
struct SJob {
    /// Of one receiver, jobs of the same kind never run at the same time, and a new one cancels those before
    /// it. Empty: neither.
    QString strKind;
    /// For people, in English; a job without one is not listed.
    QString strTitle;
    /// It is carried out although its receiver goes or the program ends, which waits for it then.
    bool bMustFinish = false;
    /// It mostly waits for another process: it begins at once, and takes no thread from jobs that compute.
    bool bWaits = false;
    /// Memory in bytes that it will need beside what is in use; 0: little.
    qint64 nMemory = 0;
    /// Called in place of the result when there is none: the job was cancelled, replaced or not begun. GUI
    /// thread, at most once, not when the receiver has gone. May be empty.
    std::function<void()> dropped;
};

/// A piece of work that CJobs carries out on a thread of its pool. What is shown of it may be asked for on
/// the GUI thread; the progress on any.
class VANTORCOMMON_EXPORT CJob
{
public:
    /// What is done with the result, on the GUI thread; may be empty.
    using Finish = std::function<void()>;
    /// The work, called once on some thread, whose progress is the one given. It must not touch what belongs
    /// to the GUI thread; what its function holds is released on any thread.
    using Work = std::function<Finish(Vantor::CProgress& progress)>;

    /// See CJobs::Start.
    CJob(QObject* pReceiver, SJob sJob, Work work);

    const QString& GetTitle() const { return m_sJob.strTitle; }         ///< empty: the list leaves it out
    const Vantor::CProgress& GetProgress() const { return m_progress; } ///< any thread
    /// Null when it has gone.
    QObject* GetReceiver() const { return m_pReceiver; }

private:
    friend class CJobs;

    const SJob m_sJob;
    const QPointer<QObject> m_pReceiver;
    const void* const m_pKey; ///< the receiver, also when it has gone
    Work m_work;
    Finish m_finish;
    bool m_bBroken = false; ///< an exception has left the work
    Vantor::CProgress m_progress;
};
