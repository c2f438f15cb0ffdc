// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view2d/View2DFixture.h"

#include "tests/support/TestMain.h"
#include "tests/support/ViewInput.h"

#include <VantorCommon/job/CJobs.h>

#include <QScreen>
#include <QThreadPool>
#include <array>
#include <cmath>
#include <random>

using Vantor::Algorithms::CImage;
using namespace View2DFixture;

namespace
{
const QSize kLarge(2100, 1004); // more than is averaged at once
const QSize kSmallView(240, 150);

class CRandom
{
public:
    explicit CRandom(int nSeed) : m_engine(unsigned(nSeed)) {}
    int operator()(int nLow, int nHigh) { return std::uniform_int_distribution<int>(nLow, nHigh)(m_engine); }

private:
    std::mt19937 m_engine;
};

/// The worst there is for a mean: every byte is 0 or 255, or anything.
ImagePtr MakeNoise(const QSize& size, int nChannels, int nSeed)
{
    auto pImage = std::make_shared<CImage>();
    pImage->Create(size.width(), size.height(), nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 4);
    std::mt19937 engine(static_cast<unsigned int>(nSeed));
    const bool bExtreme = nSeed % 2 == 0;
    for (int y = 0; y < size.height(); ++y)
        for (int i = 0; i < size.width() * nChannels; ++i) {
            const auto nValue = static_cast<unsigned char>(engine() >> 24);
            pImage->GetRows()[y][i] = bExtreme ? (nValue & 1 ? 255 : 0) : nValue;
        }
    return pImage;
}

QColor Square(int x, int y)
{
    return (x / 8 + y / 8) % 2 == 0 ? QColor(153, 153, 153) : QColor(102, 102, 102);
}

/// The plain box filter of one pixel of a picture of the whole image: red, green, blue, multiplied by alpha,
/// and alpha.
std::array<double, 4> BoxMean(const CImage& image, const QSize& picture, int x, int y)
{
    const double sx = double(image.GetWidth()) / picture.width();
    const double sy = double(image.GetHeight()) / picture.height();
    const int nChannels = image.GetChannel();
    std::array<double, 4> sums = {};
    for (int v = int(y * sy); v < std::min<double>(std::ceil((y + 1) * sy), image.GetHeight()); ++v)
        for (int u = int(x * sx); u < std::min<double>(std::ceil((x + 1) * sx), image.GetWidth()); ++u) {
            const double area = (std::min(u + 1.0, (x + 1) * sx) - std::max<double>(u, x * sx)) *
                                (std::min(v + 1.0, (y + 1) * sy) - std::max<double>(v, y * sy));
            const unsigned char* p = image.GetPixel(u, v);
            const double alpha = nChannels == 4 ? p[3] : 255;
            for (std::size_t c = 0; c < 3; ++c)
                sums[c] += area * p[nChannels == 1 ? 0 : c] * alpha / 255;
            sums[3] += area * alpha;
        }
    for (double& sum : sums)
        sum /= sx * sy;
    return sums;
}

/// How far the samples of a frame are from those of the box filter.
struct SError {
    double dblWorst = 0.0;
    double dblSquares = 0.0;
    int nSamples = 0;

    void Add(double dblError)
    {
        dblWorst = std::max(dblWorst, std::abs(dblError));
        dblSquares += dblError * dblError;
        ++nSamples;
    }
    double Deviation() const { return std::sqrt(dblSquares / std::max(nSamples, 1)); }
    bool IsExact() const
    {
        if (dblWorst > 1.0)
            qInfo("worst error %g", dblWorst);
        return dblWorst <= 1.0;
    }
};

/// The error of a frame. Outside the image it must be grey.
SError ErrorOf(const QImage& frame, const CImage& image, const QRect& viewPort, bool bSquares = false)
{
    SError sError;
    for (int y = 0; y < frame.height(); ++y)
        for (int x = 0; x < frame.width(); ++x) {
            const QColor color = frame.pixelColor(x, y);
            if (!viewPort.contains(x, y)) {
                if (color != kBackground)
                    sError.Add(1000);
                continue;
            }
            const auto mean = BoxMean(image, viewPort.size(), x - viewPort.left(), y - viewPort.top());
            const double behind = bSquares && image.GetChannel() == 4 ? Square(x, y).red() : 120;
            const int samples[] = {color.red(), color.green(), color.blue()};
            for (std::size_t c = 0; c < 3; ++c) {
                const double expected = mean[c] + behind * (255 - mean[3]) / 255;
                // Blending rounds once more than the mean; its picture is compared with the rounded one.
                const double wanted = image.GetChannel() == 4 ? std::round(expected) : expected;
                sError.Add(samples[c] - wanted);
            }
        }
    return sError;
}

/// A view with smooth reduction.
struct SSmooth : SFixture {
    explicit SSmooth(const QSize& size, const ImagePtr& pImage, bool bSquares = false) : SFixture(size)
    {
        tools.SetViewMode(EImageView2DMode_Panning);
        pView->SetImageLook(true, bSquares);
        if (pImage)
            model.SetImages({pImage});
    }

    bool IsReduced() const
    {
        const QSize picture = pView->GetViewPort().size();
        const auto pImage = model.GetCurrentImage();
        return picture.width() < pImage->GetWidth() || picture.height() < pImage->GetHeight();
    }
    void Zoom(const QPointF& pos, int nDelta) { ViewInput::Wheel(*pView, pos, nDelta); }
    void Pan(const QPointF& by) { Drag(*pView, QPointF(100, 100), QPointF(100, 100) + by); }

    /// Waits for everything that the view makes in the background.
    void Finish() const
    {
        CJobs::Get().Finish(pView);
        QThreadPool::globalInstance()->waitForDone(); // the levels' receiver is nobody's business
        QApplication::sendPostedEvents(&CJobs::Get());
    }
    SError Error(bool bSquares = false) const
    {
        return ErrorOf(Grab(), *model.GetCurrentImage(), pView->GetViewPort(), bSquares);
    }
};

void AddChannels()
{
    QTest::addColumn<int>("channels");
    for (int nChannels : {1, 3, 4})
        QTest::addRow("%d channels", nChannels) << nChannels;
}
} // namespace

/// The image below one pixel of the screen per pixel of the image, and what stands behind it.
class tst_SmoothReduction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPixelIsTheMeanOfWhatItCovers_data() { AddChannels(); }
    void everyPixelIsTheMeanOfWhatItCovers()
    {
        QFETCH(int, channels);
        CRandom random(channels);
        int nReduced = 0;
        for (int nRound = 0; nRound < 16; ++nRound) {
            const ImagePtr pImage = MakeNoise(QSize(random(2, 600), random(2, 500)), channels, nRound);
            SSmooth f(QSize(random(40, 200), random(40, 150)), pImage);
            for (int i = 0; i < 4 && f.IsReduced(); ++i) {
                ++nReduced;
                QVERIFY(f.Error().IsExact());
                f.Zoom(QPointF(random(0, 200), random(0, 150)), random(-4, 6) * 60);
                f.Pan(QPointF(random(-60, 60), random(-60, 60)));
            }
        }
        QVERIFY(nReduced > 25);
    }

    void imagesOfUnusualShapeAreReducedToo()
    {
        for (const QSize& size : {QSize(40000, 40), QSize(40, 40000), QSize(32768, 30), QSize(401, 2),
                                  QSize(2, 301), QSize(401, 301)})
            for (const int nChannels : {1, 3, 4}) {
                const SSmooth f(QSize(400, 300), MakeNoise(size, nChannels, size.width()));
                QVERIFY(f.IsReduced());
                QVERIFY(f.pView->GetViewPort().isEmpty() || f.Error().IsExact());
            }
    }

    void atAndAboveOneTheNearestPixelIsShown_data() { AddChannels(); }
    void atAndAboveOneTheNearestPixelIsShown()
    {
        QFETCH(int, channels);
        CRandom random(channels + 10);
        int nCompared = 0;
        for (int nRound = 0; nRound < 16; ++nRound) {
            const ImagePtr pImage = MakeNoise(QSize(random(1, 500), random(1, 400)), channels, nRound);
            SSmooth f(nRound == 0 ? QSize(pImage->GetWidth(), pImage->GetHeight())
                                  : QSize(random(100, 400), random(100, 300)),
                      pImage);
            for (int i = 0; i < 4; ++i) {
                nCompared += !f.IsReduced();
                QVERIFY(f.IsReduced() || f.Grab() == f.Expected(pImage));
                f.Zoom(QPointF(random(0, 300), random(0, 200)), random(-3, 12) * 120);
                f.Pan(QPointF(random(-100, 200), random(-100, 200)));
            }
        }
        QVERIFY(nCompared > 25);
    }

    void aLargeImageShowsItsNearestPixelsUntilItsMeansAreThere_data() { AddChannels(); }
    void aLargeImageShowsItsNearestPixelsUntilItsMeansAreThere()
    {
        QFETCH(int, channels);
        const ImagePtr pImage = MakeNoise(kLarge, channels, channels);
        const SSmooth f(kSmallView, pImage);
        QCOMPARE(f.Grab(), f.Expected(pImage));
        f.Finish();
        QVERIFY(f.Error().IsExact());
    }

    void theViewIsPaintedAgainWhenTheMeansAreThere()
    {
        const ImagePtr pImage = MakeNoise(kLarge, 3, 5);
        SSmooth f(kSmallView, pImage);
        QVERIFY(f.Show());
        QTRY_VERIFY(ErrorOf(f.window.screen()
                                ->grabWindow(f.window.winId(), 0, 0, kSmallView.width(), kSmallView.height())
                                .toImage()
                                .convertToFormat(QImage::Format_RGB32),
                            *pImage, f.pView->GetViewPort())
                        .IsExact());
    }

    void aZoomShowsMeansAtOnceAndTheExactOnesSoon_data() { AddChannels(); }
    void aZoomShowsMeansAtOnceAndTheExactOnesSoon()
    {
        QFETCH(int, channels);
        const ImagePtr pImage = MakeNoise(kLarge, channels, 2 * channels);
        SSmooth f(kSmallView, pImage);
        f.Grab();
        f.Finish();
        for (const int nDelta : {-80, -200, 150}) {
            f.Zoom(QPointF(150, 90), nDelta);
            QVERIFY(f.IsReduced());
            const double dblNearest =
                ErrorOf(f.Expected(pImage), *pImage, f.pView->GetViewPort()).Deviation();
            // Of what is covered in part, a level has only the mean.
            QVERIFY(f.Error().Deviation() < dblNearest / 4);
            f.Finish();
            QVERIFY(f.Error().IsExact());
        }
    }

    void aPanOfALargeImageIsExactAtOnce()
    {
        const ImagePtr pImage = MakeNoise(kLarge, 3, 8);
        SSmooth f(kSmallView, pImage);
        f.Zoom(QPointF(120, 75), 700);
        f.Grab();
        f.Finish();
        QVERIFY(f.Error().IsExact());
        for (const QPointF& by : {QPointF(-20, 9), QPointF(31, 0), QPointF(4, -40)}) {
            const QRect before = f.pView->GetViewPort();
            f.Pan(by);
            QVERIFY(f.pView->GetViewPort() != before);
            QVERIFY(f.Error().IsExact());
        }
    }

    void anotherImageOfEqualSizeIsNotShownByTheMeansOfTheFormerOne()
    {
        SSmooth f(kSmallView, MakeNoise(kLarge, 3, 8));
        f.Grab();
        f.Finish();
        const ImagePtr pOther = MakeNoise(kLarge, 3, 10);
        f.model.SetImages({pOther});
        QCOMPARE(f.Grab(), f.Expected(pOther));
        f.model.SetImages({MakeNoise(kLarge, 3, 12)}); // the job of the one before it is not shown either
        f.Finish();
        f.Grab();
        f.Finish();
        QVERIFY(f.Error().IsExact());
        f.model.SetImages({});
        QCOMPARE(Count(f.Grab(), kBackground), kSmallView.width() * kSmallView.height());
    }

    void aViewMayGoWhileItsMeansAreMade()
    {
        const ImagePtr pImage = MakeNoise(kLarge, 4, 8);
        for (int i = 0; i < 3; ++i) {
            const SSmooth f(kSmallView, pImage);
            f.Grab();
        }
        QThreadPool::globalInstance()->waitForDone();
        QApplication::sendPostedEvents();
        QCOMPARE(pImage.use_count(), 1L);
    }

    void aPartOfTheViewIsPaintedAsInTheWhole()
    {
        for (const int nChannels : {1, 3, 4}) {
            SSmooth f(QSize(400, 300), MakeNoise(QSize(900, 800), nChannels, 3), true);
            f.Zoom(QPointF(100, 80), 300);
            QVERIFY(f.IsReduced());
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

    // A widget pixel of a fine screen is several pixels of the screen; these are what is averaged.
    void thePixelsOfAFineScreenAreMeansToo()
    {
        const ImagePtr pImage = MakeNoise(QSize(1200, 900), 3, 2);
        const SSmooth f(QSize(400, 300), pImage);
        const auto grab = [&](double dblScale) {
            QImage frame(f.pView->size() * dblScale, QImage::Format_RGB32);
            frame.setDevicePixelRatio(dblScale);
            f.pView->render(&frame);
            frame.setDevicePixelRatio(1.0);
            return frame;
        };
        QVERIFY(ErrorOf(grab(2.0), *pImage, QRect(0, 0, 800, 600)).IsExact());
        QVERIFY(ErrorOf(grab(1.5), *pImage, QRect(0, 0, 600, 450)).IsExact());
        const QImage whole = grab(3.0); // one to one
        for (int y = 0; y < 900; ++y)
            for (int x = 0; x < 1200; ++x)
                QCOMPARE(whole.pixel(x, y), qRgb(pImage->GetPixel(x, y)[0], pImage->GetPixel(x, y)[1],
                                                 pImage->GetPixel(x, y)[2]));
    }

    void transparentImagesStandOnSquaresThatStayWhereTheyAre()
    {
        CRandom random(77);
        for (int nRound = 0; nRound < 16; ++nRound) {
            const ImagePtr pImage = MakeNoise(QSize(random(1, 300), random(1, 200)), 4, nRound);
            SFixture f(QSize(random(100, 400), random(100, 300)), pImage);
            f.pView->SetImageLook(false, true);
            f.tools.SetViewMode(EImageView2DMode_Panning);
            for (int i = 0; i < 4; ++i) {
                QImage image;
                CUtilManager::ConvertImage(pImage.get(), image, false);
                ViewReference reference(f.pView->size(), f.pView->GetViewPort(),
                                        QRect(QPoint(), image.size()));
                reference.SetBehind(Square);
                QCOMPARE(f.Grab(), reference.PaintImage(*pImage, image, f.pView));
                ViewInput::Wheel(*f.pView, QPointF(random(0, 300), random(0, 200)), random(-6, 12) * 120);
                Drag(*f.pView, QPointF(50, 50), QPointF(random(-100, 200), random(-100, 200)));
            }
        }
    }

    void reducedTransparentImagesStandOnSquaresToo()
    {
        CRandom random(78);
        for (int nRound = 0; nRound < 6; ++nRound) {
            SSmooth f(QSize(random(100, 300), random(100, 200)),
                      MakeNoise(QSize(random(400, 900), random(300, 700)), 4, nRound), true);
            QVERIFY(f.Error(true).IsExact());
            f.Pan(QPointF(random(-60, 60), random(-60, 60)));
            QVERIFY(f.Error(true).IsExact());
        }
    }

    void opaqueImagesHaveNoSquares()
    {
        for (const int nChannels : {1, 3}) {
            const ImagePtr pImage = MakeNoise(QSize(90, 80), nChannels, 1);
            const SFixture f(QSize(400, 300), pImage);
            const QImage plain = f.Grab();
            f.pView->SetImageLook(false, true);
            QCOMPARE(f.Grab(), plain);
        }
    }
};

VANTOR_TEST_MAIN(tst_SmoothReduction)
#include "tst_SmoothReduction.moc"
