// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>

using namespace Vantor::Geometry;
using namespace GeometryModel;

namespace
{
using Points = std::vector<CPoint<double>>;

CPolygon Polygon(const Points& points)
{
    CPointList list;
    for (const CPoint<>& point : points)
        list.Add(point);
    CPolygon polygon;
    polygon.SetPoints(list);
    return polygon;
}

/// Even-odd by counting the edges to the left of the pixel's centre; exact for multiples of 1/8, because it
/// only multiplies.
bool IsInside(const Points& points, int px, int py)
{
    const double x = px + 0.5, y = py + 0.5;
    bool bInside = false;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const CPoint<>& a = points[i];
        const CPoint<>& b = points[(i + 1) % points.size()];
        if ((a.y() <= y) == (b.y() <= y))
            continue;
        const double side = (x - a.x()) * (b.y() - a.y()) - (y - a.y()) * (b.x() - a.x());
        if (b.y() > a.y() ? side >= 0 : side <= 0)
            bInside = !bInside;
    }
    return bInside;
}
} // namespace

class tst_CPolygon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edgesThatMeetDoNotRepeatAVertex()
    {
        const CPoint<> a(0.0, 0.0), b(4.0, 0.0), c(4.0, 4.0);
        CPolygon polygon;
        QCOMPARE(int(polygon.GetType()), 6);
        polygon.AddEdge(CLine(a, b));
        polygon.AddEdge(CLine(b, c));
        QCOMPARE(Handles(polygon), QStringLiteral("(0, 0) (4, 0) (4, 4)"));
        polygon.AddEdge(CLine(c, a));
        QCOMPARE(Handles(polygon), QStringLiteral("(0, 0) (4, 0) (4, 4)"));
        QCOMPARE(Outline(polygon), Handles(polygon));
    }

    void edgesThatDoNotMeetAddBothEnds()
    {
        CPolygon polygon;
        polygon.AddEdge(CLine(CPoint<>(0.0, 0.0), CPoint<>(1.0, 0.0)));
        polygon.AddEdge(CLine(CPoint<>(2.0, 2.0), CPoint<>(3.0, 3.0)));
        QCOMPARE(Handles(polygon), QStringLiteral("(0, 0) (1, 0) (2, 2) (3, 3)"));
    }

    void anEdgeWithoutLengthAddsOneVertex()
    {
        CPolygon polygon;
        polygon.AddEdge(CLine(CPoint<>(1.0, 1.0), CPoint<>(1.0, 1.0)));
        QCOMPARE(Handles(polygon), QStringLiteral("(1, 1)"));
        polygon.AddEdge(CLine(CPoint<>(1.0, 1.0), CPoint<>(1.0, 1.0)));
        QCOMPARE(Handles(polygon), QStringLiteral("(1, 1)"));
    }

    void setPointsTakesPointsAsTheyStandAndSkipsOthers()
    {
        CPointList list;
        list.Add(CPoint<>(1.0, 1.0));
        list.Add(std::make_shared<CLine>());
        list.Add(CPoint<>(1.0, 1.0));
        list.Add(CPoint<>(2.0, 3.0));
        CPolygon polygon;
        QCOMPARE(polygon.SetPoints(list), 0);
        QCOMPARE(Handles(polygon), QStringLiteral("(1, 1) (1, 1) (2, 3)"));
        QCOMPARE(polygon.GetVertices().size(), std::size_t(3));
    }

    void theHandlesAreCopies()
    {
        const CPolygon polygon = Polygon({{0.0, 0.0}, {4.0, 0.0}, {4.0, 4.0}});
        CPointList outline, handles;
        polygon.GetPoints(outline, handles);
        dynamic_cast<CPoint<double>&>(*handles.At(0)).SetX(9.0);
        QCOMPARE(Handles(polygon), QStringLiteral("(0, 0) (4, 0) (4, 4)"));
    }

    void anEmptyOneHasABoundingRectangleOfZerosAndStays()
    {
        CPolygon polygon;
        QCOMPARE(Text(polygon.GetBoundingRectangle()), QStringLiteral("0 0 0 0"));
        polygon.MoveTopLeftTo(CPoint<>(5.0, 5.0));
        QCOMPARE(Handles(polygon), QString());
        QVERIFY(!polygon.Contains(CPoint<>(0.0, 0.0)));
        QVERIFY(polygon.GetPixelRuns(5, 5).empty());
    }

    void movesByItsBoundingBox()
    {
        CPolygon polygon = Polygon({{2.0, 1.0}, {6.0, 3.0}, {1.0, 5.0}});
        QCOMPARE(Text(polygon.GetBoundingRectangle()), QStringLiteral("1 1 5 4"));
        polygon.MoveTopLeftTo(CPoint<>(10.0, 20.0));
        QCOMPARE(Handles(polygon), QStringLiteral("(11, 20) (15, 22) (10, 24)"));
    }

    void containsItsEdgesAndIsEvenOdd()
    {
        const CPolygon triangle = Polygon({{0.0, 0.0}, {8.0, 0.0}, {0.0, 4.0}});
        for (const CPoint<>& edge : {CPoint<>(0.0, 0.0), CPoint<>(8.0, 0.0), CPoint<>(0.0, 4.0),
                                     CPoint<>(4.0, 2.0), CPoint<>(4.0, 0.0)})
            QVERIFY(triangle.Contains(edge));
        QVERIFY(triangle.Contains(CPoint<>(1.0, 1.0)));
        QVERIFY(!triangle.Contains(CPoint<>(4.0, 2.01)));
        QVERIFY(!triangle.Contains(CPoint<>(-0.01, 2.0)));
        // Wound around the middle twice: the middle is outside.
        const CPolygon star = Polygon({{50.0, 0.0}, {80.0, 95.0}, {0.0, 35.0}, {100.0, 35.0}, {20.0, 95.0}});
        QVERIFY(!star.Contains(CPoint<>(50.0, 50.0)));
        QVERIFY(star.Contains(CPoint<>(50.0, 10.0)));
    }

    void pixelRunsAgreeWithAPointWiseModel()
    {
        std::mt19937 random(19);
        for (int i = 0; i < 3000; ++i) {
            Points points;
            for (unsigned n = random() % 12; n > 0; --n)
                points.emplace_back(RandomCoordinate(random), RandomCoordinate(random));
            QCOMPARE(Picture(Polygon(points).GetPixelRuns(41, 37), 41, 37),
                     Picture([&](int x, int y) { return IsInside(points, x, y); }, 41, 37));
        }
    }

    void theWorkDoesNotGrowWithTheRowsOfTheImage()
    {
        // A walk through all rows of one such image takes seconds.
        const int nHuge = std::numeric_limits<int>::max();
        for (int i = 0; i < 1000; ++i) {
            const auto runs =
                Polygon({{1.0, i + 0.0}, {5.0, i + 0.0}, {5.0, i + 2.0}}).GetPixelRuns(9, nHuge);
            QCOMPARE(runs.size(), std::size_t(2));
            QCOMPARE(runs[1].nRow, i + 1);
            QCOMPARE(runs[1].nBegin, 4);
            QCOMPARE(runs[1].nEnd, 5);
        }
    }

    void neighboursShareNoPixelAndLeaveNone()
    {
        const CPoint<> middle(17.375, 11.5);
        const Points rim{{0.0, 0.0}, {40.0, 0.0}, {40.0, 30.0}, {0.0, 30.0}};
        std::size_t nPixels = 0;
        for (std::size_t i = 0; i < rim.size(); ++i) {
            for (const auto& run : Polygon({middle, rim[i], rim[(i + 1) % rim.size()]}).GetPixelRuns(40, 30))
                nPixels += static_cast<std::size_t>(run.nEnd - run.nBegin);
        }
        QCOMPARE(nPixels, std::size_t(1200));
    }

    void hugePolygonsAreClipped()
    {
        const CPolygon polygon =
            Polygon({{-1e300, -1e300}, {1e300, -1e300}, {1e300, 1e300}, {-1e300, 1e300}});
        QCOMPARE(Picture(polygon.GetPixelRuns(3, 2), 3, 2),
                 (QStringList{QStringLiteral("###"), QStringLiteral("###")}));
    }

    void survivesNastyValues()
    {
        for (double x : kNasty) {
            for (double y : kNasty) {
                CPolygon polygon = Polygon({{x, 0.0}, {5.0, y}, {y, x}, {0.0, 6.0}});
                QVERIFY2(Survives(polygon), qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_CPolygon)
#include "tst_CPolygon.moc"
