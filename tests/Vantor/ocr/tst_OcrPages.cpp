// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// How many characters of each page are read wrong, beside what the engine's own command makes of it with its
// default settings: run here when it is installed, else as it was recorded with version 5.3.0 by
//   OMP_THREAD_LIMIT=1 tesseract PAGE OUT -l LANGUAGE --dpi DPI
#include "tests/Vantor/ocr/OcrPages.h"
#include "tests/support/TestMain.h"

#include <Vantor/ocr/CVOCR.h>

#include <QProcess>
#include <QStandardPaths>

using Vantor::Algorithms::CVOCR;

namespace
{
constexpr const char* kFolder = VANTOR_TEST_TESSDATA;
constexpr int kPatience = 100000; // ms
constexpr double kSlack = 0.01;   // the recorded figures have two decimals
constexpr double kKorean = 3.0;
constexpr double kTurned = 1.0;
constexpr double kAsThePlainCommand = -1.0;
} // namespace

class tst_OcrPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void readsPagesWithFewErrors_data();
    void readsPagesWithFewErrors();
    void cleanupTestCase();

private:
    /// What the command is wrong about, in percent; negative when it failed.
    double RunCommand(const QString& strImage, const QString& strLanguage, int nDpi, const QString& strTruth);

    QString m_strCommand;
    QStringList m_lstTable;
};

void tst_OcrPages::initTestCase()
{
    m_strCommand = QStandardPaths::findExecutable(QStringLiteral("tesseract"));
    m_lstTable << QStringLiteral("| page | language, dpi | wrong, % | plain command, % |")
               << QStringLiteral("|---|---|---|---|");
}

void tst_OcrPages::readsPagesWithFewErrors_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("truth");
    QTest::addColumn<double>("recorded");
    QTest::addColumn<double>("allowed");
    const auto add = [](const char* szImage, const char* szLanguage, int nDpi, const QString& strTruth,
                        double fRecorded, double fAllowed = kAsThePlainCommand) {
        QTest::newRow(szImage) << QString::fromLatin1(szLanguage) << nDpi << strTruth << fRecorded
                               << fAllowed;
    };
    using OcrPages::Truth;
    const QString strPhoto = Truth(QStringLiteral("phototest.gold.txt"));
    const QString strEnglish = Truth(QStringLiteral("udhr_eng.gt.txt"));
    const QString strVietnamese = Truth(QStringLiteral("udhr_vie.gt.txt"));
    const QString strKorean = Truth(QStringLiteral("udhr_kor.gt.txt"));
    add("phototest.tif", "eng", 144, strPhoto, 0.0);
    add("tj_testocr.png", "eng", 144, strPhoto, 0.0); // shows the same words
    add("udhr_eng_144dpi.png", "eng", 144, strEnglish, 0.20);
    add("udhr_eng_300dpi.png", "eng", 300, strEnglish, 0.20);
    add("8087_054.3B.tif", "eng", 300, Truth(QStringLiteral("8087_054.3B.txt")), 7.77);
    add("eurotext.tif", "eng", 144, Truth(QStringLiteral("eurotext.txt")), 2.18);
    // These come without a text: transcribed by eye.
    add("tj_simple.png", "eng", 144, QStringLiteral("Tesseract.js"), 0.0);
    add("tj_cosmic.png", "eng", 144, QStringLiteral("Hell0 World from beyond the Cosmic Void"), 2.56);
    add("HelloGoogle.tif", "eng", 144, QStringLiteral("Hello Google"), 0.0);
    add("viet.tif", "vie", 144, QString::fromUtf8("ti\xE1\xBA\xBFng"), 0.0);
    add("udhr_vie_144dpi.png", "vie", 144, strVietnamese, 0.0);
    add("udhr_vie_300dpi.png", "vie", 300, strVietnamese, 0.0);
    add("udhr_kor_144dpi.png", "kor", 144, strKorean, 40.35, kKorean);
    add("udhr_kor_300dpi.png", "kor", 300, strKorean, 75.83, kKorean);
    add("phototest-rotated-180.png", "eng", 144, strPhoto, 82.04, kTurned);
    add("phototest-rotated-L.png", "eng", 144, strPhoto, 82.04, kTurned);
    add("phototest-rotated-R.png", "eng", 144, strPhoto, 0.0, kTurned);
}

double tst_OcrPages::RunCommand(const QString& strImage, const QString& strLanguage, int nDpi,
                                const QString& strTruth)
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("OMP_THREAD_LIMIT"), QStringLiteral("1"));
    process.setProcessEnvironment(environment);
    process.start(m_strCommand,
                  {TestDataPath(QStringLiteral("ocr/") + strImage), QStringLiteral("stdout"),
                   QStringLiteral("--tessdata-dir"), QString::fromLatin1(kFolder), QStringLiteral("-l"),
                   strLanguage, QStringLiteral("--dpi"), QString::number(nDpi)});
    if (!process.waitForFinished(kPatience) || process.exitCode() != 0)
        return -1.0;
    return OcrPages::ErrorRate(OcrPages::Plain(process.readAllStandardOutput()), strTruth);
}

void tst_OcrPages::readsPagesWithFewErrors()
{
    QFETCH(QString, language);
    QFETCH(int, dpi);
    QFETCH(QString, truth);
    QFETCH(double, recorded);
    QFETCH(double, allowed);
    const QString strImage = QString::fromLatin1(QTest::currentDataTag());
    const auto pPage = OcrPages::Page(strImage);
    QVERIFY(pPage);
    QVERIFY(!truth.isEmpty());
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData(language.toUtf8().constData(), kFolder), 0);
    QCOMPARE(ocr.SetUserDefinedDpi(dpi), 0);
    QCOMPARE(ocr.Decode(pPage.get(), nullptr), 0);
    const double fRate = OcrPages::ErrorRate(OcrPages::Plain(ocr.GetText()), truth);
    const double fPlain = m_strCommand.isEmpty() ? recorded : RunCommand(strImage, language, dpi, truth);
    QVERIFY(fPlain >= 0.0);
    m_lstTable << QString::asprintf("| %s | %s, %d | %.2f | %.2f |", qPrintable(strImage),
                                    qPrintable(language), dpi, fRate, fPlain);
    const double fAllowed = allowed == kAsThePlainCommand ? fPlain : allowed;
    QVERIFY2(fRate <= fAllowed + kSlack, ocr.GetText());
}

void tst_OcrPages::cleanupTestCase()
{
    for (const QString& strLine : qAsConst(m_lstTable))
        qInfo("%s", qPrintable(strLine));
    qInfo("plain command: %s",
          m_strCommand.isEmpty() ? "not installed, recorded figures" : "run here, default settings");
}

VANTOR_CORE_TEST_MAIN(tst_OcrPages)
#include "tst_OcrPages.moc"
