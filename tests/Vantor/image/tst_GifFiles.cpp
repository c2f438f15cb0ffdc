// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// GIF files, made by a plain encoder that compresses nothing.
#include "tests/Vantor/image/GifMaker.h"
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <algorithm>
#include <string>

using namespace GifMaker;
using namespace ImageFiles;

namespace
{
/// How many indexes so many bytes of codes hold.
int IndexesIn(int nBytes)
{
    const int nCodes = nBytes * 8 / kCodeBits;
    return nCodes - (nCodes + 200) / 201;
}

int LoadBytes(CImage& image, const QByteArray& content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.gif"));
    WriteFile(path, content);
    return LoadFile(image, path);
}

std::string NotesOf(const CImage& image)
{
    std::string strNotes;
    for (const std::string& strNote : image.GetNotes())
        strNotes += strNote;
    return strNotes;
}

QByteArray TestIndexes(int nCount)
{
    QByteArray indexes;
    for (int i = 0; i < nCount; ++i)
        indexes.append(static_cast<char>((i * 7 + i / 5) % 4));
    return indexes;
}

/// The rows of a picture in the order of an interlaced file.
std::vector<int> InterlacedRows(int nHeight)
{
    std::vector<int> rows;
    for (int y = 0; y < nHeight; y += 8)
        rows.push_back(y);
    for (int y = 4; y < nHeight; y += 8)
        rows.push_back(y);
    for (int y = 2; y < nHeight; y += 4)
        rows.push_back(y);
    for (int y = 1; y < nHeight; y += 2)
        rows.push_back(y);
    return rows;
}

Color Opaque(const Color& color)
{
    Color opaque = color;
    opaque.push_back(255);
    return opaque;
}

const Color kNothing = {0, 0, 0, 0};
} // namespace

class tst_GifFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFullFrameWithoutTransparencyHasThreeChannels();
    void whatLiesOutsideTheFirstFrameIsTransparent();
    void aFrameIsCutAtTheScreen();
    void theTransparentIndexIsTransparent();
    void interlacedRowsFindTheirPlaces();
    void aFramesOwnColoursComeBeforeThoseOfTheFile();
    void indexesBeyondTheColoursAreBlack();
    void aScreenWithoutASizeHasThatOfItsFrame();
    void aFrameOfNoSizeShowsNothing();
    void aFileThatIsCutShowsEveryPixelThatIsThere_data();
    void aFileThatIsCutShowsEveryPixelThatIsThere();
    void severalFramesAreCounted();
    void countingIsBounded();
    void theReasonTellsWhatIsWrong_data();
    void theReasonTellsWhatIsWrong();
};

void tst_GifFiles::aFullFrameWithoutTransparencyHasThreeChannels()
{
    CImage image;
    QCOMPARE(LoadBytes(image, Screen(2, 2) + Frame({0, 0, 2, 2, QByteArray("\0\1\2\3", 4)}) + ';'), 0);
    QCOMPARE(image.GetWidth(), 2);
    QCOMPARE(image.GetHeight(), 2);
    QCOMPARE(image.GetChannel(), 3);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(PixelOf(image, i % 2, i / 2), kColors[static_cast<std::size_t>(i)]);
    QCOMPARE(NotesOf(image), std::string());
}

void tst_GifFiles::whatLiesOutsideTheFirstFrameIsTransparent()
{
    CImage image;
    QCOMPARE(LoadBytes(image, Screen(4, 3) + Frame({1, 1, 2, 1, QByteArray("\1\2", 2)}) + ';'), 0);
    QCOMPARE(image.GetWidth(), 4);
    QCOMPARE(image.GetHeight(), 3);
    QCOMPARE(image.GetChannel(), 4);
    for (int i = 0; i < 12; ++i) {
        const Color expected = i == 5 ? Opaque(kColors[1]) : i == 6 ? Opaque(kColors[2]) : kNothing;
        QCOMPARE(PixelOf(image, i % 4, i / 4), expected);
    }
}

void tst_GifFiles::aFrameIsCutAtTheScreen()
{
    const QByteArray indexes("\1\2\3\3\2\1", 6);
    CImage image;
    QCOMPARE(LoadBytes(image, Screen(2, 2) + Frame({1, 1, 3, 2, indexes}) + ';'), 0);
    QCOMPARE(image.GetWidth(), 2);
    QCOMPARE(image.GetHeight(), 2);
    QCOMPARE(PixelOf(image, 1, 1), Opaque(kColors[1]));
    QCOMPARE(PixelOf(image, 0, 1), kNothing);
    QCOMPARE(LoadBytes(image, Screen(2, 2) + Frame({5, 5, 3, 2, indexes}) + ';'), 0);
    QCOMPARE(PixelOf(image, 1, 1), kNothing);
    QCOMPARE(LoadBytes(image, Screen(2, 1) + Frame({0, 0, 3, 2, indexes}) + ';'), 0);
    QCOMPARE(image.GetChannel(), 3);
    QCOMPARE(PixelOf(image, 1, 0), kColors[2]);
}

void tst_GifFiles::theTransparentIndexIsTransparent()
{
    CImage image;
    const QByteArray frame = Frame({0, 0, 3, 1, QByteArray("\1\2\3", 3)});
    QCOMPARE(LoadBytes(image, Screen(3, 1) + Transparent(2) + frame + ';'), 0);
    QCOMPARE(image.GetChannel(), 4);
    QCOMPARE(PixelOf(image, 0, 0), Opaque(kColors[1]));
    QCOMPARE(PixelOf(image, 1, 0), kNothing);
    QCOMPARE(PixelOf(image, 2, 0), Opaque(kColors[3]));
    // What is said of the second frame does not hold for the first one.
    QCOMPARE(LoadBytes(image, Screen(3, 1) + frame + Transparent(2) + frame + ';'), 0);
    QCOMPARE(image.GetChannel(), 3);
}

void tst_GifFiles::interlacedRowsFindTheirPlaces()
{
    for (const int nHeight : {1, 2, 3, 5, 8, 9, 21}) {
        const QByteArray indexes = TestIndexes(3 * nHeight);
        QByteArray stored;
        for (const int y : InterlacedRows(nHeight))
            stored += indexes.mid(3 * y, 3);
        CImage plain;
        CImage interlaced;
        QCOMPARE(LoadBytes(plain, Screen(3, nHeight) + Frame({0, 0, 3, nHeight, indexes}) + ';'), 0);
        QCOMPARE(LoadBytes(interlaced, Screen(3, nHeight) + Frame({0, 0, 3, nHeight, stored, true}) + ';'),
                 0);
        QVERIFY(SamePixels(plain, interlaced));
    }
}

void tst_GifFiles::aFramesOwnColoursComeBeforeThoseOfTheFile()
{
    CImage image;
    const SFrame frame = {0, 0, 2, 1, QByteArray("\0\1", 2), false, kOtherColors};
    for (const auto& colors : {kColors, std::vector<Color>()}) {
        QCOMPARE(LoadBytes(image, Screen(2, 1, colors) + Frame(frame) + ';'), 0);
        QCOMPARE(PixelOf(image, 0, 0), kOtherColors[0]);
        QCOMPARE(PixelOf(image, 1, 0), kOtherColors[1]);
    }
}

void tst_GifFiles::indexesBeyondTheColoursAreBlack()
{
    CImage image;
    const QByteArray frame = Frame({0, 0, 3, 1, QByteArray("\3\4\xff", 3)});
    QCOMPARE(LoadBytes(image, Screen(3, 1) + frame + ';'), 0);
    QCOMPARE(PixelOf(image, 0, 0), kColors[3]);
    QCOMPARE(PixelOf(image, 1, 0), Color({0, 0, 0}));
    QCOMPARE(PixelOf(image, 2, 0), Color({0, 0, 0}));
    QCOMPARE(LoadBytes(image, Screen(3, 1, {}) + frame + ';'), 0); // no colours at all
    QCOMPARE(image.GetChannel(), 3);
    QCOMPARE(PixelOf(image, 0, 0), Color({0, 0, 0}));
    QCOMPARE(LoadBytes(image, Screen(4, 1) + frame + ';'), 0); // black, not transparent
    QCOMPARE(PixelOf(image, 2, 0), Color({0, 0, 0, 255}));
}

void tst_GifFiles::aScreenWithoutASizeHasThatOfItsFrame()
{
    CImage image;
    QCOMPARE(LoadBytes(image, Screen(0, 0) + Frame({1, 2, 2, 1, QByteArray("\1\2", 2)}) + ';'), 0);
    QCOMPARE(image.GetWidth(), 3);
    QCOMPARE(image.GetHeight(), 3);
    QCOMPARE(PixelOf(image, 2, 2), Opaque(kColors[2]));
}

void tst_GifFiles::aFrameOfNoSizeShowsNothing()
{
    CImage image;
    const QByteArray second = Frame({0, 0, 2, 2, QByteArray("\0\1\2\3", 4)});
    QCOMPARE(LoadBytes(image, Screen(2, 2) + Frame({0, 0, 0, 2}) + second + ';'), 0);
    QCOMPARE(image.GetChannel(), 4);
    QCOMPARE(PixelOf(image, 1, 1), kNothing);
    QCOMPARE(NotesOf(image), std::string("It is the first of 2 frames."));
}

void tst_GifFiles::aFileThatIsCutShowsEveryPixelThatIsThere_data()
{
    QTest::addColumn<bool>("interlaced");
    QTest::newRow("progressive") << false;
    QTest::newRow("interlaced") << true;
}

void tst_GifFiles::aFileThatIsCutShowsEveryPixelThatIsThere()
{
    QFETCH(bool, interlaced);
    constexpr int kWidth = 17;
    constexpr int kHeight = 15;
    constexpr int kPixels = kWidth * kHeight;
    const QByteArray indexes = TestIndexes(kPixels);
    const QByteArray head = Screen(kWidth, kHeight);
    const QByteArray whole = head + Frame({0, 0, kWidth, kHeight, indexes, interlaced}) + ';';
    const int nFirstBlock = head.size() + 11;
    std::vector<int> rows = InterlacedRows(kHeight);
    if (!interlaced)
        std::sort(rows.begin(), rows.end());
    for (int nBytes = nFirstBlock; nBytes < whole.size(); ++nBytes) {
        const int nInBlocks = nBytes - nFirstBlock;
        const int nThere = std::min(kPixels, IndexesIn(nInBlocks - (nInBlocks + 255) / 256));
        CImage image;
        QCOMPARE(LoadBytes(image, whole.left(nBytes)) == 0, nThere > 0);
        if (nThere <= 0)
            continue;
        QCOMPARE(image.GetChannel(), nThere == kPixels ? 3 : 4);
        QCOMPARE(NotesOf(image), nThere == kPixels
                                     ? std::string()
                                     : "The file is incomplete: " + std::to_string(kPixels - nThere) +
                                           " pixels of the picture are missing.");
        for (int i = 0; i < kPixels; ++i) {
            const Color& color = kColors[static_cast<std::size_t>(indexes[i])];
            const Color expected = nThere == kPixels ? color : i < nThere ? Opaque(color) : kNothing;
            const Color found = PixelOf(image, i % kWidth, rows[static_cast<std::size_t>(i / kWidth)]);
            QVERIFY2(found == expected, qPrintable(QStringLiteral("%1 bytes, pixel %2").arg(nBytes).arg(i)));
        }
    }
}

void tst_GifFiles::severalFramesAreCounted()
{
    const QByteArray frame = Frame({0, 0, 20, 20, QByteArray(400, '\1'), false, kColors});
    const QByteArray comment("!\xfe\4,,,,\2,,\0", 11);
    CImage image;
    const auto notes = [&image](const QByteArray& content) {
        return LoadBytes(image, content) == 0 ? NotesOf(image) : "it does not load";
    };
    QCOMPARE(notes(Screen(20, 20) + comment + frame + comment + ';' + frame), std::string());
    QCOMPARE(notes(Screen(20, 20) + frame + comment + Transparent(1) + frame + frame),
             std::string("It is the first of 3 frames."));
    QCOMPARE(notes(Screen(20, 20) + frame + frame.left(10)), std::string("It is the first of 2 frames."));
    QCOMPARE(notes(Screen(20, 20) + frame + frame.left(9)), std::string());
    QCOMPARE(notes(Screen(20, 20) + frame + frame.left(30)), std::string("It is the first of 2 frames."));
}

void tst_GifFiles::countingIsBounded()
{
    const QByteArray frame = Frame({0, 0, 1, 1, QByteArray(1, '\1')});
    const QByteArray comment = QByteArray("!\xfe", 2) + QByteArray(3 << 20, '\1') + '\0';
    CImage image;
    QCOMPARE(LoadBytes(image, Screen(1, 1) + frame + frame + comment + frame + ';'), 0);
    QCOMPARE(NotesOf(image), std::string("It is the first of at least 2 frames."));
}

void tst_GifFiles::theReasonTellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* pTag, const QByteArray& content, const char* pReason) {
        QTest::newRow(pTag) << content << QString::fromLatin1(pReason);
    };
    const char* pNoPicture = "The GIF file holds no picture, or ends before the first one.";
    const QByteArray one(1, '\1');
    row("a screen that is cut", Screen(1, 1).left(12),
        "The GIF file is damaged, too large or of an unsupported kind.");
    row("no frame", Screen(1, 1) + ';', pNoPicture);
    row("a frame that is cut", Screen(1, 1) + Frame({}).left(9), pNoPicture);
    row("codes of nine bits", Screen(1, 1) + Frame({0, 0, 1, 1, one}).replace(10, 1, "\x09"), pNoPicture);
    row("no pixels", Screen(1, 1) + Frame({0, 0, 1, 1, one}).left(11),
        "The GIF file ends before its first pixel.");
    row("no size", Screen(0, 0) + Frame({0, 0, 0, 0}),
        "The picture of the GIF file is empty or larger than the limit.");
    row("a huge screen", Screen(65535, 65535) + Frame({0, 0, 1, 1, one}),
        "The picture of the GIF file is empty or larger than the limit.");
    row("a large screen", Screen(5000, 5000) + Frame({0, 0, 1, 1, one}),
        "The GIF file is too short for the size that it claims.");
    row("a large frame", Screen(1, 1) + Frame({0, 0, 5000, 5000, one}),
        "The GIF file is too short for the size that it claims.");
}

void tst_GifFiles::theReasonTellsWhatIsWrong()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    CImage image;
    QVERIFY(LoadBytes(image, content) != 0);
    QCOMPARE(QString::fromStdString(image.GetFailureReason()), reason);
}

VANTOR_CORE_TEST_MAIN(tst_GifFiles)
#include "tst_GifFiles.moc"
