// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <cmath>

using namespace Vantor::Geometry;
using namespace GeometryModel;

class tst_CPoint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isOfKindZeroAtTheOriginAtFirst()
    {
        const CPoint<> point;
        QCOMPARE(int(point.GetType()), 0);
        QCOMPARE(point.x(), 0.0);
        QCOMPARE(point.y(), 0.0);
    }

    void equalityIsExact()
    {
        QVERIFY(CPoint<>(1.0, 2.0) == CPoint<>(1.0, 2.0));
        QVERIFY(CPoint<>(1.0, 2.0) != CPoint<>(std::nextafter(1.0, 2.0), 2.0));
        QVERIFY(CPoint<>(1.0, 2.0) != CPoint<>(1.0, std::nextafter(2.0, 1.0)));
        QVERIFY(CPoint<>(kNaN, 2.0) != CPoint<>(kNaN, 2.0));
    }

    void distanceIsEuclidean()
    {
        QCOMPARE(CPoint<>(1.0, 1.0).GetDistance(CPoint<>(4.0, 5.0)), 5.0);
        QCOMPARE(CPoint<>(0.0, 0.0).GetDistance(CPoint<>(1e200, 0.0)), 1e200);
        QCOMPARE(CPoint<float>(0.f, 0.f).GetDistance(CPoint<float>(3.f, 4.f)), 5.0);
    }

    void hasNoHandlesAndAnEmptyBoundingRectangle()
    {
        const CPoint<> point(3.0, -4.0);
        QCOMPARE(Handles(point), QString());
        QCOMPARE(Outline(point), QStringLiteral("(3, -4)"));
        QCOMPARE(Text(point.GetBoundingRectangle()), QStringLiteral("3 -4 0 0"));
    }

    void movesToThePointGiven()
    {
        CPoint<> point(3.0, -4.0);
        point.MoveTopLeftTo(CPoint<>(7.0, 8.5));
        QVERIFY(point == CPoint<>(7.0, 8.5));
        CPoint<float> single(1.f, 1.f);
        single.MoveTopLeftTo(CPoint<>(7.0, 8.5));
        QVERIFY(single == CPoint<float>(7.f, 8.5f));
    }

    void containsItselfOnly()
    {
        QVERIFY(CPoint<>(1.5, 2.5).Contains(CPoint<>(1.5, 2.5)));
        QVERIFY(!CPoint<>(1.5, 2.5).Contains(CPoint<>(1.5, 2.6)));
    }

    void coversThePixelItLiesIn()
    {
        QCOMPARE(Picture(CPoint<>(2.999, 1.0).GetPixelRuns(4, 3), 4, 3),
                 (QStringList{QStringLiteral("...."), QStringLiteral("..#."), QStringLiteral("....")}));
        QVERIFY(CPoint<>(-0.001, 1.0).GetPixelRuns(4, 3).empty());
        QVERIFY(CPoint<>(4.0, 1.0).GetPixelRuns(4, 3).empty());
        QVERIFY(CPoint<>(1.0, 3.0).GetPixelRuns(4, 3).empty());
    }

    void aCloneIsIndependent()
    {
        CPoint<> point(1.0, 2.0);
        const auto clone = point.Clone();
        point.SetX(9.0);
        point.SetY(9.0);
        QCOMPARE(Outline(*clone), QStringLiteral("(1, 2)"));
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double y : kNasty) {
                CPoint<> point(x, y);
                QVERIFY2(Survives(point), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CPoint)
#include "tst_CPoint.moc"
