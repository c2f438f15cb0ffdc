// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/view2d/Saturate_p.h>

#include <QApplication>
#include <limits>

class tst_Saturate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void conversionsFromDoubleSaturate_data()
    {
        constexpr int nMin = std::numeric_limits<int>::min();
        constexpr int nMax = std::numeric_limits<int>::max();
        constexpr double inf = std::numeric_limits<double>::infinity();
        QTest::addColumn<double>("dblValue");
        QTest::addColumn<int>("nTruncated");
        QTest::addColumn<int>("nRounded");
        QTest::newRow("zero") << 0.0 << 0 << 0;
        QTest::newRow("positive half") << 0.5 << 0 << 1;
        QTest::newRow("negative half") << -0.5 << 0 << -1;
        QTest::newRow("below a half") << 2.4999 << 2 << 2;
        QTest::newRow("negative") << -2.7 << -2 << -3;
        QTest::newRow("largest") << 2147483647.0 << nMax << nMax;
        QTest::newRow("smallest") << -2147483648.0 << nMin << nMin;
        QTest::newRow("just inside") << 2147483646.5 << nMax - 1 << nMax;
        QTest::newRow("too large") << 1e12 << nMax << nMax;
        QTest::newRow("too small") << -1e300 << nMin << nMin;
        QTest::newRow("infinity") << inf << nMax << nMax;
        QTest::newRow("minus infinity") << -inf << nMin << nMin;
        QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << 0 << 0;
    }

    void conversionsFromDoubleSaturate()
    {
        QFETCH(double, dblValue);
        QFETCH(int, nTruncated);
        QFETCH(int, nRounded);
        QCOMPARE(TruncateToInt(dblValue), nTruncated);
        QCOMPARE(RoundToInt(dblValue), nRounded);
    }
};

VANTOR_TEST_MAIN(tst_Saturate)
#include "tst_Saturate.moc"
