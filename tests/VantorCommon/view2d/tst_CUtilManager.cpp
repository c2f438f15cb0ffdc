// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QRandomGenerator>
#include <algorithm>
#include <cstring>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
/// Random opaque and translucent pixels in the given format.
QImage RandomImage(int nWidth, int nHeight, QImage::Format eFormat)
{
    QRandomGenerator random(4711);
    QImage image(nWidth, nHeight, QImage::Format_ARGB32);
    for (int y = 0; y < nHeight; ++y)
        random.generate(reinterpret_cast<quint32*>(image.scanLine(y)),
                        reinterpret_cast<quint32*>(image.scanLine(y)) + nWidth);
    return image.convertToFormat(eFormat);
}

/// The whole source converted at once, then min(source bytes per line, stride) bytes of each row.
bool EqualsThePlainModel(const QImage& source, const CImage& image)
{
    const QImage whole = source.convertToFormat(QImage::Format_RGBA8888);
    const auto nBytes = static_cast<std::size_t>(std::min(source.bytesPerLine(), image.GetStride()));
    for (int y = 0; y < image.GetHeight(); ++y) {
        const unsigned char* pRow = image.GetRows()[y];
        if (std::memcmp(pRow, whole.constScanLine(y), nBytes) != 0)
            return false;
        if (std::any_of(pRow + nBytes, pRow + image.GetStride(), [](unsigned char c) { return c != 0; }))
            return false;
    }
    return true;
}

/// What this process has in memory.
long long ResidentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * ::getpagesize()
                                          : 0;
}

bool HasTestPixels(const QImage& image, int nChannels)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            for (int c = 0; c < nChannels; ++c)
                if (image.constScanLine(y)[x * nChannels + c] != TestImageByte(x, y, c))
                    return false;
    return true;
}
} // namespace

class tst_CUtilManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNullCoreImageLeavesTheDestinationAlone()
    {
        QImage destination(3, 2, QImage::Format_RGB32);
        const qint64 nKey = destination.cacheKey();
        QVERIFY(!CUtilManager::ConvertImage(static_cast<CImage*>(nullptr), destination, false));
        QVERIFY(!CUtilManager::ConvertImage(static_cast<CImage*>(nullptr), destination, true));
        QCOMPARE(destination.cacheKey(), nKey);
    }

    void anEmptyCoreImageGivesANullImageAndFalse()
    {
        CImage empty;
        for (const bool bDeepCopy : {false, true}) {
            QImage destination(3, 2, QImage::Format_RGB32);
            QVERIFY(!CUtilManager::ConvertImage(&empty, destination, bDeepCopy));
            QVERIFY(destination.isNull());
        }
    }

    void theFormatFollowsTheChannels_data()
    {
        QTest::addColumn<int>("nChannels");
        QTest::addColumn<QImage::Format>("eFormat");
        QTest::newRow("1") << 1 << QImage::Format_Grayscale8;
        QTest::newRow("3") << 3 << QImage::Format_RGB888;
        QTest::newRow("4") << 4 << QImage::Format_RGBA8888;
    }

    void theFormatFollowsTheChannels()
    {
        QFETCH(int, nChannels);
        QFETCH(QImage::Format, eFormat);
        const auto pImage = MakeTestImage(13, 7, nChannels);
        for (const bool bDeepCopy : {false, true}) {
            QImage converted;
            QVERIFY(CUtilManager::ConvertImage(pImage.get(), converted, bDeepCopy));
            QCOMPARE(converted.format(), eFormat);
            QCOMPARE(converted.size(), QSize(13, 7));
            QVERIFY(HasTestPixels(converted, nChannels));
        }
    }

    void withoutTheFlagTheBufferIsShared()
    {
        const auto pImage = MakeTestImage(13, 7, 3);
        QImage converted;
        QVERIFY(CUtilManager::ConvertImage(pImage.get(), converted, false));
        QCOMPARE(converted.constBits(), static_cast<const uchar*>(pImage->GetData()));
        QCOMPARE(converted.bytesPerLine(), pImage->GetStride());
        pImage->GetPixel(4, 5)[1] = 77;
        QCOMPARE(qGreen(converted.pixel(4, 5)), 77);
    }

    void aDeepCopyOutlivesItsSource()
    {
        auto pImage = MakeTestImage(13, 7, 3);
        QImage converted;
        QVERIFY(CUtilManager::ConvertImage(pImage.get(), converted, true));
        QVERIFY(converted.constBits() != pImage->GetData());
        std::memset(pImage->GetData(), 0, static_cast<std::size_t>(pImage->GetStride()) * 7);
        pImage.reset();
        QVERIFY(HasTestPixels(converted, 3));
        const QImage second = converted;
        converted.setPixel(0, 0, qRgb(9, 9, 9)); // detaches from the second
        QVERIFY(HasTestPixels(second, 3));
        QVERIFY(!HasTestPixels(converted, 3));
    }

    void aTwoChannelImageYieldsAnRgb888ViewOfItsBuffer()
    {
        const auto pImage = MakeTestImage(13, 7, 2);
        QImage converted;
        QVERIFY(CUtilManager::ConvertImage(pImage.get(), converted, false));
        QCOMPARE(converted.format(), QImage::Format_RGB888);
        QCOMPARE(converted.size(), QSize(13, 7));
        QCOMPARE(converted.constBits(), static_cast<const uchar*>(pImage->GetData()));
        QCOMPARE(converted.bytesPerLine(), pImage->GetStride());
        // The second pixel of the view is made of bytes 3, 4 and 5 of the row.
        const unsigned char* pRow = pImage->GetRows()[2];
        QCOMPARE(converted.pixel(1, 2), qRgb(pRow[3], pRow[4], pRow[5]));
    }

    void theBitDepthIsNotConsulted()
    {
        CImage image;
        QCOMPARE(image.Create(5, 4, 1, 16, EImageType::Interleaved, 4), 0);
        QImage converted;
        QVERIFY(CUtilManager::ConvertImage(&image, converted, false));
        QCOMPARE(converted.format(), QImage::Format_Grayscale8);
        QCOMPARE(converted.size(), QSize(5, 4));
        QCOMPARE(converted.bytesPerLine(), image.GetStride());
    }

    void aNullGuiImageLeavesTheDestinationAlone()
    {
        const auto pImage = MakeTestImage(13, 7, 3);
        QVERIFY(!CUtilManager::ConvertImage(QImage(), pImage.get()));
        QCOMPARE(pImage->GetWidth(), 13);
    }

    void aNullCoreDestinationGivesFalse()
    {
        QVERIFY(!CUtilManager::ConvertImage(QImage(3, 2, QImage::Format_RGB32), nullptr));
    }

    void anImageTooLargeForTheCoreGivesFalseAndLeavesTheDestinationAlone()
    {
        const QImage huge(600 * 1000 * 1000, 1, QImage::Format_Mono);
        if (huge.isNull())
            QSKIP("no memory for the source");
        const auto pImage = MakeTestImage(13, 7, 3);
        QVERIFY(!CUtilManager::ConvertImage(huge, pImage.get()));
        QCOMPARE(pImage->GetWidth(), 13);
    }

    void everyFormatArrivesAsFourChannelsLikeAWholeConversion_data()
    {
        QTest::addColumn<QImage::Format>("eFormat");
        for (int i = QImage::Format_Mono; i < QImage::NImageFormats; ++i)
            QTest::addRow("format %d", i) << static_cast<QImage::Format>(i);
    }

    void everyFormatArrivesAsFourChannelsLikeAWholeConversion()
    {
        QFETCH(QImage::Format, eFormat);
        // Several strips, the last one shorter; a width with padding; one row wider than a strip.
        for (const QSize& size : {QSize(301, 211), QSize(1, 1), QSize(20001, 3)}) {
            const QImage source = RandomImage(size.width(), size.height(), eFormat);
            CImage image;
            QVERIFY(CUtilManager::ConvertImage(source, &image));
            QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), size);
            QCOMPARE(image.GetChannel(), 4);
            QCOMPARE(image.GetBitDepth(), 8);
            QCOMPARE(image.GetImageType(), EImageType::Interleaved);
            QVERIFY(EqualsThePlainModel(source, image));
        }
    }

    void theRowByteCountIsDeliberatelyTakenFromTheSourceImage()
    {
        QImage grey(8, 2, QImage::Format_Grayscale8); // 8 bytes a row, converted 32
        grey.fill(200);
        CImage image;
        QVERIFY(CUtilManager::ConvertImage(grey, &image));
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < 8; ++x) {
                const unsigned char* pPixel = image.GetPixel(x, y);
                QCOMPARE(int(pPixel[0]), x < 2 ? 200 : 0);
                QCOMPARE(int(pPixel[3]), x < 2 ? 255 : 0);
            }
        QImage rgb(8, 2, QImage::Format_RGB888); // 24 bytes a row
        rgb.fill(Qt::white);
        QVERIFY(CUtilManager::ConvertImage(rgb, &image));
        QCOMPARE(int(image.GetPixel(5, 1)[0]), 255);
        QCOMPARE(int(image.GetPixel(6, 1)[0]), 0);
    }

    void aWiderSourceIsLimitedByTheStride()
    {
        const QImage source = RandomImage(50, 20, QImage::Format_RGBA64); // 8 bytes a pixel
        CImage image;
        QVERIFY(CUtilManager::ConvertImage(source, &image));
        QCOMPARE(image.GetStride(), 200);
        QVERIFY(EqualsThePlainModel(source, image));
    }

    void fourChannelsSurviveTheRoundTrip()
    {
        const auto pImage = MakeTestImage(13, 7, 4);
        QImage there;
        CImage back;
        QVERIFY(CUtilManager::ConvertImage(pImage.get(), there, true));
        QVERIFY(CUtilManager::ConvertImage(there, &back));
        QCOMPARE(back.GetStride(), pImage->GetStride());
        QCOMPARE(std::memcmp(back.GetData(), pImage->GetData(), 13 * 4 * 7), 0);
    }

    void aSourceThatSharesTheBufferOfTheDestinationIsReadBeforeItGoes()
    {
        for (const int nChannels : {3, 4}) {
            const auto pImage = MakeTestImage(301, 211, nChannels);
            QImage view;
            QVERIFY(CUtilManager::ConvertImage(pImage.get(), view, false));
            const QImage source = view.copy();
            QVERIFY(CUtilManager::ConvertImage(view, pImage.get()));
            QVERIFY(EqualsThePlainModel(source, *pImage));
        }
    }
    void aDeepCopyGoesWithItsLastUser()
    {
        const auto pImage = MakeTestImage(2000, 2000, 4); // 16 MB
        const auto copyOnce = [&] {
            QImage image;
            QVERIFY(CUtilManager::ConvertImage(pImage.get(), image, true));
            const QImage other = image;
            image = QImage();
            QCOMPARE(other.size(), QSize(2000, 2000));
        };
        copyOnce(); // what is kept for the next one is no leak
        const long long nBefore = ResidentBytes();
        QVERIFY(nBefore > 16'000'000);
        for (int i = 0; i < 40; ++i)
            copyOnce();
        QVERIFY2(ResidentBytes() - nBefore < 320'000'000, "half of the copies or more are still there");
    }
};

VANTOR_TEST_MAIN(tst_CUtilManager)
#include "tst_CUtilManager.moc"
