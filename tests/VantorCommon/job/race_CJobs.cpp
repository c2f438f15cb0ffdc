// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Jobs on several threads, for tests/support/race_check.sh.
#include "tests/support/TestMain.h"

#include <VantorCommon/job/CJobQueue.h>
#include <VantorCommon/job/CJobs.h>

#include <QThread>
#include <QThreadPool>
#include <random>

using Vantor::CProgress;

namespace
{
constexpr int kTimes = 300;

/// A job with data of its own, which its result reads: no lock but those of the jobs orders the two.
CJobs::JobPtr Count(QObject* pReceiver, SJob sJob, int& nSum)
{
    auto pData = std::make_shared<std::vector<int>>(20, 1);
    return CJobs::Get().Start(pReceiver, std::move(sJob),
                              [pData, &nSum](CProgress& progress) -> CJob::Finish {
                                  for (int& n : *pData) {
                                      ++n;
                                      progress.SetDone(0.5);
                                      if (progress.IsCancelled())
                                          break;
                                  }
                                  return [pData, &nSum] {
                                      for (const int n : *pData)
                                          nSum += n;
                                  };
                              });
}

void PassAWhile(std::mt19937& random)
{
    for (unsigned n = random() % 20; n > 0; --n)
        QThread::yieldCurrentThread();
    if (random() % 2)
        QCoreApplication::processEvents();
}

SJob OfKind(const char* pKind, bool bWaits)
{
    SJob sJob;
    sJob.strKind = QString::fromLatin1(pKind);
    sJob.bWaits = bWaits;
    return sJob;
}
} // namespace

class race_CJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QThreadPool::globalInstance()->waitForDone();
    }

    /// What a job writes while the GUI thread reads it is a race, and must be reported.
    void planted()
    {
        QObject receiver;
        long nWritten = 0;
        CJobs::Get().Start(&receiver, {}, [&](CProgress& progress) -> CJob::Finish {
            for (int i = 0; i < 200 && !progress.IsCancelled(); ++i) {
                ++nWritten;
                QThread::yieldCurrentThread();
            }
            return {};
        });
        long nSeen = 0;
        for (int i = 0; i < 200; ++i) {
            nSeen += nWritten;
            QThread::yieldCurrentThread();
        }
        CJobs::Get().Finish(&receiver);
        QVERIFY(nSeen >= 0);
    }

    void results()
    {
        QObject receiver;
        int nSum = 0;
        for (int i = 0; i < kTimes; ++i)
            Count(&receiver, {}, nSum);
        CJobs::Get().Finish(&receiver);
        QCOMPARE(nSum, kTimes * 40);
    }

    void cancellations()
    {
        std::mt19937 random(7);
        QObject receiver;
        int nSum = 0;
        for (int i = 0; i < kTimes; ++i) {
            const auto pJob = Count(&receiver, {}, nSum);
            PassAWhile(random);
            CJobs::Get().Cancel(pJob);
        }
        CJobs::Get().CancelAndWait(&receiver);
        QVERIFY(nSum % 40 == 0);
    }

    void replacementsBesideJobsThatWait()
    {
        std::mt19937 random(11);
        QObject receiver;
        int nSum = 0;
        for (int i = 0; i < kTimes; ++i) {
            Count(&receiver, OfKind(i % 2 ? "a" : "b", i % 3 == 0), nSum);
            PassAWhile(random);
        }
        CJobs::Get().Finish(&receiver);
        QVERIFY(nSum >= 40);
    }

    void receiversThatGo()
    {
        std::mt19937 random(13);
        int nSum = 0;
        for (int i = 0; i < kTimes; ++i) {
            QObject receiver;
            SJob sJob;
            sJob.bMustFinish = i % 4 == 0;
            Count(&receiver, sJob, nSum);
            PassAWhile(random);
        }
        QVERIFY(nSum % 40 == 0);
    }

    void releases()
    {
        for (int i = 0; i < kTimes; ++i)
            CJobs::Get().ReleaseElsewhere(std::make_shared<std::vector<int>>(20, i));
        QThreadPool::globalInstance()->waitForDone();
    }

    void queues()
    {
        std::vector<int> vctDone;
        for (int i = 0; i < 20; ++i) {
            CJobQueue queue;
            for (int n = 0; n < 10; ++n)
                queue.Start([&vctDone, n] { vctDone.push_back(n); });
            if (i % 2)
                queue.Wait();
        }
        QCOMPARE(vctDone.size(), std::size_t(200));
    }
};

VANTOR_CORE_TEST_MAIN(race_CJobs)
#include "race_CJobs.moc"
