// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/EditingBench.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CPointList.h>
#include <VantorCommon/annotation/command/CImageView2DCommandResizeGeometry.h>

#include <QApplication>

using ResizeGeometry = CImageView2DCommandResizeGeometry;
using namespace Vantor::Geometry;

class tst_CImageView2DCommandResizeGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theHandleGoesFromTheFirstPointToTheSecond()
    {
        EditingBench bench;
        QVERIFY(bench.ShowAtPixelSize(4));
        const ShapePtr pShape = MakeRectangle(10, 10, 40, 30);
        bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(50, 40), QPointF(70, 80), QPointF(9, 9)));
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 60, 70}));
        bench.history.Undo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 40, 30}));
        bench.history.Redo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 60, 70}));
    }

    void undoFindsTheHandleAtItsNewPlaceAndMovesItBackToTheOldOne()
    {
        EditingBench bench;
        QVERIFY(bench.ShowAtPixelSize(4));
        // The drag has already taken the corner from (50, 40) to (70, 80), and nobody kept the shape before.
        const ShapePtr pShape = MakeRectangle(10, 10, 60, 70);
        bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(50, 40), QPointF(70, 80), QPointF()));
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 60, 70}));
        bench.history.Undo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 40, 30}));
        bench.history.Redo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 60, 70}));
    }

    void undoIsExactThoughTheHandleWasTakenBesideItAndTheZoomChanged()
    {
        EditingBench bench;
        QVERIFY(bench.ShowAtPixelSize(2));
        const ShapePtr pShape = MakeRectangle(10, 10, 40, 30);
        bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(53, 43), QPointF(71, 82), QPointF()));
        const auto vctAfter = RawBox(pShape);
        QCOMPARE(vctAfter, (std::vector<double>{10, 10, 61, 72}));
        QVERIFY(bench.ShowAtPixelSize(6));
        bench.history.Undo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 40, 30}));
        bench.history.Redo();
        QCOMPARE(RawBox(pShape), vctAfter);
    }

    void aShapeOfAFewPixelsReturnsExactly()
    {
        EditingBench bench;
        QVERIFY(bench.ShowAtPixelSize(2));
        const ShapePtr pShape = MakeRectangle(10, 10, 2, 1);
        bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(12, 11), QPointF(13, 12), QPointF()));
        const auto vctAfter = RawBox(pShape);
        QVERIFY((vctAfter != std::vector<double>{10, 10, 2, 1}));
        bench.history.Undo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 2, 1}));
        bench.history.Redo();
        QCOMPARE(RawBox(pShape), vctAfter);
    }

    void aSmallShapeReshapedLiveStaysAtTheFirstExecutionAndReturnsExactly()
    {
        EditingBench bench;
        QVERIFY(bench.ShowAtPixelSize(2));
        const ShapePtr pShape = MakeRectangle(10, 10, 2, 1);
        const auto pBefore = pShape->GetData()->Clone();
        pShape->MoveResizePoint(QPointF(12, 11), QPointF(13.5, 12.25));
        bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(12, 11), QPointF(13.5, 12.25), QPointF(),
                                     pBefore));
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 3.5, 2.25}));
        bench.history.Undo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 2, 1}));
        bench.history.Redo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 10, 3.5, 2.25}));
    }

    void aShapeThatWasReplacedMeanwhileIsNotReplacedByUndoOnlyItsHandleGoesBack()
    {
        const auto polygon = [](const std::vector<CPoint<double>>& vertices) {
            CPointList points;
            for (const auto& vertex : vertices)
                points.Add(vertex);
            auto pPolygon = std::make_shared<CPolygon>();
            pPolygon->SetPoints(points);
            return pPolygon;
        };
        using Vertices = std::vector<CPoint<double>>;
        // The box is the same each time; once a vertex more, once another vertex.
        const std::pair<Vertices, Vertices> replacements[] = {
            {{{10, 10}, {50, 10}, {70, 80}, {30, 80}}, {{10, 10}, {50, 10}, {50, 40}, {30, 80}}},
            {{{10, 10}, {60, 10}, {70, 80}}, {{10, 10}, {60, 10}, {50, 40}}}};
        for (const auto& [meanwhile, expected] : replacements) {
            EditingBench bench;
            QVERIFY(bench.ShowAtPixelSize(4));
            const ShapePtr pShape = MakeShape(polygon({{10, 10}, {50, 10}, {50, 40}}));
            bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(50, 40), QPointF(70, 80), QPointF()));
            QCOMPARE(pShape->GetBoundary(), QRectF(10, 10, 60, 70));
            pShape->SetData(polygon(meanwhile));
            bench.history.Undo();
            const auto pNow = std::dynamic_pointer_cast<CPolygon>(pShape->GetData());
            QVERIFY(pNow);
            QVERIFY(pNow->GetVertices() == expected);
        }
    }

    void aCircleStaysAsItIs()
    {
        EditingBench bench;
        QVERIFY(bench.ShowAtPixelSize(2));
        const ShapePtr pShape = MakeShape(std::make_shared<CCircle>(CPoint<double>(50, 50), 10));
        bench.Run(new ResizeGeometry(&bench.ctrl, pShape, QPointF(40, 40), QPointF(20, 20), QPointF()));
        bench.history.Undo();
        bench.history.Redo();
        QCOMPARE(pShape->GetBoundary(), QRectF(40, 40, 20, 20));
    }

    void withoutAnObjectNothingHappens()
    {
        EditingBench bench;
        bench.Run(new ResizeGeometry(&bench.ctrl, nullptr, QPointF(0, 0), QPointF(5, 5), QPointF()));
        bench.history.Undo();
        bench.history.Redo();
        QCOMPARE(bench.geometry.Size(), 0);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DCommandResizeGeometry)
#include "tst_CImageView2DCommandResizeGeometry.moc"
