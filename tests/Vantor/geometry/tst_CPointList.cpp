// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CLine.h>

using namespace Vantor::Geometry;

class tst_CPointList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOrderAndSharesWhatWasAdded()
    {
        CPointList list;
        const auto line = std::make_shared<CLine>();
        list.Add(CPoint<>(1.0, 2.0));
        list.Add(line);
        QCOMPARE(list.Size(), 2);
        QCOMPARE(int(list.At(0)->GetType()), 0);
        QCOMPARE(list.At(1).get(), static_cast<CGeometry*>(line.get()));
    }

    void anIndexOutsideGivesNull()
    {
        CPointList list;
        QVERIFY(!list.At(0));
        list.Add(CPoint<>(1.0, 2.0));
        QVERIFY(list.At(0));
        QVERIFY(!list.At(1));
        QVERIFY(!list.At(-1));
    }

    void aNullPointerIsIgnoredAndClearEmpties()
    {
        CPointList list;
        list.Add(nullptr);
        QCOMPARE(list.Size(), 0);
        list.Add(CPoint<>(1.0, 2.0));
        list.Clear();
        QCOMPARE(list.Size(), 0);
    }
};

VANTOR_CORE_TEST_MAIN(tst_CPointList)
#include "tst_CPointList.moc"
