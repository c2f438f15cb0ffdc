// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// PNG files that the test writes itself, chunk by chunk.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <QtEndian>

#include <cmath>
#include <ctime>

using namespace ImageFiles;

namespace
{
enum EColorType { Grey = 0, Rgb = 2, Palette = 3, GreyAlpha = 4 };

QByteArray Long(quint32 v)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(v, bytes.data());
    return bytes;
}

QByteArray Word(int v)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(static_cast<quint16>(v), bytes.data());
    return bytes;
}

QByteArray Chunk(const QByteArray& type, const QByteArray& body)
{
    return Long(static_cast<quint32>(body.size())) + type + body + Long(Crc32(type + body));
}

/// A file of one row.
/// @param more  chunks between the header and the pixels
QByteArray MakePng(int nWidth, int nDepth, EColorType eType, const QByteArray& row, const QByteArray& more)
{
    const QByteArray header = Long(static_cast<quint32>(nWidth)) + Long(1) + static_cast<char>(nDepth) +
                              static_cast<char>(eType) + QByteArray(3, '\0');
    constexpr int kLengthBytes = 4; // which Qt puts before the data
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + Chunk("IHDR", header) + more +
           Chunk("IDAT", qCompress('\0' + row).mid(kLengthBytes)) + Chunk("IEND", QByteArray());
}

int LoadBytes(CImage& image, const QByteArray& content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    WriteFile(path, content);
    return LoadFile(image, path);
}

/// What a sample of 16 bits becomes.
int Scaled(int v)
{
    return static_cast<int>(std::lround(v * 255.0 / 65535.0));
}
} // namespace

class tst_PngFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySampleOfSixteenBitsIsRounded();
    void aTransparentColourOfSixteenBitsIsComparedExactly();
    void aTransparentGreyOfSixteenBitsIsComparedExactly();
    void greyWithAlphaOfSixteenBitsHasFourChannels();
    void deliberateATransparentGreyOfFewBitsIsBlack_data();
    void deliberateATransparentGreyOfFewBitsIsBlack();
    void anIndexBeyondThePaletteIsItsFirstColour();
    void anOrientationIsExact();
    void anAnimationSaysThatThisIsItsFirstFrame();
    void aGoodFileHasNoNotes();
    void aWarningBecomesANote();
    void aTextIsInflatedWithinBoundsOnly();
};

void tst_PngFiles::everySampleOfSixteenBitsIsRounded()
{
    constexpr int kValues = 65536;
    QByteArray row;
    for (int v = 0; v < kValues; ++v)
        row += Word(v);
    CImage image;
    QCOMPARE(LoadBytes(image, MakePng(kValues, 16, Grey, row, QByteArray())), 0);
    QCOMPARE(image.GetChannel(), 1);
    for (int v = 0; v < kValues; ++v)
        QCOMPARE(int(*image.GetPixel(v, 0)), Scaled(v));
}

void tst_PngFiles::aTransparentColourOfSixteenBitsIsComparedExactly()
{
    // Two colours that are the same in 8 bits, and the transparent one last.
    const QByteArray row = Word(1000) + Word(2000) + Word(60000) + Word(1001) + Word(2000) + Word(60000) +
                           Word(1000) + Word(2000) + Word(60001);
    const QByteArray transparent = Chunk("tRNS", Word(1000) + Word(2000) + Word(60001));
    CImage image;
    QCOMPARE(LoadBytes(image, MakePng(3, 16, Rgb, row, transparent)), 0);
    const std::vector<int> color = {Scaled(1000), Scaled(2000), Scaled(60000)};
    for (int x = 0; x < 3; ++x)
        QCOMPARE(PixelOf(image, x, 0), std::vector<int>({color[0], color[1], color[2], x == 2 ? 0 : 255}));
}

void tst_PngFiles::aTransparentGreyOfSixteenBitsIsComparedExactly()
{
    CImage image;
    QCOMPARE(LoadBytes(image, MakePng(2, 16, Grey, Word(30000) + Word(30001), Chunk("tRNS", Word(30001)))),
             0);
    const int nGrey = Scaled(30000);
    QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({nGrey, nGrey, nGrey, 255}));
    QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({nGrey, nGrey, nGrey, 0}));
}

void tst_PngFiles::greyWithAlphaOfSixteenBitsHasFourChannels()
{
    CImage image;
    QCOMPARE(LoadBytes(image, MakePng(1, 16, GreyAlpha, Word(129) + Word(65406), QByteArray())), 0);
    QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({1, 1, 1, 254}));
}

void tst_PngFiles::deliberateATransparentGreyOfFewBitsIsBlack_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<int>("grey");
    QTest::newRow("1 bit keeps it") << 1 << QByteArray("\x40", 1) << 255;
    QTest::newRow("2 bits") << 2 << QByteArray("\x10", 1) << 0;
    QTest::newRow("4 bits") << 4 << QByteArray("\x01", 1) << 0;
    QTest::newRow("8 bits") << 8 << QByteArray("\0\x01", 2) << 0;
}

void tst_PngFiles::deliberateATransparentGreyOfFewBitsIsBlack()
{
    QFETCH(int, depth);
    QFETCH(QByteArray, row);
    QFETCH(int, grey);
    CImage image;
    QCOMPARE(LoadBytes(image, MakePng(2, depth, Grey, row, Chunk("tRNS", Word(1)))), 0);
    QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({0, 0, 0, 255}));
    QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({grey, grey, grey, 0}));
}

void tst_PngFiles::anIndexBeyondThePaletteIsItsFirstColour()
{
    CImage image;
    const QByteArray palette = Chunk("PLTE", QByteArray("\x0a\x14\x1e\x28\x32\x3c", 6));
    QCOMPARE(LoadBytes(image, MakePng(3, 8, Palette, QByteArray("\x01\x02\xff", 3), palette)), 0);
    QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({40, 50, 60}));
    QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({10, 20, 30}));
    QCOMPARE(PixelOf(image, 2, 0), std::vector<int>({10, 20, 30}));
}

void tst_PngFiles::anOrientationIsExact()
{
    // Three pixels in a row: lying or standing, forwards or backwards.
    const QByteArray row("\x01\x02\x03", 3);
    for (int i = 0; i <= 9; ++i) { // 0 and 9 mean nothing
        const QByteArray exif = QByteArray("MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 19) +
                                static_cast<char>(i) + QByteArray(6, '\0');
        CImage image;
        QCOMPARE(LoadBytes(image, MakePng(3, 8, Grey, row, Chunk("eXIf", exif))), 0);
        const bool bStands = i >= 5 && i <= 8;
        const bool bBackwards = i == 2 || i == 3 || i == 7 || i == 8;
        QCOMPARE(image.GetWidth(), bStands ? 1 : 3);
        for (int n = 0; n < 3; ++n)
            QCOMPARE(int(*(bStands ? image.GetPixel(0, n) : image.GetPixel(n, 0))),
                     bBackwards ? 3 - n : n + 1);
    }
}

void tst_PngFiles::anAnimationSaysThatThisIsItsFirstFrame()
{
    CImage image;
    const auto animation = [](quint32 nFrames) { return Chunk("acTL", Long(nFrames) + Long(0)); };
    QCOMPARE(LoadBytes(image, MakePng(1, 8, Grey, "a", animation(12))), 0);
    QCOMPARE(image.GetNotes(), std::vector<std::string>({"It is the first of 12 frames."}));
    QCOMPARE(LoadBytes(image, MakePng(1, 8, Grey, "a", animation(1))), 0);
    QVERIFY(image.GetNotes().empty());
}

void tst_PngFiles::aGoodFileHasNoNotes()
{
    CImage image;
    for (const char* pName : {"png/basi6a16.png", "png/tbgn2c16.png", "png/PngSuite.png"}) {
        QCOMPARE(LoadData(image, pName), 0);
        QVERIFY2(image.GetNotes().empty(), pName);
    }
}

void tst_PngFiles::aWarningBecomesANote()
{
    CImage image;
    const QByteArray palette = Chunk("PLTE", QByteArray("\x0a\x14\x1e", 3));
    QCOMPARE(LoadBytes(image, MakePng(1, 8, Palette, QByteArray(1, '\0'),
                                      palette + Chunk("tRNS", QByteArray("\x01\x02", 2)))),
             0);
    QCOMPARE(image.GetNotes(), std::vector<std::string>({"The file has a flaw: tRNS: invalid."}));
}

void tst_PngFiles::aTextIsInflatedWithinBoundsOnly()
{
    // A text of 64 MB in some kilobytes, between two good chunks.
    constexpr int kTextBytes = 64 << 20;
    const QByteArray text = QByteArray("k\0\0", 3) + qCompress(QByteArray(kTextBytes, 'x')).mid(4);
    const clock_t nBefore = std::clock();
    CImage image;
    QCOMPARE(LoadBytes(image, MakePng(1, 8, Grey, "a", Chunk("zTXt", text))), 0);
    QCOMPARE(
        image.GetNotes(),
        std::vector<std::string>({"The colour profile or a text of the file is too long and was not kept."}));
    QVERIFY(std::clock() - nBefore < CLOCKS_PER_SEC / 50);
}

VANTOR_CORE_TEST_MAIN(tst_PngFiles)
#include "tst_PngFiles.moc"
