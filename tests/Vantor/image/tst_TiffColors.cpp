// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What becomes of the samples of TIFF files: alpha, palettes, inks, L*a*b* and wide integers, against plain
// models.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/Vantor/image/TiffWriter.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>

using namespace ImageFiles;
using namespace TiffWriter;

namespace
{
using Values = std::vector<int>;
constexpr int kPixels = 500;

int Rounded(double value)
{
    return static_cast<int>(std::floor(value + 0.5));
}

/// 0 to 255 of v of 0 to max.
int Scaled(quint64 v, double max)
{
    return Rounded(static_cast<double>(v) * 255.0 / max);
}

int Straightened(quint64 v, quint64 alpha)
{
    return alpha == 0 ? 0
                      : std::min(255, Rounded(static_cast<double>(v) * 255.0 / static_cast<double>(alpha)));
}

/// Random samples, with alphas of 0 and other small ones among them.
template <class T> std::vector<T> RandomPixels(int nSamples, quint32 nMax)
{
    std::mt19937 random(7);
    std::vector<T> samples;
    for (int i = 0; i < kPixels * nSamples; ++i) {
        const quint32 nTop = i / nSamples % 3 == 0 ? std::min<quint32>(nMax, 40) : nMax;
        samples.push_back(static_cast<T>(random() % (nTop + 1)));
    }
    return samples;
}

/// What the codec's own converter makes of a file: red, green, blue of each pixel.
std::vector<Values> ByCodec(const QString& path)
{
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "r");
    std::vector<quint32> raster(kPixels);
    std::vector<Values> pixels;
    if (pTiff && TIFFReadRGBAImageOriented(pTiff, kPixels, 1, raster.data(), ORIENTATION_TOPLEFT, 1) == 1)
        for (const quint32 v : raster)
            pixels.push_back({int(TIFFGetR(v)), int(TIFFGetG(v)), int(TIFFGetB(v))});
    if (pTiff)
        TIFFClose(pTiff);
    return pixels;
}
} // namespace

Q_DECLARE_METATYPE(std::vector<double>)

class tst_TiffColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wideIntegersAreScaledExactly_data();
    void wideIntegersAreScaledExactly();
    void premultipliedSamplesAreDividedBeforeTheyAreRounded_data();
    void premultipliedSamplesAreDividedBeforeTheyAreRounded();
    void premultipliedFloatsAreDividedBeforeTheyAreRounded();
    void palettesOfEveryWidthKeepTheirAlpha_data();
    void palettesOfEveryWidthKeepTheirAlpha();
    void inksKeepTheirAlpha_data();
    void inksKeepTheirAlpha();
    void labIsWhatTheCodecMakesOfIt_data();
    void labIsWhatTheCodecMakesOfIt();
    void labOfSixteenBitsIsWhatTheCodecMakesOfIt();
    void labOfSixteenBitsIsFiner();
    void premultipliedLabIsDividedByItsAlpha();
    void labWithoutAWhitePointIsRefused();
    void aFacsimileThatDoesNotSayItHasBlackOnes_data();
    void aFacsimileThatDoesNotSayItHasBlackOnes();

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("a.tif"));
};

void tst_TiffColors::wideIntegersAreScaledExactly_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("planar");
    QTest::addColumn<QByteArray>("mode");
    for (const int nBits : {24, 64}) {
        for (const bool bPlanar : {false, true}) {
            const auto row = [&](const char* pName) -> QTestData& {
                return QTest::addRow("%d bits, %s, %s", nBits, pName, bPlanar ? "planar" : "together")
                       << nBits;
            };
            row("grey") << 1 << int(PHOTOMETRIC_MINISBLACK) << SAMPLEFORMAT_UINT << bPlanar
                        << QByteArray("w");
            row("white is zero") << 1 << int(PHOTOMETRIC_MINISWHITE) << SAMPLEFORMAT_UINT << bPlanar
                                 << QByteArray("w");
            row("signed") << 1 << int(PHOTOMETRIC_MINISBLACK) << SAMPLEFORMAT_INT << bPlanar
                          << QByteArray("w");
            row("colours") << 3 << int(PHOTOMETRIC_RGB) << SAMPLEFORMAT_UINT << bPlanar << QByteArray("w");
            row("colours and alpha") << 4 << int(PHOTOMETRIC_RGB) << SAMPLEFORMAT_UINT << bPlanar
                                     << QByteArray("w");
            row("the other order of bytes")
                << 3 << int(PHOTOMETRIC_RGB) << SAMPLEFORMAT_UINT << bPlanar << QByteArray("wb");
        }
    }
}

void tst_TiffColors::wideIntegersAreScaledExactly()
{
    QFETCH(int, bits);
    QFETCH(int, samples);
    QFETCH(int, photometric);
    QFETCH(int, format);
    QFETCH(bool, planar);
    QFETCH(QByteArray, mode);
    // Every k of 0 to 255 stands for itself and for what is less than half a step away.
    const quint64 nStep = bits == 24 ? 65793 : Q_UINT64_C(0x0101010101010101);
    const quint64 nSign = format == SAMPLEFORMAT_INT ? Q_UINT64_C(1) << (bits - 1) : 0;
    constexpr int kWidth = 200;
    std::vector<quint64> values;
    Values expected;
    for (int i = 0; i < kWidth * samples; ++i) {
        const int k = i * 37 % 256;
        const auto nExact = static_cast<quint64>(k) * nStep;
        const int nWhich = k == 0 || k == 255 ? 0 : i % 3;
        values.push_back((nWhich == 0   ? nExact
                          : nWhich == 1 ? nExact + nStep / 2
                                        : nExact - nStep / 2) ^
                         nSign);
        expected.push_back(photometric == PHOTOMETRIC_MINISWHITE ? 255 - k : k);
    }
    std::vector<char> bytes;
    for (const quint64 value : planar ? InPlanes(values, samples) : values) {
        char all[8];
        std::memcpy(all, &value, 8);
        bytes.insert(bytes.end(), all, all + bits / 8); // the lowest first
    }
    STiff what;
    what.nWidth = kWidth;
    what.nSamples = samples;
    what.nBits = bits;
    what.nFormat = format;
    what.nPhotometric = photometric;
    what.nExtra = samples == 4 ? EXTRASAMPLE_UNASSALPHA : -1;
    what.bPlanar = planar;
    what.pMode = mode.constData();
    WriteTiff(m_path, what, bytes);
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    QCOMPARE(image.GetChannel(), samples);
    for (int x = 0; x < kWidth; ++x)
        QCOMPARE(PixelOf(image, x, 0),
                 Values(expected.begin() + x * samples, expected.begin() + (x + 1) * samples));
}

void tst_TiffColors::premultipliedSamplesAreDividedBeforeTheyAreRounded_data()
{
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("planar");
    QTest::addColumn<int>("tile");
    QTest::newRow("grey of 16 bits") << 2 << 16 << false << 0;
    QTest::newRow("colours of 16 bits") << 4 << 16 << false << 0;
    QTest::newRow("colours of 16 bits, planar") << 4 << 16 << true << 0;
    QTest::newRow("colours of 16 bits, a tile") << 4 << 16 << false << 512;
    QTest::newRow("colours of 16 bits, planar tiles") << 4 << 16 << true << 512;
    QTest::newRow("colours of 8 bits") << 4 << 8 << false << 0;
    QTest::newRow("grey of 8 bits, planar") << 2 << 8 << true << 0;
    QTest::newRow("colours of 12 bits") << 4 << 12 << false << 0;
}

void tst_TiffColors::premultipliedSamplesAreDividedBeforeTheyAreRounded()
{
    QFETCH(int, samples);
    QFETCH(int, bits);
    QFETCH(bool, planar);
    QFETCH(int, tile);
    const quint32 nMax = (1U << bits) - 1;
    STiff what;
    what.nWidth = kPixels;
    what.nSamples = samples;
    what.nBits = bits;
    what.nPhotometric = samples == 2 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB;
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    what.bPlanar = planar;
    what.nTile = tile;
    const auto pixels = RandomPixels<quint32>(samples, nMax);
    std::vector<quint32> stored = planar ? InPlanes(pixels, samples) : pixels;
    if (tile > 0) { // the image is the beginning of the first row of each plane's tile
        const std::size_t nPlanes = planar ? static_cast<std::size_t>(samples) : 1;
        const std::size_t nRow = stored.size() / nPlanes;
        const std::size_t nTile = static_cast<std::size_t>(tile) * static_cast<std::size_t>(tile) *
                                  static_cast<std::size_t>(planar ? 1 : samples);
        std::vector<quint32> tiles(nTile * nPlanes);
        for (std::size_t i = 0; i < stored.size(); ++i)
            tiles[i / nRow * nTile + i % nRow] = stored[i];
        stored = tiles;
    }
    if (bits == 16)
        WriteTiff(m_path, what, std::vector<quint16>(stored.begin(), stored.end()));
    else
        WriteTiff(m_path, what, Packed(stored, bits));
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    QCOMPARE(image.GetChannel(), 4);
    for (int x = 0; x < kPixels; ++x) {
        const quint32* p = pixels.data() + x * samples;
        // Twelve bits are brought to sixteen first, which moves a quotient by less than one step.
        const int nSlack = bits == 12 ? 1 : 0;
        const quint32 nAlpha = p[samples - 1];
        for (int c = 0; c < 3; ++c) {
            const int nWanted = Straightened(p[samples == 2 ? 0 : c], nAlpha);
            QVERIFY2(std::abs(int(image.GetPixel(x, 0)[c]) - nWanted) <= nSlack,
                     qPrintable(QString::number(x)));
        }
        QCOMPARE(int(image.GetPixel(x, 0)[3]), Scaled(nAlpha, nMax));
    }
}

void tst_TiffColors::premultipliedFloatsAreDividedBeforeTheyAreRounded()
{
    STiff what;
    what.nWidth = 2;
    what.nSamples = 4;
    what.nBits = 32;
    what.nFormat = SAMPLEFORMAT_IEEEFP;
    what.nPhotometric = PHOTOMETRIC_RGB;
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    WriteTiff(m_path, what, std::vector<float>{0.005F, 0.01F, 0.02F, 0.02F, 1.0F, -1.0F, NAN, 1e9F});
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({64, 127, 255, 5})); // 0.005 is 328 and 0.02 is 1311 of 65535
    QCOMPARE(PixelOf(image, 1, 0), Values({255, 0, 0, 255}));
}

void tst_TiffColors::palettesOfEveryWidthKeepTheirAlpha_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("extra");
    QTest::addColumn<bool>("planar");
    for (const int nBits : {1, 4, 8, 12, 16}) {
        for (const bool bPlanar : {false, true}) {
            const char* pOrder = bPlanar ? "planar" : "together";
            QTest::addRow("%d bits, %s", nBits, pOrder) << nBits << -1 << bPlanar;
            QTest::addRow("%d bits, alpha, %s", nBits, pOrder) << nBits << EXTRASAMPLE_UNASSALPHA << bPlanar;
            QTest::addRow("%d bits, premultiplied, %s", nBits, pOrder)
                << nBits << EXTRASAMPLE_ASSOCALPHA << bPlanar;
            QTest::addRow("%d bits, something else, %s", nBits, pOrder)
                << nBits << EXTRASAMPLE_UNSPECIFIED << bPlanar;
        }
    }
}

void tst_TiffColors::palettesOfEveryWidthKeepTheirAlpha()
{
    QFETCH(int, bits);
    QFETCH(int, extra);
    QFETCH(bool, planar);
    const std::size_t nEntries = std::size_t(1) << bits;
    const bool bAlpha = extra == EXTRASAMPLE_UNASSALPHA || extra == EXTRASAMPLE_ASSOCALPHA;
    STiff what;
    what.nWidth = kPixels;
    what.nSamples = extra < 0 ? 1 : 2;
    what.nBits = bits;
    what.nPhotometric = PHOTOMETRIC_PALETTE;
    what.nExtra = extra;
    what.bPlanar = planar;
    std::mt19937 random(3);
    for (std::size_t i = 0; i < 3 * nEntries; ++i)
        what.vctMap.push_back(static_cast<quint16>(random() | 0x100U));
    const auto pixels = RandomPixels<quint32>(what.nSamples, static_cast<quint32>(nEntries - 1));
    const auto stored = planar ? InPlanes(pixels, what.nSamples) : pixels;
    if (bits == 16) {
        WriteTiff(m_path, what, std::vector<quint16>(stored.begin(), stored.end()));
    } else {
        std::vector<unsigned char> bytes;
        const auto nPlane = planar ? stored.size() / static_cast<std::size_t>(what.nSamples) : stored.size();
        for (std::size_t i = 0; i < stored.size(); i += nPlane) { // each plane begins with a new byte
            const auto first = stored.begin() + static_cast<std::ptrdiff_t>(i);
            const auto plane = Packed({first, first + static_cast<std::ptrdiff_t>(nPlane)}, bits);
            bytes.insert(bytes.end(), plane.begin(), plane.end());
        }
        WriteTiff(m_path, what, bytes);
    }
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    QCOMPARE(image.GetChannel(), bAlpha ? 4 : 3);
    for (int x = 0; x < kPixels; ++x) {
        const quint32* p = pixels.data() + x * what.nSamples;
        Values expected;
        for (std::size_t c = 0; c < 3; ++c)
            expected.push_back(Scaled(what.vctMap[c * nEntries + p[0]], 65535.0));
        if (bAlpha)
            expected.push_back(Scaled(p[1], static_cast<double>(nEntries - 1)));
        QCOMPARE(PixelOf(image, x, 0), expected);
    }
}

void tst_TiffColors::inksKeepTheirAlpha_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("extra");
    QTest::addColumn<bool>("planar");
    for (const int nBits : {8, 16}) {
        for (const bool bPlanar : {false, true}) {
            const char* pOrder = bPlanar ? "planar" : "together";
            QTest::addRow("%d bits, alpha, %s", nBits, pOrder) << nBits << EXTRASAMPLE_UNASSALPHA << bPlanar;
            QTest::addRow("%d bits, premultiplied, %s", nBits, pOrder)
                << nBits << EXTRASAMPLE_ASSOCALPHA << bPlanar;
            QTest::addRow("%d bits, something else, %s", nBits, pOrder)
                << nBits << EXTRASAMPLE_UNSPECIFIED << bPlanar;
        }
    }
}

void tst_TiffColors::inksKeepTheirAlpha()
{
    QFETCH(int, bits);
    QFETCH(int, extra);
    QFETCH(bool, planar);
    constexpr int kSamples = 5;
    STiff what;
    what.nWidth = kPixels;
    what.nSamples = kSamples;
    what.nBits = bits;
    what.nPhotometric = PHOTOMETRIC_SEPARATED;
    what.nExtra = extra;
    what.bPlanar = planar;
    const quint32 nMax = (1U << bits) - 1;
    const auto pixels = RandomPixels<quint16>(kSamples, nMax);
    const auto stored = planar ? InPlanes(pixels, kSamples) : pixels;
    if (bits == 16)
        WriteTiff(m_path, what, stored);
    else
        WriteTiff(m_path, what, std::vector<unsigned char>(stored.begin(), stored.end()));
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    QCOMPARE(image.GetChannel(), extra == EXTRASAMPLE_UNSPECIFIED ? 3 : 4);
    for (int x = 0; x < kPixels; ++x) {
        const quint16* p = pixels.data() + x * kSamples;
        const auto ink = [&](int c) {
            return extra == EXTRASAMPLE_ASSOCALPHA ? Straightened(p[c], p[4]) : Scaled(p[c], nMax);
        };
        Values expected;
        for (int c = 0; c < 3; ++c)
            expected.push_back(Rounded((255 - ink(c)) * (255 - ink(3)) / 255.0));
        if (extra != EXTRASAMPLE_UNSPECIFIED)
            expected.push_back(Scaled(p[4], nMax));
        QCOMPARE(PixelOf(image, x, 0), expected);
    }
}

void tst_TiffColors::labIsWhatTheCodecMakesOfIt_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("extra");
    QTest::addColumn<bool>("planar");
    QTest::addColumn<std::vector<double>>("white");
    for (const int nBits : {8, 16}) {
        QTest::addRow("%d bits", nBits) << nBits << -1 << false << std::vector<double>();
        QTest::addRow("%d bits, daylight", nBits)
            << nBits << -1 << false << std::vector<double>{0.3127, 0.329};
        QTest::addRow("%d bits, planar", nBits) << nBits << -1 << true << std::vector<double>();
        QTest::addRow("%d bits, alpha", nBits)
            << nBits << EXTRASAMPLE_UNASSALPHA << false << std::vector<double>();
        QTest::addRow("%d bits, alpha, planar", nBits)
            << nBits << EXTRASAMPLE_UNASSALPHA << true << std::vector<double>();
        QTest::addRow("%d bits, something else", nBits)
            << nBits << EXTRASAMPLE_UNSPECIFIED << false << std::vector<double>();
    }
}

void tst_TiffColors::labIsWhatTheCodecMakesOfIt()
{
    QFETCH(int, bits);
    QFETCH(int, extra);
    QFETCH(bool, planar);
    QFETCH(std::vector<double>, white);
    STiff what;
    what.nWidth = kPixels;
    what.nSamples = 3;
    what.nPhotometric = PHOTOMETRIC_CIELAB;
    what.vctWhite = white;
    const auto plain = RandomPixels<unsigned char>(3, 255);
    WriteTiff(m_path, what, plain);
    const std::vector<Values> colors = ByCodec(m_path); // which knows these three samples of 8 bits
    QCOMPARE(int(colors.size()), kPixels);

    what.nSamples = extra < 0 ? 3 : 4;
    what.nBits = bits;
    what.nExtra = extra;
    what.bPlanar = planar;
    std::vector<quint16> pixels;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        // In 16 bits, L is 65535 at its end, a and b are in 256ths.
        const int nFactor = bits == 8 ? 1 : i % 3 == 0 ? 257 : 256;
        pixels.push_back(static_cast<quint16>(plain[i] * nFactor));
        if (i % 3 == 2 && extra >= 0)
            pixels.push_back(static_cast<quint16>(i % 256 * (bits == 8 ? 1U : 257U)));
    }
    const auto stored = planar ? InPlanes(pixels, what.nSamples) : pixels;
    if (bits == 16)
        WriteTiff(m_path, what, stored);
    else
        WriteTiff(m_path, what, std::vector<unsigned char>(stored.begin(), stored.end()));
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    QCOMPARE(image.GetChannel(), extra == EXTRASAMPLE_UNASSALPHA ? 4 : 3);
    for (int x = 0; x < kPixels; ++x) {
        Values expected = colors[static_cast<std::size_t>(x)];
        if (extra == EXTRASAMPLE_UNASSALPHA)
            expected.push_back((3 * x + 2) % 256);
        QCOMPARE(PixelOf(image, x, 0), expected);
    }
}

void tst_TiffColors::labOfSixteenBitsIsWhatTheCodecMakesOfIt()
{
    STiff what;
    what.nWidth = kPixels;
    what.nSamples = 3;
    what.nBits = 16;
    what.nPhotometric = PHOTOMETRIC_CIELAB;
    WriteTiff(m_path, what, RandomPixels<quint16>(3, 65535));
    const std::vector<Values> colors = ByCodec(m_path);
    QCOMPARE(int(colors.size()), kPixels);
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    for (int x = 0; x < kPixels; ++x)
        QCOMPARE(PixelOf(image, x, 0), colors[static_cast<std::size_t>(x)]);
}

void tst_TiffColors::labOfSixteenBitsIsFiner()
{
    // Where the colour changes from one sample to the next, both may round to the same eight bits.
    STiff what;
    what.nWidth = kPixels;
    what.nSamples = 3;
    what.nBits = 16;
    what.nPhotometric = PHOTOMETRIC_CIELAB;
    std::vector<quint16> pixels;
    for (int x = 0; x < kPixels; ++x)
        pixels.insert(pixels.end(), {static_cast<quint16>(40000 + 16 * x), 0, 0});
    WriteTiff(m_path, what, pixels);
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    int nFiner = 0;
    for (int x = 1; x < kPixels; ++x) {
        const int nStep = int(image.GetPixel(x, 0)[1]) - int(image.GetPixel(x - 1, 0)[1]);
        QVERIFY(nStep == 0 || nStep == 1);
        const auto eight = [](int at) { return Scaled(static_cast<quint64>(40000 + 16 * at), 65535.0); };
        nFiner += nStep == 1 && eight(x) == eight(x - 1) ? 1 : 0;
    }
    QVERIFY(nFiner > 10);
}

void tst_TiffColors::premultipliedLabIsDividedByItsAlpha()
{
    STiff what;
    what.nWidth = 3;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_CIELAB;
    what.nExtra = EXTRASAMPLE_UNASSALPHA;
    // L, a and b of the first pixel are a fifth of those of the other file, its alpha is 51 of 255.
    WriteTiff(m_path, what, std::vector<unsigned char>{150, 50, 206, 255, 255, 0, 0, 255, 0, 0, 0, 255});
    CImage straight;
    QCOMPARE(LoadFile(straight, m_path), 0);
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    WriteTiff(m_path, what, std::vector<unsigned char>{30, 10, 246, 51, 200, 0, 0, 100, 9, 9, 9, 0});
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    for (int x = 0; x < 3; ++x) {
        const Values wanted = PixelOf(straight, x, 0);
        const Values got = PixelOf(image, x, 0);
        QCOMPARE(Values(got.begin(), got.begin() + 3), Values(wanted.begin(), wanted.begin() + 3));
    }
    QCOMPARE(PixelOf(image, 0, 0)[3], 51);
    QCOMPARE(PixelOf(image, 2, 0)[3], 0);
}

void tst_TiffColors::labWithoutAWhitePointIsRefused()
{
    STiff what;
    what.nWidth = 1;
    what.nSamples = 3;
    what.nPhotometric = PHOTOMETRIC_CIELAB;
    what.vctWhite = {0.3, 0.0};
    WriteTiff(m_path, what, std::vector<unsigned char>{150, 50, 206});
    CImage image;
    QVERIFY(LoadFile(image, m_path) != 0);
}

void tst_TiffColors::aFacsimileThatDoesNotSayItHasBlackOnes_data()
{
    QTest::addColumn<int>("compression");
    QTest::addColumn<int>("photometric");
    QTest::addColumn<QVector<int>>("expected"); // of the bits 1 0 1 1
    const QVector<int> blackOnes = {0, 255, 0, 0};
    const QVector<int> whiteOnes = {255, 0, 255, 255};
    QTest::newRow("runs") << COMPRESSION_CCITTRLE << -1 << blackOnes;
    QTest::newRow("runs of words") << COMPRESSION_CCITTRLEW << -1 << blackOnes;
    QTest::newRow("group 3") << COMPRESSION_CCITTFAX3 << -1 << blackOnes;
    QTest::newRow("group 4") << COMPRESSION_CCITTFAX4 << -1 << blackOnes;
    QTest::newRow("said") << COMPRESSION_CCITTFAX4 << int(PHOTOMETRIC_MINISBLACK) << whiteOnes;
    QTest::newRow("no facsimile") << COMPRESSION_LZW << -1 << whiteOnes;
}

void tst_TiffColors::aFacsimileThatDoesNotSayItHasBlackOnes()
{
    QFETCH(int, compression);
    QFETCH(int, photometric);
    QFETCH(QVector<int>, expected);
    STiff what;
    what.nWidth = expected.size();
    what.nBits = 1;
    what.nCompression = compression;
    what.nPhotometric = photometric;
    WriteTiff(m_path, what, std::vector<unsigned char>{0xb0});
    CImage image;
    QCOMPARE(LoadFile(image, m_path), 0);
    for (int x = 0; x < expected.size(); ++x)
        QCOMPARE(int(*image.GetPixel(x, 0)), expected[x]);
}

VANTOR_CORE_TEST_MAIN(tst_TiffColors)
#include "tst_TiffColors.moc"
