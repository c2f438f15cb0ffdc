// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <cmath>

using namespace Vantor::Geometry;
using namespace GeometryModel;

class tst_CRectangle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void negativeSizesAreKept()
    {
        const CRectangle rectangle(10.0, 20.0, -4.0, -6.0);
        QCOMPARE(int(rectangle.GetType()), 2);
        QCOMPARE(rectangle.width(), -4.0);
        QCOMPARE(rectangle.height(), -6.0);
        QVERIFY(rectangle.topLeft() == CPoint<>(10.0, 20.0));
        QVERIFY(rectangle.bottomRight() == CPoint<>(6.0, 14.0));
        QCOMPARE(Text(rectangle.GetBoundingRectangle()), QStringLiteral("6 14 4 6"));
    }

    void handlesAreTheRawCornersInOrder()
    {
        QCOMPARE(Handles(CRectangle(1.0, 2.0, 3.0, 4.0)), QStringLiteral("(1, 2) (4, 2) (4, 6) (1, 6)"));
        QCOMPARE(Handles(CRectangle(1.0, 2.0, -3.0, 4.0)), QStringLiteral("(1, 2) (-2, 2) (-2, 6) (1, 6)"));
    }

    void cornerSettersKeepTheOppositeCornerAndNeverNormalise()
    {
        const CRectangle original(10.0, 20.0, 30.0, 40.0);
        CRectangle a = original;
        a.SetTopLeft(CPoint<>(50.0, 70.0));
        QCOMPARE(Text(a), QStringLiteral("50 70 -10 -10"));
        CRectangle b = original;
        b.SetTopRight(CPoint<>(5.0, 70.0));
        QCOMPARE(Text(b), QStringLiteral("10 70 -5 -10"));
        CRectangle c = original;
        c.SetBottomRight(CPoint<>(5.0, 6.0));
        QCOMPARE(Text(c), QStringLiteral("10 20 -5 -14"));
        CRectangle d = original;
        d.SetBottomLeft(CPoint<>(50.0, 6.0));
        QCOMPARE(Text(d), QStringLiteral("50 20 -10 -14"));
    }

    void aCornerThatWasSetIsFoundAgainExactly()
    {
        std::mt19937 random(3);
        std::uniform_real_distribution<double> any(-1e4, 1e4);
        CRectangle rectangle(any(random), any(random), any(random), any(random));
        for (int i = 0; i < 1000; ++i) {
            const CPoint<> point(any(random), any(random));
            const CPoint<> opposite = rectangle.topLeft();
            rectangle.SetBottomRight(point);
            QVERIFY(rectangle.bottomRight() == point);
            QVERIFY(rectangle.topLeft() == opposite);
            const CPoint<> other(any(random), any(random));
            rectangle.SetTopLeft(other);
            QVERIFY(rectangle.topLeft() == other);
            QVERIFY(rectangle.bottomRight() == point);
            rectangle.SetTopRight(point);
            QVERIFY(rectangle.topRight() == point);
            rectangle.SetBottomLeft(other);
            QVERIFY(rectangle.bottomLeft() == other);
            QVERIFY(rectangle.topRight() == point);
        }
    }

    void movingPutsTheBoundingCornerThereAndKeepsTheSigns()
    {
        CRectangle rectangle(10.0, 20.0, -4.0, 6.0);
        rectangle.MoveTopLeftTo(CPoint<>(1.0, 2.0));
        QCOMPARE(Text(rectangle), QStringLiteral("5 2 -4 6"));
        QCOMPARE(Handles(rectangle), QStringLiteral("(5, 2) (1, 2) (1, 8) (5, 8)"));
    }

    void containsItsEdgesNormalised()
    {
        for (const CRectangle& r : {CRectangle(1.0, 2.0, 3.0, 4.0), CRectangle(4.0, 6.0, -3.0, -4.0)}) {
            QVERIFY(r.Contains(CPoint<>(1.0, 2.0)));
            QVERIFY(r.Contains(CPoint<>(4.0, 6.0)));
            QVERIFY(r.Contains(CPoint<>(2.0, 3.0)));
            QVERIFY(!r.Contains(CPoint<>(std::nextafter(4.0, 5.0), 6.0)));
            QVERIFY(!r.Contains(CPoint<>(2.0, std::nextafter(2.0, 1.0))));
        }
    }

    void pixelRunsAgreeWithAPointWiseModel()
    {
        std::mt19937 random(11);
        for (int i = 0; i < 3000; ++i) {
            const double x = RandomCoordinate(random), y = RandomCoordinate(random);
            const double right = RandomCoordinate(random), bottom = RandomCoordinate(random);
            const auto covers = [&](int px, int py) {
                const double cx = px + 0.5, cy = py + 0.5;
                return cx >= std::min(x, right) && cx < std::max(x, right) && cy >= std::min(y, bottom) &&
                       cy < std::max(y, bottom);
            };
            QCOMPARE(Picture(CRectangle(x, y, right - x, bottom - y).GetPixelRuns(41, 37), 41, 37),
                     Picture(covers, 41, 37));
        }
    }

    void anEmptyOneCoversNothingAndAHugeOneTheImage()
    {
        QVERIFY(CRectangle().GetPixelRuns(10, 10).empty());
        QVERIFY(CRectangle(0.5, 0.5, 0.0, 5.0).GetPixelRuns(10, 10).empty());
        QCOMPARE(CRectangle(-1e300, -1e300, 2e300, 2e300).GetPixelRuns(10, 4).size(), std::size_t(4));
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double width : kNasty) {
                CRectangle rectangle(x, 1.0, width, width);
                QVERIFY2(Survives(rectangle), qPrintable(QStringLiteral("%1 %2").arg(x).arg(width)));
            }
        }
    }
    void movingOneThatWasDrawnUpwardsKeepsItsPlacesToo()
    {
        CRectangle rectangle(10.0, 20.0, 4.0, -6.0);
        rectangle.MoveTopLeftTo(CPoint<>(1.0, 2.0));
        QCOMPARE(Text(rectangle), QStringLiteral("1 8 4 -6"));
        QCOMPARE(Handles(rectangle), QStringLiteral("(1, 8) (5, 8) (5, 2) (1, 2)"));
    }
};

VANTOR_CORE_TEST_MAIN(tst_CRectangle)
#include "tst_CRectangle.moc"
