// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// SCenterOptions::bViewKeys, bPanAnywhere and bWheelPages: moving about in a 2D view.
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>
#include <tests/support/ViewInput.h>

namespace
{
/// Three images of 200 x 150 at a zoom of 2, the second of which is shown.
class CMoves : public EditFixture
{
public:
    explicit CMoves(bool bOn = true)
    {
        sOptions.bEditKeys = true;
        sOptions.bViewKeys = bOn;
        sOptions.bPanAnywhere = bOn;
        sOptions.bKeepPlace = true;
        ctrl->SetOptions(sOptions);
        images.SetImages(
            {MakeTestImage(200, 150, 3), MakeTestImage(200, 150, 1), MakeTestImage(200, 150, 4)});
        images.SetCurrentIndex(1);
    }
    QPoint Place() const { return view->GetViewPort().topLeft(); }
    /// What a key has done to the place.
    QPoint MovedBy(Qt::Key key)
    {
        const QPoint before = Place();
        Key(key);
        return Place() - before;
    }
    void PressAt(const QPoint& pos, Qt::MouseButton button) { QTest::mousePress(Window(), button, {}, pos); }
    void MoveTo(const QPoint& pos) { QTest::mouseMove(Window(), pos); }
    void ReleaseAt(const QPoint& pos, Qt::MouseButton button)
    {
        QTest::mouseRelease(Window(), button, {}, pos);
    }
    void SetWheelPages()
    {
        sOptions.bWheelPages = true;
        ctrl->SetOptions(sOptions);
    }
    /// Turns the wheel by notches; positive ones lead up.
    void Turn(double dblNotches, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWheelEvent wheel(QPointF(9, 9), view->mapToGlobal(QPoint(9, 9)), QPoint(),
                          QPoint(0, qRound(dblNotches * 120)), Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(view, &wheel);
    }
    SCenterOptions sOptions;
    void SpaceDown() { QTest::keyPress(Window(), Qt::Key_Space); }
    void SpaceUp() { QTest::keyRelease(Window(), Qt::Key_Space); }
};
} // namespace

class tst_ViewKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whereTheImageFitsLeftAndRightGoToItsNeighbours()
    {
        CMoves f;
        f.Key(Qt::Key_Right);
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        f.Key(Qt::Key_Right); // there is none
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        f.Key(Qt::Key_Left);
        f.Key(Qt::Key_Left);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        f.Key(Qt::Key_Up);
        f.Key(Qt::Key_Down);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QVERIFY(f.view->IsFitted());
    }

    void whereTheImageIsLargerArrowsPanByATenthOfTheView()
    {
        CMoves f;
        f.view->SetZoom(8.0, QPointF(200, 150));
        QCOMPARE(f.MovedBy(Qt::Key_Right), QPoint(-40, 0));
        QCOMPARE(f.MovedBy(Qt::Key_Left), QPoint(40, 0));
        QCOMPARE(f.MovedBy(Qt::Key_Down), QPoint(0, -30));
        QCOMPARE(f.MovedBy(Qt::Key_Up), QPoint(0, 30));
        QCOMPARE(f.images.GetCurrentIndex(), 1);
    }

    void arrowsStopAtTheEdges()
    {
        CMoves f;
        f.view->SetZoom(8.0, QPointF());
        f.view->MovePointTo(QPointF(), QPointF(-15, -7));
        QCOMPARE(f.MovedBy(Qt::Key_Left), QPoint(15, 0));
        QCOMPARE(f.MovedBy(Qt::Key_Left), QPoint());
        QCOMPARE(f.MovedBy(Qt::Key_Up), QPoint(0, 7));
        f.view->MovePointTo(QPointF(200, 150), QPointF(405, 303)); // its last corner, a little outside
        QCOMPARE(f.MovedBy(Qt::Key_Right), QPoint(-5, 0));
        QCOMPARE(f.MovedBy(Qt::Key_Right), QPoint());
        QCOMPARE(f.MovedBy(Qt::Key_Down), QPoint(0, -3));
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        f.view->MovePointTo(QPointF(200, 150), QPointF(300, 300)); // dragged beyond the edge
        QCOMPARE(f.MovedBy(Qt::Key_Right), QPoint());
    }

    void eachDirectionAsksForItself()
    {
        CMoves f; // as wide as the view, and higher
        f.images.SetImages({MakeTestImage(100, 400, 3), MakeTestImage(100, 400, 1)});
        f.view->FitWidth();
        QCOMPARE(f.MovedBy(Qt::Key_Down), QPoint(0, -30));
        f.Key(Qt::Key_Right);
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(f.Place(), QPoint(0, -30));
    }

    void pageKeysAlwaysGoToTheNeighbours()
    {
        CMoves f;
        f.view->SetZoom(8.0, QPointF(200, 150));
        f.Key(Qt::Key_PageDown);
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        f.Key(Qt::Key_PageUp);
        f.Key(Qt::Key_PageUp);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QVERIFY(std::abs(f.view->GetZoom() - 8.0) < 1e-9);
    }

    void arrowsMoveTheSelectionFirst()
    {
        CMoves f;
        const auto pObject = f.AddRectangle(10, 20, 30, 40);
        pObject->SetSelected(true);
        f.view->SetZoom(8.0, QPointF(200, 150));
        QCOMPARE(f.MovedBy(Qt::Key_Right), QPoint());
        QCOMPARE(f.BoxOf(pObject), QRectF(11, 20, 30, 40));
        f.Key(Qt::Key_PageDown); // means pages still
        QCOMPARE(f.images.GetCurrentIndex(), 2);
    }

    void keysWithModifiersMeanSomethingElse()
    {
        CMoves f;
        f.Key(Qt::Key_Right, Qt::ShiftModifier);
        f.Key(Qt::Key_PageDown, Qt::ControlModifier);
        f.Key(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(f.images.GetCurrentIndex(), 1);
    }

    void byDefaultNoneOfTheKeysMeansAnything()
    {
        CMoves f(false);
        f.view->SetZoom(8.0, QPointF(200, 150));
        QVector<int> keys;
        connect(f.view, &CImageView2D::signal_PressKey, f.view, [&](int nKey) { keys << nKey; });
        for (auto key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Space})
            QCOMPARE(f.MovedBy(key), QPoint());
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(keys, QVector<int>({Qt::Key_Left, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Space}));
    }

    void theWheelScrollsALargerImageByATenthOfTheViewANotch()
    {
        CMoves f;
        f.SetWheelPages();
        f.view->SetZoom(8.0, QPointF(200, 150));
        const QPoint before = f.Place();
        f.Turn(-2);
        QCOMPARE(f.Place() - before, QPoint(0, -60));
        f.Turn(-0.5); // a touchpad
        QCOMPARE(f.Place() - before, QPoint(0, -60));
        f.Turn(-0.5);
        QCOMPARE(f.Place() - before, QPoint(0, -90));
        f.Turn(1);
        f.Turn(-1, Qt::ShiftModifier);
        QCOMPARE(f.Place() - before, QPoint(-40, -60));
        QCOMPARE(f.view->GetZoom(), 8.0);
        QCOMPARE(f.images.GetCurrentIndex(), 1);
    }

    void atTheEdgeTheWheelGoesOnToTheNextImageAndReadsOnThere()
    {
        CMoves f;
        f.SetWheelPages();
        f.view->SetZoom(4.0, QPointF()); // 800 x 600 in 400 x 300
        f.view->MovePointTo(QPointF(), QPointF(-100, -290));
        f.Turn(-1); // the rest of the way
        QCOMPARE(f.Place(), QPoint(-100, -300));
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        f.Turn(-1);
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        QCOMPARE(f.Place(), QPoint(-100, 0));
        f.Turn(1);
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(f.Place(), QPoint(-100, -300));
    }

    void onlyAnImageThatIsInViewAsAWholeIsLeftBeyondTheList()
    {
        CMoves f;
        f.SetWheelPages();
        QVector<int> beyond;
        connect(f.ctrl.get(), &CImageView2DCtrl::signal_BeyondList, f.view, [&](int n) { beyond << n; });
        f.Turn(-2);
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        f.Turn(2);
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        f.Turn(1);
        QCOMPARE(beyond, QVector<int>({1, -1}));
        f.view->SetZoom(4.0, QPointF());
        f.Turn(5);
        QCOMPARE(beyond, QVector<int>({1, -1}));
        QCOMPARE(f.images.GetCurrentIndex(), 0);
    }

    void withCtrlOrWithoutTheOptionTheWheelZooms()
    {
        CMoves f;
        f.Turn(1);
        const double dblZoomed = f.view->GetZoom();
        QVERIFY(dblZoomed > 2.0);
        f.SetWheelPages();
        f.Turn(1, Qt::ControlModifier);
        QVERIFY(f.view->GetZoom() > dblZoomed);
        QCOMPARE(f.images.GetCurrentIndex(), 1);
    }

    void theMiddleButtonPansInEveryMode_data()
    {
        QTest::addColumn<int>("nMode");
        QTest::newRow("selecting") << int(EImageView2DMode_Selecting);
        QTest::newRow("panning") << int(EImageView2DMode_Panning);
        QTest::newRow("drawing") << int(EImageView2DMode_Drawing_Rectanlge);
        QTest::newRow("clicking") << int(EImageView2DMode_Drawing_Polygon);
    }

    void theMiddleButtonPansInEveryMode()
    {
        QFETCH(int, nMode);
        CMoves f;
        f.tool.SetViewMode(static_cast<EImageView2DMode>(nMode));
        const auto eCursor = f.view->cursor().shape();
        f.view->SetZoom(5.0, QPointF(200, 150));
        const QPoint before = f.Place();
        f.PressAt(QPoint(100, 100), Qt::MiddleButton);
        QCOMPARE(f.view->cursor().shape(), Qt::ClosedHandCursor);
        for (int i = 1; i <= 30; ++i) // a slow drag ends where a fast one does
            f.MoveTo(QPoint(100 + i, 100 - 2 * i));
        f.ReleaseAt(QPoint(130, 40), Qt::MiddleButton);
        QCOMPARE(f.Place() - before, QPoint(30, -60));
        QCOMPARE(f.view->cursor().shape(), eCursor);
        f.MoveTo(QPoint(50, 50));
        QCOMPARE(f.Place() - before, QPoint(30, -60));
        QVERIFY(f.geometry.GetObjects().empty());
    }

    void theLeftButtonPansWhileSpaceIsHeld()
    {
        CMoves f;
        f.tool.SetViewMode(EImageView2DMode_Drawing_Rectanlge);
        f.view->SetZoom(5.0, QPointF(200, 150));
        const QPoint before = f.Place();
        int nActive = 0;
        connect(f.view, &CImageView2D::signal_Active, f.view, [&] { ++nActive; });
        f.SpaceDown();
        QCOMPARE(f.view->cursor().shape(), Qt::OpenHandCursor);
        f.MoveTo(QPoint(120, 120)); // over the image, which tells where
        QCOMPARE(f.view->cursor().shape(), Qt::OpenHandCursor);
        QCOMPARE(f.images.GetMousePosition(), f.view->MapToImage(QPointF(120, 120)));
        f.PressAt(QPoint(100, 100), Qt::LeftButton);
        f.MoveTo(QPoint(90, 130));
        f.ReleaseAt(QPoint(90, 130), Qt::LeftButton);
        f.SpaceUp();
        QCOMPARE(f.Place() - before, QPoint(-10, 30));
        QCOMPARE(nActive, 1);
        QVERIFY(f.geometry.GetObjects().empty());
        QCOMPARE(f.view->cursor().shape(), Qt::CrossCursor);
        f.PressAt(QPoint(100, 100), Qt::LeftButton); // and draws again
        f.MoveTo(QPoint(150, 150));
        f.ReleaseAt(QPoint(150, 150), Qt::LeftButton);
        QCOMPARE(f.geometry.GetObjects().size(), std::size_t(1));
    }

    void aViewWithoutTheFocusForgetsSpaceAndDrag()
    {
        CMoves f;
        f.view->SetZoom(5.0, QPointF(200, 150));
        f.SpaceDown();
        f.PressAt(QPoint(100, 100), Qt::LeftButton);
        f.host.setFocus();
        f.view->clearFocus();
        QCOMPARE(f.view->cursor().shape(), Qt::ArrowCursor);
        const QPoint before = f.Place();
        f.MoveTo(QPoint(150, 150));
        QCOMPARE(f.Place(), before);
        f.ReleaseAt(QPoint(150, 150), Qt::LeftButton);
        f.SpaceUp();
    }

    void aDragOfTheLeftButtonIsNotDisturbedByTheMiddleOne()
    {
        CMoves f;
        f.view->SetZoom(5.0, QPointF(200, 150));
        const QPoint before = f.Place();
        f.PressAt(QPoint(100, 100), Qt::LeftButton);
        f.PressAt(QPoint(100, 100), Qt::MiddleButton);
        f.MoveTo(QPoint(150, 150));
        QCOMPARE(f.Place(), before);
        f.ReleaseAt(QPoint(150, 150), Qt::MiddleButton);
        f.ReleaseAt(QPoint(150, 150), Qt::LeftButton);
    }
};

VANTOR_TEST_MAIN(tst_ViewKeys)
#include "tst_ViewKeys.moc"
