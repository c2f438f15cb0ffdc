// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CArrow.h>

#include <cmath>

using namespace Vantor::Geometry;
using namespace GeometryModel;

class tst_CArrow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itsHeadIsAFifthOfItsLengthAndLeansBackBy30Degrees()
    {
        std::mt19937 random(3);
        for (int i = 0; i < 200; ++i) {
            const CArrow arrow({RandomCoordinate(random), RandomCoordinate(random)},
                               {RandomCoordinate(random), RandomCoordinate(random)});
            const auto barbs = arrow.GetBarbs();
            if (arrow.GetLength() == 0.0)
                continue;
            for (const CPoint<double>& barb : barbs) {
                QVERIFY(std::abs(barb.GetDistance(arrow.end()) - 0.2 * arrow.GetLength()) < 1e-9);
                const double along = (barb.x() - arrow.end().x()) * (arrow.start().x() - arrow.end().x()) +
                                     (barb.y() - arrow.end().y()) * (arrow.start().y() - arrow.end().y());
                const double cosine = along / (0.2 * arrow.GetLength() * arrow.GetLength());
                QVERIFY(std::abs(cosine - std::sqrt(0.75)) < 1e-9);
            }
            QVERIFY(barbs[0].GetDistance(barbs[1]) > 0.19 * arrow.GetLength());
        }
    }

    void itsHandlesAreThoseOfALineAndReshapeTheHead()
    {
        CArrow arrow({0.0, 0.0}, {10.0, 0.0});
        QCOMPARE(int(arrow.GetType()), 8);
        QCOMPARE(Handles(arrow), QStringLiteral("(0, 0) (10, 0)"));
        QVERIFY(arrow.MoveHandle({10.0, 0.0}, {0.0, 20.0}));
        QCOMPARE(Handles(arrow), QStringLiteral("(0, 0) (0, 20)"));
        QVERIFY(std::abs(arrow.GetBarbs()[0].y() - (20.0 - 4.0 * std::sqrt(0.75))) < 1e-12);
    }

    void itsBoxHoldsTheHead()
    {
        const CRectangle box = CArrow({0.0, 50.0}, {100.0, 50.0}).GetBoundingRectangle();
        QVERIFY(std::abs(box.y() - 40.0) < 1e-12);
        QVERIFY(std::abs(box.height() - 20.0) < 1e-12);
        QCOMPARE(box.x(), 0.0);
        QCOMPARE(box.width(), 100.0);
    }

    void itIsMovedWithItsHead()
    {
        CArrow arrow({0.0, 50.0}, {100.0, 50.0});
        arrow.MoveTopLeftTo({10.0, 20.0});
        QVERIFY(arrow.start().GetDistance({10.0, 30.0}) < 1e-12);
        QVERIFY(arrow.end().GetDistance({110.0, 30.0}) < 1e-12);
    }

    void itsOutlineIsTheSegmentAndTheHead()
    {
        const auto vctPieces = CArrow({0.0, 0.0}, {10.0, 0.0}).GetOutline();
        QCOMPARE(vctPieces.size(), std::size_t(2));
        QCOMPARE(int(vctPieces[0].eForm), int(EOutlineForm_Chain));
        QCOMPARE(vctPieces[0].vctPlaces.size(), std::size_t(2));
        QCOMPARE(vctPieces[1].vctPlaces.size(), std::size_t(3));
        QCOMPARE(vctPieces[1].vctPlaces[1].x, 10.0);
    }

    void itsPixelsAreThoseOfItsThreeStrokes()
    {
        const CArrow arrow({2.0, 10.5}, {28.0, 10.5});
        const auto barbs = arrow.GetBarbs();
        const CLine strokes[] = {CLine(arrow.start(), arrow.end()), CLine(barbs[0], arrow.end()),
                                 CLine(barbs[1], arrow.end())};
        QStringList expected = Picture(std::vector<SPixelRun>(), 30, 20);
        for (const CLine& stroke : strokes)
            for (const SPixelRun& run : stroke.GetPixelRuns(30, 20))
                for (int x = run.nBegin; x < run.nEnd; ++x)
                    expected[run.nRow][x] = QLatin1Char('#');
        QCOMPARE(Picture(arrow.GetPixelRuns(30, 20), 30, 20), expected);
        QVERIFY(expected[8].contains(QLatin1Char('#')) && expected[12].contains(QLatin1Char('#')));
        QVERIFY(arrow.Contains(barbs[0]));
        QVERIFY(arrow.Contains({10.0, 10.5}));
        QVERIFY(!arrow.Contains({10.0, 12.0}));
    }

    void aCloneIsAnArrow()
    {
        const CArrow arrow({1.0, 2.0}, {3.0, 4.0});
        const auto pClone = std::dynamic_pointer_cast<CArrow>(arrow.Clone());
        QVERIFY(pClone);
        QVERIFY(pClone->end() == arrow.end());
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double y : kNasty) {
                CArrow arrow({x, 1.0}, {y, x});
                QVERIFY2(Survives(arrow), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CArrow)
#include "tst_CArrow.moc"
