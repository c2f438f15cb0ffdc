// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/annotation/ObjectOutline_p.h>

#include <cmath>
#include <limits>

using namespace Vantor::Annotations;
using Numbers = std::vector<double>;

Q_DECLARE_METATYPE(std::vector<double>)

namespace
{
SObject Make(const char* pKind, Numbers numbers)
{
    SObject object;
    object.kind = pKind;
    object.numbers = std::move(numbers);
    return object;
}
} // namespace

class tst_ObjectOutline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRectangleHasFourCornersWhicheverWayItWasDrawn_data();
    void aRectangleHasFourCornersWhicheverWayItWasDrawn();
    void noChordIsFurtherFromTheEllipseThanPromised_data();
    void noChordIsFurtherFromTheEllipseThanPromised();
    void theExtremePointsOfAnEllipseAreCorners();
    void numbersOfABoxGiveTheBoxBackToTheBit();
    void areasAreTheExactOnes();
    void otherKindsAreTheirPoints();
    void whatIsNotWellFormedIsTold();
};

void tst_ObjectOutline::aRectangleHasFourCornersWhicheverWayItWasDrawn_data()
{
    QTest::addColumn<Numbers>("numbers");
    QTest::newRow("to the bottom right") << Numbers{1, 2, 10, 20};
    QTest::newRow("to the bottom left") << Numbers{11, 2, -10, 20};
    QTest::newRow("to the top right") << Numbers{1, 22, 10, -20};
    QTest::newRow("to the top left") << Numbers{11, 22, -10, -20};
    QTest::newRow("with its corner") << Numbers{11, 22, -9, -9, 1, 2};
}

void tst_ObjectOutline::aRectangleHasFourCornersWhicheverWayItWasDrawn()
{
    QFETCH(Numbers, numbers);
    QCOMPARE(OutlineOf(Make("rectangle", numbers)), (Numbers{1, 2, 11, 2, 11, 22, 1, 22}));
    QCOMPARE(Normalised(Make("ellipse", numbers)).numbers, (Numbers{1, 2, 10, 20}));
    QVERIFY((BoundsOf(Make("ellipse", numbers)) == SBounds{1, 2, 11, 22}));
}

void tst_ObjectOutline::noChordIsFurtherFromTheEllipseThanPromised_data()
{
    QTest::addColumn<double>("radius");
    QTest::addColumn<int>("corners");
    QTest::newRow("a speck") << 0.01 << 16;
    QTest::newRow("small") << 3.0 << 20;
    QTest::newRow("middle") << 50.0 << 72;
    QTest::newRow("large") << 1500.0 << 388;
    QTest::newRow("as fine as it gets") << 1e6 << 720;
}

void tst_ObjectOutline::noChordIsFurtherFromTheEllipseThanPromised()
{
    QFETCH(double, radius);
    QFETCH(int, corners);
    const Numbers outline = OutlineOf(Make("circle", {100, 200, radius}));
    QCOMPARE(static_cast<int>(outline.size()), 2 * corners);
    for (std::size_t i = 0; i + 3 < outline.size(); i += 2) {
        QVERIFY(std::abs(std::hypot(outline[i] - 100, outline[i + 1] - 200) - radius) <
                1e-9 * (radius + 100));
        const double dMiddle =
            std::hypot((outline[i] + outline[i + 2]) / 2 - 100, (outline[i + 1] + outline[i + 3]) / 2 - 200);
        QVERIFY(corners == 720 || radius - dMiddle <= 0.05);
    }
    QVERIFY(outline[3] >= 200.0); // clockwise on the screen
}

void tst_ObjectOutline::theExtremePointsOfAnEllipseAreCorners()
{
    const SObject ellipse = Make("ellipse", {0.1, 0.7, 33.3, 11.9});
    const SBounds box = BoundsOf(ellipse);
    const Numbers outline = OutlineOf(ellipse);
    const std::size_t nQuarter = outline.size() / 4;
    QCOMPARE(outline[0], box.right);
    QCOMPARE(outline[nQuarter + 1], box.bottom);
    QCOMPARE(outline[2 * nQuarter], box.left);
    QCOMPARE(outline[3 * nQuarter + 1], box.top);
    QVERIFY(BoundsOfPoints(outline) == box);
}

void tst_ObjectOutline::numbersOfABoxGiveTheBoxBackToTheBit()
{
    const SBounds odd{-0.1, 1.0, 1e-17, 2.0};
    const Numbers numbers = NumbersOf(odd);
    QCOMPARE(numbers.size(), std::size_t(6));
    QVERIFY(BoundsOf(Make("rectangle", numbers)) == odd);
    QCOMPARE(NumbersOf({1, 2, 3, 5}), (Numbers{1, 2, 2, 3}));
}

void tst_ObjectOutline::areasAreTheExactOnes()
{
    const double dPi = std::acos(-1.0);
    QCOMPARE(AreaOf(Make("rectangle", {10, 20, -3, 4})), 12.0);
    QCOMPARE(AreaOf(Make("ellipse", {10, 20, 6, -4})), dPi * 6.0);
    QCOMPARE(AreaOf(Make("circle", {10, 20, 2})), dPi * 4.0);
    QCOMPARE(AreaOf(Make("polygon", {1e8, 1e8, 1e8 + 2, 1e8, 1e8 + 2, 1e8 + 1, 1e8, 1e8 + 1})), 2.0);
    QCOMPARE(AreaOf(Make("polygon", {0, 0, 0, 4, 4, 0})), 8.0);
    QCOMPARE(AreaOf(Make("ruler", {0, 0, 3, 4})), 0.0);
}

void tst_ObjectOutline::otherKindsAreTheirPoints()
{
    for (const char* pKind : {"ruler", "line", "arrow"})
        QCOMPARE(OutlineOf(Make(pKind, {4, 3, 2, 1})), (Numbers{4, 3, 2, 1}));
    QCOMPARE(OutlineOf(Make("point", {5, 6})), (Numbers{5, 6}));
    QCOMPARE(OutlineOf(Make("text", {5, 6, 12})), (Numbers{5, 6}));
    QCOMPARE(OutlineOf(Make("star", {5, 6, 12})), Numbers());
    QVERIFY((BoundsOf(Make("line", {4, 3, 2, 7})) == SBounds{2, 3, 4, 7}));
    QVERIFY(BoundsOf(Make("star", {5, 6, 12})) == SBounds());
}

void tst_ObjectOutline::whatIsNotWellFormedIsTold()
{
    QVERIFY(IsWellFormed(Make("rectangle", {0, 0, -1, 1e9})));
    QVERIFY(IsWellFormed(Make("star", {})));
    for (const SObject& bad :
         {Make("rectangle", {0, 0, 1}), Make("ellipse", {0, 0, 1, 1, 1}), Make("circle", {0, 0, -1}),
          Make("polygon", {0, 0, 1, 1}), Make("polygon", {0, 0, 1, 1, 2, 2, 3}), Make("arrow", {0, 0, 1}),
          Make("point", {0}), Make("text", {0, 0, -2}), Make("star", {1.1e9}),
          Make("point", {0, std::numeric_limits<double>::quiet_NaN()}),
          Make("point", {0, -std::numeric_limits<double>::infinity()})})
        QVERIFY2(!IsWellFormed(bad), bad.kind.c_str());
}

VANTOR_CORE_TEST_MAIN(tst_ObjectOutline)
#include "tst_ObjectOutline.moc"
