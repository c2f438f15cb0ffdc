// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <climits>
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

    void anyArithmeticTypeWillDo()
    {
        TryType<int>();
        TryType<unsigned char>();
        TryType<long long>();
        TryType<short>();
        TryType<unsigned int>();
        TryType<float>();
        TryType<double>();
        TryType<long double>();
    }

    void negativeWholeNumbersLieOutside()
    {
        QVERIFY(CPoint<int>(-1, 1).GetPixelRuns(4, 3).empty());
        QVERIFY(CPoint<int>(4, 1).GetPixelRuns(4, 3).empty());
        QVERIFY(CPoint<long long>(1, 1LL << 40).GetPixelRuns(4, 3).empty());
        QCOMPARE(CPoint<unsigned char>(250, 2).GetDistance(CPoint<unsigned char>(5, 2)), 245.0);
    }

    void movingAWholePointTakesTheNearestNumberThatItHas()
    {
        QVERIFY(Moved<int>(7.4, -8.5) == CPoint<int>(7, -9));
        QVERIFY(Moved<int>(1e300, -1e300) == CPoint<int>(INT_MAX, INT_MIN));
        QVERIFY(Moved<unsigned char>(300.0, -1.0) == CPoint<unsigned char>(255, 0));
        QVERIFY(Moved<long long>(9.3e18, -9.3e18) == CPoint<long long>(LLONG_MAX, LLONG_MIN));
        QVERIFY(Moved<long long>(-5e9, 5e9) == CPoint<long long>(-5000000000LL, 5000000000LL));
        QVERIFY(Moved<int>(kNaN, 2.0) == CPoint<int>(3, 1)); // stays
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

private:
    /// Everything that a point can do, with numbers that every type has.
    template <class T> static void TryType()
    {
        CPoint<T> point(T(3), T(1));
        const CGeometry& shape = point;
        QCOMPARE(int(shape.GetType()), 0);
        QCOMPARE(Outline(shape), QStringLiteral("(3, 1)"));
        QCOMPARE(Handles(shape), QString());
        QCOMPARE(Text(shape.GetBoundingRectangle()), QStringLiteral("3 1 0 0"));
        QVERIFY(shape.Contains(CPoint<>(3.0, 1.0)) && !shape.Contains(CPoint<>(3.0, 1.5)));
        QCOMPARE(Picture(shape.GetPixelRuns(4, 2), 4, 2),
                 (QStringList{QStringLiteral("...."), QStringLiteral("...#")}));
        QCOMPARE(point.GetDistance(CPoint<T>(T(0), T(5))), 5.0);
        const auto clone = shape.Clone();
        point.MoveTopLeftTo(CPoint<>(7.0, 8.0));
        QVERIFY(point == CPoint<T>(T(7), T(8)));
        point.SetX(T(2));
        QVERIFY(point != CPoint<T>(T(7), T(8)));
        QCOMPARE(Outline(*clone), QStringLiteral("(3, 1)"));
        QVERIFY(CPoint<T>() == CPoint<T>(T(0), T(0)));
    }
    template <class T> static CPoint<T> Moved(double x, double y)
    {
        CPoint<T> point(T(3), T(1));
        point.MoveTopLeftTo(CPoint<>(x, y));
        return point;
    }
};

VANTOR_CORE_TEST_MAIN(tst_CPoint)
#include "tst_CPoint.moc"
