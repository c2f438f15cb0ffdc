// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <tests/support/EditFixture.h>
#include <tests/support/LogRecorder.h>
#include <tests/support/TestMain.h>

using namespace Vantor::Geometry;

class tst_Drawing : public QObject
{
    Q_OBJECT

private:
    static QVector<QPointF> VerticesOf(const EditFixture::ObjectPtr& pObject)
    {
        QVector<QPointF> vctVertices;
        if (const auto pPolygon = EditFixture::ShapeOf<CPolygon>(pObject))
            for (const auto& vertex : pPolygon->GetVertices())
                vctVertices << QPointF(vertex.x(), vertex.y());
        return vctVertices;
    }
    static void DrawPolygonCorners(EditFixture& f, std::initializer_list<QPointF> points)
    {
        for (const QPointF& point : points) {
            f.Move(point);
            f.Click(point);
        }
    }

private Q_SLOTS:
    void aRectangleGrowsUnderTheMouseAndIsNamedAndSelected()
    {
        EditFixture f;
        f.Choose("Rect");
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Rectanlge);
        f.Press({20, 30});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        for (const QPointF& point : {QPointF(30, 40), QPointF(60, 80)}) {
            f.Move(point);
            const auto vctDrawing = f.geometry.GetObjectDrawing();
            QCOMPARE(vctDrawing.size(), std::size_t(1));
            QCOMPARE(f.BoxOf(vctDrawing[0]), QRectF(20, 30, point.x() - 20, point.y() - 30));
            QVERIFY(!vctDrawing[0]->GetDisplayName());
            QCOMPARE(f.view->GetLayerDrawing()->GetDrawableObjects(), vctDrawing);
        }
        f.Release({60, 80});
        QCOMPARE(f.geometry.Size(), 1);
        const auto pObject = f.geometry.GetAt(0);
        QCOMPARE(f.BoxOf(pObject), QRectF(20, 30, 40, 50));
        QCOMPARE(pObject->GetName(), QString::asprintf("Rectangle_%u", pObject->GetUID()));
        QVERIFY(pObject->GetSelected());
        QVERIFY(pObject->GetDisplayName());
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        QVERIFY(f.view->GetLayerDrawing()->GetDrawableObjects().empty());
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void aClickInRectangleModeWithoutMovingAddsARectangleOfSize0x0AndReturnsToSelecting()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Click({50, 60});
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(50, 60, 0, 0));
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void thereIsDeliberatelyNoMinimumSizeAndTheEmptyShapeCanBeUndone()
    {
        EditFixture f;
        f.Choose("Ellipse");
        f.Click({50, 60});
        QCOMPARE(f.geometry.Size(), 1);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aDragFromRightToLeftStoresANegativeWidth()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({80, 90}, {30, 40});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(80, 90, -50, -50));
    }

    void inCircleModeADragFrom10And10To13And14MakesAnEllipseAt5And5WithWidthAndHeight10()
    {
        EditFixture f;
        f.Choose("Circle");
        f.Press({10, 10});
        f.Move({13, 14});
        QCOMPARE(f.BoxOf(f.geometry.GetObjectDrawing().at(0)), QRectF(5, 5, 10, 10));
        f.Release({13, 14});
        const auto pObject = f.geometry.GetAt(0);
        QVERIFY(f.ShapeOf<CEllipse>(pObject));
        QCOMPARE(f.BoxOf(pObject), QRectF(5, 5, 10, 10));
        QCOMPARE(pObject->GetName(), QString::asprintf("Ellipse_%u", pObject->GetUID()));
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void theEllipseToolMakesAnEllipseInTheDraggedBox()
    {
        EditFixture f;
        f.Choose("Ellipse");
        f.Drag({20, 30}, {60, 50});
        QVERIFY(f.ShapeOf<CEllipse>(f.geometry.GetAt(0)));
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(20, 30, 40, 20));
    }

    void theCircleToolsEllipseIsResizedLikeOne()
    {
        EditFixture f;
        f.Choose("Circle");
        f.Drag({100, 70}, {130, 110});
        f.Move({151, 121});
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
        f.Drag({150, 120}, {160, 125});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(50, 20, 110, 105));
    }

    void theLineToolMakesARulerFromPressToRelease()
    {
        EditFixture f;
        f.ctrl->slot_DrawRuler();
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Line);
        f.Press({10, 20});
        f.Move({40, 60});
        QVERIFY(!f.geometry.GetObjectDrawing().at(0)->GetDisplayName());
        f.Release({40, 60});
        const auto pObject = f.geometry.GetAt(0);
        QVERIFY(std::dynamic_pointer_cast<CImageView2DDrawableRuler>(pObject));
        const auto pLine = f.ShapeOf<CLine>(pObject);
        QVERIFY(pLine);
        QVERIFY(pLine->start() == CPoint<double>(10, 20) && pLine->end() == CPoint<double>(40, 60));
        QCOMPARE(pLine->GetLength(), 50.0);
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void aNewShapeIsSelectedAlone()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({10, 10}, {40, 40});
        f.Choose("Rect");
        f.Drag({100, 100}, {140, 140});
        QCOMPARE(f.Selected(), std::vector<EditFixture::ObjectPtr>{f.geometry.GetAt(0)});
        QCOMPARE(f.geometry.Size(), 2);
    }

    void modeSlotsSetTheModeAndNothingElse()
    {
        EditFixture f;
        using Slot = void (CImageView2DCtrl::*)();
        const Slot slots_[] = {
            &CImageView2DCtrl::slot_ChangeSelectMode,   &CImageView2DCtrl::slot_ChangePanningMode,
            &CImageView2DCtrl::slot_SelectROIRectangle, &CImageView2DCtrl::slot_SelectROIEllipse,
            &CImageView2DCtrl::slot_SelectROICircle,    &CImageView2DCtrl::slot_SelectROIPolygon,
            &CImageView2DCtrl::slot_DrawRuler};
        f.tool.SetViewMode(EImageView2DMode_Drawing_Line);
        LogRecorder log;
        for (int i = 0; i < 7; ++i) {
            (f.ctrl.get()->*slots_[i])();
            QCOMPARE(int(f.tool.GetViewMode()), i);
        }
        QCOMPARE(log.Take().filter(QStringLiteral("Clear Object")), QStringList());
    }

    void everyToolOfTheDockSetsItsMode()
    {
        EditFixture f;
        const std::pair<const char*, int> tools[] = {{"Rect", 2},    {"Ellipse", 3}, {"Circle", 4},
                                                     {"Polygon", 5}, {"Panning", 1}, {"Select", 0}};
        for (const auto& [szText, nMode] : tools) {
            f.Choose(szText);
            QCOMPARE(int(f.tool.GetViewMode()), nMode);
            QVERIFY(f.view->hasFocus());
        }
    }

    void aClickInTheToolDockLeavesTheKeyboardToTheView()
    {
        EditFixture f;
        f.Choose("Rect");
        QVERIFY(f.view->hasFocus());
        const QWidget* pPanel = f.toolDock->widget();
        const QPoint beside = pPanel->mapTo(pPanel->window(), QPoint(2, pPanel->height() - 3));
        QTest::mouseClick(f.Window(), Qt::LeftButton, Qt::NoModifier, beside);
        QVERIFY(f.view->hasFocus());
        f.Drag({20, 20}, {60, 50});
        QCOMPARE(f.geometry.Size(), 1);
        f.Choose("Panning");
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aPolygonIsClosedByAReleaseNearItsFirstVertex()
    {
        EditFixture f;
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{20, 20}, {80, 20}, {80, 80}, {20, 80}});
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(4));
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Polygon);
        f.Move({50, 60});
        const auto pRubber = f.ShapeOf<CLine>(f.geometry.GetObjectDrawingWaiting());
        QVERIFY(pRubber);
        QVERIFY(pRubber->start() == CPoint<double>(20, 80) && pRubber->end() == CPoint<double>(50, 60));
        QVERIFY(!f.geometry.GetObjectDrawingWaiting()->GetDisplayName());
        f.Click({22, 23});
        QCOMPARE(f.geometry.Size(), 1);
        const auto pObject = f.geometry.GetAt(0);
        QCOMPARE(VerticesOf(pObject), (QVector<QPointF>{{20, 20}, {80, 20}, {80, 80}, {20, 80}}));
        QCOMPARE(pObject->GetName(), QString::asprintf("Polygon_%u", pObject->GetUID()));
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        QVERIFY(!f.geometry.GetObjectDrawingWaiting());
        QVERIFY(f.view->GetLayerDrawing()->GetDrawableObjects().empty());
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void withTwoEdgesAReleaseOnTheFirstVertexAppendsAThirdAndTheNextOneCloses()
    {
        EditFixture f;
        f.Choose("Polygon");
        // The first click appends an edge without length, which counts.
        DrawPolygonCorners(f, {{20, 20}, {80, 20}});
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(2));
        f.Click({20, 20});
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(3));
        f.Click({20, 20});
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(VerticesOf(f.geometry.GetAt(0)), (QVector<QPointF>{{20, 20}, {80, 20}}));
    }

    void edgesWithoutLengthDeliberatelyCountAsEdges()
    {
        EditFixture f;
        f.Choose("Polygon");
        for (int i = 0; i < 3; ++i)
            f.Click({50, 50});
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(3));
        f.Click({50, 50});
        QCOMPARE(VerticesOf(f.geometry.GetAt(0)), (QVector<QPointF>{{50, 50}}));
    }

    void zoomedInFourTimesThePolygonClosesWithin2Point5ImagePixelsOfItsFirstVertex()
    {
        EditFixture f(100, 75);
        QCOMPARE(f.view->GetSizePixel(), 4.0);
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{20, 20}, {60, 20}, {60, 60}, {20, 60}});
        f.Click({22.75, 20});
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(5));
        f.Click({22.5, 20});
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(VerticesOf(f.geometry.GetAt(0)).size(), 5);
    }

    void movesWithTheButtonHeldAppendEdgesAndNoVertexIsRepeatedInARow()
    {
        EditFixture f;
        f.Choose("Polygon");
        f.Press({20, 20});
        f.Move({30, 20});
        f.Move({40, 20});
        f.Release({40, 20});
        const QVector<QPointF> expected{{20, 20}, {30, 20}, {20, 20}, {40, 20}, {20, 20}, {40, 20}, {50, 60}};
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(3));
        f.Click({50, 60});
        f.Click({20, 20});
        QCOMPARE(VerticesOf(f.geometry.GetAt(0)), expected);
    }

    void furtherPressesInPolygonModeOnlyAddEdges()
    {
        EditFixture f;
        f.Choose("Polygon");
        f.Click({20, 20});
        LogRecorder log;
        f.Press({90, 90});
        QCOMPARE(log.Take().filter(QStringLiteral("Clear Object")), QStringList());
        f.Release({90, 90});
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(2));
    }

    void aPolygonLeftByEscapeGoesWithTheNextShapeAndTheNextPolygonBeginsAnew()
    {
        EditFixture f;
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{20, 20}, {80, 20}});
        f.Move({50, 50});
        f.Key(Qt::Key_Escape);
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        QVERIFY(f.geometry.GetObjectDrawingWaiting());
        f.Choose("Rect");
        f.Drag({100, 100}, {140, 140});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        QVERIFY(!f.geometry.GetObjectDrawingWaiting());
        QCOMPARE(f.geometry.Size(), 1);
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{30, 30}, {70, 30}, {70, 70}});
        f.Click({30, 30});
        QCOMPARE(VerticesOf(f.geometry.GetAt(0)), (QVector<QPointF>{{30, 30}, {70, 30}, {70, 70}}));
    }

    void aPolygonLeftByEscapeGoesWithAClickInSelectingMode()
    {
        EditFixture f;
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{20, 20}, {80, 20}});
        f.Key(Qt::Key_Escape);
        f.Click({150, 100});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        QVERIFY(!f.geometry.GetObjectDrawingWaiting());
        QVERIFY(f.view->GetLayerDrawing()->GetDrawableObjects().empty());
    }

    void aPolygonLeftByEscapeGoesOnWhenItsModeComesBackAtOnce()
    {
        EditFixture f;
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{20, 20}, {80, 20}});
        f.Key(Qt::Key_Escape);
        f.Choose("Polygon");
        DrawPolygonCorners(f, {{80, 80}, {20, 20}});
        QCOMPARE(VerticesOf(f.geometry.GetAt(0)), (QVector<QPointF>{{20, 20}, {80, 20}, {80, 80}}));
    }

    void ordinaryGesturesLogTheirClearingsAndAdditionsOnly()
    {
        EditFixture f;
        f.tool.SetViewMode(EImageView2DMode_Drawing_Rectanlge);
        LogRecorder log;
        f.Press({20, 20});
        QCOMPARE(log.Take(), QStringList{QStringLiteral("0:Clear Object")});
        f.Move({40, 40});
        const unsigned int nUID = f.geometry.GetObjectDrawing().at(0)->GetUID();
        QCOMPARE(log.Take(),
                 (QStringList{QStringLiteral("0:Clear Object"), QString::asprintf("0:Add Object %u", nUID)}));
        f.Release({40, 40});
        const QStringList lines = log.Take();
        QCOMPARE(lines.first(), QString::asprintf("0:AddObject(%u)", f.geometry.GetAt(0)->GetUID()));
        QCOMPARE(lines.at(1), QStringLiteral("0:Clear Object"));
    }

    void aPolygonsStartClearsDrawingAndWaitingObject()
    {
        EditFixture f;
        f.tool.SetViewMode(EImageView2DMode_Drawing_Polygon);
        LogRecorder log;
        f.Press({20, 20});
        QCOMPARE(log.Take(),
                 (QStringList{QStringLiteral("0:Clear Object"), QStringLiteral("0:Clear Object Waiting ")}));
        f.Release({20, 20});
    }

    void escapeInTheMiddleOfADragLeavesNoPreviewAndAddsNothing()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Press({20, 20});
        f.Move({60, 60});
        f.Key(Qt::Key_Escape);
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        f.Move({80, 80});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        f.Release({80, 80});
        QCOMPARE(f.geometry.Size(), 0);
        f.Choose("Rect");
        f.Drag({20, 20}, {50, 60});
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(20, 20, 30, 40));
    }

    void aReleaseThatNeverComesLeavesNoPreviewAndAddsNothing()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Press({20, 20});
        f.Move({60, 60});
        f.host.hide();
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        f.host.show();
        QVERIFY(QTest::qWaitForWindowActive(&f.host));
        QTest::mouseRelease(f.Window(), Qt::LeftButton, Qt::NoModifier, QPoint(405, 305));
        f.Move({70, 70});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        f.Drag({20, 20}, {50, 60});
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(20, 20, 30, 40));
    }

    void undoInTheMiddleOfADragTakesTheDragBackAndTheStepBeforeToo()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({20, 20}, {50, 60});
        f.Choose("Circle");
        f.Press({100, 100});
        f.Move({110, 110});
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        f.Move({120, 120});
        f.Release({120, 120});
        QCOMPARE(f.geometry.Size(), 0);
        QVERIFY(f.geometry.GetObjectDrawing().empty());
    }

    void theImageMayChangeInTheMiddleOfADrag()
    {
        EditFixture f;
        f.images.SetImages({MakeTestImage(200, 150, 3), MakeTestImage(50, 40, 1)});
        f.Choose("Ellipse");
        f.Press({20, 20});
        f.Move({60, 60});
        f.ctrl->slot_Next();
        f.Move({30, 30});
        f.ctrl->SetCurrentImage(MakeTestImage(70, 60, 4));
        f.Release({40, 40});
        QCOMPARE(f.geometry.Size(), 1);
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aSecondButtonInTheMiddleOfADragLeavesTheNextGestureWorking()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Press({20, 20});
        f.Move({60, 60});
        f.Press({60, 60}, Qt::MiddleButton);
        f.Release({60, 60}, Qt::MiddleButton);
        f.Move({80, 80});
        f.Release({80, 80});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        const int nSize = f.geometry.Size();
        f.Choose("Rect");
        f.Drag({20, 20}, {50, 60});
        QCOMPARE(f.geometry.Size(), nSize + 1);
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(20, 20, 30, 40));
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void slotsDoNothingWithoutViewOrModel()
    {
        CImageView2DToolModel tool;
        tool.SetViewMode(EImageView2DMode_Drawing_Rectanlge);
        CImageView2DGeometryModel geometry;
        CImageView2DCtrl withoutView(nullptr, &geometry, &tool, nullptr, nullptr, nullptr, nullptr);
        QPointF start(1, 2);
        QPointF end(3, 4);
        withoutView.slot_DrawRectangleStart(start);
        withoutView.slot_DrawRectangleDoing(start, end);
        withoutView.slot_DrawRectangleEnd(start, end);
        withoutView.slot_DrawPolygonStart(start);
        withoutView.slot_DrawPolygonWaiting(end);
        withoutView.slot_DrawPolygonDoing(start, end);
        withoutView.slot_DrawPolygonEnd(start, end);
        QCOMPARE(geometry.Size(), 0);
        QVERIFY(geometry.GetObjectDrawing().empty());
        QCOMPARE(tool.GetViewMode(), EImageView2DMode_Drawing_Rectanlge);
        CImageView2D view(nullptr, nullptr, &tool, 0, nullptr);
        CImageView2DCtrl withoutModel(nullptr, nullptr, &tool, &view, nullptr, nullptr, nullptr);
        withoutModel.slot_DrawLineStart(start);
        withoutModel.slot_DrawLineDoing(start, end);
        withoutModel.slot_DrawLineEnd(start, end);
        QCOMPARE(tool.GetViewMode(), EImageView2DMode_Drawing_Rectanlge);
    }

    void doingAndEndNeedNoStartForTheyReceiveThePressPointAgain()
    {
        EditFixture f;
        QPointF start(10, 10);
        QPointF end(13, 14);
        f.ctrl->slot_DrawCircleDoing(start, end);
        QCOMPARE(f.BoxOf(f.geometry.GetObjectDrawing().at(0)), QRectF(5, 5, 10, 10));
        f.ctrl->slot_DrawCircleEnd(start, end);
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(5, 5, 10, 10));
        f.ctrl->slot_DrawPolygonDoing(start, end);
        f.ctrl->slot_DrawPolygonEnd(start, end);
        QCOMPARE(f.geometry.Size(), 1);
        QVERIFY(f.geometry.GetObjectDrawing().empty());
    }
};

VANTOR_TEST_MAIN(tst_Drawing)
#include "tst_Drawing.moc"
