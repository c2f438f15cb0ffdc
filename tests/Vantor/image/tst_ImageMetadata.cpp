// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageFiles.h"
#include "TiffWriter.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/SImageMetadata.h>

#include <QTemporaryDir>
#include <QtEndian>

#include <cmath>
#include <functional>
#include <limits>

using namespace ImageFiles;
using Vantor::Algorithms::EResolutionUnit;
using Vantor::Algorithms::ERotationMode;
using Vantor::Algorithms::kMostImageTextBytes;
using Vantor::Algorithms::kMostImageTexts;
using Vantor::Algorithms::kMostProfileBytes;
using Vantor::Algorithms::SImageMetadata;

namespace
{
constexpr double kQuarter = 1.57079632679489661923;

/// The head of a profile and a body of its own.
std::vector<unsigned char> ProfileOf(const char* pColors, std::size_t nBytes = 200)
{
    std::vector<unsigned char> profile(nBytes);
    for (std::size_t i = 0; i < nBytes; ++i)
        profile[i] = static_cast<unsigned char>(i * 7);
    const auto put = [&profile](std::size_t nAt, const char* pText) { std::copy_n(pText, 4, &profile[nAt]); };
    for (std::size_t i = 0; i < 4; ++i)
        profile[i] = static_cast<unsigned char>(nBytes >> 8 * (3 - i));
    put(8, "\4\0\0\0");
    put(12, "mntr");
    put(16, pColors);
    put(20, "XYZ ");
    put(36, "acsp");
    const unsigned char white[] = {0, 0, 0xf6, 0xd6, 0, 1, 0, 0, 0, 0, 0xd3, 0x2d}; // D50
    std::copy(std::begin(white), std::end(white), &profile[68]);
    std::fill(&profile[64], &profile[68], 0);   // the intent
    std::fill(&profile[128], &profile[132], 0); // no table
    return profile;
}

constexpr const char* kTooLong = "The colour profile or a text of the file is too long and was not kept.";

QByteArray ContentOf(const char* pName)
{
    QFile file(TestDataPath(QString::fromLatin1(pName)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// In 32 bits, the upper ones first.
QByteArray Number(quint32 nValue)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(nValue, bytes.data());
    return bytes;
}

QStringList TextsOf(const SImageMetadata& metadata)
{
    QStringList lstTexts;
    for (const auto& text : metadata.texts)
        lstTexts << QString::fromStdString(text.key + ": " + text.text);
    return lstTexts;
}

QString TextOf(const SImageMetadata& metadata, const char* pKey)
{
    for (const auto& text : metadata.texts)
        if (text.key == pKey)
            return QString::fromStdString(text.text);
    return {};
}
} // namespace

/// What files say beside their pixels.
class tst_ImageMetadata : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    QString Path(const char* pName) const { return m_folder.filePath(QString::fromLatin1(pName)); }

    /// A TIFF file of 3 x 2 pixels with tags of the test's own.
    QString WriteTiffWith(const std::function<void(TIFF*)>& setTags, int nOrientation = 1) const
    {
        const QString strPath = Path("made.tif");
        TiffWriter::STiff what;
        what.nWidth = 3;
        what.nHeight = 2;
        what.nSamples = 3;
        what.nPhotometric = PHOTOMETRIC_RGB;
        what.nOrientation = nOrientation;
        TIFF* pTiff = TIFFOpen(strPath.toUtf8().constData(), "w");
        TiffWriter::SetTags(pTiff, what);
        setTags(pTiff);
        unsigned char pixels[18] = {1, 2, 3};
        TIFFWriteEncodedStrip(pTiff, 0, pixels, sizeof pixels);
        TIFFClose(pTiff);
        return strPath;
    }

private Q_SLOTS:
    void anImageWithoutAFileSaysNothing()
    {
        const CImage image;
        QCOMPARE(image.GetMetadata()->resolutionX, 0.0);
        QCOMPARE(image.GetMetadata()->resolutionUnit, EResolutionUnit::None);
        QCOMPARE(image.GetMetadata()->orientation, 1);
        QVERIFY(image.GetMetadata()->profile.empty());
    }

    void aTiffFileSaysResolutionProfileAndTexts()
    {
        const auto profile = ProfileOf("RGB ");
        const QString strPath = WriteTiffWith([&profile](TIFF* pTiff) {
            TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, 118.5);
            TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, 59.25);
            TIFFSetField(pTiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_CENTIMETER);
            TIFFSetField(pTiff, TIFFTAG_ICCPROFILE, static_cast<uint32_t>(profile.size()), profile.data());
            TIFFSetField(pTiff, TIFFTAG_IMAGEDESCRIPTION, "two\r\nlines\x1b[0m");
            TIFFSetField(pTiff, TIFFTAG_ARTIST, "Andr\xe9"); // Latin-1
        });
        CImage image;
        QCOMPARE(LoadFile(image, strPath), 0);
        const auto pMetadata = image.GetMetadata();
        QCOMPARE(pMetadata->resolutionX, 118.5);
        QCOMPARE(pMetadata->resolutionY, 59.25);
        QCOMPARE(pMetadata->resolutionUnit, EResolutionUnit::Centimetre);
        QVERIFY(pMetadata->profile == profile);
        QCOMPARE(TextOf(*pMetadata, "Description"), QStringLiteral("two\nlines [0m"));
        QCOMPARE(TextOf(*pMetadata, "Author"), QStringLiteral("Andr\u00e9"));
        QVERIFY(image.GetNotes().empty());
    }

    void theResolutionOfAPictureThatLiesOnItsSideIsOfTheTurnedPixels()
    {
        const QString strPath = WriteTiffWith(
            [](TIFF* pTiff) {
                TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, 100.0);
                TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, 50.0);
            },
            ORIENTATION_RIGHTTOP);
        CImage image;
        QCOMPARE(LoadFile(image, strPath), 0);
        QCOMPARE(image.GetWidth(), 2);
        QCOMPARE(image.GetMetadata()->orientation, 6);
        QCOMPARE(image.GetMetadata()->resolutionX, 50.0);
        QCOMPARE(image.GetMetadata()->resolutionY, 100.0);
        QCOMPARE(image.GetMetadata()->resolutionUnit, EResolutionUnit::Inch); // which is the usual one
    }

    void copiesAndChangesKeepItAndCreateDropsIt()
    {
        CImage image;
        QCOMPARE(image.Create(4, 2, 3, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        SImageMetadata metadata;
        metadata.resolutionX = 30.0;
        metadata.resolutionY = 20.0;
        metadata.resolutionUnit = EResolutionUnit::Inch;
        QCOMPARE(image.SetMetadata(metadata), 0);
        CImage copy;
        QCOMPARE(copy.CopyFrom(&image), 0);
        QCOMPARE(copy.GetMetadata().get(), image.GetMetadata().get()); // without a copy of its own
        QCOMPARE(copy.FlipVertically(), 0);
        QCOMPARE(copy.Crop(0, 0, 2, 2), 0);
        QCOMPARE(copy.GetMetadata()->resolutionX, 30.0);
        QCOMPARE(copy.Create(1, 1, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 1), 0);
        QCOMPARE(copy.GetMetadata()->resolutionX, 0.0);
        QCOMPARE(image.GetMetadata()->resolutionX, 30.0);
    }

    void aTurnTakesTheResolutionAlong()
    {
        SImageMetadata metadata;
        metadata.resolutionX = 30.0;
        metadata.resolutionY = 20.0;
        metadata.resolutionUnit = EResolutionUnit::Inch;
        const auto turned = [&metadata](double dblAngle) {
            CImage image;
            if (image.Create(4, 2, 3, 8, Vantor::Algorithms::EImageType::Interleaved, 4) != 0 ||
                image.SetMetadata(metadata) != 0 ||
                image.Rotate({2.0, 1.0}, dblAngle, 0.0, ERotationMode::GrowCanvas) != 0)
                return std::pair(-1.0, -1.0);
            return std::pair(image.GetMetadata()->resolutionX, image.GetMetadata()->resolutionY);
        };
        QCOMPARE(turned(kQuarter), std::pair(20.0, 30.0));
        QCOMPARE(turned(-kQuarter), std::pair(20.0, 30.0));
        QCOMPARE(turned(2 * kQuarter), std::pair(30.0, 20.0));
        QCOMPARE(turned(0.5), std::pair(0.0, 0.0));
        metadata.resolutionY = 30.0;
        QCOMPARE(turned(0.5), std::pair(30.0, 30.0));
    }

    void whatIsOutOfRangeIsDropped()
    {
        const double inf = std::numeric_limits<double>::infinity();
        for (const double dbl : {0.0, -1.0, inf, std::numeric_limits<double>::quiet_NaN(), 1e12, 1e-9}) {
            CImage image;
            SImageMetadata metadata;
            metadata.resolutionX = 72.0;
            metadata.resolutionY = dbl;
            metadata.resolutionUnit = EResolutionUnit::Inch;
            metadata.orientation = 9;
            QCOMPARE(image.SetMetadata(metadata), 0);
            QCOMPARE(image.GetMetadata()->resolutionX, 0.0);
            QCOMPARE(image.GetMetadata()->resolutionY, 0.0);
            QCOMPARE(image.GetMetadata()->resolutionUnit, EResolutionUnit::None);
            QCOMPARE(image.GetMetadata()->orientation, 1);
        }
        CImage image;
        SImageMetadata metadata;
        metadata.profile.resize(kMostProfileBytes + 1);
        metadata.texts.assign(kMostImageTexts + 5, {"Comment", "short"});
        metadata.texts[3].text.assign(kMostImageTextBytes + 1, 'x');
        QCOMPARE(image.SetMetadata(metadata), 0);
        QVERIFY(image.GetMetadata()->profile.empty());
        QCOMPARE(image.GetMetadata()->texts.size(), kMostImageTexts);
        QCOMPARE(image.GetMetadata()->texts[3].text, std::string("short"));
    }

    void aProfileThatIsTooLongIsNotKeptAndANoteSaysSo()
    {
        const auto profile = ProfileOf("RGB ", kMostProfileBytes + 1);
        const QString strPath = WriteTiffWith([&profile](TIFF* pTiff) {
            TIFFSetField(pTiff, TIFFTAG_ICCPROFILE, static_cast<uint32_t>(profile.size()), profile.data());
        });
        CImage image;
        QCOMPARE(LoadFile(image, strPath), 0);
        QVERIFY(image.GetMetadata()->profile.empty());
        QCOMPARE(image.GetNotes(), std::vector<std::string>({kTooLong}));
    }

    void savingWritesResolutionAndProfile_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<bool>("bMetricOnly");
        QTest::addColumn<bool>("bProfile");
        QTest::newRow("TIFF") << "tif" << false << true;
        QTest::newRow("PNG") << "png" << true << true;
        QTest::newRow("JPEG") << "jpg" << false << true;
        QTest::newRow("BMP") << "bmp" << true << false;
    }
    void savingWritesResolutionAndProfile()
    {
        // A profile of 70000 bytes fills more than one marker of a JPEG file.
        QFETCH(QString, suffix);
        QFETCH(bool, bMetricOnly);
        QFETCH(bool, bProfile);
        for (const int nChannels : {1, 2, 3, 4}) {
            CImage image;
            QCOMPARE(image.Create(5, 4, nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
            SImageMetadata metadata;
            metadata.resolutionX = 300.0;
            metadata.resolutionY = 150.0;
            metadata.resolutionUnit = EResolutionUnit::Inch;
            metadata.profile = ProfileOf(nChannels == 1 ? "GRAY" : "RGB ", 70000);
            QCOMPARE(image.SetMetadata(metadata), 0);
            const QString strPath = m_folder.filePath(QStringLiteral("saved.") + suffix);
            QCOMPARE(image.Save(strPath.toStdWString()), 0);
            CImage loaded;
            QCOMPARE(LoadFile(loaded, strPath), 0);
            const auto pSaved = loaded.GetMetadata();
            const double dblUnit = bMetricOnly ? 2.54 : 1.0;
            QVERIFY2(std::abs(pSaved->resolutionX * dblUnit - 300.0) < 0.02, qPrintable(suffix));
            QVERIFY(std::abs(pSaved->resolutionY * dblUnit - 150.0) < 0.02);
            QCOMPARE(pSaved->resolutionUnit,
                     bMetricOnly ? EResolutionUnit::Centimetre : EResolutionUnit::Inch);
            QVERIFY(!bProfile || pSaved->profile == metadata.profile);
        }
    }

    void aPngFileSaysItInItsChunks()
    {
        const QByteArray png = ContentOf("png/basn2c08.png");
        const auto chunk = [](const char* pType, const QByteArray& body) {
            const QByteArray typed = QByteArray(pType) + body;
            return Number(static_cast<quint32>(body.size())) + typed + Number(Crc32(typed));
        };
        const QByteArray resolution = Number(2000) + Number(1000) + '\1';
        QByteArray wrongSum = chunk("tEXt", QByteArray("Title\0no", 8));
        wrongSum[wrongSum.size() - 1] = static_cast<char>(wrongSum[wrongSum.size() - 1] ^ 1);
        const QByteArray deflated = qCompress(QByteArray("packed")).mid(4); // behind a length of Qt's own
        const QByteArray chunks =
            chunk("pHYs", resolution) + chunk("tEXt", QByteArray("Author\0Andr\xe9", 12)) + wrongSum +
            chunk("zTXt", QByteArray("Source\0\0", 8) + deflated) +
            chunk("iTXt", QByteArray("Title\0\0\0vi\0Ten\0", 15) + "H\xc3\xa0 N\xe1\xbb\x99i") +
            chunk("iTXt", QByteArray("Comment\0\1\0\0\0", 12) + deflated) +
            chunk("iTXt", QByteArray("XML:com.adobe.xmp\0\0\0\0\0<x/>", 26));
        const int nHead = 33; // signature and header
        const QString strPath = Path("texts.png");
        WriteFile(strPath, png.left(nHead) + chunks + png.mid(nHead));
        CImage image;
        QCOMPARE(LoadFile(image, strPath), 0);
        const auto pMetadata = image.GetMetadata();
        QCOMPARE(pMetadata->resolutionX, 20.0);
        QCOMPARE(pMetadata->resolutionY, 10.0);
        QCOMPARE(pMetadata->resolutionUnit, EResolutionUnit::Centimetre);
        QCOMPARE(TextsOf(*pMetadata),
                 QStringList({QStringLiteral("Author: Andr\u00e9"), QStringLiteral("Source: packed"),
                              QStringLiteral("Title: H\u00e0 N\u1ed9i"), QStringLiteral("Comment: packed")}));
        QVERIFY(image.GetNotes().empty());
    }

    void aChunkThatInflatesWithoutEndIsLeftOutWithANote()
    {
        const QByteArray png = ContentOf("png/basn2c08.png");
        const QByteArray deflated = qCompress(QByteArray(64 << 20, '\0')).mid(4);
        for (const char* pType : {"zTXt", "iCCP"}) {
            const QByteArray typed = QByteArray(pType) + QByteArray("Name\0\0", 6) + deflated;
            const QString strPath = Path("bomb.png");
            WriteFile(strPath, png.left(33) + Number(static_cast<quint32>(typed.size() - 4)) + typed +
                                   Number(Crc32(typed)) + png.mid(33));
            CImage image;
            QCOMPARE(LoadFile(image, strPath), 0);
            QVERIFY(image.GetMetadata()->texts.empty());
            QVERIFY(image.GetMetadata()->profile.empty());
            QCOMPARE(image.GetNotes(), std::vector<std::string>({kTooLong}));
        }
    }

    void aJpegFileSaysItInItsMarkers()
    {
        const QByteArray jpeg = ContentOf("jpeg/bricks-color.jpeg");
        QCOMPARE(jpeg.mid(2, 2), QByteArray("\xff\xe0")); // JFIF, of 16 bytes
        const QByteArray exif = QByteArray("Exif\0\0MM\0*\0\0\0\10\0\4", 16) +
                                QByteArray("\1\x12\0\3\0\0\0\1\0\6\0\0", 12) +           // on its side
                                QByteArray("\1\x1a\0\5\0\0\0\1\0\0\0\x3e", 12) +         // at 62
                                QByteArray("\1\x1b\0\5\0\0\0\1\0\0\0\x46", 12) +         // at 70
                                QByteArray("\1\x3b\0\2\0\0\0\3Hu\0\0", 12) + Number(0) + // the artist
                                Number(1445) + Number(10) + Number(300) + Number(1);
        const QByteArray marker = QByteArray("\xff\xe1") +
                                  Number(static_cast<quint32>(exif.size() + 2)).mid(2) + exif +
                                  QByteArray("\xff\xfe\0\5abc", 7);
        for (const bool bJfif : {false, true}) {
            QByteArray head = jpeg.left(20);
            head.replace(13, 5, bJfif ? QByteArray("\2\0\x10\0\x20", 5) : QByteArray("\0\0\1\0\1", 5));
            const QString strPath = Path("exif.jpg");
            WriteFile(strPath, head + marker + jpeg.mid(20));
            CImage image;
            QCOMPARE(LoadFile(image, strPath), 0);
            const auto pMetadata = image.GetMetadata();
            QCOMPARE(pMetadata->orientation, 6);
            QCOMPARE(pMetadata->resolutionX, bJfif ? 32.0 : 300.0); // of the turned pixels
            QCOMPARE(pMetadata->resolutionY, bJfif ? 16.0 : 144.5);
            QCOMPARE(pMetadata->resolutionUnit, bJfif ? EResolutionUnit::Centimetre : EResolutionUnit::Inch);
            QCOMPARE(TextsOf(*pMetadata),
                     QStringList({QStringLiteral("Author: Hu"), QStringLiteral("Comment: abc")}));
        }
    }

    void aProfileThatLacksAPieceIsNone()
    {
        CImage image;
        QCOMPARE(image.Create(5, 4, 3, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        SImageMetadata metadata;
        metadata.profile = ProfileOf("RGB ", 70000);
        QCOMPARE(image.SetMetadata(metadata), 0);
        const QString strPath = Path("pieces.jpg");
        QCOMPARE(image.Save(strPath.toStdWString()), 0);
        QFile file(strPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray content = file.readAll();
        const int nSecond = content.indexOf(QByteArray("ICC_PROFILE\0\2\2", 14));
        QVERIFY(nSecond > 0);
        content[nSecond] = 'X';
        WriteFile(strPath, content);
        CImage loaded;
        QCOMPARE(LoadFile(loaded, strPath), 0);
        QVERIFY(loaded.GetMetadata()->profile.empty());
    }

    void aProfileForOtherColoursIsNotWritten_data() { savingWritesResolutionAndProfile_data(); }
    void aProfileForOtherColoursIsNotWritten()
    {
        QFETCH(QString, suffix);
        for (const int nChannels : {1, 3}) {
            for (const char* pColors : {"CMYK", nChannels == 1 ? "RGB " : "GRAY"}) {
                CImage image;
                QCOMPARE(image.Create(5, 4, nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
                SImageMetadata metadata;
                metadata.profile = ProfileOf(pColors);
                QCOMPARE(image.SetMetadata(metadata), 0);
                const QString strPath = m_folder.filePath(QStringLiteral("saved.") + suffix);
                QCOMPARE(image.Save(strPath.toStdWString()), 0);
                CImage loaded;
                QCOMPARE(LoadFile(loaded, strPath), 0);
                QVERIFY2(loaded.GetMetadata()->profile.empty(), pColors);
                QVERIFY(loaded.GetNotes().empty());
            }
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_ImageMetadata)
#include "tst_ImageMetadata.moc"
