// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Also tests CJob and FreeMemory.
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/job/FreeMemory_p.h>

#include "tests/support/TestMain.h"

#include <QThread>
#include <QThreadPool>
#include <atomic>
#include <random>
#include <semaphore.h>
#include <stdexcept>

using Vantor::CProgress;

namespace
{
/// A gate that a job waits at; the thread sanitizer knows this one.
class CGate
{
public:
    CGate() { sem_init(&m_semaphore, 0, 0); }
    ~CGate() { sem_destroy(&m_semaphore); }
    void Open() { sem_post(&m_semaphore); }
    void Pass() { sem_wait(&m_semaphore); }

private:
    sem_t m_semaphore;
};

SJob Titled(const char* pTitle)
{
    SJob sJob;
    sJob.strTitle = QString::fromLatin1(pTitle);
    return sJob;
}

SJob OfKind(const char* pKind)
{
    SJob sJob;
    sJob.strKind = QString::fromLatin1(pKind);
    return sJob;
}

/// Work until it is cancelled.
CJob::Finish WorkOn(CProgress& progress)
{
    while (!progress.IsCancelled())
        QThread::yieldCurrentThread();
    return {};
}
} // namespace

class tst_CJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QThreadPool::globalInstance()->setMaxThreadCount(std::max(2, QThread::idealThreadCount()));
    }
    void cleanup()
    {
        CJobs::Get().SetMemoryQuestion({});
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(CJobs::Get().GetJobs().empty());
    }

    void aJobThatWaitsBeginsAtOnceAndTakesNoThread()
    {
        QThreadPool::globalInstance()->setMaxThreadCount(1);
        QObject receiver;
        CGate computing;
        CGate waiting;
        std::atomic<int> nWaiting{0};
        int nEnded = 0;
        std::atomic<bool> bSecond{false};
        SJob sWaits;
        sWaits.bWaits = true;
        CJobs::Get().Start(&receiver, {}, [&](CProgress&) -> CJob::Finish {
            computing.Pass();
            return {};
        });
        CJobs::Get().Start(&receiver, {}, [&](CProgress&) -> CJob::Finish {
            bSecond = true;
            return {};
        });
        for (int i = 0; i < 3; ++i)
            CJobs::Get().Start(&receiver, sWaits, [&](CProgress&) -> CJob::Finish {
                ++nWaiting;
                waiting.Pass();
                return [&] { ++nEnded; };
            });
        QTRY_COMPARE(nWaiting.load(), 3);
        QVERIFY(!bSecond);
        for (int i = 0; i < 3; ++i)
            waiting.Open();
        QTRY_COMPARE(nEnded, 3); // from now on the pool counts its threads as they are
        QTRY_COMPARE(QThreadPool::globalInstance()->activeThreadCount(), 1);
        QVERIFY(!bSecond); // the threads that there were more have gone
        computing.Open();
        CJobs::Get().Finish(&receiver);
        QVERIFY(bSecond);
    }

    void aJobThatWaitsAndIsCancelledBeforeItBeginsLeavesNoThread()
    {
        QObject receiver;
        CGate gate;
        SJob sWaits = OfKind("a");
        sWaits.bWaits = true;
        std::atomic<int> nBegun{0};
        const auto work = [&](CProgress&) -> CJob::Finish {
            ++nBegun;
            gate.Pass();
            return {};
        };
        CJobs::Get().Start(&receiver, sWaits, work);
        QTRY_COMPARE(nBegun.load(), 1);
        for (int i = 0; i < 5; ++i)
            CJobs::Get().Start(&receiver, sWaits, work); // each cancels the one before
        CJobs::Get().Cancel(CJobs::Get().Start(&receiver, sWaits, work));
        gate.Open();
        CJobs::Get().Finish(&receiver);
        QThreadPool::globalInstance()->waitForDone();
        QCOMPARE(nBegun.load(), 1);
        QCOMPARE(QThreadPool::globalInstance()->activeThreadCount(), 0);
    }

    void aResultArrivesOnTheGuiThread()
    {
        QObject receiver;
        QThread* pWork = nullptr;
        QThread* pFinish = nullptr;
        int nResult = 0;
        CJobs::Get().Start(&receiver, {}, [&](CProgress&) -> CJob::Finish {
            pWork = QThread::currentThread();
            return [&, nAnswer = 42] {
                pFinish = QThread::currentThread();
                nResult = nAnswer;
            };
        });
        QCOMPARE(nResult, 0);
        QTRY_COMPARE(nResult, 42);
        QVERIFY(pWork != thread());
        QCOMPARE(pFinish, thread());
    }

    void theProgressOfTheThreadIsThatOfTheJob()
    {
        QObject receiver;
        CGate told;
        CGate watched;
        bool bSame = false;
        const auto pJob = CJobs::Get().Start(&receiver, {}, [&](CProgress& progress) -> CJob::Finish {
            bSame = CProgress::OfThread() == &progress;
            CProgress::Tell(0.5);
            told.Open();
            watched.Pass();
            return {};
        });
        told.Pass();
        QCOMPARE(pJob->GetProgress().GetDone(), 0.5);
        watched.Open();
        CJobs::Get().Finish(&receiver);
        QVERIFY(bSame);
    }

    void aCancelledJobBringsNoResultAndSaysSo()
    {
        QObject receiver;
        CGate begun;
        int nDropped = 0;
        bool bFinished = false;
        SJob sJob = Titled("Work");
        sJob.dropped = [&] { ++nDropped; };
        const auto pJob = CJobs::Get().Start(&receiver, sJob, [&](CProgress& progress) -> CJob::Finish {
            begun.Open();
            WorkOn(progress);
            return [&] { bFinished = true; };
        });
        begun.Pass();
        CJobs::Get().Cancel(pJob);
        QTRY_COMPARE(nDropped, 1);
        QVERIFY(!bFinished);
        CJobs::Get().Cancel(pJob);
        QCoreApplication::processEvents();
        QCOMPARE(nDropped, 1);
    }

    void aJobThatWaitsIsCancelledAtOnce()
    {
        QThreadPool::globalInstance()->setMaxThreadCount(1);
        QObject receiver;
        CGate gate;
        CJobs::Get().Start(&receiver, {}, [&](CProgress&) -> CJob::Finish {
            gate.Pass();
            return {};
        });
        bool bWorked = false;
        bool bDropped = false;
        SJob sJob;
        sJob.dropped = [&] { bDropped = true; };
        const auto pJob = CJobs::Get().Start(&receiver, sJob, [&](CProgress&) -> CJob::Finish {
            bWorked = true;
            return {};
        });
        CJobs::Get().Cancel(pJob);
        QCoreApplication::processEvents();
        QVERIFY(bDropped);
        gate.Open();
        CJobs::Get().Finish(&receiver);
        QVERIFY(!bWorked);
    }

    void whatHasCommittedArrivesThoughItIsCancelledLater()
    {
        QObject receiver;
        CGate committed;
        CGate gate;
        bool bFinished = false;
        const auto pJob = CJobs::Get().Start(&receiver, {}, [&](CProgress& progress) -> CJob::Finish {
            progress.Commit();
            committed.Open();
            gate.Pass();
            return [&] { bFinished = true; };
        });
        committed.Pass();
        CJobs::Get().Cancel(pJob);
        gate.Open();
        QTRY_VERIFY(bFinished);
    }

    void noResultComesToAReceiverThatHasGone()
    {
        auto pReceiver = std::make_unique<QObject>();
        CGate begun;
        std::atomic<bool> bEnded{false};
        bool bCalled = false;
        SJob sJob;
        sJob.dropped = [&] { bCalled = true; };
        CJobs::Get().Start(pReceiver.get(), sJob, [&](CProgress& progress) -> CJob::Finish {
            begun.Open();
            WorkOn(progress);
            bEnded = true;
            return [&] { bCalled = true; };
        });
        begun.Pass();
        pReceiver.reset();
        QTRY_VERIFY(bEnded);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(!bCalled);
    }

    void aNewerJobOfTheSameKindReplacesTheOlder()
    {
        QObject receiver;
        CGate begun;
        CGate leave;
        std::atomic<int> nAtOnce{0};
        std::atomic<int> nMost{0};
        std::vector<int> vctFinished;
        int nDropped = 0;
        for (int i = 0; i < 5; ++i) {
            SJob sJob = OfKind("filter");
            sJob.dropped = [&] { ++nDropped; };
            CJobs::Get().Start(&receiver, sJob, [&, i](CProgress& progress) -> CJob::Finish {
                nMost = std::max(nMost.load(), ++nAtOnce);
                begun.Open();
                if (i < 4) {
                    WorkOn(progress);
                    leave.Pass();
                }
                --nAtOnce;
                return [&, i] { vctFinished.push_back(i); };
            });
            if (i == 0)
                begun.Pass();
        }
        bool bOther = false; // comes after them all, so one that might begin has begun
        CJobs::Get().Start(&receiver, {}, [&](CProgress&) -> CJob::Finish { return [&] { bOther = true; }; });
        QTRY_VERIFY(bOther);
        leave.Open();
        QTRY_COMPARE(vctFinished, std::vector<int>{4});
        QTRY_COMPARE(nDropped, 4);
        QCOMPARE(nMost.load(), 1);
    }

    void jobsOfOtherKindsAndReceiversStay()
    {
        QObject first;
        QObject second;
        CGate gate;
        int nFinished = 0;
        const auto work = [&](CProgress&) -> CJob::Finish {
            gate.Pass();
            return [&] { ++nFinished; };
        };
        CJobs::Get().Start(&first, OfKind("a"), work);
        CJobs::Get().Start(&first, OfKind("b"), work);
        CJobs::Get().Start(&second, OfKind("a"), work);
        CJobs::Get().Start(&first, {}, work);
        CJobs::Get().Start(&first, {}, work);
        for (int i = 0; i < 5; ++i)
            gate.Open();
        QTRY_COMPARE(nFinished, 5);
    }

    void whatMustFinishOutlivesItsReceiverWithoutAResult()
    {
        auto pReceiver = std::make_unique<QObject>();
        CGate gate;
        std::atomic<bool> bDone{false};
        bool bCalled = false;
        SJob sJob;
        sJob.bMustFinish = true;
        CJobs::Get().Start(pReceiver.get(), sJob, [&](CProgress& progress) -> CJob::Finish {
            gate.Pass();
            bDone = !progress.IsCancelled();
            return [&] { bCalled = true; };
        });
        pReceiver.reset();
        gate.Open();
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(bDone);
        QVERIFY(!bCalled);
    }

    void theEndOfTheProgramCancelsAllButWhatMustFinish()
    {
        QObject receiver;
        CGate begun;
        CGate gate;
        std::atomic<bool> bDone{false};
        std::atomic<bool> bCancelled{false};
        CJobs::Get().Start(&receiver, {}, [&](CProgress& progress) -> CJob::Finish {
            begun.Open();
            WorkOn(progress);
            bCancelled = true;
            return {};
        });
        SJob sJob;
        sJob.bMustFinish = true;
        CJobs::Get().Start(&receiver, sJob, [&](CProgress& progress) -> CJob::Finish {
            gate.Pass();
            bDone = !progress.IsCancelled();
            return {};
        });
        begun.Pass();
        QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
        QCoreApplication::exec();
        gate.Open();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(bCancelled);
        QVERIFY(bDone);
    }

    void theListHasJobsWithATitleUntilTheyEnd()
    {
        QObject receiver;
        CGate gate;
        int nChanged = 0;
        connect(&CJobs::Get(), &CJobs::signal_Changed, &receiver, [&] { ++nChanged; });
        const auto work = [&](CProgress&) -> CJob::Finish {
            gate.Pass();
            return {};
        };
        CJobs::Get().Start(&receiver, {}, work);
        QCOMPARE(nChanged, 0);
        const auto pFirst = CJobs::Get().Start(&receiver, Titled("First"), work);
        const auto pSecond = CJobs::Get().Start(&receiver, Titled("Second"), work);
        QCOMPARE(nChanged, 2);
        QCOMPARE(CJobs::Get().GetJobs(), (std::vector<CJobs::JobPtr>{pFirst, pSecond}));
        QCOMPARE(pFirst->GetTitle(), QStringLiteral("First"));
        QCOMPARE(pFirst->GetReceiver(), &receiver);
        for (int i = 0; i < 3; ++i)
            gate.Open();
        QTRY_COMPARE(nChanged, 4);
        QVERIFY(CJobs::Get().GetJobs().empty());
        CJobs::Get().Finish(&receiver); // the first may still be before the gate
    }

    void anExceptionCountsAsNoResult()
    {
        QObject receiver;
        int nDropped = 0;
        SJob sJob;
        sJob.dropped = [&] { ++nDropped; };
        CJobs::Get().Start(&receiver, sJob,
                           [](CProgress&) -> CJob::Finish { throw std::runtime_error("planted"); });
        QTRY_COMPARE(nDropped, 1);
    }

    void finishDeliversBeforeItReturns()
    {
        QObject receiver;
        bool bSecond = false;
        CJobs::Get().Start(&receiver, {}, [&](CProgress&) -> CJob::Finish {
            return [&] {
                CJobs::Get().Start(&receiver, {},
                                   [&](CProgress&) -> CJob::Finish { return [&] { bSecond = true; }; });
            };
        });
        CJobs::Get().Finish(&receiver);
        QVERIFY(bSecond);
    }

    void cancelAndWaitLeavesNoThreadAtWork()
    {
        QObject receiver;
        CGate begun;
        bool bWorking = true;
        bool bCalled = false;
        CJobs::Get().Start(&receiver, {}, [&](CProgress& progress) -> CJob::Finish {
            begun.Open();
            WorkOn(progress);
            bWorking = false;
            return [&] { bCalled = true; };
        });
        begun.Pass();
        CJobs::Get().CancelAndWait(&receiver);
        QVERIFY(!bWorking);
        QCoreApplication::processEvents();
        QVERIFY(!bCalled);
    }

    void onlyWhatNeedsMoreMemoryThanIsFreeIsAskedFor()
    {
        const qint64 nFree = FreeMemory();
        QVERIFY(nFree > 0);
        QObject receiver;
        QStringList lstAsked;
        bool bAnswer = false;
        CJobs::Get().SetMemoryQuestion([&](const QString& strTitle, qint64 nNeeded, qint64 nHas) {
            lstAsked << strTitle;
            return bAnswer || nNeeded <= nHas;
        });
        int nDone = 0;
        const auto start = [&](qint64 nMemory) {
            SJob sJob = Titled("Large");
            sJob.nMemory = nMemory;
            return CJobs::Get().Start(&receiver, sJob,
                                      [&](CProgress&) -> CJob::Finish { return [&] { ++nDone; }; });
        };
        QVERIFY(start(1024));
        QVERIFY(lstAsked.isEmpty());
        QVERIFY(!start(nFree * 100));
        QCOMPARE(lstAsked, QStringList{QStringLiteral("Large")});
        bAnswer = true;
        QVERIFY(start(nFree * 100));
        QTRY_COMPARE(nDone, 2);
    }

    void nothingBeginsWhenTheReceiverGoesDuringTheQuestion()
    {
        auto pReceiver = std::make_unique<QObject>();
        CJobs::Get().SetMemoryQuestion([&](const QString&, qint64, qint64) {
            pReceiver.reset();
            return true;
        });
        SJob sJob;
        sJob.nMemory = FreeMemory() * 100;
        QVERIFY(!CJobs::Get().Start(pReceiver.get(), sJob, WorkOn));
    }

    void aThousandCancellationsAtRandomMoments()
    {
        std::mt19937 random(7);
        QObject receiver;
        int nFinished = 0;
        int nDropped = 0;
        for (int i = 0; i < 1000; ++i) {
            SJob sJob = i % 3 ? SJob() : OfKind("same");
            sJob.dropped = [&] { ++nDropped; };
            auto pData = std::make_shared<std::vector<int>>(100, i);
            const auto pJob =
                CJobs::Get().Start(&receiver, sJob, [&nFinished, pData](CProgress& progress) -> CJob::Finish {
                    for (int& n : *pData)
                        if (progress.IsCancelled())
                            break;
                        else
                            progress.SetDone(++n);
                    return [&nFinished, pData] { ++nFinished; };
                });
            pData.reset();
            for (unsigned n = random() % 300; n > 0; --n)
                QThread::yieldCurrentThread();
            if (random() % 2)
                QCoreApplication::processEvents();
            CJobs::Get().Cancel(pJob);
        }
        QTRY_COMPARE(nFinished + nDropped, 1000);
        QVERIFY(nFinished > 0);
        QVERIFY(nDropped > 0);
    }

    void aThousandReceiversDestroyed()
    {
        std::mt19937 random(11);
        std::atomic<int> nWorked{0};
        int nFinished = 0;
        for (int i = 0; i < 1000; ++i) {
            auto pReceiver = std::make_unique<QObject>();
            QObject* pPlain = pReceiver.get();
            CJobs::Get().Start(pPlain, {}, [&, pPlain](CProgress&) -> CJob::Finish {
                ++nWorked;
                return [&, pPlain] { // would crash on one that has gone
                    pPlain->setObjectName(QStringLiteral("reached"));
                    ++nFinished;
                };
            });
            for (unsigned n = random() % 200; n > 0; --n)
                QThread::yieldCurrentThread();
            if (random() % 2)
                QCoreApplication::processEvents();
        }
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(nWorked > 0);
        QVERIFY(nFinished < 1000);
    }

    void anObjectIsReleasedOnAnotherThread()
    {
        std::atomic<QThread*> pThread{nullptr};
        struct SLast {
            std::atomic<QThread*>& pThread;
            ~SLast() { pThread = QThread::currentThread(); }
        };
        CJobs::Get().ReleaseElsewhere(std::shared_ptr<SLast>(new SLast{pThread}));
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(pThread.load() && pThread.load() != thread());
    }
};

VANTOR_CORE_TEST_MAIN(tst_CJobs)
#include "tst_CJobs.moc"
