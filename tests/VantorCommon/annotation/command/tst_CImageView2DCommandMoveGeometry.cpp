// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/annotation/command/EditingBench.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CPointList.h>
#include <VantorCommon/annotation/command/CCommandArray.h>
#include <VantorCommon/annotation/command/CImageView2DCommandMoveGeometry.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>

#include <QApplication>

using MoveGeometry = CImageView2DCommandMoveGeometry;
using namespace Vantor::Geometry;

namespace
{
// A polygon whose vertices drift when it is moved far away and back.
ShapePtr MakeDriftingPolygon()
{
    CPointList points;
    points.Add(CPoint<double>(0.1, 0.2));
    points.Add(CPoint<double>(1.0 / 3.0, 7.7));
    points.Add(CPoint<double>(5.3, 0.7));
    auto pPolygon = std::make_shared<CPolygon>();
    pPolygon->SetPoints(points);
    return MakeShape(pPolygon);
}

std::vector<CPoint<double>> Vertices(const ShapePtr& pShape)
{
    return dynamic_cast<const CPolygon&>(*pShape->GetData()).GetVertices();
}

const QPointF kFar(123456.7, 98765.4);
} // namespace

class tst_CImageView2DCommandMoveGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTopLeftCornerGoesToThePointLessTheOffsetAndBack()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(10, 20, -4, 6);
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(8, 23), QPointF(108, 223), 2, 3));
        QCOMPARE(pShape->GetBoundary(), QRectF(106, 220, 4, 6));
        QCOMPARE(RawBox(pShape), (std::vector<double>{110, 220, -4, 6}));
        bench.history.Undo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{10, 20, -4, 6}));
        bench.history.Redo();
        QCOMPARE(RawBox(pShape), (std::vector<double>{110, 220, -4, 6}));
    }

    void undoIsExactWhereTwoMovesWouldDrift()
    {
        EditingBench bench;
        const ShapePtr pDrifting = MakeDriftingPolygon();
        const auto vctBefore = Vertices(pDrifting);
        pDrifting->MoveTopLeftTo(kFar);
        pDrifting->MoveTopLeftTo(QPointF(0.1, 0.2));
        QVERIFY(Vertices(pDrifting) != vctBefore);

        const ShapePtr pShape = MakeDriftingPolygon();
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(0.1, 0.2), kFar, 0, 0));
        const auto vctAfter = Vertices(pShape);
        QVERIFY(vctAfter != vctBefore);
        for (int i = 0; i < 3; ++i) {
            bench.history.Undo();
            QVERIFY(Vertices(pShape) == vctBefore);
            bench.history.Redo();
            QVERIFY(Vertices(pShape) == vctAfter);
        }
    }

    void anObjectMovedLiveStaysAtTheFirstExecutionAndReturnsExactly()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeDriftingPolygon();
        const auto vctBefore = Vertices(pShape);
        const auto pBefore = pShape->GetData()->Clone();
        for (int i = 0; i < 10; ++i)
            pShape->MoveTopLeftTo(kFar * i);
        const auto vctAfter = Vertices(pShape);
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(0.1, 0.2), kFar * 9, 0, 0, pBefore));
        QVERIFY(Vertices(pShape) == vctAfter);
        bench.history.Undo();
        QVERIFY(Vertices(pShape) == vctBefore);
        bench.history.Redo();
        QVERIFY(Vertices(pShape) == vctAfter);
    }

    void withoutTheShapeBeforeALiveMoveIsUndoneByThePoints()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(106, 220, 4, 6);
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(8, 23), QPointF(108, 223), 2, 3));
        QCOMPARE(pShape->GetBoundary(), QRectF(106, 220, 4, 6));
        bench.history.Undo();
        QCOMPARE(pShape->GetBoundary(), QRectF(6, 20, 4, 6));
        bench.history.Redo();
        QCOMPARE(pShape->GetBoundary(), QRectF(106, 220, 4, 6));
    }

    void undoAndRedoAnnounceTheChange()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(0, 0, 4, 6);
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(0, 0), QPointF(9, 9), 0, 0));
        QSignalSpy spy(pShape.get(), &CImageView2DDrawableObject::signal_ChangeDrawableObjectProperty);
        bench.history.Undo();
        QCOMPARE(spy.count(), 1);
        bench.history.Redo();
        QCOMPARE(spy.count(), 2);
    }

    void redoOnTopOfANewStepKeepsThatStep()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(0, 0, 4, 6);
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(0, 0), QPointF(50, 60), 0, 0));
        bench.history.Undo();
        pShape->ChangeData(std::make_shared<CRectangle>(1, 1, 8, 9));
        bench.history.Redo();
        QCOMPARE(pShape->GetBoundary(), QRectF(50, 60, 8, 9));
        bench.history.Undo();
        QCOMPARE(pShape->GetBoundary(), QRectF(1, 1, 8, 9));
    }

    void theKeptShapesAreNotTouchedByLaterEditing()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(0, 0, 4, 6);
        bench.Run(new MoveGeometry(&bench.ctrl, pShape, QPointF(0, 0), QPointF(50, 60), 0, 0));
        bench.history.Undo();
        pShape->MoveResizePoint(QPointF(4, 6), QPointF(10, 10));
        pShape->MoveResizePoint(QPointF(10, 10), QPointF(4, 6));
        bench.history.Redo();
        pShape->MoveTopLeftTo(QPointF(9, 9));
        pShape->MoveTopLeftTo(QPointF(50, 60));
        bench.history.Undo();
        QCOMPARE(pShape->GetBoundary(), QRectF(0, 0, 4, 6));
    }

    void aSelectionMovesBackWithOneUndo()
    {
        EditingBench bench;
        const ShapePtr a = MakeRectangle(0, 0, 4, 6);
        const ShapePtr b = MakeShape(std::make_shared<CCircle>(CPoint<double>(5, 5), 2));
        auto* pArray = new CCommandArray;
        pArray->addCommand(new MoveGeometry(&bench.ctrl, a, QPointF(0, 0), QPointF(50, 60), 0, 0));
        pArray->addCommand(new MoveGeometry(&bench.ctrl, b, QPointF(3, 3), QPointF(53, 63), 0, 0));
        bench.Run(pArray);
        QCOMPARE(b->GetBoundary(), QRectF(53, 63, 4, 4));
        bench.history.Undo();
        QCOMPARE(a->GetBoundary(), QRectF(0, 0, 4, 6));
        QCOMPARE(b->GetBoundary(), QRectF(3, 3, 4, 4));
    }

    void withoutAnObjectOrAShapeOrAControllerNothingHappens()
    {
        EditingBench bench;
        const ShapePtr pShape = MakeRectangle(0, 0, 4, 6);
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        bench.Run(new MoveGeometry(&bench.ctrl, nullptr, QPointF(0, 0), QPointF(5, 5), 0, 0));
        bench.Run(new MoveGeometry(&bench.ctrl, MakeShape(nullptr), QPointF(0, 0), QPointF(5, 5), 0, 0));
        bench.Run(new MoveGeometry(&bench.ctrl, pText, QPointF(0, 0), QPointF(5, 5), 0, 0));
        bench.Run(new MoveGeometry(nullptr, pShape, QPointF(0, 0), QPointF(5, 5), 0, 0));
        for (int i = 0; i < 4; ++i)
            bench.history.Undo();
        for (int i = 0; i < 4; ++i)
            bench.history.Redo();
        QCOMPARE(pShape->GetBoundary(), QRectF(0, 0, 4, 6));
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DCommandMoveGeometry)
#include "tst_CImageView2DCommandMoveGeometry.moc"
