// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageFiles.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/file/ImageFormats.h>
#include <Vantor/image/file/ImageFormats_p.h>

#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QTemporaryDir>

#include <algorithm>

using namespace ImageFiles;
using namespace std::string_view_literals;
using Vantor::Algorithms::BeginsLike;
using Vantor::Algorithms::GetImageFormats;
using Vantor::Algorithms::SImageFormatInfo;

namespace
{
QStringList SuffixesOf(const SImageFormatInfo& format)
{
    QStringList lstSuffixes;
    for (const std::string& strSuffix : format.suffixes)
        lstSuffixes << QString::fromStdString(strSuffix);
    return lstSuffixes;
}

QString MimeTypeOf(const SImageFormatInfo& format)
{
    return QString::fromStdString(format.mimeType);
}

/// The whole files of a format among the test data: those of the folder that is named after it.
QFileInfoList FilesOf(const SImageFormatInfo& format)
{
    return QDir(TestDataPath(QString::fromStdString(format.name).toLower())).entryInfoList(QDir::Files);
}

bool IsOneOfSeveral(const CImage& image)
{
    const auto& notes = image.GetNotes();
    return std::any_of(notes.begin(), notes.end(), [](const std::string& strNote) {
        return strNote.rfind("It is the first of ", 0) == 0;
    });
}

QByteArray ContentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

/// The table of formats, held against files, against the system's types of files, and against those who use
/// it.
class tst_ImageFormats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFormatIsThereWithItsSuffixesInTheOrderOfTheTexts()
    {
        QStringList lstSeen;
        for (const SImageFormatInfo& format : GetImageFormats())
            lstSeen << QString::fromStdString(format.name) + QLatin1Char(' ') +
                           SuffixesOf(format).join(QLatin1Char(' '));
        QCOMPARE(lstSeen, QStringList({QStringLiteral("BMP bmp"), QStringLiteral("JPEG jpg jpeg"),
                                       QStringLiteral("PNG png"), QStringLiteral("GIF gif"),
                                       QStringLiteral("TIFF tif tiff"), QStringLiteral("PPM ppm"),
                                       QStringLiteral("PGM pgm"), QStringLiteral("PBM pbm")}));
    }

    void everyFileOfTheTestDataHasASuffixAndTheMimeTypeOfItsFormat()
    {
        const QMimeDatabase types;
        for (const SImageFormatInfo& format : GetImageFormats()) {
            QVERIFY2(!FilesOf(format).isEmpty(), format.name.c_str());
            for (const QFileInfo& file : FilesOf(format)) {
                QVERIFY2(SuffixesOf(format).contains(file.suffix()), qPrintable(file.filePath()));
                QCOMPARE(types.mimeTypeForFile(file).name(), MimeTypeOf(format));
            }
            for (const QString& strSuffix : SuffixesOf(format))
                QCOMPARE(
                    types.mimeTypeForFile(QStringLiteral("a.") + strSuffix, QMimeDatabase::MatchExtension)
                        .name(),
                    MimeTypeOf(format));
        }
    }

    void theFirstBytesDecideWhateverTheSuffixSays()
    {
        const QString strPath = m_folder.filePath(QStringLiteral("file.pdf"));
        for (const SImageFormatInfo& format : GetImageFormats()) {
            QVERIFY(format.canLoad);
            for (const QFileInfo& file : FilesOf(format)) {
                QByteArray content = ContentOf(file.filePath());
                WriteFile(strPath, content);
                CImage image;
                QVERIFY2(LoadFile(image, strPath) == 0, qPrintable(file.filePath()));
                content[0] = static_cast<char>(~content[0]);
                WriteFile(strPath, content);
                QVERIFY2(LoadFile(image, strPath) != 0, qPrintable(file.filePath()));
                QCOMPARE(
                    image.GetFailureReason(),
                    std::string("It is not an image in BMP, JPEG, PNG, GIF, TIFF, PPM, PGM or PBM format."));
            }
        }
    }

    void whatIsSavedByASuffixIsOfItsFormat()
    {
        const QMimeDatabase types;
        for (const SImageFormatInfo& format : GetImageFormats()) {
            QCOMPARE(format.canSave, format.name != "PBM");
            const auto pImage = MakeTestImage(20, 10, format.name == "PGM" ? 1 : 3);
            if (!format.canSave)
                continue;
            for (const QString& strSuffix : SuffixesOf(format)) {
                const QString strPath = m_folder.filePath(QStringLiteral("saved.") + strSuffix.toUpper());
                QCOMPARE(pImage->Save(strPath.toStdWString()), 0);
                QCOMPARE(types.mimeTypeForFile(strPath, QMimeDatabase::MatchContent).name(),
                         MimeTypeOf(format));
                CImage loaded;
                QCOMPARE(LoadFile(loaded, strPath), 0);
                QCOMPARE(loaded.GetWidth(), 20);
            }
        }
    }

    void formatsOfFewColorsKeep256AndTheOthersMore()
    {
        const auto pImage = MakeTestImage(64, 64, 3);
        for (int i = 0; i < 64 * 64; ++i) {
            unsigned char* pPixel = pImage->GetPixel(i % 64, i / 64);
            pPixel[0] = static_cast<unsigned char>(4 * (i % 64));
            pPixel[1] = static_cast<unsigned char>(4 * (i / 64));
        }
        for (const SImageFormatInfo& format : GetImageFormats()) {
            if (!format.canSave || format.name == "PGM") // which refuses colours
                continue;
            const QString strPath = m_folder.filePath(QStringLiteral("colors.") + SuffixesOf(format).first());
            QCOMPARE(pImage->Save(strPath.toStdWString()), 0);
            CImage loaded;
            QCOMPARE(LoadFile(loaded, strPath), 0);
            std::vector<std::vector<int>> colors;
            for (int i = 0; i < 64 * 64; ++i)
                colors.push_back(PixelOf(loaded, i % 64, i / 64));
            std::sort(colors.begin(), colors.end());
            const auto nColors = std::unique(colors.begin(), colors.end()) - colors.begin();
            QVERIFY2((nColors <= 256) == format.fewColors, format.name.c_str());
        }
    }

    void onlyFormatsThatSaySoHoldSeveralImages()
    {
        for (const SImageFormatInfo& format : GetImageFormats()) {
            bool bSeveral = false;
            for (const QFileInfo& file : FilesOf(format)) {
                CImage image;
                QCOMPARE(LoadFile(image, file.filePath()), 0);
                bSeveral |= IsOneOfSeveral(image);
            }
            QVERIFY2(bSeveral == format.severalImages, format.name.c_str());
        }
    }

    void aPatternMayHaveBytesOfAnyValue()
    {
        QVERIFY(BeginsLike("RIFF\x10\0\0\0WEBPVP8 "sv, "RIFF????WEBP"sv));
        QVERIFY(!BeginsLike("RIFF\x10\0\0\0WAVEfmt "sv, "RIFF????WEBP"sv));
        QVERIFY(!BeginsLike("RIFF\x10\0\0\0WEB"sv, "RIFF????WEBP"sv));
        QVERIFY(BeginsLike("II*\0"sv, "II*\0"sv));
        QVERIFY(!BeginsLike("II*x"sv, "II*\0"sv));
    }

    void theDesktopFileOffersTheViewerForEveryFormatAndForDocuments()
    {
        QByteArray line("MimeType=");
        for (const SImageFormatInfo& format : GetImageFormats())
            line += QByteArray::fromStdString(format.mimeType) + ';';
        line += "application/pdf;";
        const QList<QByteArray> lines = ContentOf(QStringLiteral(VANTOR_DESKTOP_FILE)).split('\n');
        QVERIFY2(lines.contains(line), line.constData());
    }

    void everyReaderHasItsFuzzTarget()
    {
        QStringList lstNames;
        for (const SImageFormatInfo& format : GetImageFormats())
            lstNames << QString::fromStdString(format.name).toLower();
        QCOMPARE(QStringLiteral(VANTOR_FUZZ_FORMATS).split(QLatin1Char(' ')), lstNames);
    }

private:
    QTemporaryDir m_folder;
};

VANTOR_CORE_TEST_MAIN(tst_ImageFormats)
#include "tst_ImageFormats.moc"
