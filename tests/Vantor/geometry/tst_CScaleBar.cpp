// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/geometry/CScaleBar.h>

using namespace Vantor::Geometry;
using Point = CPoint<double>;

class tst_CScaleBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsLevelAtTheHeightOfItsFirstEnd()
    {
        const CScaleBar bar(Point(10, 20), Point(-5, 99));
        QCOMPARE(int(bar.GetType()), 9);
        QCOMPARE(bar.end().x(), -5.0);
        QCOMPARE(bar.end().y(), 20.0);
        QCOMPARE(bar.GetLength(), 15.0);
        QVERIFY(bar.GetOutline().empty());
        QVERIFY(bar.Contains(Point(0, 20)) && !bar.Contains(Point(0, 21)));
    }

    void aPulledEndTakesTheOtherToItsHeight()
    {
        CScaleBar bar(Point(10, 20), Point(50, 20));
        QVERIFY(bar.MoveHandle(Point(50, 20), Point(70, 35)));
        QVERIFY(bar.start() == Point(10, 35) && bar.end() == Point(70, 35));
        QVERIFY(!bar.MoveHandle(Point(50, 20), Point(0, 0)));
        QVERIFY(bar.end() == Point(70, 35));
        bar.MoveTopLeftTo(Point(1, 2));
        QVERIFY(bar.start() == Point(1, 2) && bar.end() == Point(61, 2));
    }

    void aCopyIsAScaleBar()
    {
        const CScaleBar bar(Point(1, 2), Point(3, 2));
        const auto copy = std::dynamic_pointer_cast<CScaleBar>(bar.Clone());
        QVERIFY(copy && copy->end() == bar.end());
    }
};

VANTOR_CORE_TEST_MAIN(tst_CScaleBar)
#include "tst_CScaleBar.moc"
