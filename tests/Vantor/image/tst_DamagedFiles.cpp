// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Files that are cut off, changed, or not what they say.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtEndian>
#include <algorithm>

using namespace ImageFiles;

namespace
{
constexpr int kAtOnceMilliseconds = 1000;

/// The largest address space that this process has had.
long PeakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray content = status.readAll();
    const int nStart = content.indexOf("VmPeak:") + 7;
    const int nEnd = content.indexOf("kB", nStart);
    return content.mid(nStart, nEnd - nStart).trimmed().toLong() / 1024;
}
} // namespace

class tst_DamagedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyBeginningOfAFileLoadsWholeOrLeavesTheImage_data();
    void everyBeginningOfAFileLoadsWholeOrLeavesTheImage();
    void aChangedByteNeverCostsMoreThanTheLimit_data();
    void aChangedByteNeverCostsMoreThanTheLimit();
    void whatStandsBeforeThePictureIsSkipped_data();
    void whatStandsBeforeThePictureIsSkipped();
    void aFileWithoutAPictureIsRefused_data();
    void aFileWithoutAPictureIsRefused();
    void aHugeClaimIsRefusedBeforeMemoryIsTaken_data();
    void aHugeClaimIsRefusedBeforeMemoryIsTaken();
    void truncatedFilesLoadPartlyOrNotAtAll_data();
    void truncatedFilesLoadPartlyOrNotAtAll();
};

void tst_DamagedFiles::everyBeginningOfAFileLoadsWholeOrLeavesTheImage_data()
{
    QTest::addColumn<QByteArray>("content");
    const QTemporaryDir folder;
    for (const char* pSuffix : {"bmp", "png", "jpg", "gif", "tif"}) {
        const QString path = folder.filePath(QStringLiteral("a.") + QString::fromLatin1(pSuffix));
        QCOMPARE(MakeTestImage(9, 7, 3)->Save(path.toStdWString()), 0);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QTest::newRow(pSuffix) << file.readAll();
    }
    for (const char* pName : {"bmp/g_pal4rle.bmp", "gif/hippopotamus.interlaced.gif", "png/basn2c08.png",
                              "jpeg/peacock.progressive.jpeg", "bmp/q_rgb24png.bmp"}) {
        QFile file(TestDataPath(QString::fromLatin1(pName)));
        QVERIFY2(file.open(QIODevice::ReadOnly), pName);
        QTest::newRow(pName) << file.readAll();
    }
}

void tst_DamagedFiles::everyBeginningOfAFileLoadsWholeOrLeavesTheImage()
{
    QFETCH(QByteArray, content);
    constexpr int kHead = 1200; // from here on in steps
    constexpr int kStep = 997;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    CImage whole;
    WriteFile(path, content);
    QCOMPARE(LoadFile(whole, path), 0);
    const CQuietDecoders quiet;
    const auto model = MakeTestImage(5, 4, 3);
    for (int n = 0; n < content.size(); n += n < kHead ? 1 : kStep) {
        WriteFile(path, content.left(n));
        const auto image = MakeTestImage(5, 4, 3);
        const bool bLoaded = LoadFile(*image, path) == 0;
        QVERIFY2(n >= 30 || !bLoaded, QByteArray::number(n).constData()); // no head is that short
        if (bLoaded) {
            QCOMPARE(image->GetWidth(), whole.GetWidth());
            QCOMPARE(image->GetHeight(), whole.GetHeight());
            // What a cut GIF lacks is transparent.
            QVERIFY(image->GetChannel() == whole.GetChannel() ||
                    (content.startsWith("GIF") && image->GetChannel() == 4));
        } else {
            QVERIFY2(SamePixels(*image, *model), QByteArray::number(n).constData());
        }
    }
}

void tst_DamagedFiles::aChangedByteNeverCostsMoreThanTheLimit_data()
{
    everyBeginningOfAFileLoadsWholeOrLeavesTheImage_data();
}

void tst_DamagedFiles::aChangedByteNeverCostsMoreThanTheLimit()
{
    QFETCH(QByteArray, content);
    constexpr std::size_t kLimit = std::size_t(4) << 20;
    constexpr int kHead = 300;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    const CQuietDecoders quiet;
    const std::size_t nBefore = CImage::GetDecodeLimit();
    CImage::SetDecodeLimit(kLimit);
    const auto model = MakeTestImage(5, 4, 3);
    QByteArray fault;
    for (int i = 0; i < std::min(content.size(), kHead) && fault.isEmpty(); ++i) {
        for (const char byte : {'\0', '\x01', '\x7f', '\xff'}) {
            QByteArray changed = content;
            changed[i] = byte;
            WriteFile(path, changed);
            const auto image = MakeTestImage(5, 4, 3);
            if (LoadFile(*image, path) != 0 ? !SamePixels(*image, *model)
                                            : static_cast<std::size_t>(image->GetStride()) *
                                                      static_cast<std::size_t>(image->GetHeight()) >
                                                  kLimit)
                fault = "byte " + QByteArray::number(i) + " as " + QByteArray::number(int(byte));
        }
    }
    CImage::SetDecodeLimit(nBefore);
    QVERIFY2(fault.isEmpty(), fault.constData());
}

void tst_DamagedFiles::whatStandsBeforeThePictureIsSkipped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<int>("place");
    const QString jpeg = QStringLiteral("jpeg/peacock.default.jpeg");
    QTest::newRow("fill bytes of a JPEG") << jpeg << QByteArray("\xff\xff\xff", 3) << 2;
    QTest::newRow("a comment of a JPEG") << jpeg << QByteArray("\xff\xfe\0\x04hi", 6) << 2;
    QTest::newRow("a comment of a PNG")
        << QStringLiteral("png/basn2c08.png") << QByteArray("\0\0\0\x04tEXtk\0hi\x1c\x5d\xe8\x2f", 16) << 33;
    const QString gif = QStringLiteral("gif/hippopotamus.regular.gif");
    QFile file(TestDataPath(gif));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray screen = file.read(13);
    const int nBehindColors = 13 + ((screen[10] & 0x80) != 0 ? 3 << ((screen[10] & 7) + 1) : 0);
    QTest::newRow("a comment of a GIF") << gif << QByteArray("!\xfe\x02hi\x01!\0", 8) << nBehindColors;
}

void tst_DamagedFiles::whatStandsBeforeThePictureIsSkipped()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, more);
    QFETCH(int, place);
    QFile file(TestDataPath(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray content = file.readAll();
    if (name.endsWith(QStringLiteral("png")))
        qToBigEndian(Crc32(more.mid(4, 8)), more.data() + 12);
    content.insert(place, more);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    WriteFile(path, content);
    CImage plain;
    CImage image;
    QCOMPARE(LoadFile(plain, file.fileName()), 0);
    QCOMPARE(LoadFile(image, path), 0);
    QVERIFY(SamePixels(image, plain));
}

void tst_DamagedFiles::aFileWithoutAPictureIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray screen("GIF89a\x04\0\x04\0\0\0\0", 13);
    QTest::newRow("a GIF that ends at once") << screen + ';';
    QTest::newRow("a GIF with a comment only") << screen + QByteArray("!\xfe\x02hi\0;", 7);
    QTest::newRow("a GIF whose comment does not end") << screen + QByteArray("!\xfe\x20hi", 5);
    QTest::newRow("a GIF of other bytes") << screen + QByteArray(50, 'x');
    QTest::newRow("a JPEG that ends at once") << QByteArray("\xff\xd8\xff\xd9", 4);
    QTest::newRow("a JPEG of markers without a body") << QByteArray("\xff\xd8\xff\x01\xff\xd0\xff\xd9", 8);
    QTest::newRow("a JPEG whose scan comes before its frame")
        << QByteArray("\xff\xd8\xff\xda\0\x08\x01\x01\0\0\x3f\0", 12);
    QTest::newRow("a JPEG with a frame of two bytes") << QByteArray("\xff\xd8\xff\xc0\0\x04\x08\0", 8);
    QTest::newRow("a JPEG of no components") << QByteArray("\xff\xd8\xff\xc0\0\x08\x08\0\x04\0\x04\0", 12);
    QTest::newRow("a JPEG of five components")
        << QByteArray("\xff\xd8\xff\xc0\0\x17\x08\0\x04\0\x04\x05", 12) + QByteArray(15, '\x11');
    QTest::newRow("a JPEG whose length is one") << QByteArray("\xff\xd8\xff\xe0\0\x01zzzzzz", 12);
    QFile file(TestDataPath(QStringLiteral("jpeg/peacock.progressive.jpeg")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray scans = file.readAll();
    scans.chop(2);
    scans += QByteArray("\xff\xda\0\x08\x01\x01\0\0\x3f\0\x55", 11).repeated(10000);
    QTest::newRow("a JPEG of ten thousand scans") << scans + QByteArray("\xff\xd9", 2);
    QTest::newRow("a PNG whose first piece is another")
        << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\x04tEXtk\0hi\0\0\0\0", 24);
    QTest::newRow("a BMP of its first bytes") << QByteArray("BM\x10\0\0\0", 6);
    QTest::newRow("a TIFF of its first bytes") << QByteArray("II*\0\x08\0\0\0", 8);
}

void tst_DamagedFiles::aFileWithoutAPictureIsRefused()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    WriteFile(path, content);
    const CQuietDecoders quiet;
    const auto image = MakeTestImage(5, 4, 3);
    QElapsedTimer timer;
    timer.start();
    QVERIFY(LoadFile(*image, path) != 0);
    QVERIFY(timer.elapsed() < kAtOnceMilliseconds);
    QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
}

void tst_DamagedFiles::aHugeClaimIsRefusedBeforeMemoryIsTaken_data()
{
    // 16000 x 16000 pixels, well within the decode limit.
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("claim");
    const QByteArray little("\x80\x3e\0\0\x80\x3e\0\0", 8);
    QTest::newRow("bmp/g_rgb24.bmp") << 18 << little;
    QTest::newRow("bmp/g_pal8.bmp") << 18 << little;
    QTest::newRow("bmp/g_pal8rle.bmp") << 18 << little;
    QTest::newRow("png/basn2c08.png") << 16 << QByteArray("\0\0\x3e\x80\0\0\x3e\x80", 8);
    QTest::newRow("gif/hippopotamus.regular.gif") << 6 << QByteArray("\x80\x3e\x80\x3e", 4);
}

void tst_DamagedFiles::aHugeClaimIsRefusedBeforeMemoryIsTaken()
{
    constexpr int kMostMegabytes = 64;
    constexpr int kPngHeaderEnd = 29;
    QFETCH(int, offset);
    QFETCH(QByteArray, claim);
    QFile from(TestDataPath(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(from.open(QIODevice::ReadOnly));
    QByteArray content = from.readAll();
    content.replace(offset, claim.size(), claim);
    if (from.fileName().endsWith(QStringLiteral("png"))) { // or the header would be refused for its checksum
        QByteArray checksum(4, '\0');
        qToBigEndian(Crc32(content.mid(12, kPngHeaderEnd - 12)), checksum.data());
        content.replace(kPngHeaderEnd, checksum.size(), checksum);
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("claim"));
    WriteFile(path, content);
    CImage warm; // loads what the codec needs once
    QCOMPARE(LoadFile(warm, from.fileName()), 0);
    const long nBefore = PeakMegabytes();
    CImage image;
    QVERIFY(LoadFile(image, path) != 0);
    QVERIFY2(PeakMegabytes() - nBefore < kMostMegabytes,
             QByteArray::number(int(PeakMegabytes() - nBefore)).constData());
}

void tst_DamagedFiles::truncatedFilesLoadPartlyOrNotAtAll_data()
{
    QTest::addColumn<bool>("loads");
    QTest::newRow("hippopotamus.interlaced.truncated.gif") << true;
    QTest::newRow("peacock.default.truncated.jpeg") << true;
    QTest::newRow("peacock.progressive.truncated.jpeg") << true;
    QTest::newRow("hippopotamus.regular.truncated.png") << false;
    QTest::newRow("hippopotamus.interlaced.truncated.png") << false;
    QTest::newRow("bmp_shortfile.bmp") << false;
}

void tst_DamagedFiles::truncatedFilesLoadPartlyOrNotAtAll()
{
    QFETCH(bool, loads);
    const QByteArray name = QByteArray("broken/") + QTest::currentDataTag();
    CImage image;
    QCOMPARE(LoadData(image, name.constData()) == 0, loads);
    if (name.endsWith("jpeg"))
        QVERIFY(image.GetNotes().at(0).rfind("The file is incomplete: ", 0) == 0);
}

VANTOR_CORE_TEST_MAIN(tst_DamagedFiles)
#include "tst_DamagedFiles.moc"
