// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What is said of TIFF files: how many pages a loaded one has, and what the codec lacks for a refused one.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/Vantor/image/TiffWriter.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>
#include <QtEndian>
#include <string>

using namespace ImageFiles;
using namespace TiffWriter;

namespace
{
using Notes = std::vector<std::string>;

/// Pages of one pixel, of these subfile types.
void WritePages(const QString& path, const char* pMode, const std::vector<int>& kinds)
{
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), pMode);
    QVERIFY(pTiff);
    for (const int nKind : kinds) {
        SetTags(pTiff, STiff());
        if (nKind >= 0)
            TIFFSetField(pTiff, TIFFTAG_SUBFILETYPE, nKind);
        unsigned char nGrey = 7;
        TIFFWriteEncodedStrip(pTiff, 0, &nGrey, 1);
        QCOMPARE(TIFFWriteDirectory(pTiff), 1);
    }
    TIFFClose(pTiff);
}

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

quint32 NumberAt(const QByteArray& tiff, quint32 nAt)
{
    return qFromLittleEndian<quint32>(tiff.constData() + nAt);
}

void SetNumberAt(QByteArray& tiff, quint32 nAt, quint32 nValue)
{
    qToLittleEndian<quint32>(nValue, tiff.data() + nAt);
}

/// Where a directory says which is the next one.
quint32 LinkOf(const QByteArray& tiff, quint32 nDirectory)
{
    return nDirectory + 2 + 12U * qFromLittleEndian<quint16>(tiff.constData() + nDirectory);
}
} // namespace

class tst_TiffReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstOfSeveralPagesIsSaidToBeIt_data()
    {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<QVector<int>>("kinds");
        QTest::addColumn<QString>("note");
        const QString strThree = QStringLiteral("It is the first of 3 pages.");
        QTest::newRow("one page") << QByteArray("w") << QVector<int>{-1} << QString();
        QTest::newRow("three pages") << QByteArray("w") << QVector<int>{-1, -1, -1} << strThree;
        QTest::newRow("the other order of bytes") << QByteArray("wb") << QVector<int>{-1, -1, -1} << strThree;
        QTest::newRow("large offsets") << QByteArray("w8") << QVector<int>{-1, -1, -1} << strThree;
        QTest::newRow("large offsets, the other order")
            << QByteArray("wb8") << QVector<int>{0, FILETYPE_REDUCEDIMAGE, 0, FILETYPE_PAGE} << strThree;
        QTest::newRow("said to be pages")
            << QByteArray("w") << QVector<int>{FILETYPE_PAGE, FILETYPE_PAGE, FILETYPE_PAGE} << strThree;
        QTest::newRow("reduced copies and masks are none")
            << QByteArray("w") << QVector<int>{0, FILETYPE_REDUCEDIMAGE, FILETYPE_MASK} << QString();
        QTest::newRow("a reduced copy is shown") << QByteArray("w") << QVector<int>{FILETYPE_REDUCEDIMAGE, 0}
                                                 << QStringLiteral("It is the first of 2 pages.");
    }

    void theFirstOfSeveralPagesIsSaidToBeIt()
    {
        QFETCH(QByteArray, mode);
        QFETCH(QVector<int>, kinds);
        QFETCH(QString, note);
        WritePages(m_path, mode.constData(), {kinds.begin(), kinds.end()});
        CImage image;
        QCOMPARE(LoadFile(image, m_path), 0);
        QCOMPARE(image.GetNotes(), note.isEmpty() ? Notes() : Notes{note.toStdString()});
    }

    void aLoopOfPagesHasAnEnd()
    {
        WritePages(m_path, "w", {-1, -1, -1});
        QByteArray tiff = Content(m_path);
        const quint32 nFirst = NumberAt(tiff, 4);
        const quint32 nSecond = NumberAt(tiff, LinkOf(tiff, nFirst));
        const quint32 nThird = NumberAt(tiff, LinkOf(tiff, nSecond));
        for (const quint32 nBack : {nFirst, nSecond, nThird}) {
            SetNumberAt(tiff, LinkOf(tiff, nThird), nBack);
            WriteFile(m_path, tiff);
            CImage image;
            QCOMPARE(LoadFile(image, m_path), 0);
            QCOMPARE(image.GetNotes(), Notes{"It is the first of 3 pages."});
        }
    }

    void aPageThatIsNotThereIsNotCounted()
    {
        WritePages(m_path, "w", {-1, -1, -1});
        QByteArray tiff = Content(m_path);
        const quint32 nSecond = NumberAt(tiff, LinkOf(tiff, NumberAt(tiff, 4)));
        const auto nEnd = static_cast<quint32>(tiff.size());
        for (const quint32 nBeyond : {nEnd - 1, nEnd, 0xffffffffU}) {
            SetNumberAt(tiff, LinkOf(tiff, nSecond), nBeyond);
            WriteFile(m_path, tiff);
            CImage image;
            QCOMPARE(LoadFile(image, m_path), 0);
            QCOMPARE(image.GetNotes(), Notes{"It is the first of 2 pages."});
        }
    }

    void morePagesThanAnybodyNeedsAreNotCounted()
    {
        WritePages(m_path, "w", {-1});
        QByteArray tiff = Content(m_path);
        quint32 nLink = LinkOf(tiff, NumberAt(tiff, 4));
        for (int i = 0; i < 20000; ++i) { // directories of one entry
            const auto nNext = static_cast<quint32>(tiff.size());
            SetNumberAt(tiff, nLink, nNext);
            tiff += QByteArray("\x01\x00\x00\x01\x03\x00\x01\x00\x00\x00\x01\x00\x00\x00\0\0\0\0", 18);
            nLink = nNext + 14;
        }
        WriteFile(m_path, tiff);
        CImage image;
        QCOMPARE(LoadFile(image, m_path), 0);
        QCOMPARE(image.GetNotes(), Notes{"It is the first of more than 10000 pages."});
    }

    void whatTheCodecLacksIsNamed_data()
    {
        QTest::addColumn<int>("compression");
        QTest::addColumn<int>("bits");
        QTest::addColumn<QByteArray>("strip");
        QTest::addColumn<QByteArray>("name");
        const QByteArray lossless("\xff\xd8\xff\xe0\0\4ab\xff\xc3\0\x0b\x08\0\1\0\1\1\0\x11\0\xff\xd9", 23);
        QTest::newRow("lossless JPEG") << COMPRESSION_JPEG << 8 << lossless << QByteArray("lossless JPEG");
        QTest::newRow("12-bit JPEG") << COMPRESSION_JPEG << 12 << QByteArray("\xff\xd8")
                                     << QByteArray("JPEG of 12 bits");
        QTest::newRow("ThunderScan") << COMPRESSION_THUNDERSCAN << 4 << QByteArray("\xff\xff")
                                     << QByteArray("ThunderScan");
        QTest::newRow("an unknown method") << 50013 << 8 << QByteArray("ab") << QByteArray("method 50013");
        QTest::newRow("a JPEG without a frame")
            << COMPRESSION_JPEG << 8 << QByteArray("\xff\xd8\xff\xd9") << QByteArray();
        QTest::newRow("no JPEG at all") << COMPRESSION_JPEG << 8 << QByteArray("ab") << QByteArray();
        QTest::newRow("damaged") << COMPRESSION_LZW << 8 << QByteArray("\xff\xff\xff") << QByteArray();
    }

    void whatTheCodecLacksIsNamed()
    {
        QFETCH(int, compression);
        QFETCH(int, bits);
        QFETCH(QByteArray, strip);
        QFETCH(QByteArray, name);
        STiff what;
        what.nWidth = 8;
        what.nBits = bits;
        what.nCompression = compression;
        TIFF* pTiff = TIFFOpen(m_path.toUtf8().constData(), "w");
        QVERIFY(pTiff);
        SetTags(pTiff, what);
        TIFFWriteRawStrip(pTiff, 0, strip.data(), strip.size());
        TIFFClose(pTiff);
        CImage image;
        QVERIFY(LoadFile(image, m_path) != 0);
        const QByteArray expected =
            name.isEmpty() ? QByteArray("The TIFF file is damaged, too large or of an unsupported kind.")
                           : "The TIFF file is compressed by " + name + ", which the library for TIFF lacks.";
        QCOMPARE(QByteArray::fromStdString(image.GetFailureReason()), expected);
    }

private:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("a.tif"));
};

VANTOR_CORE_TEST_MAIN(tst_TiffReport)
#include "tst_TiffReport.moc"
