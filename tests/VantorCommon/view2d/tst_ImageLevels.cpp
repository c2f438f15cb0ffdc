// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CUtilManager.h>
#include <VantorCommon/view2d/ImageLevels_p.h>

#include <cmath>
#include <cstring>

using Vantor::Algorithms::CImage;

namespace
{
struct SLevels {
    std::shared_ptr<CImage> pImage;
    QImage image;
    std::shared_ptr<CImageLevels> pLevels;

    SLevels(const QSize& size, int nChannels) : pImage(MakeTestImage(size.width(), size.height(), nChannels))
    {
        CUtilManager::ConvertImage(pImage.get(), image, false);
        pLevels = CImageLevels::Of(pImage);
    }

    void Make() const
    {
        pLevels->Make(image);
        CJobs::Get().Finish(pLevels.get());
    }
    /// Null if there is none of this number.
    const QImage* At(int nLevel) const
    {
        int nFound = nLevel;
        const QImage* pLevel = pLevels->Get(nFound);
        return nFound == nLevel ? pLevel : nullptr;
    }
};

/// The mean of a square of the image, with alpha of premultiplied colours.
double Mean(const CImage& image, int x, int y, int nSide, int nChannel)
{
    double sum = 0;
    for (int v = y * nSide; v < (y + 1) * nSide; ++v)
        for (int u = x * nSide; u < (x + 1) * nSide; ++u) {
            const unsigned char* p =
                image.GetPixel(std::min(u, image.GetWidth() - 1), std::min(v, image.GetHeight() - 1));
            const bool bColor = image.GetChannel() == 4 && nChannel < 3;
            sum += p[nChannel] * (bColor ? p[3] / 255.0 : 1.0);
        }
    return sum / nSide / nSide;
}
} // namespace

class tst_ImageLevels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachLevelHasHalfTheSizeAndTheMeans_data()
    {
        QTest::addColumn<int>("channels");
        for (int nChannels : {1, 3, 4})
            QTest::addRow("%d channels", nChannels) << nChannels;
    }

    void eachLevelHasHalfTheSizeAndTheMeans()
    {
        QFETCH(int, channels);
        const SLevels s(QSize(701, 500), channels);
        s.Make();
        for (int nLevel = 1; nLevel <= 2; ++nLevel) {
            const QImage* pLevel = s.At(nLevel);
            QVERIFY(pLevel);
            const int nSide = 1 << nLevel;
            QCOMPARE(pLevel->size(), QSize((701 + nSide - 1) / nSide, 500 / nSide));
            for (int y = 0; y < pLevel->height(); ++y)
                for (int x = 0; x < 701 / nSide; ++x)
                    for (int c = 0; c < channels; ++c)
                        QVERIFY(std::abs(pLevel->constScanLine(y)[x * channels + c] -
                                         Mean(*s.pImage, x, y, nSide, c)) <= 0.5 * nLevel + 0.01);
        }
    }

    void allLevelsTogetherHaveAtMostAThirdOfTheImagesMemory()
    {
        for (const QSize& size : {QSize(1000, 800), QSize(1001, 801), QSize(60001, 3), QSize(3, 60001),
                                  QSize(129, 128), QSize(100, 100)})
            for (const int nChannels : {1, 3, 4}) {
                const SLevels s(size, nChannels);
                s.Make();
                qint64 nBytes = 0;
                for (int nLevel = 1; s.At(nLevel); ++nLevel)
                    nBytes += s.At(nLevel)->sizeInBytes();
                QVERIFY(3 * nBytes <= s.image.sizeInBytes());
            }
    }

    void thereAreNoneBeforeTheyAreMadeAndNoneOfASmallImage()
    {
        const SLevels s(QSize(600, 400), 3);
        QVERIFY(!s.At(1));
        bool bMade = false;
        connect(s.pLevels.get(), &CImageLevels::signal_Made, s.pLevels.get(), [&] { bMade = true; });
        s.Make();
        QVERIFY(bMade);
        QVERIFY(s.At(1));
        const SLevels small(QSize(20, 30), 3);
        small.Make();
        QVERIFY(!small.At(1));
    }

    void beyondTheLastLevelThereIsTheSmallest()
    {
        const SLevels s(QSize(600, 400), 1);
        s.Make();
        int nLevel = 50;
        const QImage* pLevel = s.pLevels->Get(nLevel);
        QVERIFY(nLevel < 50);
        QCOMPARE(pLevel, s.At(nLevel));
        QVERIFY(!s.At(nLevel + 1));
    }

    void allWhoShowAnImageShareItsLevelsWhichGoWithTheLast()
    {
        SLevels s(QSize(600, 400), 1);
        s.Make();
        std::shared_ptr<CImageLevels> pSecond = CImageLevels::Of(s.pImage);
        QCOMPARE(pSecond.get(), s.pLevels.get());
        const SLevels other(QSize(600, 400), 1);
        QVERIFY(other.pLevels != pSecond);
        s.pLevels.reset();
        s.pLevels = CImageLevels::Of(s.pImage);
        QVERIFY(s.At(1));
        s.pLevels.reset();
        pSecond.reset();
        QCOMPARE(s.pImage.use_count(), 1L);
        s.pLevels = CImageLevels::Of(s.pImage);
        QVERIFY(!s.At(1));
    }

    void levelsMayGoWhileTheyAreMade()
    {
        SLevels s(QSize(3000, 2000), 4);
        s.pLevels->Make(s.image);
        const QPointer<CImageLevels> pGone = s.pLevels.get();
        s.pLevels.reset();
        QVERIFY(!pGone);
        QTRY_COMPARE(s.pImage.use_count(), 1L); // the thread has left it
    }
};

VANTOR_TEST_MAIN(tst_ImageLevels)
#include "tst_ImageLevels.moc"
