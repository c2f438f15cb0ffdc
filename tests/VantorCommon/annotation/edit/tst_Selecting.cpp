// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QMenu>

using namespace Vantor::Geometry;
using Objects = std::vector<EditFixture::ObjectPtr>;

class tst_Selecting : public QObject
{
    Q_OBJECT

private:
    static QMenu* OpenMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static QStringList EntriesOf(QMenu* pMenu)
    {
        QStringList lstEntries;
        for (QAction* pAction : pMenu->actions())
            lstEntries << pAction->text();
        return lstEntries;
    }
    static void CloseMenu()
    {
        while (QWidget* pPopup = QApplication::activePopupWidget())
            pPopup->close();
    }

private Q_SLOTS:
    void cleanup() { CloseMenu(); }

    void withTwoOverlappingObjectsAClickInTheOverlapSelectsTheNewerOneOnly()
    {
        EditFixture f;
        f.AddRectangle(20, 20, 60, 60);
        const auto pNewer = f.AddRectangle(40, 40, 60, 60);
        f.Click({60, 60});
        QCOMPARE(f.Selected(), Objects{pNewer});
    }

    void aClickBesideEverythingUnselectsAll()
    {
        EditFixture f;
        f.AddRectangle(20, 20, 60, 60)->SetSelected(true);
        f.Click({150, 120});
        QVERIFY(f.Selected().empty());
    }

    void aClickInTheBoundingBoxOfAnEllipseOrALineSelectsIt()
    {
        EditFixture f;
        const auto pEllipse = f.Add(std::make_shared<CEllipse>(20, 20, 40, 40));
        const auto pLine = f.Add(std::make_shared<CLine>(CPoint<double>(80, 20), CPoint<double>(120, 60)));
        f.Click({23, 23});
        QCOMPARE(f.Selected(), Objects{pEllipse});
        f.Click({115, 25});
        QCOMPARE(f.Selected(), Objects{pLine});
    }

    void textsAreNeverHit()
    {
        EditFixture f;
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        f.geometry.AddObject(pText);
        pText->SetSelected(false);
        f.Click({0, 0});
        f.Drag({-10, -10}, {50, 50});
        QVERIFY(f.Selected().empty());
    }

    void ctrlClickOnAnUnselectedObjectAddsItToTheSelectionAndNeverUnselects()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 30, 30);
        const auto pB = f.AddRectangle(80, 20, 30, 30);
        f.Click({30, 30});
        f.Click({90, 30}, Qt::ControlModifier);
        QCOMPARE(f.Selected(), (Objects{pB, pA}));
        QCOMPARE(pA->GetMouseOffset(), QPointF(70, 10));
        QCOMPARE(pB->GetMouseOffset(), QPointF(10, 10));
        f.Click({90, 30}, Qt::ControlModifier);
        f.Click({150, 100}, Qt::ControlModifier);
        QCOMPARE(f.Selected(), (Objects{pB, pA}));
    }

    void ctrlClickSelectsEveryObjectUnderTheMouse()
    {
        EditFixture f;
        f.AddRectangle(20, 20, 60, 60);
        f.AddRectangle(40, 40, 60, 60);
        f.Click({60, 60}, Qt::ControlModifier);
        QCOMPARE(f.Selected().size(), std::size_t(2));
    }

    void deleteWithThreeObjectsSelectedThenOneUndoBringsAllThreeBack()
    {
        EditFixture f;
        for (int i = 0; i < 3; ++i)
            f.AddRectangle(10 + 50 * i, 10, 30, 30)->SetSelected(true);
        const auto vctBefore = f.geometry.GetObjects();
        const QString strName = vctBefore[1]->GetName();
        f.Key(Qt::Key_Delete);
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), vctBefore);
        QCOMPARE(f.geometry.GetAt(1)->GetName(), strName);
        f.PressRedo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void backspaceDeletesToo()
    {
        EditFixture f;
        f.AddRectangle(10, 10, 30, 30)->SetSelected(true);
        const auto pStays = f.AddRectangle(60, 10, 30, 30);
        f.Key(Qt::Key_Backspace);
        QCOMPARE(f.geometry.GetObjects(), Objects{pStays});
    }

    void deleteWithNothingSelectedPushesNoCommand()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({20, 20}, {60, 60});
        f.Click({150, 120});
        f.Key(Qt::Key_Delete);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void escapeInRectangleModeReturnsToSelecting()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Key(Qt::Key_Escape);
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void escapeWhenTheViewIsHiddenDoesNothing()
    {
        EditFixture f;
        f.Choose("Rect");
        f.view->hide();
        // The window system sends none to what is hidden.
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(f.view, &key);
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Drawing_Rectanlge);
    }

    void aRightClickInABoundingBoxSelectsItBesidesTheSelectionAndOpensTheObjectMenu()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 30, 30);
        const auto pB = f.AddRectangle(80, 20, 30, 30);
        pB->SetSelected(true);
        unsigned int nUID = 0;
        int nView = 0;
        f.view->RegisterGeometryAction(QStringLiteral("Mine"), QIcon(), [&](int nID, unsigned int n) {
            nView = nID;
            nUID = n;
        });
        f.Press({30, 30}, Qt::RightButton);
        QTRY_VERIFY(OpenMenu());
        QCOMPARE(EntriesOf(OpenMenu()), (QStringList{QStringLiteral("Delete"), QStringLiteral("Mine")}));
        QCOMPARE(f.Selected(), (Objects{pB, pA}));
        OpenMenu()->actions().at(1)->trigger();
        QCOMPARE(nUID, pA->GetUID());
        QCOMPARE(nView, 7);
        f.Release({30, 30}, Qt::RightButton);
        QVERIFY(OpenMenu());
        OpenMenu()->actions().at(0)->trigger();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aRightClickBesideTheObjectsOpensTheGeneralMenu()
    {
        EditFixture f;
        const auto openAt = [&f](const QPointF& point) {
            f.Press(point, Qt::RightButton);
            const QStringList lstEntries = OpenMenu() ? EntriesOf(OpenMenu()) : QStringList();
            CloseMenu();
            f.Release(point, Qt::RightButton);
            return lstEntries;
        };
        QVERIFY(openAt({30, 30}).contains(QStringLiteral("Load Image")));
        const auto pA = f.AddRectangle(20, 20, 30, 30);
        QVERIFY(openAt({130, 100}).contains(QStringLiteral("Load Image")));
        QVERIFY(!pA->GetSelected());
    }

    void atZoom2AHandleIsCaughtWithin5ImagePixels()
    {
        EditFixture f;
        QCOMPARE(f.view->GetSizePixel(), 2.0);
        f.AddRectangle(50, 50, 60, 40);
        f.Move({45, 50});
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
        f.Move({44.5, 50});
        QCOMPARE(f.view->cursor().shape(), Qt::ArrowCursor);
        f.Move({113, 94});
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
        f.Move({80, 70});
        QCOMPARE(f.view->cursor().shape(), Qt::ArrowCursor);
    }

    void hoveringDeliberatelyLooksAtUnselectedObjectsToo()
    {
        EditFixture f;
        QVERIFY(!f.AddRectangle(50, 50, 60, 40)->GetSelected());
        f.Move({51, 51});
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
    }

    void draggingTheSelectionMovesAllOfItAndOneUndoMovesItBack()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 30, 30);
        const auto pB = f.AddRectangle(80, 20, 40, 30);
        const auto pC = f.AddRectangle(20, 90, 30, 30);
        f.Click({35, 35});
        f.Click({100, 35}, Qt::ControlModifier);
        f.Move({37, 35});
        f.Press({35, 35});
        f.Move({45, 40});
        QCOMPARE(f.BoxOf(pA), QRectF(30, 25, 30, 30));
        QCOMPARE(f.BoxOf(pB), QRectF(90, 25, 40, 30));
        f.Release({55, 45});
        QCOMPARE(f.BoxOf(pA), QRectF(40, 30, 30, 30));
        QCOMPARE(f.BoxOf(pB), QRectF(100, 30, 40, 30));
        QCOMPARE(f.BoxOf(pC), QRectF(20, 90, 30, 30));
        QCOMPARE(f.Selected(), (Objects{pB, pA}));
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 30, 30));
        QCOMPARE(f.BoxOf(pB), QRectF(80, 20, 40, 30));
        f.PressRedo();
        QCOMPARE(f.BoxOf(pA), QRectF(40, 30, 30, 30));
        QCOMPARE(f.BoxOf(pB), QRectF(100, 30, 40, 30));
    }

    void pressAndDragMovesAnUnselectedObjectAtOnce()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Drag({40, 40}, {60, 50});
        QCOMPARE(f.BoxOf(pA), QRectF(40, 30, 40, 40));
        QVERIFY(pA->GetSelected());
    }

    void aRubberBandSelectsWhatHasACornerInItAndVanishes()
    {
        EditFixture f;
        const auto pIn = f.AddRectangle(60, 60, 20, 20);
        const auto pCorner = f.AddRectangle(100, 60, 90, 80);
        const auto pOut = f.AddRectangle(10, 5, 20, 10);
        f.Move({40, 40});
        f.Press({40, 40});
        f.Move({70, 70});
        const auto vctDrawing = f.geometry.GetObjectDrawing();
        QCOMPARE(vctDrawing.size(), std::size_t(1));
        QCOMPARE(f.BoxOf(vctDrawing[0]), QRectF(40, 40, 30, 30));
        QVERIFY(!vctDrawing[0]->GetDisplayName());
        QCOMPARE(f.Selected(), Objects{pIn});
        QCOMPARE(pIn->GetMouseOffset(), QPointF(10, 10));
        f.Move({110, 90});
        QCOMPARE(f.Selected(), (Objects{pCorner, pIn}));
        f.Release({110, 90});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
        QCOMPARE(f.Selected(), (Objects{pCorner, pIn}));
        QVERIFY(!pOut->GetSelected());
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 3);
    }

    void objectsThatLeaveTheBandAgainStaySelectedAndAreToldOnce()
    {
        EditFixture f;
        const auto pIn = f.AddRectangle(60, 60, 20, 20);
        int nSignals = 0;
        connect(pIn.get(), &CImageView2DDrawableObject::signal_ChangeDrawableObjectProperty, this,
                [&] { ++nSignals; });
        f.Press({40, 40});
        for (const QPointF& point : {QPointF(70, 70), QPointF(75, 75), QPointF(45, 45), QPointF(90, 90)})
            f.Move(point);
        f.Release({50, 50});
        QVERIFY(pIn->GetSelected());
        QCOMPARE(nSignals, 2); // selected, and its mouse offset
    }

    void aBandWithCtrlHeldAddsToTheSelectionAndMovesNothing()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 20, 20);
        const auto pB = f.AddRectangle(100, 100, 20, 20);
        pA->SetSelected(true);
        f.Move({80, 80});
        f.Press({80, 80}, Qt::LeftButton, Qt::ControlModifier);
        f.Move({130, 130});
        f.Release({130, 130});
        QCOMPARE(f.Selected(), (Objects{pB, pA}));
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 20, 20));
    }

    void aMoveWithoutTheButtonIsNoDragEvenIfTheReleaseGotLost()
    {
        EditFixture f;
        f.ctrl.reset(); // the view alone
        int nDrags = 0;
        int nHovers = 0;
        connect(f.view, &CImageView2D::signal_SelectMovingDoing, this, [&] { ++nDrags; });
        connect(f.view, &CImageView2D::signal_CheckResizeRotate, this, [&] { ++nHovers; });
        f.Press({40, 40});
        f.Move({50, 50});
        QCOMPARE(nDrags, 1);
        nHovers = 0;
        QMouseEvent lost(QEvent::MouseMove, QPointF(120, 120), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(f.view, &lost);
        QCOMPARE(nDrags, 1);
        QCOMPARE(nHovers, 1);
        f.Release({60, 60});
    }

    void aDragOfEventsThatAreOnlySentToTheViewNeedsNoButtonHeld()
    {
        EditFixture f;
        const auto pObject = f.AddRectangle(20, 20, 40, 30);
        const auto send = [&](QEvent::Type eType, const QPointF& point, Qt::MouseButton button) {
            QMouseEvent event(eType, f.view->MapToWidget(point), button, Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(f.view, &event);
        };
        send(QEvent::MouseButtonPress, {40, 35}, Qt::LeftButton);
        send(QEvent::MouseMove, {50, 40}, Qt::NoButton);
        QCOMPARE(pObject->GetBoundary(), QRectF(30, 25, 40, 30));
        send(QEvent::MouseButtonRelease, {60, 50}, Qt::LeftButton);
        QCOMPARE(pObject->GetBoundary(), QRectF(40, 35, 40, 30));
        f.PressUndo();
        QCOMPARE(pObject->GetBoundary(), QRectF(20, 20, 40, 30));
    }

    void aBandDrawnUpwardsSelectsToo()
    {
        EditFixture f;
        const auto pIn = f.AddRectangle(60, 60, 20, 20);
        f.Drag({120, 120}, {70, 70});
        QVERIFY(pIn->GetSelected());
    }

    void theFlagThatThePressHitIsWorkedOutAnewAtEveryPress()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(60, 60, 40, 40);
        f.Click({80, 80}); // a click sends no End that would clear it
        f.Press({20, 20});
        f.Move({30, 30});
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(1));
        QCOMPARE(f.BoxOf(pA), QRectF(60, 60, 40, 40));
        f.Release({30, 30});
    }

    void aClickWithoutMotionIsNoStep()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({20, 20}, {80, 80});
        f.Move({50, 51});
        f.Click({50, 50});
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void pullingAHandleReshapesLiveAndUndoBringsTheOldShapeBack()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 60, 40);
        f.Move({112, 91});
        f.Press({112, 91});
        f.Move({122, 101});
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 70, 50)); // the grip of (2, 1) is kept
        QVERIFY(pA->GetSelected());
        f.Move({132, 111});
        f.Release({132, 111});
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 80, 60));
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 60, 40));
        f.PressRedo();
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 80, 60));
    }

    void aHandleKeptFromThePressIsNotLostToAnotherObjectOnTheWay()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 30, 30);
        const auto pB = f.AddRectangle(100, 50, 30, 30);
        f.Drag({50, 50}, {100, 80});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 80, 60));
        QCOMPARE(f.BoxOf(pB), QRectF(100, 50, 30, 30));
    }

    void aHandlePulledPastTheOppositeCornerKeepsTheRawCorners()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 60, 40);
        f.Drag({50, 50}, {150, 120});
        QCOMPARE(f.BoxOf(pA), QRectF(150, 120, -40, -30));
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 60, 40));
    }

    void resizeUndoIsExactAfterZoomingAndForShapesOfAFewPixels()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 3, 2);
        f.Drag({50, 50}, {40, 45});
        const QRectF after = f.BoxOf(pA);
        QVERIFY(after != QRectF(50, 50, 3, 2));
        QWheelEvent wheel(QPointF(20, 20), f.view->mapToGlobal(QPoint(20, 20)), QPoint(), QPoint(0, 1200),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(f.view, &wheel);
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 3, 2));
        f.PressRedo();
        QCOMPARE(f.BoxOf(pA), after);
    }

    void undoingAResizeFindsTheHandleAtItsNewPlaceAndMovesItBack()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 60, 40);
        f.ctrl->ResizeDrawableObject(pA, {111, 92}, {130, 100}, {0, 0});
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 80, 50));
        f.ctrl->ResizeDrawableObject(pA, {130, 100}, {110, 90}, {0, 0});
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 60, 40));
        f.ctrl->ResizeDrawableObject(pA, {80, 70}, {0, 0}, {0, 0});
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 60, 40));
    }

    void afterAResizeTheOffsetIsForgotten()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 60, 40);
        f.Drag({112, 91}, {122, 101});
        f.ctrl->ResizeDrawableObject(pA, {120, 100}, {130, 110}, {0, 0});
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 80, 60));
    }

    void whereTheHandleHasGoneADragDoesNothing()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 60, 40);
        const auto pB = f.AddRectangle(150, 100, 20, 20);
        f.Move({51, 51});
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
        f.ctrl->DeleteDrawableObject(pA);
        f.Press({51, 51});
        f.Move({60, 60});
        f.Release({60, 60});
        QCOMPARE(f.BoxOf(pB), QRectF(150, 100, 20, 20));
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 1);
    }

    void levelRulersAreCaughtByTheirHandlesAlone()
    {
        EditFixture f;
        const auto pRuler = std::make_shared<CImageView2DDrawableRuler>();
        pRuler->SetData(std::make_shared<CLine>(CPoint<double>(20, 50), CPoint<double>(120, 50)));
        f.geometry.AddObject(pRuler);
        pRuler->SetSelected(false);
        f.Click({70, 50});
        QVERIFY(!pRuler->GetSelected());
        f.Drag({120, 50}, {130, 70});
        QVERIFY(pRuler->GetSelected());
        QVERIFY(f.ShapeOf<CLine>(pRuler)->end() == CPoint<double>(130, 70));
    }

    void theSelectResizeSlotsDeliberatelyDoNothing()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(50, 50, 60, 40);
        QPointF start(50, 50);
        QPointF end(10, 10);
        f.Move({51, 51});
        f.ctrl->slot_SelectResizeStart(start);
        f.ctrl->slot_SelectResizeDoing(start, end);
        f.ctrl->slot_SelectResizeEnd(start, end);
        QCOMPARE(f.BoxOf(pA), QRectF(50, 50, 60, 40));
        QVERIFY(!pA->GetSelected());
    }

    void aDragThatComesBackToThePressPointLeavesTheObjectsWhereTheyWere()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 60});
        f.Move({41, 40});
        f.Move({40, 40});
        f.Release({40, 40});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 1);
    }

    void aBandThatComesBackToThePressPointVanishes()
    {
        EditFixture f;
        f.Press({40, 40});
        f.Move({70, 60});
        f.Move({40, 40});
        f.Release({40, 40});
        QVERIFY(f.geometry.GetObjectDrawing().empty());
    }

    void undoAfterADragThatCameBackUndoesTheStepBefore()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Drag({40, 40}, {60, 60});
        f.Press({60, 60});
        f.Move({90, 90});
        f.Move({60, 60});
        f.Release({60, 60});
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Move({65, 65});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
    }

    void aMenuThatSwallowsTheReleaseEndsTheDrag()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 70});
        f.Press({70, 70}, Qt::RightButton);
        QTRY_VERIFY(OpenMenu());
        QTest::mouseRelease(f.Window(), Qt::RightButton, Qt::NoModifier, QPoint(390, 290));
        QTest::mouseRelease(f.Window(), Qt::LeftButton, Qt::NoModifier, QPoint(390, 290));
        CloseMenu();
        f.Move({100, 100});
        f.Move({120, 100});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Drag({40, 40}, {50, 40});
        QCOMPARE(f.BoxOf(pA), QRectF(30, 20, 40, 40));
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
    }

    void hidingTheViewInTheMiddleOfADragTakesItBack()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 70});
        QVERIFY(f.BoxOf(pA) != QRectF(20, 20, 40, 40));
        f.view->hide();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.view->show();
        f.Release({70, 70});
        f.Move({90, 90});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
    }

    void losingTheFocusInTheMiddleOfADragIsHarmless()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 70});
        QWidget other;
        other.setGeometry(700, 500, 100, 100);
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QTest::mouseRelease(other.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
        other.close();
        f.host.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.host));
        f.view->setFocus();
        // The release reached the view that held the mouse, far outside the image, and was a step.
        const QRectF box = f.BoxOf(pA);
        f.Move({80, 80});
        f.Move({95, 95});
        QCOMPARE(f.BoxOf(pA), box);
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Drag({40, 40}, {50, 40});
        QCOMPARE(f.BoxOf(pA), QRectF(30, 20, 40, 40));
    }

    void escapeTakesAMoveBack()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 70});
        f.Key(Qt::Key_Escape);
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Move({80, 80});
        f.Release({80, 80});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        QVERIFY(f.geometry.GetObjectDrawing().empty());
    }

    void deletingInTheMiddleOfADragDeletesTheShapeFromBeforeIt()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 70});
        f.Key(Qt::Key_Delete);
        QCOMPARE(f.geometry.Size(), 0);
        f.Move({80, 80});
        f.Release({80, 80});
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), Objects{pA});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
    }

    void anObjectDeletedByTheHostInTheMiddleOfItsOwnDragIsNoCrash_data()
    {
        QTest::addColumn<QPointF>("press");
        QTest::newRow("move") << QPointF(40, 40);
        QTest::newRow("resize") << QPointF(60, 60);
    }
    void anObjectDeletedByTheHostInTheMiddleOfItsOwnDragIsNoCrash()
    {
        QFETCH(QPointF, press);
        EditFixture f;
        auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Move(press + QPointF(1, 0));
        f.Move(press);
        f.Press(press);
        f.Move(press + QPointF(10, 10));
        QVERIFY(f.BoxOf(pA) != QRectF(20, 20, 40, 40));
        f.ctrl->DeleteDrawableObject(pA->GetUID());
        f.Move(press + QPointF(20, 20));
        f.Release(press + QPointF(20, 20));
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        const std::weak_ptr<CImageView2DDrawableObject> pWeak = pA;
        pA.reset();
        QVERIFY(pWeak.expired()); // no step holds it
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void undoInTheMiddleOfADragUndoesTheStepBefore()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Drag({40, 40}, {60, 60});
        f.Press({60, 60});
        f.Move({90, 90});
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Move({100, 100});
        f.Release({100, 100});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.PressRedo();
        QCOMPARE(f.BoxOf(pA), QRectF(40, 40, 40, 40));
    }

    void aSecondButtonInTheMiddleOfADragBeginsItAnew()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({70, 70});
        f.Press({70, 70}, Qt::MiddleButton);
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Release({70, 70}, Qt::MiddleButton);
        f.Release({70, 70});
        f.Move({90, 90});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.Drag({40, 40}, {50, 50});
        QCOMPARE(f.BoxOf(pA), QRectF(30, 30, 40, 40));
    }

    void theImageMayChangeOrThePageTurnInTheMiddleOfADrag()
    {
        EditFixture f;
        f.images.SetImages({MakeTestImage(200, 150, 3), MakeTestImage(50, 40, 1)});
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({50, 50});
        f.ctrl->slot_Next();
        f.Move({30, 30});
        f.Release({30, 30});
        f.PressUndo();
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.ctrl->slot_Previous();
        f.Press({40, 40});
        f.Move({50, 50});
        f.ctrl->RotateLeft();
        QCOMPARE(f.geometry.Size(), 0);
        f.Move({30, 30});
        f.Release({30, 30});
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), Objects{pA});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
    }

    void allObjectsMayGoInTheMiddleOfADrag()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        f.Press({40, 40});
        f.Move({50, 50});
        f.ctrl->SetCurrentImage(MakeTestImage(200, 150, 1));
        f.Move({60, 60});
        f.Release({60, 60});
        QCOMPARE(f.BoxOf(pA), QRectF(20, 20, 40, 40));
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void moveDrawableObjectPutsThePointAtTheOffset()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        QPointF point(70, 80);
        f.ctrl->MoveDrawableObject(pA, 5, 6, point);
        QCOMPARE(f.BoxOf(pA), QRectF(65, 74, 40, 40));
        f.ctrl->MoveDrawableObject(nullptr, 5, 6, point);
        f.ctrl->ResizeDrawableObject(nullptr, point, point, point);
    }

    void addDrawableObjectSelectsTheNewObjectAloneAndPutsItFirst()
    {
        EditFixture f;
        const auto pA = f.AddRectangle(20, 20, 40, 40);
        pA->SetSelected(true);
        const auto pB = std::make_shared<CImageView2DDrawableGeometry>();
        f.ctrl->AddDrawableObject(pB);
        QCOMPARE(f.geometry.GetObjects(), (Objects{pB, pA}));
        QCOMPARE(f.Selected(), Objects{pB});
        QVERIFY(f.ctrl->DeleteDrawableObject(pB->GetUID()));
        QVERIFY(!f.ctrl->DeleteDrawableObject(pB));
    }

    void addUndoRedoBringsTheSameObjectBack()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({20, 20}, {60, 60});
        const auto pA = f.geometry.GetAt(0);
        const QString strName = pA->GetName();
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
        f.PressRedo();
        QCOMPARE(f.geometry.GetObjects(), Objects{pA});
        QCOMPARE(f.geometry.GetAt(0)->GetName(), strName);
    }

    void addAUndoAddBRedoLeavesBothInTheModel()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({20, 20}, {60, 60});
        const auto pA = f.geometry.GetAt(0);
        f.PressUndo();
        f.Choose("Ellipse");
        f.Drag({80, 20}, {120, 60});
        const auto pB = f.geometry.GetAt(0);
        f.PressRedo();
        QCOMPARE(f.geometry.GetObjects(), (Objects{pA, pB}));
    }

    void undoWithTheViewUnfocusedDoesNothingAndReportsFalse()
    {
        EditFixture f;
        f.Choose("Rect");
        f.Drag({20, 20}, {60, 60});
        f.view->clearFocus();
        QVERIFY(!f.ctrl->Undo());
        QVERIFY(!f.ctrl->Redo());
        QCOMPARE(f.geometry.Size(), 1);
        f.view->setFocus();
        QVERIFY(f.ctrl->Undo());
        QCOMPARE(f.geometry.Size(), 0);
        QVERIFY(f.ctrl->Undo());
    }

    void slotsDoNothingWithoutViewOrModel()
    {
        CImageView2DCtrl ctrl(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        QPointF start(1, 2);
        QPointF end(3, 4);
        ctrl.slot_CheckResizeRotate(start);
        ctrl.slot_SelectMovingStart(start);
        ctrl.slot_SelectMovingDoing(start, end);
        ctrl.slot_SelectMovingEnd(start, end);
        ctrl.slot_DeleteDrawableObject();
        ctrl.slot_PressKey(Qt::Key_Escape);
        ctrl.slot_ShowContextMenu(start);
        ctrl.AddDrawableObject(nullptr);
        QVERIFY(!ctrl.DeleteDrawableObject(1u));
        QVERIFY(!ctrl.Undo());
    }
    void theOffsetOfAResizeEndsWithItAlsoWhenItsShapeHasGone()
    {
        EditFixture f;
        const auto pOther = f.AddRectangle(120, 20, 30, 30);
        const auto pObject = f.AddRectangle(20, 20, 60, 40);
        for (const bool bGone : {false, true}) {
            const QPointF corner = EditFixture::BoxOf(pObject).bottomRight();
            const QPointF start = corner + QPointF(2, 1); // beside the handle
            f.Move(start + QPointF(1, 1));
            f.Move(start);
            f.Press(start);
            f.Move(start + QPointF(10, 10));
            if (bGone)
                f.geometry.DeleteObject(pObject);
            f.Release(start + QPointF(20, 20));
            QCOMPARE(EditFixture::BoxOf(pObject).bottomRight(), bGone ? corner : corner + QPointF(20, 20));
            const QPointF handle = EditFixture::BoxOf(pOther).bottomRight();
            f.ctrl->ResizeDrawableObject(pOther, handle, handle + QPointF(5, 5), QPointF());
            QCOMPARE(EditFixture::BoxOf(pOther).bottomRight(), handle + QPointF(5, 5));
        }
    }
};

VANTOR_TEST_MAIN(tst_Selecting)
#include "tst_Selecting.moc"
