// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Zoom and place of the 2D view as hosts set them: SetZoom and its like, the box, the mark, the small map.
#include "tests/VantorCommon/view2d/View2DFixture.h"

#include "tests/support/TestMain.h"
#include "tests/support/ViewInput.h"

#include <VantorCommon/view2d/CImageView2DGotoDlg.h>

#include <QRegularExpression>
#include <QRubberBand>
#include <QSpinBox>
#include <QTimer>
#include <cmath>

using namespace View2DFixture;

namespace
{
constexpr int kWidth = 400; // of the view
constexpr int kHeight = 300;

bool IsNear(const QPointF& a, const QPointF& b, double dblLimit)
{
    return std::abs(a.x() - b.x()) <= dblLimit && std::abs(a.y() - b.y()) <= dblLimit;
}

/// Chooses a position in the dialog when it comes up.
void AnswerGoto(int x, int y)
{
    QTimer::singleShot(0, qApp, [x, y] {
        auto* pDialog = qobject_cast<CImageView2DGotoDlg*>(QApplication::activeModalWidget());
        QVERIFY(pDialog);
        const auto spins = pDialog->findChildren<QSpinBox*>();
        spins[0]->setValue(x);
        spins[1]->setValue(y);
        pDialog->accept();
    });
}

QWidget* FindChild(const CImageView2D& view, const QSize& size)
{
    for (QObject* pChild : view.children())
        if (auto* pWidget = qobject_cast<QWidget*>(pChild))
            if (pWidget->size() == size && !pWidget->isHidden())
                return pWidget;
    return nullptr;
}

const QSize kMark(31, 31);
const QSize kMap(135, 102); // of 800 x 600: a third of the view and a border, as high as it must be
} // namespace

class tst_Zoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theZoomIsWidgetPixelsPerImagePixel()
    {
        SFixture f(QSize(kWidth, kHeight));
        QCOMPARE(f.pView->GetZoom(), 0.0);
        f.model.SetImages({MakeTestImage(200, 100, 3)});
        QCOMPARE(f.pView->GetZoom(), 2.0);
        f.Resize(QSize(100, 300));
        QCOMPARE(f.pView->GetZoom(), 0.5);
        f.model.Clear();
        QCOMPARE(f.pView->GetZoom(), 0.0);
    }

    void withoutAnImageNothingHappens()
    {
        SFixture f(QSize(kWidth, kHeight));
        int nChanges = 0;
        connect(f.pView, &CImageView2D::signal_ChangePlace, f.pView, [&] { ++nChanges; });
        f.pView->SetZoom(3.0, QPointF(10, 10));
        f.pView->CenterOn(QPointF(5, 5));
        f.pView->FitWidth();
        f.pView->ZoomTo(QRectF(1, 2, 3, 4));
        f.pView->StartZoomBox();
        f.pView->SetMark(QPointF(5, 5));
        QCOMPARE(nChanges, 0);
        QCOMPARE(f.pView->GetZoom(), 0.0);
        QVERIFY(!FindChild(*f.pView, kMark));
        QVERIFY(f.pView->IsFitted());
    }

    void settingTheZoomKeepsTheFixedPoint_data()
    {
        QTest::addColumn<double>("dblZoom");
        for (double dblZoom : {0.013, 0.5, 1.0, 1.38, 7.77, 63.0, 1000.0})
            QTest::newRow(qPrintable(QString::number(dblZoom))) << dblZoom;
    }

    void settingTheZoomKeepsTheFixedPoint()
    {
        QFETCH(double, dblZoom);
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 500, 1));
        const QPointF fixed(123, 217);
        const QPointF before = f.pView->MapToImage(fixed);
        f.pView->SetZoom(dblZoom, fixed);
        QVERIFY(std::abs(f.pView->GetZoom() / dblZoom - 1.0) < 1e-12);
        QVERIFY(IsNear(f.pView->MapToWidget(before), fixed, 1.0));
        f.pView->SetZoom(0.5, fixed);
        QVERIFY(IsNear(f.pView->MapToImage(fixed), before, 2.0));
    }

    void aHundredPercentShowsPixelForPixel()
    {
        const auto pImage = MakeTestImage(800, 600, 3);
        SFixture f(QSize(kWidth, kHeight), pImage);
        f.pView->SetZoom(1.0, QPointF(200, 150));
        QCOMPARE(f.pView->GetViewPort().size(), QSize(800, 600));
        QCOMPARE(f.pView->GetSizePixel(), 1.0);
        QCOMPARE(f.Grab(), f.Expected(pImage));
    }

    void aZoomOutOfRangeBecomesTheNearestOne()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 100, 3));
        f.pView->SetZoom(1e9, QPointF());
        QVERIFY(std::abs(f.pView->GetZoom() - 1000.0) < 1e-9);
        f.pView->SetZoom(1e-9, QPointF());
        QVERIFY(std::abs(f.pView->GetZoom() - 0.001) < 1e-12);
        for (double dblBad : {0.0, -1.0, double(NAN), double(INFINITY)})
            f.pView->SetZoom(dblBad, QPointF());
        QVERIFY(std::abs(f.pView->GetZoom() - 0.001) < 1e-12);
    }

    void theWheelLeadsBackFromBelowItsBound()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(20, 15, 3));
        f.pView->SetZoom(1.0, QPointF(200, 150)); // a twentieth of fit; the wheel ends at a tenth
        QVERIFY(!ViewInput::Wheel(*f.pView, QPointF(200, 150), -120));
        QVERIFY(std::abs(f.pView->GetZoom() - 1.0) < 1e-12);
        QVERIFY(ViewInput::Wheel(*f.pView, QPointF(200, 150), 120));
        QVERIFY(std::abs(f.pView->GetZoom() - 1.12) < 1e-12);
    }

    void aPointCanBeCentredAtAnyZoom()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        for (double dblZoom : {0.1, 1.0, 3.3, 50.0, 900.0})
            for (const QPointF& point :
                 {QPointF(400, 300), QPointF(0, 0), QPointF(799.5, 12.25), QPointF(-50, 900)}) {
                f.pView->SetZoom(dblZoom, QPointF(3, 4));
                f.pView->CenterOn(point);
                QVERIFY(IsNear(f.pView->MapToWidget(point), QPointF(kWidth / 2, kHeight / 2), 0.5));
                QVERIFY(std::abs(f.pView->GetZoom() / dblZoom - 1.0) < 1e-12);
            }
    }

    void panningIsExactAtAnyZoom()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(324, 599, 3));
        for (double dblZoom : {0.37, 1.1, 7.3, 13.7, 33.3}) {
            f.pView->SetZoom(dblZoom, QPointF(77, 33));
            f.pView->CenterOn(QPointF(300, 200));
            const QSize size = f.pView->GetViewPort().size();
            for (int i = 1; i <= 100; ++i) {
                f.pView->MovePointTo(QPointF(3.137 * i, 5.371 * i), QPointF(200 - i, 150 + i));
                const QPoint topLeft(int(std::round(200 - i - 3.137 * i * size.width() / 324)),
                                     int(std::round(150 + i - 5.371 * i * size.height() / 599)));
                QVERIFY((f.pView->GetViewPort().topLeft() - topLeft).manhattanLength() == 0);
            }
        }
    }

    void fitWidthBeginsWithTheFirstRowInView()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 1000, 3));
        f.pView->FitWidth(); // from fit: the top
        QCOMPARE(f.pView->GetViewPort(), QRect(0, 0, kWidth, 2000));
        f.pView->SetZoom(8.0, QPointF());
        f.pView->MovePointTo(QPointF(30, 400), QPointF());
        f.pView->FitWidth();
        QCOMPARE(f.pView->GetViewPort(), QRect(0, -800, kWidth, 2000));
        f.pView->MovePointTo(QPointF(), QPointF(0, 40)); // ground above the first row
        f.pView->FitWidth();
        QCOMPARE(f.pView->GetViewPort(), QRect(0, 0, kWidth, 2000));
        f.pView->MovePointTo(QPointF(0, 990), QPointF());
        f.pView->FitWidth(); // no ground below the last row
        QCOMPARE(f.pView->GetViewPort(), QRect(0, kHeight - 2000, kWidth, 2000));
    }

    void fitWidthCentresAnImageThatIsNotHigher()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 50, 3));
        f.pView->SetZoom(9.0, QPointF(1, 1));
        f.pView->FitWidth();
        QCOMPARE(f.pView->GetViewPort(), QRect(0, 100, kWidth, 100));
    }

    void zoomingToAPartShowsAllOfItInTheMiddle()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        f.pView->ZoomTo(QRectF(100, 50, 20, 60)); // higher than the view
        QVERIFY(std::abs(f.pView->GetZoom() - 5.0) < 1e-12);
        QVERIFY(IsNear(f.pView->MapToWidget(QPointF(110, 80)), QPointF(200, 150), 0.5));
        f.pView->ZoomTo(QRectF(100, 50, 40, -3));
        QVERIFY(std::abs(f.pView->GetZoom() - 10.0) < 1e-12);
        f.pView->ZoomTo(QRectF(7, 9, 0, 0)); // a point counts as a pixel
        QVERIFY(std::abs(f.pView->GetZoom() - 300.0) < 1e-9);
    }

    void theViewTellsItsZoomAndWhoMovedIt()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 100, 3));
        QVector<double> zooms;
        int nMoves = 0;
        connect(f.pView, &CImageView2D::signal_ChangeZoom, f.pView, [&] { zooms << f.pView->GetZoom(); });
        connect(f.pView, &CImageView2D::signal_ChangePlace, f.pView, [&] { ++nMoves; });
        f.Resize(QSize(200, 300));
        f.model.SetImages({MakeTestImage(400, 100, 3)});
        QCOMPARE(zooms, QVector<double>({1.0, 0.5}));
        QCOMPARE(nMoves, 0); // nobody did
        ViewInput::Wheel(*f.pView, QPointF(10, 10), 120);
        f.pView->CenterOn(QPointF(5, 5));
        f.pView->slot_ZoomFit();
        QCOMPARE(zooms, QVector<double>({1.0, 0.5, 0.56, 0.5}));
        QCOMPARE(nMoves, 3);
    }

    void aFittedViewKnowsIt()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 100, 3));
        QVERIFY(f.pView->IsFitted());
        f.Resize(QSize(300, 300));
        QVERIFY(f.pView->IsFitted());
        f.pView->CenterOn(QPointF(3, 3));
        QVERIFY(!f.pView->IsFitted());
        f.pView->ZoomFit();
        QVERIFY(f.pView->IsFitted());
        ViewInput::Wheel(*f.pView, QPointF(10, 10), 120);
        QVERIFY(!f.pView->IsFitted());
    }

    void byDefaultAnotherImageIsFitted()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 100, 3));
        f.pView->SetZoom(5.0, QPointF(3, 4));
        f.model.SetImages({MakeTestImage(200, 100, 1)});
        QVERIFY(f.pView->IsFitted());
        f.pView->SetZoom(5.0, QPointF(3, 4));
        f.Resize(QSize(200, 150));
        QVERIFY(std::abs(f.pView->GetZoom() - 2.5) < 1e-12);
    }

    void anImageOfEqualSizeKeepsZoomAndPlace()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 100, 3));
        f.pView->SetPlaceOptions(true, false);
        f.pView->SetZoom(5.0, QPointF(3, 4));
        f.pView->CenterOn(QPointF(60, 70));
        const QRect place = f.pView->GetViewPort();
        f.model.SetImages({MakeTestImage(200, 100, 1)});
        QCOMPARE(f.pView->GetViewPort(), place);
        f.model.SetImages({MakeTestImage(100, 200, 1)});
        QVERIFY(f.pView->IsFitted());
        f.pView->SetZoom(5.0, QPointF(3, 4));
        f.model.Clear();
        f.model.SetImages({MakeTestImage(100, 200, 1)});
        QVERIFY(f.pView->IsFitted()); // the view was empty
    }

    void aViewOfAnotherSizeKeepsZoomAndMiddle()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(200, 100, 3));
        f.pView->SetPlaceOptions(true, false);
        f.pView->SetZoom(5.0, QPointF(3, 4));
        f.pView->CenterOn(QPointF(60, 70));
        const QSize before = f.pView->size();
        f.pView->resize(250, 180);
        QResizeEvent event(QSize(250, 180), before);
        QApplication::sendEvent(f.pView, &event);
        QVERIFY(std::abs(f.pView->GetZoom() - 5.0) < 1e-9);
        QVERIFY(IsNear(f.pView->MapToWidget(QPointF(60, 70)), QPointF(125, 90), 1.0));
        f.pView->ZoomFit();
        f.pView->resize(400, 300);
        QResizeEvent back(QSize(400, 300), QSize(250, 180));
        QApplication::sendEvent(f.pView, &back);
        QVERIFY(f.pView->IsFitted());
        QCOMPARE(f.pView->GetZoom(), 2.0);
    }

    void goToCanCentreThePixelAndMarkIt()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        QVERIFY(f.Show());
        f.pView->SetPlaceOptions(false, true);
        f.pView->SetZoom(4.0, QPointF(3, 4));
        AnswerGoto(401, 307);
        f.pView->slot_Goto();
        QVERIFY(IsNear(f.pView->MapToWidget(QPointF(401.5, 307.5)), QPointF(200, 150), 0.5));
        QVERIFY(std::abs(f.pView->GetZoom() - 4.0) < 1e-12);
        const QWidget* pMark = FindChild(*f.pView, kMark);
        QVERIFY(pMark);
        QVERIFY(IsNear(pMark->geometry().center(), QPointF(200, 150), 1.0));
        f.pView->CenterOn(QPointF(391.5, 307.5)); // the mark goes along
        QVERIFY(IsNear(pMark->geometry().center(), QPointF(240, 150), 1.0));
        ViewInput::Press(*f.pView, QPoint(30, 30));
        ViewInput::Release(*f.pView, QPoint(30, 30));
        QVERIFY(pMark->isHidden());
    }

    void anotherImageTakesTheMarkAway()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        f.pView->SetMark(QPointF(1e9, -1e9)); // far outside, and harmless
        f.pView->SetMark(QPointF(20, 10));
        QVERIFY(FindChild(*f.pView, kMark));
        f.model.SetImages({MakeTestImage(800, 600, 1)});
        QVERIFY(!FindChild(*f.pView, kMark));
    }

    void theMarkLeavesThePixelItselfFree()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        f.pView->SetZoom(1.0, QPointF());
        const QImage before = f.Grab();
        f.pView->SetMark(QPointF(100.5, 100.5));
        const QImage after = f.Grab();
        const QPoint pixel = f.pView->MapToWidget(QPointF(100, 100)).toPoint();
        QCOMPARE(after.pixel(pixel), before.pixel(pixel));
        QCOMPARE(after.pixelColor(pixel + QPoint(8, 0)), QColor(255, 220, 0));
        QCOMPARE(after.pixelColor(pixel - QPoint(0, 8)), QColor(255, 220, 0));
        QCOMPARE(after.pixel(pixel + QPoint(20, 0)), before.pixel(pixel + QPoint(20, 0)));
    }

    void aDraggedBoxIsZoomedTo()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        QVERIFY(f.Show());
        f.pView->StartZoomBox();
        QCOMPARE(f.pView->cursor().shape(), Qt::CrossCursor);
        f.signalLog.clear();
        ViewInput::Press(*f.pView, QPoint(100, 60));
        ViewInput::Move(*f.pView, QPoint(150, 90));
        ViewInput::Move(*f.pView, QPoint(199, 109)); // 100 x 50 widget pixels
        QVERIFY(f.pView->findChild<QRubberBand*>()->isVisible());
        ViewInput::Release(*f.pView, QPoint(199, 109));
        QVERIFY(std::abs(f.pView->GetZoom() - 2.0) < 1e-9);
        QVERIFY(IsNear(f.pView->MapToWidget(QPointF(300, 170)), QPointF(200, 150), 1.0));
        const QStringList lstOthers = f.Take().filter(QRegularExpression(QStringLiteral("^(?!ChangeMouse)")));
        QCOMPARE(lstOthers, QStringList{QStringLiteral("Active")}); // nothing was drawn or selected
        QVERIFY(!f.pView->findChild<QRubberBand*>());
        QCOMPARE(f.pView->cursor().shape(), Qt::ArrowCursor);
        ViewInput::Press(*f.pView, QPoint(100, 60)); // the next drag is an ordinary one
        QVERIFY(f.Take().last().startsWith(QLatin1String("SelectMovingStart")));
        ViewInput::Release(*f.pView, QPoint(100, 60));
    }

    void aClickEscapeOrAnotherButtonEndsTheWaitingForABox()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        QVERIFY(f.Show());
        const auto isWaiting = [&] { return f.pView->cursor().shape() == Qt::CrossCursor; };
        f.pView->StartZoomBox();
        f.pView->StartZoomBox(); // twice is once
        ViewInput::Press(*f.pView, QPoint(100, 60));
        ViewInput::Release(*f.pView, QPoint(101, 60));
        QVERIFY(!isWaiting());
        f.pView->StartZoomBox();
        QTest::keyClick(f.pView, Qt::Key_Escape);
        QVERIFY(!isWaiting());
        f.pView->StartZoomBox();
        ViewInput::Press(*f.pView, QPoint(100, 60));
        ViewInput::Move(*f.pView, QPoint(150, 90));
        ViewInput::Press(*f.pView, QPoint(150, 90), Qt::RightButton);
        QVERIFY(!isWaiting());
        ViewInput::Release(*f.pView, QPoint(150, 90), Qt::RightButton);
        ViewInput::Release(*f.pView, QPoint(150, 90));
        QVERIFY(f.pView->IsFitted());
    }

    void theSmallMapIsThereWhileAPartIsInView()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        f.pView->SetZoom(1.0, QPointF());
        QVERIFY(!FindChild(*f.pView, kMap)); // off at first
        f.pView->SetMiniMap(true);
        const QWidget* pMap = FindChild(*f.pView, kMap);
        QVERIFY(pMap);
        QCOMPARE(pMap->geometry().bottomRight(), QPoint(kWidth - 9, kHeight - 9));
        f.pView->ZoomFit();
        QVERIFY(pMap->isHidden());
        f.pView->SetZoom(1.0, QPointF());
        QVERIFY(!pMap->isHidden());
        f.model.Clear();
        QVERIFY(pMap->isHidden());
        f.model.SetImages({MakeTestImage(800, 600, 1)});
        f.pView->SetZoom(1.0, QPointF());
        f.pView->SetMiniMap(false);
        QVERIFY(!FindChild(*f.pView, kMap));
    }

    void theSmallMapShowsTheImageAndWhatIsInView()
    {
        SFixture f(QSize(kWidth, kHeight));
        auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
        QCOMPARE(pImage->Create(800, 600, 3, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        for (int y = 0; y < 600; ++y)
            for (int x = 0; x < 800; ++x)
                pImage->GetPixel(x, y)[x < 400 ? 0 : 1] = 200; // red, then green
        f.model.SetImages({pImage});
        f.pView->SetMiniMap(true);
        f.pView->SetZoom(1.0, QPointF());
        f.pView->MovePointTo(QPointF(), QPointF()); // the left upper quarter
        QWidget* pMap = FindChild(*f.pView, kMap);
        QVERIFY(pMap);
        const QImage picture = ViewReference::Grab(*pMap);
        QCOMPARE(picture.pixelColor(30, 20), QColor(200, 0, 0));
        const QColor dark = picture.pixelColor(30, 80); // below what is in view
        QVERIFY(dark.red() < 150 && dark.red() > 50 && dark.green() == 0);
        QVERIFY(picture.pixelColor(100, 80).green() > 50);
        f.pView->MovePointTo(QPointF(400, 300), QPointF());
        QCOMPARE(ViewReference::Grab(*pMap).pixelColor(100, 80), QColor(0, 200, 0));
    }

    void aDragInTheSmallMapPans()
    {
        SFixture f(QSize(kWidth, kHeight), MakeTestImage(800, 600, 3));
        f.pView->SetMiniMap(true);
        f.pView->SetZoom(2.0, QPointF());
        QVERIFY(f.Show());
        QWidget* pMap = FindChild(*f.pView, kMap);
        QVERIFY(pMap);
        ViewInput::Press(*pMap, QPoint(34, 26)); // a quarter of 133 and 99, and the border
        QVERIFY(IsNear(f.pView->MapToImage(QPointF(200, 150)), QPointF(200, 150), 6.0));
        ViewInput::Move(*pMap, QPoint(101, 75));
        QVERIFY(IsNear(f.pView->MapToImage(QPointF(200, 150)), QPointF(600, 450), 6.0));
        ViewInput::Release(*pMap, QPoint(101, 75));
        QVERIFY(f.Take().isEmpty()); // the view has not heard of it
    }
};

VANTOR_TEST_MAIN(tst_Zoom)
#include "tst_Zoom.moc"
