// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/job/CJobs.h>

#include <VantorCommon/job/FreeMemory_p.h>

#include <QCoreApplication>
#include <QEvent>
#include <QRunnable>
#include <QThreadPool>
#include <algorithm>
#include <utility>

namespace
{
/// Posted to CJobs by a thread that has ended a job.
constexpr QEvent::Type kEnded = QEvent::Type(QEvent::User + 1);

void Remove(std::vector<CJobs::JobPtr>& vctJobs, const CJobs::JobPtr& pJob)
{
    vctJobs.erase(std::remove(vctJobs.begin(), vctJobs.end(), pJob), vctJobs.end());
}
} // namespace

/// Started once for each job; each time it takes one that waits, if there is one that may run.
class CJobs::CWorker : public QRunnable
{
public:
    explicit CWorker(CJobs& jobs) : m_jobs(jobs) { setAutoDelete(false); }
    void run() override { m_jobs.Work(); }

private:
    CJobs& m_jobs;
};

CJobs& CJobs::Get()
{
    static QPointer<CJobs> s_pJobs;
    if (!s_pJobs)
        s_pJobs = new CJobs(QCoreApplication::instance());
    return *s_pJobs;
}

CJobs::CJobs(QObject* pParent) : QObject(pParent), m_pWorker(std::make_unique<CWorker>(*this))
{
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            [this] { CancelIf([](const CJob& job) { return !job.m_sJob.bMustFinish; }); });
}

/// The application has waited for the pool by now.
CJobs::~CJobs() = default;

bool CJobs::MayStart(QObject* pReceiver, const SJob& sJob) const
{
    const qint64 nFree = m_question && sJob.nMemory > 0 ? FreeMemory() : -1;
    if (nFree < 0 || sJob.nMemory <= nFree)
        return true;
    const QPointer<QObject> pThere = pReceiver;
    return m_question(sJob.strTitle, sJob.nMemory, nFree) && pThere;
}

CJobs::JobPtr CJobs::Start(QObject* pReceiver, SJob sJob, CJob::Work work)
{
    if (!MayStart(pReceiver, sJob))
        return nullptr;
    if (!sJob.strKind.isEmpty())
        CancelIf(
            [&](const CJob& job) { return job.m_pKey == pReceiver && job.m_sJob.strKind == sJob.strKind; });
    auto pJob = std::make_shared<CJob>(pReceiver, std::move(sJob), std::move(work));
    connect(pReceiver, &QObject::destroyed, this, &CJobs::CancelOf, Qt::UniqueConnection);
    m_vctJobs.push_back(pJob);
    Enqueue(pJob);
    if (!pJob->GetTitle().isEmpty())
        Q_EMIT signal_Changed();
    return pJob;
}

void CJobs::Enqueue(const JobPtr& pJob)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_vctWaiting.push_back(pJob);
    }
    if (pJob->m_sJob.bWaits)
        QThreadPool::globalInstance()->releaseThread(); // one more, until the job has ended
    QThreadPool::globalInstance()->start(m_pWorker.get());
}

/// The receiver is going.
void CJobs::CancelOf(QObject* pReceiver)
{
    CancelIf([pReceiver](const CJob& job) { return job.m_pKey == pReceiver && !job.m_sJob.bMustFinish; });
}

void CJobs::Cancel(const JobPtr& pJob)
{
    CancelIf([&](const CJob& job) { return &job == pJob.get(); });
}

/// What waits ends at once, what runs when its thread notices.
void CJobs::CancelIf(const std::function<bool(const CJob&)>& isMeant)
{
    bool bEnded = false;
    for (const JobPtr& pJob : m_vctJobs) {
        if (!isMeant(*pJob) || !pJob->m_progress.Cancel())
            continue;
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto it = std::find(m_vctWaiting.begin(), m_vctWaiting.end(), pJob);
        if (it == m_vctWaiting.end())
            continue;
        m_vctWaiting.erase(it);
        m_vctEnded.push_back(pJob);
        GiveThreadBack(*pJob);
        bEnded = true;
    }
    if (bEnded)
        QCoreApplication::postEvent(this, new QEvent(kEnded));
}

void CJobs::GiveThreadBack(const CJob& job)
{
    if (job.m_sJob.bWaits)
        QThreadPool::globalInstance()->reserveThread();
}

/// The first that waits and may run beside those that do, before all others those for which the pool has a
/// thread more; null without one. The mutex is held.
CJobs::JobPtr CJobs::TakeWaiting()
{
    const auto mayRun = [this](const JobPtr& pJob) {
        return pJob->m_sJob.strKind.isEmpty() ||
               std::none_of(m_vctRunning.begin(), m_vctRunning.end(), [&](const JobPtr& pRunning) {
                   return pRunning->m_pKey == pJob->m_pKey &&
                          pRunning->m_sJob.strKind == pJob->m_sJob.strKind;
               });
    };
    auto it = std::find_if(m_vctWaiting.begin(), m_vctWaiting.end(),
                           [&](const JobPtr& pJob) { return pJob->m_sJob.bWaits && mayRun(pJob); });
    if (it == m_vctWaiting.end())
        it = std::find_if(m_vctWaiting.begin(), m_vctWaiting.end(), mayRun);
    if (it == m_vctWaiting.end())
        return nullptr;
    JobPtr pJob = *it;
    m_vctWaiting.erase(it);
    m_vctRunning.push_back(pJob);
    return pJob;
}

void CJobs::Carry(CJob& job)
{
    const Vantor::CProgress::CScope scope(&job.m_progress);
    const CJob::Work work = std::exchange(job.m_work, nullptr);
    try {
        if (!job.m_progress.IsCancelled())
            job.m_finish = work(job.m_progress);
    } catch (...) {
        job.m_bBroken = true;
    }
}

/// On a thread of the pool. A thread that found nothing because a job of the same kind ran has gone, so
/// whoever ends that job goes on with the next; but the pool decides whether a thread is left for it when the
/// one that it had more was given back.
void CJobs::Work()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (const JobPtr pJob = TakeWaiting()) {
        lock.unlock();
        Carry(*pJob);
        lock.lock();
        Remove(m_vctRunning, pJob);
        m_vctEnded.push_back(pJob);
        GiveThreadBack(*pJob);
        QCoreApplication::postEvent(this, new QEvent(kEnded));
        m_ended.notify_all();
        if (!pJob->m_sJob.bWaits)
            continue;
        if (!m_vctWaiting.empty())
            QThreadPool::globalInstance()->start(m_pWorker.get());
        return;
    }
}

bool CJobs::event(QEvent* pEvent)
{
    if (pEvent->type() != kEnded)
        return QObject::event(pEvent);
    DeliverEnded();
    return true;
}

void CJobs::DeliverEnded()
{
    const QPointer<CJobs> pThis = this;
    while (pThis) {
        JobPtr pJob;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (m_vctEnded.empty())
                return;
            pJob = m_vctEnded.front();
            m_vctEnded.erase(m_vctEnded.begin());
        }
        Deliver(pJob);
    }
}

void CJobs::Deliver(const JobPtr& pJob)
{
    Remove(m_vctJobs, pJob);
    CJob::Finish finish = std::exchange(pJob->m_finish, nullptr);
    const QPointer<CJobs> pThis = this;
    const bool bResult = !pJob->m_bBroken && !pJob->m_progress.IsCancelled();
    if (pJob->m_pReceiver && bResult && finish)
        finish();
    if (pJob->m_pReceiver && !bResult && pJob->m_sJob.dropped)
        pJob->m_sJob.dropped();
    if (!bResult && finish)
        ReleaseElsewhere(std::make_shared<CJob::Finish>(std::move(finish)));
    if (pThis && !pJob->GetTitle().isEmpty())
        Q_EMIT signal_Changed();
}

/// The mutex is held.
bool CJobs::IsWorkingFor(const void* pKey) const
{
    const auto isOf = [pKey](const JobPtr& pJob) { return pJob->m_pKey == pKey; };
    return std::any_of(m_vctRunning.begin(), m_vctRunning.end(), isOf) ||
           std::any_of(m_vctWaiting.begin(), m_vctWaiting.end(), isOf);
}

void CJobs::CancelAndWait(const QObject* pReceiver)
{
    CancelIf([pReceiver](const CJob& job) { return job.m_pKey == pReceiver; });
    std::unique_lock<std::mutex> lock(m_mutex);
    m_ended.wait(lock, [&] { return !IsWorkingFor(pReceiver); });
}

void CJobs::Finish(const QObject* pReceiver)
{
    const auto isOf = [pReceiver](const JobPtr& pJob) { return pJob->m_pKey == pReceiver; };
    while (std::any_of(m_vctJobs.begin(), m_vctJobs.end(), isOf)) {
        {
            std::unique_lock<std::mutex> lock(m_mutex);
            m_ended.wait(lock, [&] { return !IsWorkingFor(pReceiver); });
        }
        DeliverEnded();
    }
}

std::vector<CJobs::JobPtr> CJobs::GetJobs() const
{
    std::vector<JobPtr> vctListed;
    std::copy_if(m_vctJobs.begin(), m_vctJobs.end(), std::back_inserter(vctListed),
                 [](const JobPtr& pJob) { return !pJob->GetTitle().isEmpty(); });
    return vctListed;
}

void CJobs::ReleaseElsewhere(std::shared_ptr<void> pObject)
{
    // Going with the work, on its thread; nothing of it may stay here.
    Enqueue(std::make_shared<CJob>(
        nullptr, SJob(), [pReleased = std::move(pObject)](Vantor::CProgress&) { return CJob::Finish(); }));
}
