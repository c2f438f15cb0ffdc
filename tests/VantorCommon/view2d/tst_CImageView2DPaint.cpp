// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view2d/View2DFixture.h"

#include "tests/support/TestMain.h"
#include "tests/support/ViewInput.h"

#include <QPicture>
#include <QScreen>
#include <cstring>
#include <random>

using Vantor::Algorithms::CImage;
using namespace View2DFixture;

namespace
{
const QColor kLine(0, 100, 255);

int ValueLineHeight(QWidget* pWidget)
{
    return QFontMetrics(QFont(QStringLiteral("Arial"), 15), pWidget).height();
}
} // namespace

class tst_CImageView2DPaint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withNoImageNothingButTheGreyBackgroundIsPainted()
    {
        SFixture f;
        const QImage picture = f.Grab();
        QCOMPARE(Count(picture, kBackground), picture.width() * picture.height());
    }

    void theImageIsPaintedExactly_data()
    {
        QTest::addColumn<int>("channels");
        for (int nChannels = 1; nChannels <= 4; ++nChannels)
            QTest::addRow("%d channels", nChannels) << nChannels;
    }

    // Whatever is skipped or cached on the way, the pixels are those of the plain painter.
    void theImageIsPaintedExactly()
    {
        QFETCH(int, channels);
        std::mt19937 random(unsigned(channels) + 100);
        const auto number = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        for (int nRound = 0; nRound < 60; ++nRound) {
            const ImagePtr pImage = MakeTestImage(number(1, 400), number(1, 300), channels, nRound);
            SFixture f(QSize(number(100, 400), number(100, 300)), pImage);
            f.tools.SetViewMode(EImageView2DMode_Panning);
            for (int i = 0; i < 4; ++i) {
                QCOMPARE(f.Grab(), f.Expected(pImage));
                ViewInput::Wheel(*f.pView, QPointF(number(0, 300), number(0, 200)), number(-6, 12) * 120);
                Drag(*f.pView, QPointF(50, 50), QPointF(number(-100, 200), number(-100, 200)));
            }
        }
    }

    void imagesOfUnusualShapeArePaintedExactly()
    {
        for (const QSize& size : {QSize(1, 1), QSize(1, 90), QSize(90, 1), QSize(2, 2), QSize(40000, 40),
                                  QSize(40, 40000), QSize(32767, 30), QSize(32768, 30)})
            for (const int nChannels : {1, 3, 4}) {
                const ImagePtr pImage = MakeTestImage(size.width(), size.height(), nChannels);
                SFixture f(QSize(400, 300), pImage);
                for (int i = 0; i < 12; ++i) {
                    if (!f.pView->GetViewPort().isEmpty())
                        QCOMPARE(f.Grab(), f.Expected(pImage));
                    ViewInput::Wheel(*f.pView, QPointF(200 + 5 * i, 149 - i), 960);
                }
            }
    }

    void aPartOfTheViewIsPaintedAsInTheWhole()
    {
        for (const int nChannels : {1, 3, 4}) {
            SFixture f(QSize(400, 300), MakeTestImage(90, 80, nChannels));
            ViewInput::Wheel(*f.pView, QPointF(100, 80), 300);
            const QImage whole = f.Grab();
            const QRegion region =
                QRegion(30, 20, 111, 50) + QRegion(200, 40, 31, 222) + QRegion(0, 290, 400, 5);
            QImage part(whole.size(), whole.format());
            part.fill(Qt::magenta);
            f.pView->render(&part, region.boundingRect().topLeft(), region);
            for (int y = 0; y < whole.height(); ++y)
                for (int x = 0; x < whole.width(); ++x)
                    QCOMPARE(part.pixel(x, y),
                             region.contains(QPoint(x, y)) ? whole.pixel(x, y) : qRgb(255, 0, 255));
        }
    }

    // What writes pixels by itself must keep to what a painter of somebody else's has set.
    void anyPainterGetsThePictureInItsOwnWay()
    {
        for (const QSize& size : {QSize(90, 80), QSize(5, 4)}) { // the second one with its values
            SFixture f(QSize(400, 300), MakeTestImage(size.width(), size.height(), 3));
            const QImage whole = f.Grab();
            const auto paint = [&](QImage::Format eFormat, const auto& prepare) {
                QImage picture(400, 300, eFormat);
                picture.fill(Qt::magenta);
                QPainter painter(&picture);
                prepare(painter);
                f.pView->Paint(painter);
                painter.end();
                return picture.convertToFormat(QImage::Format_RGB32);
            };
            const auto nothing = [](QPainter&) {};
            QCOMPARE(paint(QImage::Format_RGB32, nothing), whole);
            QCOMPARE(paint(QImage::Format_ARGB32_Premultiplied, nothing), whole);

            const QRect clip(37, 41, 200, 150);
            const QImage part = paint(QImage::Format_RGB32, [&](QPainter& p) { p.setClipRect(clip); });
            QCOMPARE(part.copy(clip), whole.copy(clip));
            QCOMPARE(Count(part, Qt::magenta), 400 * 300 - clip.width() * clip.height());

            const QImage none = paint(QImage::Format_RGB32, [](QPainter& p) { p.setOpacity(0.0); });
            QCOMPARE(Count(none, Qt::magenta), 400 * 300);
            const QImage beneath = paint(QImage::Format_ARGB32_Premultiplied, [](QPainter& p) {
                p.setCompositionMode(QPainter::CompositionMode_DestinationOver);
            });
            QCOMPARE(Count(beneath, Qt::magenta), 400 * 300);
        }
    }

    void aPictureThatIsRecordedShowsTheSameWhenItIsPlayed()
    {
        SFixture f(QSize(400, 300), MakeTestImage(90, 80, 3));
        QPicture record;
        QPainter recorder(&record);
        f.pView->Paint(recorder);
        QVERIFY(recorder.end());
        QImage played(400, 300, QImage::Format_RGB32);
        played.fill(Qt::magenta);
        QPainter player(&played);
        record.play(&player);
        player.end();
        QCOMPARE(played, f.Grab());
    }

    void theScreenShowsWhatIsPainted()
    {
        const ImagePtr pImage = MakeTestImage(300, 200, 3);
        SFixture f(QSize(400, 300), pImage);
        f.pView->move(37, 53);
        QVERIFY(f.Show());
        ViewInput::Wheel(*f.pView, QPointF(100, 80), 240);
        const auto screen = [&] {
            const QPoint pos = f.pView->mapTo(&f.window, QPoint(0, 0));
            return f.window.screen()
                ->grabWindow(f.window.winId(), pos.x(), pos.y(), 400, 300)
                .toImage()
                .convertToFormat(QImage::Format_RGB32);
        };
        QTRY_COMPARE(screen(), f.Expected(pImage));
        f.pView->update(QRect(50, 60, 33, 44));
        QApplication::processEvents();
        QCOMPARE(screen(), f.Expected(pImage));
    }

    void theGridAppearsAtFiftyWidgetPixelsInBothDirections()
    {
        SFixture f(QSize(400, 300), MakeTestImage(8, 6, 3));
        QCOMPARE(f.pView->GetSizePixel(), 50.0);
        const QImage at50 = f.Grab();
        for (int i = 0; i < 400; ++i)
            QCOMPARE(at50.pixelColor(i, 150), kLine);
        for (int i = 0; i < 300; ++i)
            QCOMPARE(at50.pixelColor(200, i), kLine);
        QVERIFY(at50.pixelColor(225, 125) != kLine);
        f.Resize(QSize(400, 299)); // 49.8 downwards, fitted
        QCOMPARE(Count(f.Grab(), kLine), 0);
        // 401 x 300 fits to 400 x 300 as well; a wide pixel alone is not enough.
        SFixture flat(QSize(500, 100), MakeTestImage(500, 3, 3));
        QCOMPARE(Count(flat.Grab(), kLine), 0);
    }

    void theValuesAppearOnlyInACellTallEnough_data()
    {
        QTest::addColumn<int>("channels");
        for (int nChannels : {1, 3, 4})
            QTest::addRow("%d channels", nChannels) << nChannels;
    }

    void theValuesAppearOnlyInACellTallEnough()
    {
        QFETCH(int, channels);
        QWidget probe;
        const int nCell = std::max(ValueLineHeight(&probe) * channels + 5, 60);
        const ImagePtr pImage = MakeTestImage(4, 3, channels);
        SFixture f(QSize(4 * nCell, 3 * nCell), pImage);
        QCOMPARE(f.pView->GetSizePixel(), double(nCell));
        const QImage picture = f.Grab();
        QCOMPARE(picture, f.Expected(pImage));
        const QRect cell(nCell + 2, nCell + 2, nCell - 4, nCell - 4);
        QVERIFY(Count(picture.copy(cell), Qt::black) > 100); // the texts' background
        if (channels == 1)
            return;
        f.Resize(QSize(4 * (nCell - 1), 3 * (nCell - 1)));
        const QImage lower = f.Grab();
        QCOMPARE(lower, f.Expected(pImage));
        QCOMPARE(Count(lower.copy(cell), Qt::black), 0);
        QVERIFY(Count(lower, kLine) > 100);
    }

    void valuesAtAnyScaleAndPlaceArePaintedExactly_data() { theValuesAppearOnlyInACellTallEnough_data(); }

    // However the numbers are brought to the screen, they stand where drawText puts them.
    void valuesAtAnyScaleAndPlaceArePaintedExactly()
    {
        QFETCH(int, channels);
        std::mt19937 random(unsigned(channels) + 500);
        const auto number = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        for (int nRound = 0; nRound < 15; ++nRound) {
            const ImagePtr pImage = MakeTestImage(number(5, 9), number(5, 9), channels, nRound);
            SFixture f(QSize(number(420, 900), number(420, 900)), pImage);
            f.tools.SetViewMode(EImageView2DMode_Panning);
            for (int i = 0; i < 3; ++i) {
                QCOMPARE(f.Grab(), f.Expected(pImage));
                ViewInput::Wheel(*f.pView, QPointF(number(0, 400), number(0, 400)), number(-1, 3) * 30);
                Drag(*f.pView, QPointF(50, 50), QPointF(number(-40, 140), number(-40, 140)));
            }
        }
    }

    void oneValueIsDrawnAsInTheWholePicture_data() { theValuesAppearOnlyInACellTallEnough_data(); }

    void oneValueIsDrawnAsInTheWholePicture()
    {
        QFETCH(int, channels);
        const ImagePtr pImage = MakeTestImage(4, 3, channels);
        for (int y = 0; y < 3; ++y)
            std::memset(pImage->GetRows()[y], 77, std::size_t(4 * channels));
        if (channels == 4)
            pImage->GetPixel(1, 1)[3] = 255;
        constexpr int kCell = 150;
        SFixture f(QSize(4 * kCell, 3 * kCell), pImage);
        QCOMPARE(f.pView->GetSizePixel(), double(kCell));
        const QRect cell(kCell + 2, kCell + 2, kCell - 4, kCell - 4); // within the lines of the grid
        const auto draw = [&](const unsigned char* pPixel, int nChannels, double dblHeight) {
            QImage picture(f.pView->size(), QImage::Format_RGB32);
            picture.fill(QColor(77, 77, 77));
            QPainter painter(&picture);
            f.pView->DrawPixelValue(painter, pPixel, nChannels, 1, 1, kCell, dblHeight);
            painter.end();
            return picture;
        };
        QCOMPARE(draw(pImage->GetPixel(1, 1), channels, kCell).copy(cell), f.Grab().copy(cell));
        const QImage empty = draw(nullptr, channels, kCell);
        QCOMPARE(Count(empty, QColor(77, 77, 77)), empty.width() * empty.height());
        QCOMPARE(draw(pImage->GetPixel(1, 1), 2, kCell), empty);
        QCOMPARE(draw(pImage->GetPixel(1, 1), channels, ValueLineHeight(f.pView) * channels + 4.0), empty);
    }

    void theChannelsHaveTheirColours()
    {
        QWidget probe;
        const int h = ValueLineHeight(&probe);
        auto pImage = std::make_shared<CImage>();
        pImage->Create(2, 2, 4, 8, Vantor::Algorithms::EImageType::Interleaved, 4);
        SFixture f(QSize(300, 300), pImage);
        const QImage picture = f.Grab();
        const QColor colors[] = {QColor(255, 0, 0), QColor(0, 255, 0), QColor(0, 0, 255),
                                 QColor(255, 255, 255)};
        const int nTop = 75 - 2 * h;
        for (int k = 0; k < 4; ++k) {
            const QImage line = picture.copy(40, nTop + k * h, 70, h);
            for (int c = 0; c < 4; ++c)
                QCOMPARE(Count(line, colors[c]) > 0, c == k);
        }
    }

    void aTwoChannelImageShowsTheGridButNoValues()
    {
        const ImagePtr pImage = MakeTestImage(3, 3, 2);
        SFixture f(QSize(300, 300), pImage);
        const QImage picture = f.Grab();
        QVERIFY(Count(picture, kLine) > 1000);
        QCOMPARE(picture, f.Expected(pImage));
    }

    void theCrosshairIsShownWhileTheLeftButtonIsHeld()
    {
        SFixture f(QSize(400, 300), MakeTestImage(400, 300, 3));
        QVERIFY(f.Show());
        QCOMPARE(Count(f.Grab(), kLine), 0);
        ViewInput::Press(*f.pView, QPoint(100, 50));
        const auto isCross = [&](int x, int y) {
            const QImage picture = f.Grab();
            for (int i = 0; i < 400; ++i)
                if (picture.pixelColor(i, y) != kLine)
                    return false;
            for (int i = 0; i < 300; ++i)
                if (picture.pixelColor(x, i) != kLine)
                    return false;
            return true;
        };
        QVERIFY(isCross(100, 50));
        ViewInput::Move(*f.pView, QPoint(200, 120));
        QVERIFY(isCross(200, 120));
        ViewInput::Release(*f.pView, QPoint(200, 120));
        QCOMPARE(Count(f.Grab(), kLine), 0);
        f.tools.SetViewMode(EImageView2DMode_Panning);
        ViewInput::Press(*f.pView, QPoint(100, 50));
        QCOMPARE(Count(f.Grab(), kLine), 0);
        ViewInput::Release(*f.pView, QPoint(100, 50));
    }

    void annotationsArePaintedOverTheImage()
    {
        const ImagePtr pImage = MakeTestImage(80, 60, 3);
        SFixture f(QSize(400, 300), pImage);
        f.geometry.AddObject(MakeRectangle(20, 20, 30, 20));
        f.geometry.AddObject(MakeRectangle(-5, 30, 30, 20));
        f.geometry.UnSelectedAll();
        ViewInput::Wheel(*f.pView, QPointF(100, 100), 240);
        QImage expected = f.Expected(pImage);
        ViewReference(f.pView->size(), f.pView->GetViewPort(), QRect(0, 0, 80, 60))
            .PaintObjects(expected, f.geometry.GetObjects());
        QCOMPARE(f.Grab(), expected);
    }

    void tenThousandChangesLeadToOnePaintAndOneListMadeLate()
    {
        class CCounting : public CImageView2D
        {
        public:
            using CImageView2D::CImageView2D;
            int nPaints = 0;
            void Paint(QPainter& painter) override
            {
                ++nPaints;
                CImageView2D::Paint(painter);
            }
        };
        CImageView2DModel model;
        CImageView2DGeometryModel geometry;
        CImageView2DToolModel tools;
        CCounting view(&model, &geometry, &tools, 0, nullptr);
        view.resize(300, 200);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        CImageView2DGeometryModel::ObjectList objects;
        for (int i = 0; i < 10000; ++i)
            objects.push_back(i == 0 ? MakeRectangle(10, 10, 50, 40) : MakeRectangle(1e6, 1e6, 1, 1));
        geometry.RestoreObjects(objects);
        QTRY_COMPARE(view.GetDrawableObjects().size(), std::size_t(10000));
        QApplication::processEvents();
        for (const auto& pObject : objects)
            pObject->SetSelected(true);
        QApplication::processEvents();
        view.nPaints = 0;
        int nSignals = 0;
        connect(&geometry, &CImageView2DGeometryModel::signal_ChangeDrawableObjectProperty, &view,
                [&] { ++nSignals; });
        QElapsedTimer timer;
        timer.start();
        geometry.UnSelectedAll();
        const qint64 nElapsed = timer.elapsed();
        QCOMPARE(nSignals, 10000);
        QCOMPARE(view.nPaints, 0);
        QTRY_VERIFY(view.nPaints > 0);
        QApplication::processEvents();
        QCOMPARE(view.nPaints, 1);
        QVERIFY2(nElapsed < 5000, "a list rebuilt for each signal"); // quadratic would take far longer
    }
    void theValuesFollowTheResolutionOfEachDevice()
    {
        const auto paint = [](const SFixture& f, int nDotsPerInch) {
            QImage picture(400, 300, QImage::Format_RGB32);
            picture.setDotsPerMeterX(qRound(nDotsPerInch / 0.0254));
            picture.setDotsPerMeterY(picture.dotsPerMeterX());
            QPainter painter(&picture);
            f.pView->Paint(painter);
            painter.end();
            return picture;
        };
        const auto make = [] { return std::make_unique<SFixture>(QSize(400, 300), MakeTestImage(5, 4, 1)); };
        const auto pBoth = make();
        const QImage usual = paint(*pBoth, 96);
        const QImage fine = paint(*pBoth, 120);
        QVERIFY(usual != fine);
        QCOMPARE(fine, paint(*make(), 120));
        QCOMPARE(usual, paint(*make(), 96));
        QCOMPARE(paint(*pBoth, 96), usual);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DPaint)
#include "tst_CImageView2DPaint.moc"
