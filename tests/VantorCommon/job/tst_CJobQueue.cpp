// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/job/CJobQueue.h>

#include "tests/support/TestMain.h"

#include <algorithm>
#include <vector>

class tst_CJobQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aQueueKeepsItsOrderAndWaitsForAll()
    {
        std::vector<int> vctDone;
        {
            CJobQueue queue;
            for (int i = 0; i < 100; ++i)
                queue.Start([&vctDone, i] { vctDone.push_back(i); });
            queue.Wait();
            QCOMPARE(vctDone.size(), std::size_t(100));
            queue.Start([&vctDone] { vctDone.push_back(100); });
        }
        QCOMPARE(vctDone.size(), std::size_t(101));
        QVERIFY(std::is_sorted(vctDone.begin(), vctDone.end()));
    }
};

VANTOR_CORE_TEST_MAIN(tst_CJobQueue)
#include "tst_CJobQueue.moc"
