// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>

using namespace Vantor::Geometry;
using namespace GeometryModel;

class tst_CGeometryArray : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sharesItsMembersAndHasNoHandles()
    {
        CGeometryArray array;
        QCOMPARE(int(array.GetType()), 7);
        const auto line = std::make_shared<CLine>(CPoint<>(1.0, 2.0), CPoint<>(3.0, 4.0));
        array.Add(line);
        array.Add(std::make_shared<CPoint<>>(9.0, 9.0));
        QCOMPARE(array.Size(), 2);
        QCOMPARE(array.At(0).get(), static_cast<CGeometry*>(line.get()));
        QVERIFY(!array.At(2));
        QVERIFY(!array.At(-1));
        QCOMPARE(Handles(array), QString());
        QCOMPARE(Outline(array), QStringLiteral("(1, 2) (3, 4) (9, 9)"));
    }

    void nullAndRingsAreIgnored()
    {
        const auto outer = std::make_shared<CGeometryArray>();
        const auto middle = std::make_shared<CGeometryArray>();
        const auto inner = std::make_shared<CGeometryArray>();
        outer->Add(nullptr);
        outer->Add(outer);
        QCOMPARE(outer->Size(), 0);
        outer->Add(middle);
        middle->Add(inner);
        inner->Add(outer);
        inner->Add(middle);
        QCOMPARE(inner->Size(), 0);
        QCOMPARE(outer->Size(), 1);
    }

    void boundsPassOverEmptyMembers()
    {
        CGeometryArray array;
        array.Add(std::make_shared<CPolygon>());
        array.Add(std::make_shared<CGeometryArray>());
        QCOMPARE(Text(array.GetBoundingRectangle()), QStringLiteral("0 0 0 0"));
        array.Add(std::make_shared<CRectangle>(10.0, 20.0, -4.0, 5.0));
        array.Add(std::make_shared<CPoint<>>(8.0, 30.0));
        QCOMPARE(Text(array.GetBoundingRectangle()), QStringLiteral("6 20 4 10"));
    }

    void movesAllMembersTogether()
    {
        CGeometryArray array;
        const auto rectangle = std::make_shared<CRectangle>(10.0, 20.0, -4.0, 5.0);
        const auto point = std::make_shared<CPoint<>>(8.0, 30.0);
        array.Add(rectangle);
        array.Add(point);
        array.Add(point); // twice, and moved once all the same
        array.MoveTopLeftTo(CPoint<>(106.0, 120.0));
        QCOMPARE(Text(*rectangle), QStringLiteral("110 120 -4 5"));
        QVERIFY(*point == CPoint<>(108.0, 130.0));
    }

    void anArrayInAnArrayCountsIfItHoldsAnything()
    {
        CGeometryArray array;
        array.Add(std::make_shared<CRectangle>(10.0, 20.0, 4.0, 5.0));
        const auto inner = std::make_shared<CGeometryArray>();
        array.Add(inner);
        CRectangle box = array.GetBoundingRectangle();
        QVERIFY(box.x() == 10.0 && box.y() == 20.0 && box.width() == 4.0 && box.height() == 5.0);
        inner->Add(std::make_shared<CGeometryArray>());
        inner->Add(std::make_shared<CPoint<>>(2.0, 3.0));
        box = array.GetBoundingRectangle();
        QVERIFY(box.x() == 2.0 && box.y() == 3.0 && box.width() == 12.0 && box.height() == 22.0);
    }

    void containsWhatAnyMemberContains()
    {
        CGeometryArray array;
        QVERIFY(!array.Contains(CPoint<>(0.0, 0.0)));
        array.Add(std::make_shared<CRectangle>(0.0, 0.0, 2.0, 2.0));
        array.Add(std::make_shared<CCircle>(CPoint<>(10.0, 10.0), 2.0));
        QVERIFY(array.Contains(CPoint<>(1.0, 1.0)));
        QVERIFY(array.Contains(CPoint<>(11.0, 11.0)));
        QVERIFY(!array.Contains(CPoint<>(5.0, 5.0)));
    }

    void pixelRunsAreTheUnionOfItsMembers()
    {
        std::mt19937 random(23);
        for (int i = 0; i < 500; ++i) {
            CGeometryArray array;
            std::vector<QStringList> vctPictures;
            for (int n = 0; n < 4; ++n) {
                std::shared_ptr<CGeometry> member;
                const CPoint<> a(RandomCoordinate(random), RandomCoordinate(random));
                const CPoint<> b(RandomCoordinate(random), RandomCoordinate(random));
                if (n == 0)
                    member = std::make_shared<CLine>(a, b);
                else if (n == 1)
                    member = std::make_shared<CCircle>(a, b.x() / 4);
                else
                    member = std::make_shared<CRectangle>(a.x(), a.y(), b.x() / 2, b.y() / 2);
                vctPictures.push_back(Picture(member->GetPixelRuns(41, 37), 41, 37));
                array.Add(member);
            }
            const auto covers = [&](int x, int y) {
                return std::any_of(vctPictures.begin(), vctPictures.end(),
                                   [&](const QStringList& p) { return p[y][x] == QLatin1Char('#'); });
            };
            QCOMPARE(Picture(array.GetPixelRuns(41, 37), 41, 37), Picture(covers, 41, 37));
        }
    }

    void aCloneIsDeep()
    {
        CGeometryArray array;
        const auto point = std::make_shared<CPoint<>>(1.0, 2.0);
        array.Add(point);
        const auto clone = array.Clone();
        point->SetX(9.0);
        QCOMPARE(Outline(*clone), QStringLiteral("(1, 2)"));
        QCOMPARE(Outline(array), QStringLiteral("(9, 2)"));
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double y : kNasty) {
                CGeometryArray array;
                array.Add(std::make_shared<CRectangle>(x, 0.0, y, 2.0));
                array.Add(std::make_shared<CLine>(CPoint<>(y, 0.0), CPoint<>(0.0, x)));
                QVERIFY2(Survives(array), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CGeometryArray)
#include "tst_CGeometryArray.moc"
