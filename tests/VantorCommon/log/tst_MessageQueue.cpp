// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/log/MessageQueue_p.h>

#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace
{
constexpr int c_nThreads = 8;
constexpr int c_nPerThread = 50000;

struct SItem {
    int nThread = 0;
    int nNumber = 0;
};
} // namespace

/// Written with std:: threads and a lock for the takers, so that a thread checker sees all of the
/// synchronisation.
class tst_MessageQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewQueueIsEmpty()
    {
        MessageQueue<int> queue;
        int nValue = 7;
        QVERIFY(queue.IsEmpty());
        QVERIFY(!queue.Take(nValue));
        QCOMPARE(nValue, 7);
    }

    void whatGoesInFirstComesOutFirst()
    {
        MessageQueue<int> queue;
        queue.Push(1);
        queue.Push(2);
        int nValue = 0;
        QVERIFY(queue.Take(nValue));
        QCOMPARE(nValue, 1);
        queue.Push(3);
        QVERIFY(queue.Take(nValue));
        QCOMPARE(nValue, 2);
        QVERIFY(!queue.IsEmpty());
        QVERIFY(queue.Take(nValue));
        QCOMPARE(nValue, 3);
        QVERIFY(queue.IsEmpty());
        QVERIFY(!queue.Take(nValue));
    }

    void aTakenValueIsHeldByTheTakerOnly()
    {
        MessageQueue<std::shared_ptr<int>> queue;
        auto pIn = std::make_shared<int>(1);
        const std::weak_ptr<int> watch = pIn;
        queue.Push(std::move(pIn));
        std::shared_ptr<int> pOut;
        QVERIFY(queue.Take(pOut));
        QCOMPARE(watch.use_count(), 1L);
    }

    void theQueueFreesWhatIsLeftInIt()
    {
        std::weak_ptr<int> watch;
        {
            MessageQueue<std::shared_ptr<int>> queue;
            auto p = std::make_shared<int>(1);
            watch = p;
            queue.Push(std::move(p));
        }
        QVERIFY(watch.expired());
    }

    void eightThreadsLoseNothingAndKeepTheirOrder()
    {
        MessageQueue<SItem> queue;
        std::mutex mutexTake;
        std::vector<std::thread> vctThreads;
        for (int nThread = 0; nThread < c_nThreads; ++nThread)
            vctThreads.emplace_back([&, nThread] {
                for (int i = 0; i < c_nPerThread; ++i)
                    queue.Push({nThread, i});
            });

        std::vector<int> vctNext(c_nThreads, 0);
        int nTaken = 0;
        int nOutOfOrder = 0;
        const auto take = [&] {
            for (bool bMore = true; bMore;) {
                const std::lock_guard<std::mutex> lock(mutexTake);
                SItem item;
                if (queue.Take(item)) {
                    nOutOfOrder += item.nNumber != vctNext[item.nThread]++;
                    ++nTaken;
                }
                bMore = nTaken < c_nThreads * c_nPerThread;
            }
        };
        std::thread secondTaker(take);
        take();
        secondTaker.join();
        for (std::thread& thread : vctThreads)
            thread.join();
        QCOMPARE(nOutOfOrder, 0);
        QCOMPARE(nTaken, c_nThreads * c_nPerThread);
        QVERIFY(queue.IsEmpty());
        QCOMPARE(vctNext, std::vector<int>(c_nThreads, c_nPerThread));
    }
};

VANTOR_CORE_TEST_MAIN(tst_MessageQueue)
#include "tst_MessageQueue.moc"
