// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CEllipse.h>

using namespace Vantor::Geometry;
using namespace GeometryModel;

class tst_CEllipse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isGivenByItsBoundingBox()
    {
        const CEllipse ellipse(10.0, 20.0, -4.0, 6.0);
        QCOMPARE(int(ellipse.GetType()), 4);
        QCOMPARE(ellipse.centerX(), 8.0);
        QCOMPARE(ellipse.centerY(), 23.0);
        QCOMPARE(ellipse.radiusA(), 2.0);
        QCOMPARE(ellipse.radiusB(), 3.0);
        QCOMPARE(ellipse.width(), -4.0);
        QCOMPARE(Text(ellipse.GetBoundingRectangle()), QStringLiteral("6 20 4 6"));
    }

    void handlesAreTheRawCornersInOrder()
    {
        QCOMPARE(Handles(CEllipse(1.0, 2.0, -3.0, 4.0)), QStringLiteral("(1, 2) (-2, 2) (-2, 6) (1, 6)"));
    }

    void cornerSettersKeepTheOppositeCorner()
    {
        CEllipse ellipse(10.0, 20.0, 30.0, 40.0);
        ellipse.SetBottomLeft(CPoint<>(50.0, 5.0));
        QCOMPARE(Handles(ellipse), QStringLiteral("(50, 20) (40, 20) (40, 5) (50, 5)"));
    }

    void containsPointsByItsEquation()
    {
        const CEllipse ellipse(0.0, 0.0, 10.0, 6.0);
        for (const CPoint<>& edge : {CPoint<>(0.0, 3.0), CPoint<>(10.0, 3.0), CPoint<>(5.0, 0.0),
                                     CPoint<>(5.0, 6.0), CPoint<>(8.0, 5.4), CPoint<>(1.0, 1.2)})
            QVERIFY(ellipse.Contains(edge));
        QVERIFY(!ellipse.Contains(CPoint<>(0.0, 0.0)));
        QVERIFY(!ellipse.Contains(CPoint<>(8.0, 5.41)));
        QVERIFY(!ellipse.Contains(CPoint<>(10.0001, 3.0)));
    }

    void aFlatOneIsASegment()
    {
        const CEllipse flat(2.0, 3.0, 4.0, 0.0);
        QVERIFY(flat.Contains(CPoint<>(2.0, 3.0)));
        QVERIFY(flat.Contains(CPoint<>(6.0, 3.0)));
        QVERIFY(!flat.Contains(CPoint<>(4.0, 3.1)));
        QVERIFY(!flat.Contains(CPoint<>(6.1, 3.0)));
    }

    void pixelRunsAgreeWithAPointWiseModel()
    {
        std::mt19937 random(13);
        for (int i = 0; i < 3000; ++i) {
            const double x = RandomCoordinate(random), y = RandomCoordinate(random);
            const double width = RandomCoordinate(random), height = RandomCoordinate(random);
            if (width == 0.0 || height == 0.0)
                continue;
            // Whole numbers where a pixel lies on the edge: multiplied out, nothing is rounded.
            const auto covers = [&](int px, int py) {
                const double dx = 2 * (px + 0.5 - x) - width, dy = 2 * (py + 0.5 - y) - height;
                return dx * dx * height * height + dy * dy * width * width <= width * width * height * height;
            };
            QCOMPARE(Picture(CEllipse(x, y, width, height).GetPixelRuns(41, 37), 41, 37),
                     Picture(covers, 41, 37));
        }
    }

    void aHugeOneCoversTheImage()
    {
        QCOMPARE(CEllipse(-1e9, -1e9, 2e9, 2e9).GetPixelRuns(10, 4).size(), std::size_t(4));
        QCOMPARE(CEllipse(-1e9, -1e9, 2e9, 2e9).GetPixelRuns(10, 4)[2].nEnd, 10);
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double width : kNasty) {
                CEllipse ellipse(x, 1.0, width, x);
                QVERIFY2(Survives(ellipse), qPrintable(QStringLiteral("%1 %2").arg(x).arg(width)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CEllipse)
#include "tst_CEllipse.moc"
