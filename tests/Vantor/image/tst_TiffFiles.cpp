// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// TIFF files of every layout, written here.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/Vantor/image/TiffWriter.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <climits>
#include <cmath>
#include <tiffio.h>

using namespace ImageFiles;
using namespace TiffWriter;

namespace
{
using Values = std::vector<int>;
} // namespace

class tst_TiffFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOrientationTagOfTiffIsApplied();
    void floatsAreClampedToZeroAndOne();
    void signedSamplesBeginAtBlack();
    void straightAlphaStaysAndPremultipliedBecomesStraight();
    void greyWithAlphaBecomesRgba();
    void cmykBecomesRgb();
    void unspecifiedExtraSamplesAreNoAlpha();
    void tilesOfGreyAreRead();
    void aTiffWithoutItsStripsIsRefused();
    void everyWidthOfASampleIsScaledToEightBits_data();
    void everyWidthOfASampleIsScaledToEightBits();
    void premultipliedGreyBecomesStraight();
    void anOldColourMapOfEightBitValuesIsReadAsSuch();
    void rareColoursBecomeRgb_data();
    void rareColoursBecomeRgb();
    void aTiffThatNobodyCanReadIsRefused_data();
    void aTiffThatNobodyCanReadIsRefused();
    void damagedSamplesOfATiffAreRefused_data();
    void damagedSamplesOfATiffAreRefused();
    void aSavedTiffIsCompressed();
    void bothOrdersOfBytesAndBothSizesOfOffsetsAreRead();
};

void tst_TiffFiles::theOrientationTagOfTiffIsApplied()
{
    // The picture  1 2 3  as it lies in the file for each orientation.
    //              4 5 6
    const std::vector<std::vector<unsigned char>> stored = {
        {1, 2, 3, 4, 5, 6}, {3, 2, 1, 6, 5, 4}, {6, 5, 4, 3, 2, 1}, {4, 5, 6, 1, 2, 3},
        {1, 4, 2, 5, 3, 6}, {3, 6, 2, 5, 1, 4}, {6, 3, 5, 2, 4, 1}, {4, 1, 5, 2, 6, 3}};
    const QTemporaryDir folder;
    for (int i = 1; i <= 8; ++i) {
        STiff what;
        what.nWidth = i < 5 ? 3 : 2;
        what.nHeight = i < 5 ? 2 : 3;
        what.nOrientation = i;
        const QString path = folder.filePath(QStringLiteral("turned.tif"));
        WriteTiff(path, what, stored[static_cast<std::size_t>(i - 1)]);
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(image.GetWidth(), 3);
        QCOMPARE(image.GetHeight(), 2);
        for (int n = 0; n < 6; ++n)
            QCOMPARE(int(*image.GetPixel(n % 3, n / 3)), n + 1);
    }
}

void tst_TiffFiles::floatsAreClampedToZeroAndOne()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 6;
    what.nBits = 32;
    what.nFormat = SAMPLEFORMAT_IEEEFP;
    WriteTiff(path, what, std::vector<float>{-1.0F, 0.0F, 0.5F, 1.0F, 1e30F, NAN});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (const auto& [x, nValue] : {std::pair(0, 0), {1, 0}, {2, 128}, {3, 255}, {4, 255}, {5, 0}})
        QCOMPARE(int(*image.GetPixel(x, 0)), nValue);
}

void tst_TiffFiles::signedSamplesBeginAtBlack()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 3;
    what.nFormat = SAMPLEFORMAT_INT;
    WriteTiff(path, what, std::vector<qint8>{-128, 0, 127});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (const auto& [x, nValue] : {std::pair(0, 0), {1, 128}, {2, 255}})
        QCOMPARE(int(*image.GetPixel(x, 0)), nValue);
}

void tst_TiffFiles::straightAlphaStaysAndPremultipliedBecomesStraight()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 2;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_RGB;
    what.nExtra = EXTRASAMPLE_UNASSALPHA;
    const std::vector<unsigned char> samples = {100, 50, 25, 100, 7, 8, 9, 0};
    WriteTiff(path, what, samples);
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({100, 50, 25, 100}));
    QCOMPARE(PixelOf(image, 1, 0), Values({7, 8, 9, 0}));
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    WriteTiff(path, what, samples);
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({255, 128, 64, 100}));
    QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0, 0}));
}

void tst_TiffFiles::greyWithAlphaBecomesRgba()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nSamples = 2;
    what.nExtra = EXTRASAMPLE_UNASSALPHA;
    WriteTiff(path, what, std::vector<unsigned char>{200, 10});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({200, 200, 200, 10}));
}

void tst_TiffFiles::cmykBecomesRgb()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 2;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_SEPARATED;
    WriteTiff(path, what, std::vector<unsigned char>{255, 0, 51, 0, 0, 0, 0, 255});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({0, 255, 204}));
    QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0}));
}

void tst_TiffFiles::unspecifiedExtraSamplesAreNoAlpha()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_RGB;
    what.nExtra = EXTRASAMPLE_UNSPECIFIED;
    WriteTiff(path, what, std::vector<unsigned char>{1, 2, 3, 4});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({1, 2, 3}));
    what.nExtra = -1; // not even named
    WriteTiff(path, what, std::vector<unsigned char>{5, 6, 7, 8});
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({5, 6, 7}));
}

void tst_TiffFiles::tilesOfGreyAreRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 13;
    what.nHeight = 11;
    what.nTile = 16;
    std::vector<unsigned char> samples(16 * 16);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<unsigned char>(i);
    WriteTiff(path, what, samples);
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(image.GetWidth(), 13);
    QCOMPARE(image.GetHeight(), 11);
    for (int y = 0; y < 11; ++y)
        for (int x = 0; x < 13; ++x)
            QCOMPARE(int(*image.GetPixel(x, y)), 16 * y + x);
}

void tst_TiffFiles::aTiffWithoutItsStripsIsRefused()
{
    // 30000 rows of 30000 pixels, not one of them in the file.
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sparse.tif"));
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "w");
    QVERIFY(pTiff);
    constexpr int kSide = 30000;
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, kSide);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, kSide);
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, kSide);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFWriteDirectory(pTiff);
    TIFFClose(pTiff);
    CImage image;
    QVERIFY(LoadFile(image, path) != 0);
}

void tst_TiffFiles::everyWidthOfASampleIsScaledToEightBits_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("format");
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<QVector<int>>("expected");
    const auto bytes = [](const auto& values) {
        return QByteArray(reinterpret_cast<const char*>(values.data()),
                          static_cast<int>(values.size() * sizeof(values[0])));
    };
    QTest::newRow("32 bits") << 32 << SAMPLEFORMAT_UINT
                             << bytes(std::vector<quint32>{0, 0x80808080U, 0xffffffffU})
                             << QVector<int>{0, 128, 255};
    QTest::newRow("32 bits, signed") << 32 << SAMPLEFORMAT_INT
                                     << bytes(std::vector<qint32>{INT_MIN, 0, INT_MAX})
                                     << QVector<int>{0, 128, 255};
    QTest::newRow("16 bits") << 16 << SAMPLEFORMAT_UINT
                             << bytes(std::vector<quint16>{0, 128, 129, 32768, 65406, 65535})
                             << QVector<int>{0, 0, 1, 128, 254, 255};
    QTest::newRow("16 bits, signed") << 16 << SAMPLEFORMAT_INT
                                     << bytes(std::vector<qint16>{SHRT_MIN, 0, SHRT_MAX})
                                     << QVector<int>{0, 128, 255};
    QTest::newRow("12 bits") << 12 << SAMPLEFORMAT_UINT << QByteArray("\x00\x08\x00\xff\xf0", 5)
                             << QVector<int>{0, 128, 255};
    QTest::newRow("4 bits, signed") << 4 << SAMPLEFORMAT_INT << QByteArray("\x80\x70", 2)
                                    << QVector<int>{0, 136, 255};
    // -1, 0.5, 1 and no number in 16 bits
    QTest::newRow("half floats") << 16 << SAMPLEFORMAT_IEEEFP
                                 << bytes(std::vector<quint16>{0xbc00, 0x3800, 0x3c00, 0x7e00})
                                 << QVector<int>{0, 128, 255, 0};
    QTest::newRow("doubles") << 64 << SAMPLEFORMAT_IEEEFP
                             << bytes(std::vector<double>{-1.0, 0.5, 1e300, std::nan("")})
                             << QVector<int>{0, 128, 255, 0};
}

void tst_TiffFiles::everyWidthOfASampleIsScaledToEightBits()
{
    QFETCH(int, bits);
    QFETCH(int, format);
    QFETCH(QByteArray, samples);
    QFETCH(QVector<int>, expected);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = expected.size();
    what.nBits = bits;
    what.nFormat = format;
    WriteTiff(path, what, std::vector<char>(samples.begin(), samples.end()));
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (int x = 0; x < expected.size(); ++x)
        QCOMPARE(int(*image.GetPixel(x, 0)), expected[x]);
}

void tst_TiffFiles::premultipliedGreyBecomesStraight()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 2;
    what.nSamples = 2;
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    WriteTiff(path, what, std::vector<unsigned char>{50, 100, 9, 0});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({128, 128, 128, 100}));
    QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0, 0}));
}

void tst_TiffFiles::anOldColourMapOfEightBitValuesIsReadAsSuch()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    for (const int nScale : {1, 257}) {
        TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "w");
        QVERIFY(pTiff);
        std::vector<quint16> map(4, 0);
        map[2] = static_cast<quint16>(200 * nScale);
        TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, 4);
        TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, 1);
        TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 2);
        TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_PALETTE);
        TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(pTiff, TIFFTAG_COLORMAP, map.data(), map.data(), map.data());
        unsigned char indexes = 0x1b; // 0 1 2 3
        TIFFWriteEncodedStrip(pTiff, 0, &indexes, 1);
        TIFFClose(pTiff);
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0}));
        QCOMPARE(PixelOf(image, 2, 0), Values({200, 200, 200}));
    }
}

void tst_TiffFiles::rareColoursBecomeRgb_data()
{
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("slack");
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<QVector<int>>("expected"); // the grey of each of two pixels
    constexpr int kRounding = 2;
    constexpr int kOtherLight = 40; // the codec leaves white as it looks in the light that it was measured in
    QTest::newRow("L*a*b*") << int(PHOTOMETRIC_CIELAB) << kOtherLight << QByteArray("\xff\0\0\0\0\0", 6)
                            << QVector<int>{255, 0};
    QTest::newRow("luminance and chrominance")
        << int(PHOTOMETRIC_YCBCR) << kRounding << QByteArray("\x96\x80\x80\x14\x80\x80", 6)
        << QVector<int>{150, 20};
}

void tst_TiffFiles::rareColoursBecomeRgb()
{
    QFETCH(int, photometric);
    QFETCH(QByteArray, samples);
    QFETCH(QVector<int>, expected);
    QFETCH(int, slack);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    for (const int nOrientation : {ORIENTATION_TOPLEFT, ORIENTATION_TOPRIGHT}) {
        STiff what;
        what.nWidth = 2;
        what.nSamples = 3;
        what.nPhotometric = photometric;
        what.nOrientation = nOrientation;
        WriteTiff(path, what, std::vector<char>(samples.begin(), samples.end()));
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(image.GetChannel(), 3);
        QCOMPARE(image.GetWidth(), 2);
        for (int x = 0; x < 2; ++x) {
            const int nWanted = expected[nOrientation == ORIENTATION_TOPLEFT ? x : 1 - x];
            for (const int nValue : PixelOf(image, x, 0))
                QVERIFY2(std::abs(nValue - nWanted) <= slack, QByteArray::number(nValue).constData());
        }
    }
}

void tst_TiffFiles::aTiffThatNobodyCanReadIsRefused_data()
{
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("format");
    QTest::newRow("integers of 48 bits") << int(PHOTOMETRIC_MINISBLACK) << 1 << 48 << SAMPLEFORMAT_UINT;
    QTest::newRow("floats of 24 bits") << int(PHOTOMETRIC_MINISBLACK) << 1 << 24 << SAMPLEFORMAT_IEEEFP;
    QTest::newRow("complex numbers") << int(PHOTOMETRIC_MINISBLACK) << 1 << 64 << SAMPLEFORMAT_COMPLEXIEEEFP;
    QTest::newRow("two samples for three colours") << int(PHOTOMETRIC_RGB) << 2 << 8 << SAMPLEFORMAT_UINT;
    QTest::newRow("three inks for four") << int(PHOTOMETRIC_SEPARATED) << 3 << 8 << SAMPLEFORMAT_UINT;
    QTest::newRow("sixty-five samples") << int(PHOTOMETRIC_RGB) << 65 << 8 << SAMPLEFORMAT_UINT;
}

void tst_TiffFiles::aTiffThatNobodyCanReadIsRefused()
{
    QFETCH(int, photometric);
    QFETCH(int, samples);
    QFETCH(int, bits);
    QFETCH(int, format);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nSamples = samples;
    what.nBits = bits;
    what.nFormat = format;
    what.nPhotometric = photometric;
    WriteTiff(path, what, std::vector<char>(static_cast<std::size_t>(samples * bits / 8), 0));
    const auto image = MakeTestImage(5, 4, 3);
    QVERIFY(LoadFile(*image, path) != 0);
    QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
}

void tst_TiffFiles::damagedSamplesOfATiffAreRefused_data()
{
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("tile");
    QTest::newRow("rows") << int(PHOTOMETRIC_RGB) << 0;
    QTest::newRow("tiles") << int(PHOTOMETRIC_RGB) << 16;
    QTest::newRow("rare colours") << int(PHOTOMETRIC_CIELAB) << 0;
}

void tst_TiffFiles::damagedSamplesOfATiffAreRefused()
{
    QFETCH(int, photometric);
    QFETCH(int, tile);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 16;
    what.nHeight = 16;
    what.nSamples = 3;
    what.nPhotometric = photometric;
    what.nCompression = COMPRESSION_ADOBE_DEFLATE;
    what.nTile = tile;
    std::vector<unsigned char> samples(16 * 16 * 3);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<unsigned char>(i * i >> 3);
    WriteTiff(path, what, samples);
    const auto image = MakeTestImage(5, 4, 3);
    QCOMPARE(LoadFile(*image, path), 0);
    QCOMPARE(image->GetWidth(), 16);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(40)); // behind the head of the file and of the compressed samples
    file.write(QByteArray(40, '\x55'));
    file.close();
    const auto same = MakeTestImage(5, 4, 3);
    QVERIFY(LoadFile(*same, path) != 0);
    QVERIFY(SamePixels(*same, *MakeTestImage(5, 4, 3)));
}

void tst_TiffFiles::aSavedTiffIsCompressed()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    for (const int nChannels : {1, 2, 3, 4}) {
        QCOMPARE(MakeTestImage(40, 30, nChannels)->Save(path.toStdWString()), 0);
        TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "r");
        QVERIFY(pTiff);
        std::uint16_t nCompression = 0;
        std::uint16_t nPredictor = 0;
        TIFFGetField(pTiff, TIFFTAG_COMPRESSION, &nCompression);
        TIFFGetField(pTiff, TIFFTAG_PREDICTOR, &nPredictor);
        TIFFClose(pTiff);
        QCOMPARE(int(nCompression), int(COMPRESSION_LZW));
        QCOMPARE(int(nPredictor), int(PREDICTOR_HORIZONTAL));
    }
}

void tst_TiffFiles::bothOrdersOfBytesAndBothSizesOfOffsetsAreRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 3;
    what.nBits = 16;
    const char* const kHeads[][2] = {{"wl", "II*"}, {"wb", "MM\0*"}, {"w8l", "II+"}, {"w8b", "MM\0+"}};
    for (const auto& head : kHeads) {
        what.pMode = head[0];
        WriteTiff(path, what, std::vector<std::uint16_t>{0x0000, 0x8080, 0xffff});
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.peek(4), QByteArray(head[1], 4)); // the short ones end in a zero, too
        CImage image;
        QVERIFY2(LoadFile(image, path) == 0, head[0]);
        QCOMPARE(Values({PixelOf(image, 0, 0)[0], PixelOf(image, 1, 0)[0], PixelOf(image, 2, 0)[0]}),
                 Values({0, 128, 255}));
    }
}

VANTOR_CORE_TEST_MAIN(tst_TiffFiles)
#include "tst_TiffFiles.moc"
