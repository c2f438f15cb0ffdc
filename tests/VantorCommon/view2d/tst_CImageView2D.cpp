// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view2d/View2DFixture.h"

#include "tests/support/TestMain.h"
#include "tests/support/ViewInput.h"

#include <VantorCommon/annotation/view/CImageView2DLayer.h>
#include <VantorCommon/view2d/CImageView2DGotoDlg.h>

#include <QMimeData>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTimer>
#include <random>

using Vantor::Algorithms::CImage;
using namespace View2DFixture;

namespace
{
/// The zoom state and the viewport that follows from it, written down plainly.
struct SPlainZoom {
    double ax = 0, ay = 0, cx = 0, cy = 0, z = 1, px = 0, py = 0;

    QRect ViewPort(const QSize& widget, const QSize& image) const
    {
        const double W = widget.width(), H = widget.height();
        // The scaled size has exactly the widget's length along the side that fits.
        const bool bWide = H / image.height() * image.width() > W;
        const double fw = bWide ? W : H * image.width() / image.height();
        const double fh = bWide ? W * image.height() / image.width() : H;
        const double x0 = std::trunc(W * 0.5 - fw * 0.5 + px);
        const double y0 = std::trunc(H * 0.5 - fh * 0.5 + py);
        const double dx = std::trunc(cx - (ax - x0) * z - x0);
        const double dy = std::trunc(cy - (ay - y0) * z - y0);
        return QRect(int(x0 + dx), int(y0 + dy), int(std::trunc(fw * z + 0.5)),
                     int(std::trunc(fh * z + 0.5)));
    }

    void Wheel(double x, double y, int nDelta)
    {
        const double dblNew = z + z * nDelta * 0.001;
        if (!(dblNew > 0.1))
            return;
        ax += (x - cx) / z;
        ay += (y - cy) / z;
        cx = x;
        cy = y;
        z = dblNew;
    }
};

} // namespace

class tst_CImageView2D : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewViewTakesFocusMenusAndDrops()
    {
        const SFixture f;
        QCOMPARE(f.pView->contextMenuPolicy(), Qt::CustomContextMenu);
        QCOMPARE(f.pView->focusPolicy(), Qt::StrongFocus);
        QVERIFY(f.pView->acceptDrops());
        QVERIFY(f.pView->hasMouseTracking());
        QCOMPARE(f.pView->GetImageUID(), 0xFFFFFFFFu);
        QVERIFY(f.pView->GetLayerDrawing());
        QCOMPARE(f.pView->GetLayerDrawing()->parentWidget(), f.pView);
    }

    void theMenuOfTheImageHasItsEntriesInOrderAndEachSaysWhatItIs()
    {
        SFixture f;
        const char* texts[] = {"Load Image", "Load PDF",  "Save Image", "Close Image", "",
                               "Copy (C)",   "Paste (P)", "",           "GoTo",        "Switch To 3D View"};
        const char* signalNames[] = {"LoadImage", "LoadPdf", "SaveImage", "CloseImage", "",
                                     "Copy",      "Paste",   "",          "",           "Switch2DTo3D"};
        const char* icons[] = {"photo", "pdf", "save_file", "close", "", "copy", "paste", "", "search", "3D"};
        const auto actions = f.Menu(0)->actions();
        QCOMPARE(actions.size(), 10);
        for (int i = 0; i < actions.size(); ++i) {
            QCOMPARE(actions[i]->text(), QString::fromLatin1(texts[i]));
            QCOMPARE(actions[i]->isSeparator(), texts[i][0] == 0);
            if (actions[i]->isSeparator())
                continue;
            const QIcon icon(QStringLiteral(":/Image/%1.png").arg(QLatin1String(icons[i])));
            QVERIFY(!actions[i]->icon().pixmap(24, 24).isNull());
            QCOMPARE(actions[i]->icon().pixmap(24, 24).toImage(), icon.pixmap(24, 24).toImage());
            actions[i]->trigger(); // GoTo without an image does nothing
            QCOMPARE(f.Take().join(QLatin1Char(' ')), QString::fromLatin1(signalNames[i]));
        }
    }

    void theMenuOfAnObjectBeginsWithDelete()
    {
        SFixture f;
        QCOMPARE(f.Menu(1)->actions().size(), 1);
        QAction* pDelete = f.Menu(1)->actions().first();
        QCOMPARE(pDelete->text(), QStringLiteral("Delete"));
        QCOMPARE(pDelete->icon().pixmap(24, 24).toImage(),
                 QIcon(QStringLiteral(":/Image/clear.png")).pixmap(24, 24).toImage());
        pDelete->trigger();
        QCOMPARE(f.Take(), QStringList{QStringLiteral("DeleteDrawableObject")});
    }

    void aRegisteredActionIsCalledWithTheViewAndTheObject()
    {
        SFixture f;
        QVERIFY(f.Show());
        QStringList calls;
        const QIcon icon(QStringLiteral(":/Image/clear.png"));
        f.pView->RegisterGeometryAction(QStringLiteral("Mine"), icon, [&](int nView, unsigned int nUID) {
            calls << QStringLiteral("%1 %2").arg(nView).arg(nUID);
        });
        f.pView->RegisterGeometryAction(QStringLiteral("Nothing"), icon, {});
        const auto actions = f.Menu(1)->actions();
        QCOMPARE(actions.size(), 3);
        QCOMPARE(actions[1]->text(), QStringLiteral("Mine"));
        QVERIFY(!actions[1]->icon().isNull());
        f.pView->ShowContextMenuDrawableObject(QPointF(3, 3), 4000000000u);
        QTRY_VERIFY(f.Menu(1)->isVisible());
        f.Menu(1)->close();
        actions[1]->trigger();
        actions[2]->trigger();
        f.pView->slot_CallbackDrawableObject(); // no sender
        QCOMPARE(calls, QStringList{QStringLiteral("7 4000000000")});
    }

    void theMenusOpenAtTheImagePointWithoutBlocking()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(f.Show());
        f.pView->ShowContextMenu(QPointF(5, 7)); // 10 widget pixels each
        QTRY_VERIFY(f.Menu(0)->isVisible());
        QVERIFY(!f.Menu(1)->isVisible());
        QCOMPARE(f.Menu(0)->pos(), f.pView->mapToGlobal(QPoint(50, 70)));
        f.Menu(0)->close();
        f.pView->slot_ShowContextMenu(QPoint(50, 70));
        QCOMPARE(f.Take(), QStringList{QStringLiteral("ShowContextMenu(5,7)")});
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 30));
        QApplication::sendEvent(f.pView, &event);
        QCOMPARE(f.Take(), QStringList{QStringLiteral("ShowContextMenu(2,3)")});
    }

    void theViewportFollowsThePlainModel()
    {
        std::mt19937 random(3);
        const auto number = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        for (int nRound = 0; nRound < 60; ++nRound) {
            const QSize image(number(1, 300), number(1, 300));
            SFixture f(QSize(number(50, 500), number(50, 500)),
                       MakeTestImage(image.width(), image.height(), 1));
            f.tools.SetViewMode(EImageView2DMode_Panning);
            SPlainZoom plain;
            for (int i = 0; i < 25; ++i) {
                if (i % 3 == 0) {
                    const QPointF pos(number(0, 5000) / 10.0, number(0, 5000) / 10.0);
                    const int nDelta = number(-4, 4) * 120 + number(-1, 1) * 15;
                    ViewInput::Wheel(*f.pView, pos, nDelta);
                    plain.Wheel(pos.x(), pos.y(), nDelta);
                } else if (i % 3 == 1) {
                    const QPointF from(number(0, 400), number(0, 400)), to(number(0, 400), number(0, 400));
                    Drag(*f.pView, from, to);
                    plain.px += (to.x() - from.x()) / plain.z;
                    plain.py += (to.y() - from.y()) / plain.z;
                } else {
                    f.Resize(QSize(number(20, 600), number(20, 600)));
                }
                QCOMPARE(f.pView->GetViewPort(), plain.ViewPort(f.pView->size(), image));
                QCOMPARE(f.pView->GetSizePixel(), double(f.pView->GetViewPort().width()) / image.width());
                QCOMPARE(f.pView->GetLayerDrawing()->geometry(), f.pView->rect());
                QCOMPARE(f.pView->GetLayerDrawing()->MapToImage(QPointF(11, 13)),
                         f.pView->MapToImage(QPointF(11, 13)));
            }
            f.pView->slot_ZoomFit();
            QCOMPARE(f.pView->GetViewPort(), SPlainZoom().ViewPort(f.pView->size(), image));
        }
    }

    void theWheelZoomsAboutTheMouse()
    {
        SFixture f(QSize(400, 300), MakeTestImage(400, 300, 3));
        const QPointF mouse(123, 217);
        for (int i = 0; i < 20; ++i) {
            const QPointF before = f.pView->MapToImage(mouse);
            QVERIFY(ViewInput::Wheel(*f.pView, mouse, 120));
            const QPointF drift = f.pView->MapToImage(mouse) - before;
            QVERIFY(std::abs(drift.x()) * f.pView->GetSizePixel() < 2.0); // truncations only
            QVERIFY(std::abs(drift.y()) * f.pView->GetSizePixel() < 2.0);
        }
    }

    void oneNotchUpIsTwelvePercentAndOneDownTheSame()
    {
        SFixture f(QSize(1000, 1000), MakeTestImage(10, 10, 1));
        ViewInput::Wheel(*f.pView, QPointF(0, 0), 120);
        QCOMPARE(f.pView->GetViewPort().width(), 1120);
        f.pView->ZoomFit();
        ViewInput::Wheel(*f.pView, QPointF(0, 0), -120);
        QCOMPARE(f.pView->GetViewPort().width(), 880);
    }

    void aWheelStepThatWouldBringTheZoomToATenthOrBelowIsIgnoredEntirely()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        SFixture untouched(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(!ViewInput::Wheel(*f.pView, QPointF(31, 17), -900)); // to exactly 0.1 or a hair around
        QVERIFY(!ViewInput::Wheel(*f.pView, QPointF(31, 17), -960));
        QCOMPARE(f.pView->GetViewPort(), untouched.pView->GetViewPort());
        // The anchor did not move either: from here on both go the same way.
        for (SFixture* p : {&f, &untouched})
            QVERIFY(ViewInput::Wheel(*p->pView, QPointF(200, 100), 240));
        QCOMPARE(f.pView->GetViewPort(), untouched.pView->GetViewPort());
        QVERIFY(ViewInput::Wheel(*untouched.pView, QPointF(200, 100), -840));
    }

    void theZoomHasNoUpperBound()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        double z = 1.0;
        while (z < 100000.0) {
            QVERIFY(ViewInput::Wheel(*f.pView, QPointF(0, 0), 960));
            z *= 1.96;
        }
        QVERIFY(std::abs(f.pView->GetSizePixel() / (10.0 * z) - 1.0) < 1e-6);
        // Far beyond what whole pixels hold it stays quiet.
        for (int i = 0; i < 5000; ++i)
            ViewInput::Wheel(*f.pView, QPointF(i % 300, 20), 960);
        f.Grab();
    }

    void eachModeSendsItsSignals_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("stem");
        QTest::newRow("selecting") << 0 << QStringLiteral("SelectMoving");
        QTest::newRow("panning") << 1 << QString();
        QTest::newRow("rectangle") << 2 << QStringLiteral("DrawRectangle");
        QTest::newRow("ellipse") << 3 << QStringLiteral("DrawEllipse");
        QTest::newRow("circle") << 4 << QStringLiteral("DrawCircle");
        QTest::newRow("polygon") << 5 << QStringLiteral("DrawPolygon");
        QTest::newRow("line") << 6 << QStringLiteral("DrawLine");
        QTest::newRow("unknown") << 7 << QString();
    }

    void eachModeSendsItsSignals()
    {
        QFETCH(int, mode);
        QFETCH(QString, stem);
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(f.Show());
        f.tools.SetViewMode(EImageView2DMode(mode));
        ViewInput::Move(*f.pView, QPoint(30, 40));
        QStringList hover{QStringLiteral("ChangeMousePosition(3,4)")};
        if (mode == 0)
            hover << QStringLiteral("CheckResizeRotate(3,4)");
        if (mode == 5)
            hover << QStringLiteral("DrawPolygonWaiting(3,4)");
        QCOMPARE(f.Take(), hover);

        ViewInput::Move(*f.pView, QPoint(50, 60));
        f.Take();
        ViewInput::Press(*f.pView, QPoint(50, 60));
        const bool bSends = !stem.isEmpty();
        QStringList expected{QStringLiteral("Active")};
        if (bSends)
            expected << stem + QStringLiteral("Start(5,6)");
        QCOMPARE(f.Take(), expected);

        for (const int nStep : {70, 80}) { // the start stays the press point
            ViewInput::Move(*f.pView, QPoint(nStep, nStep));
            const QString end = QStringLiteral("(%1,%1)").arg(nStep / 10);
            if (mode == 1) {
                f.Take(); // the image moved along
                continue;
            }
            expected = QStringList{QStringLiteral("ChangeMousePosition") + end};
            if (bSends)
                expected << stem + QStringLiteral("Doing(5,6)") + end;
            QCOMPARE(f.Take(), expected);
        }
        ViewInput::Move(*f.pView, QPoint(90, 90));
        f.Take();
        ViewInput::Release(*f.pView, QPoint(90, 90));
        expected = bSends ? QStringList{stem + QStringLiteral("End(5,6)(9,9)")} : QStringList();
        QCOMPARE(f.Take(), expected);
        ViewInput::Move(*f.pView, QPoint(10, 10)); // the button is up again
        for (const QString& name : f.Take())
            QVERIFY2(!name.contains(QStringLiteral("Doing")), qPrintable(name));
    }

    void aLeftClickWithoutMovementInSelectingModeEmitsStartButNoEnd()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(f.Show());
        ViewInput::Move(*f.pView, QPoint(50, 60));
        f.Take();
        ViewInput::Press(*f.pView, QPoint(50, 60));
        ViewInput::Release(*f.pView, QPoint(50, 60));
        QCOMPARE(f.Take(), (QStringList{QStringLiteral("Active"), QStringLiteral("SelectMovingStart(5,6)")}));
        f.tools.SetViewMode(EImageView2DMode_Drawing_Line);
        ViewInput::Press(*f.pView, QPoint(50, 60));
        ViewInput::Release(*f.pView, QPoint(50, 60));
        QCOMPARE(f.Take().last(), QStringLiteral("DrawLineEnd(5,6)(5,6)"));
    }

    void aRightPressMakesActiveAndSendsNothingElse()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(f.Show());
        ViewInput::Move(*f.pView, QPoint(50, 60));
        f.Take();
        ViewInput::Press(*f.pView, QPoint(50, 60), Qt::RightButton);
        ViewInput::Release(*f.pView, QPoint(80, 90), Qt::RightButton);
        const QStringList signalNames = f.Take();
        QCOMPARE(signalNames.first(), QStringLiteral("Active"));
        QVERIFY(signalNames.filter(QStringLiteral("Select")).isEmpty());
    }

    void aMoveToTheSamePixelSendsNothing()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(f.Show());
        f.tools.SetViewMode(EImageView2DMode_Drawing_Rectanlge);
        ViewInput::Press(*f.pView, QPoint(50, 60));
        f.Take();
        QMouseEvent event(QEvent::MouseMove, QPointF(50.4, 59.6), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(f.pView, &event);
        QCOMPARE(f.Take(), QStringList());
        QMouseEvent half(QEvent::MouseMove, QPointF(50.5, 60), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(f.pView, &half); // half away from zero
        QCOMPARE(f.Take().last(), QStringLiteral("DrawRectangleDoing(5,6)(5.1,6)"));
        QMouseEvent below(QEvent::MouseMove, QPointF(-0.5, -1.5), Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(f.pView, &below);
        QCOMPARE(f.Take().last(), QStringLiteral("DrawRectangleDoing(5,6)(-0.1,-0.2)"));
        ViewInput::Release(*f.pView, QPoint(50, 60));
    }

    void draggingPansInPanningMode()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(f.Show());
        f.tools.SetViewMode(EImageView2DMode_Panning);
        QCOMPARE(f.pView->GetViewPort(), QRect(0, 0, 400, 300));
        ViewInput::Press(*f.pView, QPoint(100, 100));
        ViewInput::Move(*f.pView, QPoint(130, 90));
        ViewInput::Move(*f.pView, QPoint(141, 77));
        QCOMPARE(f.pView->GetViewPort(), QRect(41, -23, 400, 300));
        ViewInput::Release(*f.pView, QPoint(141, 77));
        ViewInput::Move(*f.pView, QPoint(200, 200));
        QCOMPARE(f.pView->GetViewPort(), QRect(41, -23, 400, 300));
    }

    void everyKeySaysItselfAndTheShortcutsMore_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("name");
        QTest::newRow("undo") << int(Qt::Key_Z) << int(Qt::ControlModifier) << QStringLiteral("Undo");
        QTest::newRow("redo") << int(Qt::Key_Z) << int(Qt::ControlModifier | Qt::ShiftModifier)
                              << QStringLiteral("Redo");
        QTest::newRow("copy") << int(Qt::Key_C) << int(Qt::ControlModifier) << QStringLiteral("Copy");
        QTest::newRow("paste") << int(Qt::Key_V) << int(Qt::ControlModifier) << QStringLiteral("Paste");
    }

    void everyKeySaysItselfAndTheShortcutsMore()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, name);
        SFixture f;
        QVERIFY(f.Show());
        QTest::keyClick(f.pView, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QStringList signalNames = f.Take(); // the modifiers are keys, too
        const QStringList expected{QStringLiteral("PressKey%1").arg(key), name};
        QCOMPARE(signalNames.mid(signalNames.size() - 2), expected);
        QCOMPARE(signalNames.filter(QRegularExpression(QStringLiteral("^[^P]|Paste"))), QStringList{name});
    }

    void keysThatMatchNothingGoOnToTheBase()
    {
        SFixture f;
        QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        event.setAccepted(true);
        static_cast<QObject*>(f.pView)->event(&event);
        QVERIFY(!event.isAccepted());
        QKeyEvent undo(QEvent::KeyPress, Qt::Key_Z, Qt::ControlModifier);
        static_cast<QObject*>(f.pView)->event(&undo);
        QVERIFY(undo.isAccepted());
        QCOMPARE(f.Take().first(), QStringLiteral("PressKey65"));
    }

    void droppedUrlsAreSentInOrder()
    {
        SFixture f;
        QMimeData text;
        text.setText(QStringLiteral("text"));
        QDragEnterEvent refused(QPoint(1, 1), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        refused.setAccepted(false);
        QApplication::sendEvent(f.pView, &refused);
        QVERIFY(!refused.isAccepted());

        QMimeData urls;
        urls.setUrls({QUrl::fromLocalFile(QStringLiteral("/a/1.png")),
                      QUrl::fromLocalFile(QStringLiteral("/b c.pdf"))});
        QDragEnterEvent taken(QPoint(1, 1), Qt::CopyAction, &urls, Qt::LeftButton, Qt::NoModifier);
        taken.setAccepted(false);
        QApplication::sendEvent(f.pView, &taken);
        QVERIFY(taken.isAccepted());
        QCOMPARE(taken.dropAction(), taken.proposedAction());
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &urls, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(f.pView, &drop);
        QCOMPARE(f.Take(),
                 (QStringList{QStringLiteral("AddImage /a/1.png"), QStringLiteral("AddImage /b c.pdf")}));
    }

    void everyChangeOfTheCurrentImageResetsZoomAndPan()
    {
        const ImagePtr pA = MakeTestImage(40, 30, 3);
        const ImagePtr pB = MakeTestImage(40, 30, 1);
        SFixture f(QSize(400, 300), pA);
        QCOMPARE(f.pView->GetImageUID(), pA->GetUID());
        ViewInput::Wheel(*f.pView, QPointF(10, 10), 240);
        QVERIFY(f.pView->GetViewPort() != QRect(0, 0, 400, 300));
        f.model.PushImage(pB);
        QCOMPARE(f.pView->GetImageUID(), pB->GetUID());
        QCOMPARE(f.pView->GetViewPort(), QRect(0, 0, 400, 300));
        ViewInput::Wheel(*f.pView, QPointF(10, 10), 240);
        f.model.Previous();
        QCOMPARE(f.pView->GetImageUID(), pA->GetUID());
        QCOMPARE(f.pView->GetViewPort(), QRect(0, 0, 400, 300));
        QCOMPARE(f.Grab(), f.Expected(pA));
    }

    void whenTheCurrentImageBecomesNullTheDisplayedOneIsDropped()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        f.model.Clear();
        QCOMPARE(f.pView->GetImageUID(), 0xFFFFFFFFu);
        const QImage picture = f.Grab();
        QCOMPARE(Count(picture, kBackground), picture.width() * picture.height());
    }

    void theViewKeepsTheImageThatItShowsAlive()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        const std::weak_ptr<CImage> pWatched = f.model.GetCurrentImage();
        auto pEmpty = std::make_shared<CImage>(); // cannot be wrapped: nothing is shown, nothing dangles
        f.model.SetImages({pEmpty});
        QVERIFY(pWatched.expired());
        f.Grab();
    }

    void showingAndPressingMakesActive()
    {
        SFixture f;
        QVERIFY(f.Show());
        f.pView->setVisible(false);
        QCOMPARE(f.Take(), QStringList());
        f.pView->setVisible(true);
        QCOMPARE(f.Take(), QStringList{QStringLiteral("Active")});
        ViewInput::Move(*f.pView, QPoint(5, 5));
        f.Take();
        ViewInput::Press(*f.pView, QPoint(5, 5));
        QCOMPARE(f.Take().first(), QStringLiteral("Active"));
        ViewInput::Release(*f.pView, QPoint(5, 5));
    }

    void gotoSetsThePanToThePositionWithoutChangingTheZoom()
    {
        SFixture f(QSize(400, 300), MakeTestImage(640, 480, 3));
        QVERIFY(f.Show());
        ViewInput::Wheel(*f.pView, QPointF(100, 100), 240);
        SPlainZoom plain;
        plain.Wheel(100, 100, 240);
        bool bSeen = false;
        QTimer::singleShot(0, f.pView, [&] {
            auto* pDialog = qobject_cast<CImageView2DGotoDlg*>(QApplication::activeModalWidget());
            QVERIFY(pDialog);
            const auto spins = pDialog->findChildren<QSpinBox*>();
            QCOMPARE(spins.size(), 2);
            bSeen = spins[0]->minimum() == 0 && spins[0]->maximum() == 639 && spins[1]->maximum() == 479;
            spins[0]->setValue(31);
            spins[1]->setValue(17);
            pDialog->accept();
        });
        f.pView->slot_Goto();
        QVERIFY(bSeen);
        plain.px = -31; // deliberate: the position is the pan, as it is
        plain.py = -17;
        QCOMPARE(f.pView->GetViewPort(), plain.ViewPort(f.pView->size(), QSize(640, 480)));
        QTimer::singleShot(0, f.pView, [] {
            if (auto* pDialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                pDialog->reject();
        });
        f.pView->slot_Goto();
        QCOMPARE(f.pView->GetViewPort(), plain.ViewPort(f.pView->size(), QSize(640, 480)));
    }

    void gotoWithoutAnImageDoesNothing()
    {
        SFixture f;
        f.pView->slot_Goto();
        QVERIFY(!QApplication::activeModalWidget());
    }

    void theListFollowsTheGeometryModel()
    {
        SFixture f(QSize(400, 300), MakeTestImage(400, 300, 3));
        const auto pA = MakeRectangle(20, 20, 60, 60);
        const auto pB = MakeRectangle(60, 60, 60, 60);
        f.geometry.AddObject(pA);
        f.geometry.AddObject(pB);
        QCOMPARE(f.pView->GetDrawableObjects(), f.geometry.GetObjects()); // the newest first
        f.geometry.DeleteObject(pB);
        QCOMPARE(f.pView->GetDrawableObjects(), (CImageView2DGeometryModel::ObjectList{pA}));
        f.geometry.ClearObject();
        QVERIFY(f.pView->GetDrawableObjects().empty());
        f.pView->slot_AddDrawableObject(1, QString());
        f.pView->slot_DeleteDrawableObject(1, QString());
        QVERIFY(f.pView->GetDrawableObjects().empty());
    }

    void anObjectHandedToTheViewIsPaintedAfterThoseOfTheModel()
    {
        SFixture f(QSize(400, 300), MakeTestImage(400, 300, 3));
        const auto pOfModel = MakeRectangle(20, 20, 60, 60);
        const auto pHanded = MakeRectangle(60, 60, 60, 60);
        f.geometry.AddObject(pOfModel);
        f.pView->DrawObject(pHanded);
        f.pView->DrawObject(nullptr);
        QCOMPARE(f.pView->GetDrawableObjects(), (CImageView2DGeometryModel::ObjectList{pOfModel, pHanded}));
        const QImage with = f.Grab();
        QVERIFY(Count(with.copy(110, 65, 20, 50), QColor(0, 255, 0)) > 0); // its right edge
        f.geometry.UnSelectedAll(); // a change of the model makes the list anew
        QCOMPARE(f.pView->GetDrawableObjects(), (CImageView2DGeometryModel::ObjectList{pOfModel}));
        f.pView->DrawObject(pHanded);
        f.pView->Clear();
        QVERIFY(f.pView->GetDrawableObjects().empty());
    }

    void theModelsMayDieFirst()
    {
        QWidget parent;
        auto pModel = std::make_unique<CImageView2DModel>();
        auto pGeometry = std::make_unique<CImageView2DGeometryModel>();
        auto pTools = std::make_unique<CImageView2DToolModel>();
        CImageView2D view(pModel.get(), pGeometry.get(), pTools.get(), 0, &parent);
        view.resize(100, 100);
        pModel->SetImages({MakeTestImage(10, 10, 3)});
        pGeometry->AddObject(MakeRectangle(1, 1, 3, 3));
        pModel.reset();
        pGeometry.reset();
        pTools.reset();
        Drag(view, QPointF(10, 10), QPointF(40, 40));
        view.slot_ChangeDrawableObjectProperty(1);
        ViewReference::Grab(view);
        view.slot_ChangeCurrentImage();
        ViewReference::Grab(view);
        QCOMPARE(view.GetImageUID(), 0xFFFFFFFFu);
    }
    void aWheelStepToExactlyATenthIsIgnored()
    {
        SFixture f(QSize(400, 300), MakeTestImage(40, 30, 3));
        QVERIFY(ViewInput::Wheel(*f.pView, QPointF(31, 17), -875)); // to an eighth, which is exact
        const QRect before = f.pView->GetViewPort();
        QCOMPARE(0.125 + 0.125 * -200 * 0.001, 0.1);
        QVERIFY(!ViewInput::Wheel(*f.pView, QPointF(31, 17), -200));
        QCOMPARE(f.pView->GetViewPort(), before);
        QVERIFY(ViewInput::Wheel(*f.pView, QPointF(31, 17), -199));
    }
};

VANTOR_TEST_MAIN(tst_CImageView2D)
#include "tst_CImageView2D.moc"
