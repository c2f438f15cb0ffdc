// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/CVObject.h>

#include <cmath>
#include <limits>
#include <set>
#include <thread>
#include <vector>

using Vantor::CVObject;

class tst_CVObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void identifiersAreUniqueAndNeverZeroOrNone()
    {
        const CVObject a;
        const CVObject b;
        QVERIFY(a.GetUID() != 0);
        QCOMPARE(0xFFFFFFFFu, 0u + CVObject::kNoUID);
        QVERIFY(a.GetUID() != 0xFFFFFFFFu);
        QVERIFY(b.GetUID() > a.GetUID());
    }

    void aCopyGetsItsOwnIdentifierAndAssignmentKeepsIt()
    {
        const CVObject a;
        CVObject copy(a);
        QVERIFY(copy.GetUID() != a.GetUID());
        const unsigned int nBefore = copy.GetUID();
        copy = a;
        QCOMPARE(copy.GetUID(), nBefore);
    }

    void identifiersStayUniqueAcrossThreads()
    {
        std::vector<std::vector<unsigned int>> vctUIDs(8);
        std::vector<std::thread> vctThreads;
        for (auto& uids : vctUIDs)
            vctThreads.emplace_back([&uids] {
                for (int i = 0; i < 10000; ++i)
                    uids.push_back(CVObject().GetUID());
            });
        for (auto& thread : vctThreads)
            thread.join();
        std::set<unsigned int> all;
        for (const auto& uids : vctUIDs)
            all.insert(uids.begin(), uids.end());
        QCOMPARE(all.size(), std::size_t(80000));
    }

    void comparisonIsAbsoluteNearZeroAndRelativeForLargeValues()
    {
        QVERIFY(CVObject::CompareEqual(0.0, 1e-9));
        QVERIFY(!CVObject::CompareEqual(0.0, 1.1e-9));
        QVERIFY(CVObject::CompareEqual(1e12, 1e12 + 999.0));
        QVERIFY(!CVObject::CompareEqual(1e12, 1e12 + 1001.0));
        QVERIFY(CVObject::CompareEqual(1.0f, 1.0f + 9e-7f));
        QVERIFY(!CVObject::CompareEqual(1.0f, 1.0f + 2e-6f));
    }

    void comparisonOfSpecialValues()
    {
        const double inf = std::numeric_limits<double>::infinity();
        QVERIFY(CVObject::CompareEqual(inf, inf));
        QVERIFY(!CVObject::CompareEqual(inf, -inf));
        QVERIFY(!CVObject::CompareEqual(inf, 1e300));
        QVERIFY(!CVObject::CompareEqual(std::nan(""), std::nan("")));
    }
};

VANTOR_CORE_TEST_MAIN(tst_CVObject)
#include "tst_CVObject.moc"
