// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// BMP files of every kind, made by plain encoders.
#include "tests/Vantor/image/BmpMaker.h"
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <climits>
#include <random>
#include <string>
#include <tiffio.h>

using namespace BmpMaker;
using namespace ImageFiles;

namespace
{
int LoadBytes(CImage& image, const QByteArray& content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bmp"));
    WriteFile(path, content);
    return LoadFile(image, path);
}

std::string WhyNotLoaded(const QByteArray& content)
{
    CImage image;
    return LoadBytes(image, content) == 0 ? "it loads" : image.GetFailureReason();
}

/// Where the pixels of an image are other than those of a model, the upper row first; empty: nowhere.
QByteArray FirstDifference(const CImage& image, int nWidth, const Colors& expected)
{
    if (image.GetWidth() != nWidth || image.GetHeight() * nWidth != static_cast<int>(expected.size()))
        return "the size";
    for (int i = 0; i < static_cast<int>(expected.size()); ++i) {
        if (PixelOf(image, i % nWidth, i / nWidth) != expected[static_cast<std::size_t>(i)])
            return QByteArray::number(i % nWidth) + ", " + QByteArray::number(i / nWidth);
    }
    return QByteArray();
}

} // namespace

class tst_BmpFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void randomRunLengthsGiveTheirPicture_data();
    void randomRunLengthsGiveTheirPicture();
    void whatRunLengthsSkipIsTheFirstColour_data();
    void whatRunLengthsSkipIsTheFirstColour();
    void aPictureThatSkipsNearlyEverythingLoads();
    void runLengthsMayBeginAtTheTop();
    void runLengthsOfGreyAreGrey();
    void runLengthsThatAreCutShowWhatIsThereAndSaySo();
    void runLengthsWithoutAnEndMarkAreComplete();
    void theShortestFilesLoad();
    void anOs2HeaderMayHaveAnyLength();
    void masksForAlphaMayStandBehindTheHeader();
    void sixtyFourBitsAreLinearLight();
    void huffmanCodeIsRead_data();
    void huffmanCodeIsRead();
    void theReasonTellsWhatIsWrong_data();
    void theReasonTellsWhatIsWrong();
};

void tst_BmpFiles::randomRunLengthsGiveTheirPicture_data()
{
    QTest::addColumn<int>("bits");
    QTest::newRow("4 bits") << 4;
    QTest::newRow("8 bits") << 8;
    QTest::newRow("24 bits") << 24;
}

void tst_BmpFiles::randomRunLengthsGiveTheirPicture()
{
    QFETCH(int, bits);
    Colors palette = kFourColors;
    if (bits == 24)
        palette[0] = {0, 0, 0};
    for (unsigned nSeed = 0; nSeed < 50; ++nSeed) {
        const int nWidth = 1 + static_cast<int>(nSeed) % 37;
        const int nHeight = 1 + static_cast<int>(nSeed) % 11;
        const CRunMaker maker(bits, nWidth, nHeight, palette, nSeed);
        SBmp bmp = {nWidth, nHeight, bits, bits == 4 ? Rle4 : Rle8, palette, maker.GetCode()};
        if (bits == 24) {
            bmp.nCompression = Rle24;
            bmp.palette.clear();
            bmp.nHeaderBytes = kOs2Bytes;
        }
        CImage image;
        QCOMPARE(LoadBytes(image, MakeBmp(bmp)), 0);
        QCOMPARE(image.GetChannel(), 3);
        QVERIFY(image.GetNotes().empty());
        QCOMPARE(FirstDifference(image, nWidth, maker.GetExpected()), QByteArray());
    }
}

void tst_BmpFiles::whatRunLengthsSkipIsTheFirstColour_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QByteArray>("indexes"); // of 4 x 2 pixels, the upper row first
    for (const int nBits : {4, 8}) {
        const QByteArray one(1, nBits == 4 ? '\x11' : '\x01');
        const auto row = [&](const char* pTag, const QByteArray& code, const char* pIndexes) {
            QTest::addRow("%s, %d bits", pTag, nBits) << nBits << code << QByteArray(pIndexes);
        };
        row("an early end of the row",
            "\2" + one + QByteArray("\0\0", 2) + "\4" + one + QByteArray("\0\1", 2),
            "1111"
            "1100");
        row("an early end of the picture", "\3" + one + QByteArray("\0\1", 2),
            "0000"
            "1110");
        row("a move to the right",
            "\1" + one + QByteArray("\0\2\2\0", 4) + "\1" + one + QByteArray("\0\1", 2),
            "0000"
            "1001");
        row("a move to the next row",
            "\1" + one + QByteArray("\0\2\1\1", 4) + "\2" + one + QByteArray("\0\1", 2),
            "0011"
            "1000");
        row("a move beyond the picture",
            "\1" + one + QByteArray("\0\2\xff\xff", 4) + "\4" + one + QByteArray("\0\1", 2),
            "0000"
            "1000");
        row("a run beyond the row", "\xff" + one + QByteArray("\0\1", 2),
            "0000"
            "1111");
    }
}

void tst_BmpFiles::whatRunLengthsSkipIsTheFirstColour()
{
    QFETCH(int, bits);
    QFETCH(QByteArray, code);
    QFETCH(QByteArray, indexes);
    Colors expected;
    for (const char index : indexes)
        expected.push_back(kFourColors[static_cast<std::size_t>(index - '0')]);
    CImage image;
    QCOMPARE(LoadBytes(image, MakeBmp({4, 2, bits, bits == 4 ? Rle4 : Rle8, kFourColors, code})), 0);
    QCOMPARE(FirstDifference(image, 4, expected), QByteArray());
    QVERIFY(image.GetNotes().empty());
}

void tst_BmpFiles::aPictureThatSkipsNearlyEverythingLoads()
{
    const QByteArray code = QByteArray(2 * 999, '\0') + QByteArray("\1\3\0\1", 4);
    CImage image;
    QCOMPARE(LoadBytes(image, MakeBmp({1000, 1000, 8, Rle8, kFourColors, code})), 0);
    QCOMPARE(PixelOf(image, 0, 0), kFourColors[3]);
    QCOMPARE(PixelOf(image, 1, 0), kFourColors[0]);
    QCOMPARE(PixelOf(image, 999, 999), kFourColors[0]);
}

void tst_BmpFiles::runLengthsMayBeginAtTheTop()
{
    CImage image;
    QCOMPARE(LoadBytes(image, MakeBmp({2, -2, 8, Rle8, kFourColors, QByteArray("\2\1\0\0\2\2\0\1", 8)})), 0);
    QCOMPARE(FirstDifference(image, 2, {kFourColors[1], kFourColors[1], kFourColors[2], kFourColors[2]}),
             QByteArray());
}

void tst_BmpFiles::runLengthsOfGreyAreGrey()
{
    Colors greys;
    for (int i = 0; i < 256; ++i)
        greys.push_back({i, i, i});
    CImage image;
    QCOMPARE(LoadBytes(image, MakeBmp({3, 1, 8, Rle8, greys, QByteArray("\1\x55\1\xaa\0\1", 6)})), 0);
    QCOMPARE(image.GetChannel(), 1);
    QCOMPARE(FirstDifference(image, 3, {{0x55}, {0xaa}, {0}}), QByteArray());
}

void tst_BmpFiles::runLengthsThatAreCutShowWhatIsThereAndSaySo()
{
    const QByteArray whole =
        MakeBmp({2, 3, 8, Rle8, kFourColors, QByteArray("\2\1\0\0\2\2\0\0\2\3\0\1", 12)});
    CImage image;
    QCOMPARE(LoadBytes(image, whole), 0);
    QVERIFY(image.GetNotes().empty());
    const auto note = [&image] { return image.GetNotes().size() == 1 ? image.GetNotes()[0] : "none"; };
    QCOMPARE(LoadBytes(image, whole.left(whole.size() - 5)), 0); // without the third run
    QCOMPARE(FirstDifference(image, 2,
                             {kFourColors[0], kFourColors[0], kFourColors[2], kFourColors[2], kFourColors[1],
                              kFourColors[1]}),
             QByteArray());
    QCOMPARE(note(), std::string("The file is incomplete: 1 of 3 rows are missing or cut short."));
    QCOMPARE(LoadBytes(image, whole.left(whole.size() - 11)), 0); // within the first run
    QCOMPARE(PixelOf(image, 0, 2), kFourColors[0]);
    QCOMPARE(note(), std::string("The file is incomplete: 3 of 3 rows are missing or cut short."));
}

void tst_BmpFiles::runLengthsWithoutAnEndMarkAreComplete()
{
    for (const char* pCode : {"\2\1", "\3\1"}) {
        CImage image;
        QCOMPARE(LoadBytes(image, MakeBmp({2, 1, 8, Rle8, kFourColors, QByteArray(pCode, 2)})), 0);
        QCOMPARE(FirstDifference(image, 2, {kFourColors[1], kFourColors[1]}), QByteArray());
        QVERIFY(image.GetNotes().empty());
    }
}

void tst_BmpFiles::theShortestFilesLoad()
{
    const QByteArray colour = MakeBmp({1, 1, 24, None, {}, QByteArray("\3\2\1\0", 4)});
    const QByteArray line = MakeBmp({1, 1, 1, None, {{1, 2, 3}, {4, 5, 6}}, QByteArray("\x80\0\0\0", 4)});
    QCOMPARE(colour.size(), 58);
    QCOMPARE(line.size(), 66);
    CImage image;
    QCOMPARE(LoadBytes(image, colour), 0);
    QCOMPARE(PixelOf(image, 0, 0), Color({1, 2, 3}));
    QCOMPARE(LoadBytes(image, colour.left(57)), 0); // the padding may be missing
    QVERIFY(LoadBytes(image, colour.left(56)) != 0);
    QCOMPARE(LoadBytes(image, line), 0);
    QCOMPARE(PixelOf(image, 0, 0), Color({4, 5, 6}));
}

void tst_BmpFiles::anOs2HeaderMayHaveAnyLength()
{
    Colors palette = kFourColors;
    palette.resize(256, {0, 0, 0});
    for (int nBytes = 16; nBytes <= kOs2Bytes; ++nBytes) {
        CImage image;
        QCOMPARE(LoadBytes(image, MakeBmp({3, 1, 8, None, palette, QByteArray("\1\2\3\0", 4), nBytes})), 0);
        QCOMPARE(FirstDifference(image, 3, {kFourColors[1], kFourColors[2], kFourColors[3]}), QByteArray());
        QCOMPARE(LoadBytes(image, MakeBmp({1, 1, 24, None, {}, QByteArray("\3\2\1\0", 4), nBytes})), 0);
        QCOMPARE(PixelOf(image, 0, 0), Color({1, 2, 3}));
        if (nBytes < 20) // too short to say that there are run lengths
            continue;
        QCOMPARE(LoadBytes(image, MakeBmp({1, 1, 8, Rle8, palette, QByteArray("\1\2\0\1", 4), nBytes})), 0);
        QCOMPARE(PixelOf(image, 0, 0), kFourColors[2]);
    }
    for (int nBytes = 13; nBytes < 16; ++nBytes)
        QVERIFY(WhyNotLoaded(MakeBmp({1, 1, 24, None, {}, QByteArray(40, '\1'), nBytes})) != "it loads");
}

void tst_BmpFiles::masksForAlphaMayStandBehindTheHeader()
{
    const QByteArray masks =
        Little(0xff, 4) + Little(0xff00, 4) + Little(0xff0000, 4) + QByteArray("\0\0\0\xff", 4);
    CImage image;
    QCOMPARE(LoadBytes(image,
                       MakeBmp({1, 1, 32, AlphaBitFields, {}, QByteArray("\1\2\3\4", 4), kInfoBytes, masks})),
             0);
    QCOMPARE(PixelOf(image, 0, 0), Color({1, 2, 3, 4}));
    QCOMPARE(
        LoadBytes(image,
                  MakeBmp({1, 1, 32, BitFields, {}, QByteArray("\1\2\3\4", 4), kInfoBytes, masks.left(12)})),
        0);
    QCOMPARE(PixelOf(image, 0, 0), Color({1, 2, 3}));
    const QByteArray four = Little(0x0f00, 4) + Little(0x00f0, 4) + Little(0x000f, 4) + Little(0xf000, 4);
    QCOMPARE(
        LoadBytes(image,
                  MakeBmp({1, 1, 16, AlphaBitFields, {}, QByteArray("\x23\xf1\0\0", 4), kInfoBytes, four})),
        0);
    QCOMPARE(PixelOf(image, 0, 0), Color({17, 34, 51, 255}));
}

void tst_BmpFiles::sixtyFourBitsAreLinearLight()
{
    // Blue, green, red, alpha; 8192 is one. Half of the light is 188 of 255.
    const QByteArray pixels = Little(0, 2) + Little(4096, 2) + Little(8192, 2) + Little(4096, 2) +
                              Little(-1, 2) + Little(8193, 2) + Little(16, 2) + Little(32767, 2);
    CImage image;
    QCOMPARE(LoadBytes(image, MakeBmp({2, 1, 64, None, {}, pixels})), 0);
    QCOMPARE(PixelOf(image, 0, 0), Color({255, 188, 0, 128}));
    QCOMPARE(PixelOf(image, 1, 0), Color({6, 255, 0, 255}));
    QCOMPARE(LoadBytes(image, MakeBmp({1, -2, 64, None, {}, pixels})), 0);
    QCOMPARE(PixelOf(image, 0, 0), Color({255, 188, 0, 128}));
}

namespace
{
/// The fax code of rows of bits, one being black; each row begins with an end mark that fills a byte.
QByteArray FaxCode(const std::vector<QByteArray>& rows, int nWidth)
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("a.tif")).toUtf8();
    TIFF* pTiff = TIFFOpen(path.constData(), "w");
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, nWidth);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, static_cast<int>(rows.size()));
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, static_cast<int>(rows.size()));
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX3);
    TIFFSetField(pTiff, TIFFTAG_GROUP3OPTIONS, GROUP3OPT_FILLBITS);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        QByteArray row = rows[y];
        TIFFWriteScanline(pTiff, row.data(), static_cast<std::uint32_t>(y), 0);
    }
    TIFFClose(pTiff);
    pTiff = TIFFOpen(path.constData(), "r");
    QByteArray code(static_cast<int>(TIFFRawStripSize(pTiff, 0)), '\0');
    TIFFReadRawStrip(pTiff, 0, code.data(), code.size());
    TIFFClose(pTiff);
    return code;
}
} // namespace

void tst_BmpFiles::huffmanCodeIsRead_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("headerBytes");
    QTest::addColumn<bool>("firstMark");
    QTest::newRow("from below") << 9 << kOs2Bytes << true;
    QTest::newRow("from above") << -9 << kOs2Bytes << true;
    QTest::newRow("short header") << 9 << kInfoBytes << true;
    QTest::newRow("without a mark before the first row") << 9 << kOs2Bytes << false;
}

void tst_BmpFiles::huffmanCodeIsRead()
{
    QFETCH(int, height);
    QFETCH(int, headerBytes);
    QFETCH(bool, firstMark);
    constexpr int kWidth = 6001; // long runs have codes of their own
    const Colors palette = {{250, 240, 1}, {3, 20, 100}};
    std::mt19937 random(7);
    std::vector<QByteArray> rows(static_cast<std::size_t>(std::abs(height)),
                                 QByteArray((kWidth + 7) / 8, '\0'));
    Colors expected(rows.size() * kWidth);
    for (int y = 0; y < static_cast<int>(rows.size()); ++y) {
        int nColor = 0;
        for (int x = 0, nEnd = 0; x < kWidth; ++x) {
            if (x == nEnd) {
                nEnd += std::uniform_int_distribution<int>(1, y == 0 ? 5000 : y < 5 ? 64 : 700)(random);
                nColor = x == 0 ? y % 2 : 1 - nColor;
            }
            char& bits = rows[static_cast<std::size_t>(y)].data()[x / 8];
            bits = static_cast<char>(bits | nColor << (7 - x % 8));
            const int nShown = height > 0 ? height - 1 - y : y;
            expected[static_cast<std::size_t>(nShown * kWidth + x)] =
                palette[static_cast<std::size_t>(nColor)];
        }
    }
    const QByteArray code = FaxCode(rows, kWidth);
    QVERIFY(code.startsWith(QByteArray("\0\1", 2)));
    CImage image;
    QCOMPARE(LoadBytes(image, MakeBmp({kWidth, height, 1, Huffman, palette, code.mid(firstMark ? 0 : 2),
                                       headerBytes})),
             0);
    QCOMPARE(image.GetChannel(), 3);
    QCOMPARE(FirstDifference(image, kWidth, expected), QByteArray());
}

void tst_BmpFiles::theReasonTellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* pTag, const QByteArray& content, const char* pReason) {
        QTest::newRow(pTag) << content << QString::fromLatin1(pReason);
    };
    const QByteArray four(4, '\1');
    const char* pHeaders = "The BMP file ends in its headers, or they are of an unknown kind.";
    const char* pTooShort = "The BMP file is too short for the size that it claims.";
    const char* pSize = "The picture of the BMP file is empty or larger than the limit.";
    const QByteArray plain = MakeBmp({1, 1, 24, None, {}, four});
    row("nothing but the first bytes", "BM", pHeaders);
    row("a header that is cut", plain.left(53), pHeaders);
    row("masks that are cut", MakeBmp({1, 1, 16, BitFields, {}, QByteArray("\1\1", 2)}), pHeaders);
    row("pixels that are cut", plain.left(56), pTooShort);
    row("pixels behind the end", QByteArray(plain).replace(10, 4, Little(1000, 4)), pTooShort);
    row("no columns", MakeBmp({0, 1, 24, None, {}, four}), pSize);
    row("a negative width", MakeBmp({-1, 1, 24, None, {}, four}), pSize);
    row("a height without a positive one", MakeBmp({1, INT_MIN, 24, None, {}, four}), pSize);
    row("30 bits", MakeBmp({1, 1, 30, None, {}, four}),
        "The BMP file is of an unsupported kind: compression 0 with 30 bits per pixel.");
    row("ink colours", MakeBmp({1, 1, 32, 11, {}, four}),
        "The BMP file is of an unsupported kind: compression 11 with 32 bits per pixel.");
    row("masks of OS/2", MakeBmp({1, 1, 16, BitFields, {}, four, kOs2Bytes}),
        "The BMP file is of an unsupported kind: compression 3 with 16 bits per pixel.");
    row("run lengths of other bits", MakeBmp({1, 1, 4, Rle8, kFourColors, four}),
        "The BMP file is of an unsupported kind: compression 1 with 4 bits per pixel.");
    row("a picture in it that begins behind the end",
        MakeBmp({1, 1, 0, 5, {}, four}).replace(10, 4, Little(1000, 4)),
        "The BMP file ends before its pixels.");
    row("Huffman code without marks", MakeBmp({4, 4, 1, Huffman, {}, QByteArray(20, '\x55'), kOs2Bytes}),
        "The BMP file is in Huffman code that is cut short or lacks the marks between its rows.");
    row("run lengths of a huge claim", MakeBmp({16000, 16000, 8, Rle8, kFourColors, four}), pTooShort);
}

void tst_BmpFiles::theReasonTellsWhatIsWrong()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    QCOMPARE(QString::fromStdString(WhyNotLoaded(content)), reason);
}

VANTOR_CORE_TEST_MAIN(tst_BmpFiles)
#include "tst_BmpFiles.moc"
