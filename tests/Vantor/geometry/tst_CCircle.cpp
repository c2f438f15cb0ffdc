// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CCircle.h>

using namespace Vantor::Geometry;
using namespace GeometryModel;

class tst_CCircle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasNoHandles()
    {
        const CCircle circle(CPoint<>(5.0, 6.0), 2.0);
        QCOMPARE(int(circle.GetType()), 3);
        QCOMPARE(Handles(circle), QString());
        QCOMPARE(Outline(circle), QStringLiteral("(3, 4) (7, 4) (7, 8) (3, 8)"));
        QCOMPARE(Text(circle.GetBoundingRectangle()), QStringLiteral("3 4 4 4"));
    }

    void aNegativeRadiusCountsAsItsAbsoluteValue()
    {
        QCOMPARE(CCircle(CPoint<>(5.0, 6.0), -2.0).radius(), 2.0);
    }

    void movesByItsBoundingBox()
    {
        CCircle circle(CPoint<>(5.0, 6.0), 2.0);
        circle.MoveTopLeftTo(CPoint<>(10.0, 20.0));
        QVERIFY(circle.center() == CPoint<>(12.0, 22.0));
        QCOMPARE(circle.radius(), 2.0);
    }

    void containsItsEdge()
    {
        const CCircle circle(CPoint<>(0.0, 0.0), 5.0);
        QVERIFY(circle.Contains(CPoint<>(3.0, 4.0)));
        QVERIFY(circle.Contains(CPoint<>(-5.0, 0.0)));
        QVERIFY(!circle.Contains(CPoint<>(3.0, 4.0001)));
    }

    void pixelRunsAgreeWithAPointWiseModel()
    {
        std::mt19937 random(17);
        for (int i = 0; i < 2000; ++i) {
            const double x = RandomCoordinate(random), y = RandomCoordinate(random);
            const double radius = RandomCoordinate(random);
            const auto covers = [&](int px, int py) {
                const double dx = px + 0.5 - x, dy = py + 0.5 - y;
                return dx * dx + dy * dy <= radius * radius;
            };
            QCOMPARE(Picture(CCircle(CPoint<>(x, y), radius).GetPixelRuns(41, 37), 41, 37),
                     Picture(covers, 41, 37));
        }
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double radius : kNasty) {
                CCircle circle(CPoint<>(x, 1.0), radius);
                QVERIFY2(Survives(circle), qPrintable(QStringLiteral("%1 %2").arg(x).arg(radius)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CCircle)
#include "tst_CCircle.moc"
