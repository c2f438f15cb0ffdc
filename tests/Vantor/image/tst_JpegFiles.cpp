// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// JPEG files that are cut short, claim too much, or are of rare kinds.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <cstring>
#include <ctime>

using namespace ImageFiles;

namespace
{
const char* const kOneScan = "jpeg/peacock.default.jpeg";
const char* const kManyScans = "jpeg/peacock.progressive.jpeg";

QByteArray ContentOf(const char* pName)
{
    QFile file(TestDataPath(QString::fromLatin1(pName)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int LoadBytes(CImage& image, const QByteArray& content)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.jpg"));
    WriteFile(path, content);
    return LoadFile(image, path);
}

/// The place of the frame's marker.
int FrameOf(const QByteArray& content)
{
    return std::max(content.indexOf("\xff\xc0"), content.indexOf("\xff\xc2"));
}

/// The place behind the head of the first scan.
int FirstScanOf(const QByteArray& content)
{
    const int nMarker = content.indexOf("\xff\xda");
    return nMarker + 2 + static_cast<unsigned char>(content[nMarker + 3]);
}

QByteArray WithClaim(QByteArray content, int nWidth, int nHeight)
{
    const char claim[] = {static_cast<char>(nHeight >> 8), static_cast<char>(nHeight),
                          static_cast<char>(nWidth >> 8), static_cast<char>(nWidth)};
    return content.replace(FrameOf(content) + 5, 4, claim, 4);
}

/// Seconds of processor time that a call takes.
template <class TCall> double SecondsOf(TCall call)
{
    const clock_t nBefore = std::clock();
    call();
    return static_cast<double>(std::clock() - nBefore) / CLOCKS_PER_SEC;
}

/// The row from which on the note says that the picture is missing, 0 without such a note.
int FirstMissingRow(const CImage& image)
{
    const QString note =
        image.GetNotes().empty() ? QString() : QString::fromStdString(image.GetNotes().front());
    const QRegularExpression form(
        QStringLiteral("^The file is incomplete: the picture is missing from row ([0-9]+) on\\.$"));
    return form.match(note).captured(1).toInt();
}
} // namespace

class tst_JpegFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void howeverShortAFileIsItShowsWhatIsThere();
    void aFileOfManyScansShowsThoseThatAreThere();
    void aFileWithoutItsEndMarkerIsWhole();
    void aShortFileOfAHugeClaimTakesNoTime_data();
    void aShortFileOfAHugeClaimTakesNoTime();
    void aClaimBeyondTheDecodeLimitIsRefused_data();
    void aClaimBeyondTheDecodeLimitIsRefused();
    void manyScansOfAHugeClaimAreNotAllWalked();
    void theReasonNamesAKindThatTheLibraryLacks_data();
    void theReasonNamesAKindThatTheLibraryLacks();
    void exifDataBehindOtherDataOfItsKindAreFound();
    void aWarningBecomesANote();
};

void tst_JpegFiles::howeverShortAFileIsItShowsWhatIsThere()
{
    constexpr int kStep = 8; // rows of a block
    const QByteArray content = ContentOf(kOneScan);
    CImage whole;
    QCOMPARE(LoadBytes(whole, content), 0);
    QVERIFY(whole.GetNotes().empty());
    const auto nBytes = static_cast<std::size_t>(whole.GetWidth()) * 3;
    int nLastRow = 0;
    for (int n = FirstScanOf(content); n < content.size() - 60; n += 7) {
        CImage image;
        QCOMPARE(LoadBytes(image, content.left(n)), 0);
        const int nRow = FirstMissingRow(image);
        QVERIFY2(nRow >= std::max(1, nLastRow), QByteArray::number(n).constData());
        nLastRow = nRow;
        for (int y = 0; y < nRow - 1 - kStep; ++y)
            QVERIFY(std::memcmp(image.GetRows()[y], whole.GetRows()[y], nBytes) == 0);
        for (int y = nRow - 1 + 3 * kStep; y < whole.GetHeight(); ++y)
            QCOMPARE(PixelOf(image, 50, y), std::vector<int>({128, 128, 128}));
    }
    QVERIFY(nLastRow > whole.GetHeight() / 2);
}

void tst_JpegFiles::aFileOfManyScansShowsThoseThatAreThere()
{
    const QByteArray content = ContentOf(kManyScans);
    CImage whole;
    QCOMPARE(LoadBytes(whole, content), 0);
    QVERIFY(whole.GetNotes().empty());
    for (int n = FirstScanOf(content); n < content.size() - 60; n += 7) {
        CImage image;
        QVERIFY2(LoadBytes(image, content.left(n)) == 0, QByteArray::number(n).constData());
        QCOMPARE(image.GetNotes().size(), std::size_t(1));
        QVERIFY(image.GetNotes()[0].rfind("The file is incomplete: ", 0) == 0);
    }
}

void tst_JpegFiles::aFileWithoutItsEndMarkerIsWhole()
{
    QByteArray content = ContentOf(kOneScan);
    CImage whole;
    QCOMPARE(LoadBytes(whole, content), 0);
    content.chop(2);
    CImage image;
    QCOMPARE(LoadBytes(image, content), 0);
    QVERIFY(SamePixels(image, whole));
}

void tst_JpegFiles::aShortFileOfAHugeClaimTakesNoTime_data()
{
    QTest::addColumn<QByteArray>("content");
    for (const char* pName : {kOneScan, kManyScans, "jpeg/peacock.grayscale.jpeg"}) {
        const QByteArray content = ContentOf(pName);
        QTest::newRow(pName) << content.left(FirstScanOf(content) + 40);
    }
}

void tst_JpegFiles::aShortFileOfAHugeClaimTakesNoTime()
{
    QFETCH(QByteArray, content);
    CImage image;
    const double dSeconds = SecondsOf([&] { QCOMPARE(LoadBytes(image, WithClaim(content, 8000, 4000)), 0); });
    QCOMPARE(image.GetWidth(), 8000);
    QCOMPARE(image.GetHeight(), 4000);
    QVERIFY(FirstMissingRow(image) == 1 || FirstMissingRow(image) == 9 || FirstMissingRow(image) == 17);
    for (int y = 100; y < 4000; y += 13)
        QVERIFY(std::memcmp(image.GetRows()[y], image.GetRows()[3999], 8000) == 0);
    QVERIFY2(dSeconds < 0.5, QByteArray::number(dSeconds).constData());
}

void tst_JpegFiles::aClaimBeyondTheDecodeLimitIsRefused_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("loads");
    QTest::newRow("within") << 1000 << true;
    QTest::newRow("beyond") << 1100 << false;
}

void tst_JpegFiles::aClaimBeyondTheDecodeLimitIsRefused()
{
    QFETCH(int, width);
    QFETCH(bool, loads);
    const std::size_t nBefore = CImage::GetDecodeLimit();
    CImage::SetDecodeLimit(3000 * 1000);
    for (const char* pName : {kOneScan, kManyScans}) {
        const QByteArray content = ContentOf(pName);
        CImage image;
        const int nResult = LoadBytes(image, WithClaim(content.left(FirstScanOf(content)), width, 1000));
        if ((nResult == 0) != loads) {
            CImage::SetDecodeLimit(nBefore);
            QFAIL(pName);
        }
    }
    CImage::SetDecodeLimit(nBefore);
}

void tst_JpegFiles::manyScansOfAHugeClaimAreNotAllWalked()
{
    const QByteArray scan("\xff\xda\0\x08\x01\x01\0\x01\x05\0\x55", 11);
    QByteArray content = ContentOf(kManyScans);
    content = WithClaim(content.left(FirstScanOf(content) + 40), 8000, 4000);
    CImage image;
    const double dOne = SecondsOf([&] { QCOMPARE(LoadBytes(image, content), 0); });
    const double dMany = SecondsOf([&] { QCOMPARE(LoadBytes(image, content + scan.repeated(90)), 0); });
    QVERIFY2(dMany < 10 * dOne + 0.1, QByteArray::number(dMany / dOne).constData());
    QCOMPARE(image.GetNotes().size(), std::size_t(1));
}

void tst_JpegFiles::theReasonNamesAKindThatTheLibraryLacks_data()
{
    QTest::addColumn<int>("offset"); // from the frame's marker on
    QTest::addColumn<char>("byte");
    QTest::newRow("lossless") << 1 << '\xc3';
    QTest::newRow("12 bits") << 4 << '\x0c';
}

void tst_JpegFiles::theReasonNamesAKindThatTheLibraryLacks()
{
    QFETCH(int, offset);
    QFETCH(char, byte);
    QByteArray content = ContentOf(kOneScan);
    content[FrameOf(content) + offset] = byte;
    CImage image;
    QVERIFY(LoadBytes(image, content) != 0);
    QVERIFY2(image.GetFailureReason().find("lossless, hierarchical or of 12 bits") != std::string::npos,
             image.GetFailureReason().c_str());
}

void tst_JpegFiles::exifDataBehindOtherDataOfItsKindAreFound()
{
    const QByteArray other("\xff\xe1\0\x0ahttp://", 11);
    const QByteArray exif("\xff\xe1\0\x22"
                          "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0",
                          36);
    CImage image;
    QByteArray content = ContentOf(kOneScan);
    QCOMPARE(LoadBytes(image, content.insert(2, QByteArray(other).append('z') + exif)), 0);
    QCOMPARE(image.GetWidth(), 75);
    QCOMPARE(image.GetHeight(), 100);
}

void tst_JpegFiles::aWarningBecomesANote()
{
    QByteArray content = ContentOf(kOneScan);
    CImage image;
    QCOMPARE(LoadBytes(image, content.insert(content.size() / 2, "\xff\xd0")), 0);
    QCOMPARE(image.GetNotes().size(), std::size_t(1));
}

VANTOR_CORE_TEST_MAIN(tst_JpegFiles)
#include "tst_JpegFiles.moc"
