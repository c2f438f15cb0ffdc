// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CLine.h>

using namespace Vantor::Geometry;
using namespace GeometryModel;

namespace
{
/// A bound of the segment's parameter: numerator / denominator (> 0), itself excluded when strict.
struct SBound {
    long long nNumerator;
    long long nDenominator;
    bool bStrict;
};

/// Adds the bounds that begin <= start + t * delta < begin + 8 sets; false if no t fulfils it.
bool AddBounds(long long start, long long delta, long long begin, std::vector<SBound>& lower,
               std::vector<SBound>& upper)
{
    constexpr long long kPixel = 8;
    if (delta == 0)
        return begin <= start && start < begin + kPixel;
    if (delta > 0) {
        lower.push_back({begin - start, delta, false});
        upper.push_back({begin + kPixel - start, delta, true});
    } else {
        lower.push_back({start - begin - kPixel, -delta, true});
        upper.push_back({start - begin, -delta, false});
    }
    return true;
}

/// Whether a closed segment, given in eighths of a pixel, meets the half-open pixel; exact.
bool Crosses(const int (&line)[4], int x, int y)
{
    std::vector<SBound> lower{{0, 1, false}};
    std::vector<SBound> upper{{1, 1, false}};
    if (!AddBounds(line[0], line[2] - line[0], 8LL * x, lower, upper) ||
        !AddBounds(line[1], line[3] - line[1], 8LL * y, lower, upper))
        return false;
    for (const SBound& l : lower) {
        for (const SBound& u : upper) {
            const long long nGap = u.nNumerator * l.nDenominator - l.nNumerator * u.nDenominator;
            if (nGap < 0 || (nGap == 0 && (l.bStrict || u.bStrict)))
                return false;
        }
    }
    return true;
}
} // namespace

class tst_CLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasItsTwoEndsAsHandles()
    {
        const CLine line(CPoint<>(5.0, 6.0), CPoint<>(1.0, 2.0));
        QCOMPARE(int(line.GetType()), 1);
        QCOMPARE(Handles(line), QStringLiteral("(5, 6) (1, 2)"));
        QCOMPARE(Outline(line), QStringLiteral("(5, 6) (1, 2)"));
    }

    void settersReplaceTheEndsAndLengthFollows()
    {
        CLine line;
        QCOMPARE(line.GetLength(), 0.0);
        line.SetStart(CPoint<>(1.0, 1.0));
        line.SetEnd(CPoint<>(4.0, 5.0));
        QVERIFY(line.start() == CPoint<>(1.0, 1.0));
        QVERIFY(line.end() == CPoint<>(4.0, 5.0));
        QCOMPARE(line.GetLength(), 5.0);
    }

    void movingKeepsItsDirection()
    {
        CLine line(CPoint<>(5.0, 6.0), CPoint<>(1.0, 8.0));
        QCOMPARE(Text(line.GetBoundingRectangle()), QStringLiteral("1 6 4 2"));
        line.MoveTopLeftTo(CPoint<>(10.0, 20.0));
        QCOMPARE(Handles(line), QStringLiteral("(14, 20) (10, 22)"));
    }

    void containsPointsWithinHalfAPixel()
    {
        const CLine line(CPoint<>(0.0, 0.0), CPoint<>(10.0, 0.0));
        QVERIFY(line.Contains(CPoint<>(5.0, 0.5)));
        QVERIFY(line.Contains(CPoint<>(5.0, -0.5)));
        QVERIFY(!line.Contains(CPoint<>(5.0, 0.5001)));
        QVERIFY(line.Contains(CPoint<>(-0.5, 0.0)));
        QVERIFY(!line.Contains(CPoint<>(-0.4, -0.4)));
        QVERIFY(line.Contains(CPoint<>(10.5, 0.0)));
        QVERIFY(!line.Contains(CPoint<>(10.51, 0.0)));
        const CLine point(CPoint<>(3.0, 3.0), CPoint<>(3.0, 3.0));
        QVERIFY(point.Contains(CPoint<>(3.5, 3.0)));
        QVERIFY(!point.Contains(CPoint<>(3.51, 3.0)));
        QVERIFY(CLine(CPoint<>(-1e200, 4.0), CPoint<>(1e200, 4.0)).Contains(CPoint<>(5.0, 4.25)));
    }

    void coversThePixelsThatItCrosses()
    {
        QCOMPARE(Picture(CLine(CPoint<>(0.0, 0.0), CPoint<>(3.0, 3.0)).GetPixelRuns(5, 4), 5, 4),
                 (QStringList{QStringLiteral("#...."), QStringLiteral(".#..."), QStringLiteral("..#.."),
                              QStringLiteral("...#.")}));
        QCOMPARE(Picture(CLine(CPoint<>(0.5, 0.5), CPoint<>(4.5, 1.5)).GetPixelRuns(5, 2), 5, 2),
                 (QStringList{QStringLiteral("###.."), QStringLiteral("..###")}));
    }

    void pixelRunsAgreeWithAnExactModel()
    {
        std::mt19937 random(7);
        for (int i = 0; i < 800; ++i) {
            const double x0 = RandomCoordinate(random), y0 = RandomCoordinate(random);
            const double x1 = i % 5 == 0 ? x0 : RandomCoordinate(random);
            const double y1 = i % 7 == 0 ? y0 : RandomCoordinate(random);
            const int eighths[4] = {int(8 * x0), int(8 * y0), int(8 * x1), int(8 * y1)};
            QCOMPARE(Picture(CLine(CPoint<>(x0, y0), CPoint<>(x1, y1)).GetPixelRuns(41, 37), 41, 37),
                     Picture([&](int x, int y) { return Crosses(eighths, x, y); }, 41, 37));
        }
    }

    void hugeLinesAreClipped()
    {
        const auto runs = CLine(CPoint<>(-1e12, -1e12), CPoint<>(1e12, 1e12)).GetPixelRuns(10, 10);
        QCOMPARE(runs.size(), std::size_t(10));
        const auto row = CLine(CPoint<>(-1e308, 4.0), CPoint<>(1e308, 4.0)).GetPixelRuns(10, 10);
        QCOMPARE(row.size(), std::size_t(1));
        QCOMPARE(row[0].nBegin, 0);
        QCOMPARE(row[0].nEnd, 10);
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double y : kNasty) {
                CLine line(CPoint<>(x, 2.0), CPoint<>(3.0, y));
                QVERIFY2(Survives(line), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
                CLine other(CPoint<>(x, y), CPoint<>(y, x));
                QVERIFY2(Survives(other), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CLine)
#include "tst_CLine.moc"
