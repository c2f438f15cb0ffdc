// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Where large pages are taken and where not, with costs that are made up.
#include "tests/support/TestMain.h"

#include <Vantor/image/LargePages_p.h>

#include <functional>

using Vantor::Algorithms::CLargePages;
using Cost = CLargePages::Cost;

namespace
{
constexpr Cost kCheap = std::chrono::microseconds(200);
constexpr Cost kFromTheHost = std::chrono::milliseconds(5);
constexpr Cost kSmall = std::chrono::microseconds(900); ///< a piece of small pages

struct SSpent {
    int nLarge = 0;
    Cost total{0};
};

/// Takes so many pieces, the cost of the n-th large page being given.
SSpent Take(CLargePages& pages, int nPieces, const std::function<Cost(int)>& costOfLarge)
{
    SSpent spent;
    for (int i = 0; i < nPieces; ++i) {
        if (pages.WantsLarge()) {
            const Cost cost = costOfLarge(spent.nLarge++);
            pages.NoteCost(cost);
            spent.total += cost;
        } else {
            spent.total += kSmall;
        }
    }
    return spent;
}
} // namespace

class tst_LargePages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cheapOnesAreTakenThroughout()
    {
        CLargePages pages;
        QCOMPARE(Take(pages, 1000, [](int) { return kCheap; }).nLarge, 1000);
    }

    void dearOnesAddSomePercentToTheSmallOnesAtMost()
    {
        CLargePages pages;
        const SSpent spent = Take(pages, 10000, [](int) { return kFromTheHost; });
        QVERIFY(spent.nLarge > 10); // they are tried again and again
        QVERIFY2(spent.total < 10000 * kSmall * 105 / 100, qPrintable(QString::number(spent.nLarge)));
    }

    void theFirstDearOneIsTheLastOfItsBuffer()
    {
        CLargePages pages;
        const SSpent spent = Take(pages, 48, [](int) { return kFromTheHost; });
        QCOMPARE(spent.nLarge, 1);
        QCOMPARE(spent.total, kFromTheHost + 47 * kSmall);
    }

    void dearOnesAmongCheapOnesNeverCostMoreThanSmallOnes()
    {
        CLargePages pages;
        const auto cost = [](int n) { return n % 10 == 9 ? kFromTheHost : kCheap; };
        const SSpent spent = Take(pages, 10000, cost);
        QVERIFY(spent.nLarge > 100);
        QVERIFY(spent.total < 10000 * kSmall);
    }

    void theyComeBackWhenTheyAreCheapAgain()
    {
        CLargePages pages;
        Take(pages, 1, [](int) { return kFromTheHost; });
        const SSpent spent = Take(pages, 1000, [](int) { return kCheap; });
        QCOMPARE(spent.nLarge, 1000 - 125); // 5 ms are 125 shares of 40 us
    }

    void aVeryDearOneIsNotTheEndOfThem()
    {
        CLargePages pages;
        Take(pages, 1, [](int) { return Cost(std::chrono::hours(1)); });
        QCOMPARE(Take(pages, 25001, [](int) { return kCheap; }).nLarge, 1);
    }
};

VANTOR_CORE_TEST_MAIN(tst_LargePages)
#include "tst_LargePages.moc"
