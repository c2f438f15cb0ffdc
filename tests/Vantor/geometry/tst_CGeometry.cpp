// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/geometry/GeometryModel.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>

using namespace Vantor::Geometry;
using namespace GeometryModel;

namespace
{
/// An ellipse that leaves to the base whatever the base can do.
class CPlain : public CGeometry
{
public:
    explicit CPlain(const CEllipse& ellipse) : m_ellipse(ellipse) {}
    EGeometryType GetType() const override { return EGeometryType_Host; }
    CRectangle GetBoundingRectangle() const override { return m_ellipse.GetBoundingRectangle(); }
    void MoveTopLeftTo(const CPoint<double>& point) override { m_ellipse.MoveTopLeftTo(point); }
    int GetPoints(CPointList& outline, CPointList& handles) const override
    {
        return m_ellipse.GetPoints(outline, handles);
    }
    bool Contains(const CPoint<double>& point) const override { return m_ellipse.Contains(point); }
    std::shared_ptr<CGeometry> Clone() const override { return std::make_shared<CPlain>(m_ellipse); }

private:
    CEllipse m_ellipse;
};

/// A line that claims to be a rectangle.
class CLiar : public CLine
{
public:
    using CLine::CLine;
    EGeometryType GetType() const override { return EGeometryType_Rectangle; }
};

QString TextOf(const std::vector<SOutline>& vctPieces)
{
    QStringList lstPieces;
    for (const SOutline& piece : vctPieces) {
        QString strPiece = QString::number(piece.eForm) + QLatin1Char(':');
        for (const SPlace& place : piece.vctPlaces)
            strPiece += QStringLiteral(" (%1, %2)").arg(place.x).arg(place.y);
        lstPieces << strPiece;
    }
    return lstPieces.join(QLatin1Char(';'));
}

std::shared_ptr<CPolygon> Triangle()
{
    auto pPolygon = std::make_shared<CPolygon>();
    pPolygon->AddEdge(CLine({0.0, 0.0}, {9.0, 1.0}));
    pPolygon->AddEdge(CLine({9.0, 1.0}, {4.0, 7.0}));
    return pPolygon;
}
} // namespace

class tst_CGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBaseFindsThePixelsByAskingForEachCentre()
    {
        std::mt19937 random(7);
        for (int i = 0; i < 500; ++i) {
            const CEllipse ellipse(RandomCoordinate(random), RandomCoordinate(random),
                                   RandomCoordinate(random), RandomCoordinate(random));
            QCOMPARE(Picture(CPlain(ellipse).GetPixelRuns(30, 20), 30, 20),
                     Picture(ellipse.GetPixelRuns(30, 20), 30, 20));
        }
    }

    void theBaseSurvivesNastyValues()
    {
        for (double x : kNasty) {
            for (double width : kNasty) {
                CPlain shape(CEllipse(x, 1.0, width, x));
                QVERIFY2(Survives(shape), qPrintable(QStringLiteral("%1 %2").arg(x).arg(width)));
            }
        }
    }

    void theBaseHasTheOutlineOfItsPointsAndNoHandleThatMoves()
    {
        CPlain shape(CEllipse(1.0, 2.0, 3.0, 4.0));
        QCOMPARE(TextOf(shape.GetOutline()), QStringLiteral("2: (1, 2) (4, 2) (4, 6) (1, 6)"));
        QVERIFY(!shape.MoveHandle({1.0, 2.0}, {0.0, 0.0}));
        QCOMPARE(Text(shape.GetBoundingRectangle()), QStringLiteral("1 2 3 4"));
        QVERIFY(shape.HasFrame());
    }

    void everyShapeTellsItsOutline()
    {
        QCOMPARE(TextOf(CPoint<double>(3.0, 4.0).GetOutline()), QStringLiteral("0: (3, 4)"));
        QCOMPARE(TextOf(CLine({1.0, 2.0}, {5.0, 0.0}).GetOutline()), QStringLiteral("1: (1, 2) (5, 0)"));
        QCOMPARE(TextOf(Triangle()->GetOutline()), QStringLiteral("2: (0, 0) (9, 1) (4, 7)"));
        QCOMPARE(TextOf(CRectangle(5.0, 6.0, -2.0, 3.0).GetOutline()), QStringLiteral("3: (5, 6) (3, 9)"));
        QCOMPARE(TextOf(CEllipse(5.0, 6.0, -2.0, 3.0).GetOutline()), QStringLiteral("4: (3, 6) (5, 9)"));
    }

    void deliberatelyCirclesAndArraysHaveNoOutline()
    {
        CGeometryArray array;
        array.Add(Triangle());
        QVERIFY(array.GetOutline().empty());
        QVERIFY(CCircle({5.0, 5.0}, 3.0).GetOutline().empty());
        QVERIFY(!array.HasFrame());
        QVERIFY(CCircle({5.0, 5.0}, 3.0).HasFrame());
        QVERIFY(!CLine().HasFrame());
    }

    void whatClaimsToBeOfAnotherKindHasNoOutlineButItsOwn()
    {
        QVERIFY(CLiar({1.0, 2.0}, {5.0, 0.0}).GetOutline().empty());
    }

    void aHandleIsMovedByTheShapeItself()
    {
        CLine line({0.0, 0.0}, {4.0, 4.0});
        QVERIFY(line.MoveHandle({4.0, 4.0}, {1.0, 2.0}));
        QCOMPARE(Handles(line), QStringLiteral("(0, 0) (1, 2)"));
        CRectangle rectangle(0.0, 0.0, 4.0, 6.0);
        QVERIFY(rectangle.MoveHandle({4.0, 0.0}, {5.0, -1.0}));
        QCOMPARE(Handles(rectangle), QStringLiteral("(0, -1) (5, -1) (5, 6) (0, 6)"));
        const auto pTriangle = Triangle();
        QVERIFY(pTriangle->MoveHandle({9.0, 1.0}, {8.0, 8.0}));
        QCOMPARE(Handles(*pTriangle), QStringLiteral("(0, 0) (8, 8) (4, 7)"));
        QVERIFY(!pTriangle->MoveHandle({9.0, 1.0}, {0.0, 0.0}));
        QVERIFY(!CCircle({5.0, 5.0}, 3.0).MoveHandle({2.0, 2.0}, {0.0, 0.0}));
    }
};

VANTOR_CORE_TEST_MAIN(tst_CGeometry)
#include "tst_CGeometry.moc"
