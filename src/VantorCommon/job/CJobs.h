// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/job/CJob.h>

#include <QObject>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

/// What runs beside the GUI thread: carries jobs out on the threads of Qt's global pool and brings their
/// results back to the GUI thread, or nowhere when the receiver has gone.
///
/// Jobs begin in the order in which they were started, as threads become free; those that only wait begin at
/// once.
/// A job that is cancelled stays in the list until its thread has left it. When the program ends, everything
/// is cancelled but what must finish. GUI thread only.
class VANTORCOMMON_EXPORT CJobs : public QObject
{
    Q_OBJECT

public:
    using JobPtr = std::shared_ptr<CJob>; ///< shared with the threads that work
    /// Decides whether a job begins that needs more memory than the machine has free, both in bytes. It may
    /// block.
    using MemoryQuestion = std::function<bool(const QString& strTitle, qint64 nNeeded, qint64 nFree)>;

    /// The only one; it belongs to the application object, which must be there.
    static CJobs& Get();
    ~CJobs() override;

    /// Begins a job soon.
    /// @param pReceiver  whose death cancels it; not null
    /// @param sJob       what it is and what it needs
    /// @param work       its result is called by the events of this thread, unless cancelled; throws nothing
    /// @return null when the memory question was answered by no, or when the receiver died meanwhile
    JobPtr Start(QObject* pReceiver, SJob sJob, CJob::Work work);
    /// Asks a job to end without a result. One that has done what cannot be taken back goes on.
    void Cancel(const JobPtr& pJob);
    /// Cancels every job of the receiver and waits until no thread works for it. No result comes any more.
    void CancelAndWait(const QObject* pReceiver);
    /// Waits until the jobs of the receiver, also those that they start, are done, and delivers their
    /// results.
    void Finish(const QObject* pReceiver);

    /// Those with a title that have not ended, oldest first.
    std::vector<JobPtr> GetJobs() const;
    /// Whom to ask; none at the start, and every job begins then.
    void SetMemoryQuestion(MemoryQuestion question) { m_question = std::move(question); }

    /// Releases an object on another thread: giving many pages back takes the system a while.
    void ReleaseElsewhere(std::shared_ptr<void> pObject);

Q_SIGNALS:
    /// A job with a title has come, or has ended.
    void signal_Changed();

protected:
    bool event(QEvent* pEvent) override; ///< delivers results

private:
    class CWorker;

    explicit CJobs(QObject* pParent);
    bool MayStart(QObject* pReceiver, const SJob& sJob) const;
    void Enqueue(const JobPtr& pJob);
    void CancelOf(QObject* pReceiver);
    void CancelIf(const std::function<bool(const CJob&)>& isMeant);
    static void GiveThreadBack(const CJob& job);
    JobPtr TakeWaiting();
    static void Carry(CJob& job);
    void Work();
    void DeliverEnded();
    void Deliver(const JobPtr& pJob);
    bool IsWorkingFor(const void* pKey) const;

    std::vector<JobPtr> m_vctJobs; ///< all that have not been delivered
    MemoryQuestion m_question;
    const std::unique_ptr<CWorker> m_pWorker;

    mutable std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_ended;
    std::vector<JobPtr> m_vctWaiting;
    std::vector<JobPtr> m_vctRunning;
    std::vector<JobPtr> m_vctEnded; ///< not delivered yet
};
