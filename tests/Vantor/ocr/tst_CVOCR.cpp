// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <Vantor/ocr/CVOCR.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

extern "C" void omp_set_max_active_levels(int levels);
extern "C" int omp_get_max_active_levels();

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CVOCR;
using Vantor::Algorithms::EImageType;
using Vantor::Geometry::CRectangle;

namespace
{
constexpr const char* kFolder = VANTOR_TEST_TESSDATA;

std::shared_ptr<CImage> Page(const QString& name)
{
    auto image = std::make_shared<CImage>();
    return image->Load(TestDataPath(QStringLiteral("ocr/") + name).toStdWString()) == 0 ? image : nullptr;
}

QString Truth(const QString& name)
{
    QFile file(TestDataPath(QStringLiteral("ocr/") + name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).simplified() : QString();
}

QString TextOf(const CVOCR& ocr)
{
    return QString::fromUtf8(ocr.GetText()).normalized(QString::NormalizationForm_C).simplified();
}

/// Characters to insert, remove or replace, as a percentage of the true text's.
double ErrorRate(const QString& text, const QString& truth)
{
    std::vector<int> vctCosts(static_cast<std::size_t>(truth.size()) + 1);
    std::iota(vctCosts.begin(), vctCosts.end(), 0);
    for (int i = 0; i < text.size(); ++i) {
        int nDiagonal = std::exchange(vctCosts[0], i + 1);
        for (std::size_t j = 1; j < vctCosts.size(); ++j) {
            const int nReplace = nDiagonal + (text[i] != truth[static_cast<int>(j) - 1]);
            nDiagonal = vctCosts[j];
            vctCosts[j] = std::min({nReplace, vctCosts[j] + 1, vctCosts[j - 1] + 1});
        }
    }
    return 100.0 * vctCosts.back() / std::max(truth.size(), 1);
}

const QString kFirstLine = QStringLiteral("This is a lot of 12 point text to test the");
} // namespace

class tst_CVOCR : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsPagesWithFewErrors_data();
    void readsPagesWithFewErrors();
    void readsOnlyTheRegion();
    void whatLiesOutsideTheShapeIsWhite();
    void aRegionOutsideTheImageHasNoText();
    void noTextIsASuccess();
    void transparentPixelsAreWhite_data();
    void transparentPixelsAreWhite();
    void sixteenBitsAreRead();
    void theImageIsLeftUntouched();
    void missingLanguageDataIsNamed_data();
    void missingLanguageDataIsNamed();
    void severalLanguagesAreRead();
    void brokenLanguageDataIsAnError();
    void theResolutionHasLimits();
    void aFailedRunKeepsTheText();
    void theEngineOutlivesItsLanguageFile();
    void theThreadsOfTheHostStayAsTheyWere();
};

void tst_CVOCR::readsPagesWithFewErrors_data()
{
    QTest::addColumn<QString>("image");
    QTest::addColumn<QString>("truth");
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<double>("percent");
    const auto add = [](const char* image, const char* truth, const char* language, int dpi, double percent) {
        QTest::newRow(image) << QString::fromLatin1(image) << QString::fromLatin1(truth)
                             << QString::fromLatin1(language) << dpi << percent;
    };
    // English and Vietnamese: what the engine's own command line reaches with its default settings.
    add("phototest.tif", "phototest.gold.txt", "eng", 144, 0.0);
    add("udhr_eng_144dpi.png", "udhr_eng.gt.txt", "eng", 144, 0.2);
    add("udhr_vie_144dpi.png", "udhr_vie.gt.txt", "vie", 144, 0.0);
    // There it is wrong about 40 and 76 % of the Korean characters, and 82 % of two of the turned pages.
    add("udhr_kor_144dpi.png", "udhr_kor.gt.txt", "kor", 144, 3.0);
    add("udhr_kor_300dpi.png", "udhr_kor.gt.txt", "kor", 300, 3.0);
    add("phototest-rotated-180.png", "phototest.gold.txt", "eng", 144, 1.0);
    add("phototest-rotated-L.png", "phototest.gold.txt", "eng", 144, 1.0);
    add("phototest-rotated-R.png", "phototest.gold.txt", "eng", 144, 1.0);
}

void tst_CVOCR::readsPagesWithFewErrors()
{
    QFETCH(QString, image);
    QFETCH(QString, truth);
    QFETCH(QString, language);
    QFETCH(int, dpi);
    QFETCH(double, percent);
    const auto page = Page(image);
    QVERIFY(page);
    QVERIFY(!Truth(truth).isEmpty());
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData(language.toUtf8().constData(), kFolder), 0);
    QCOMPARE(ocr.SetUserDefinedDpi(dpi), 0);
    QCOMPARE(ocr.Decode(page.get(), nullptr), 0);
    const double rate = ErrorRate(TextOf(ocr), Truth(truth));
    qInfo("%s: %.2f %% wrong", qPrintable(image), rate);
    QVERIFY2(rate <= percent + 0.01, qPrintable(TextOf(ocr)));
}

void tst_CVOCR::readsOnlyTheRegion()
{
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    const CRectangle firstLine(-50.0, 85.0, 5000.0, 40.0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    QCOMPARE(QString::fromUtf8(ocr.GetText()), kFirstLine);
    const CRectangle drawnBackwards(640.0, 125.0, -640.0, -40.0);
    QCOMPARE(ocr.Decode(page.get(), &drawnBackwards), 0);
    QCOMPARE(QString::fromUtf8(ocr.GetText()), kFirstLine);
    QCOMPARE(ocr.Decode(page.get(), nullptr), 0);
    QCOMPARE(TextOf(ocr), Truth(QStringLiteral("phototest.gold.txt")));
}

void tst_CVOCR::whatLiesOutsideTheShapeIsWhite()
{
    // The first and the third line; the second one lies between them, in the same bounding box.
    Vantor::Geometry::CGeometryArray lines;
    lines.Add(std::make_shared<CRectangle>(0.0, 85.0, 640.0, 39.0));
    lines.Add(std::make_shared<CRectangle>(0.0, 158.0, 640.0, 30.0));
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    QCOMPARE(ocr.Decode(page.get(), &lines), 0);
    QCOMPARE(TextOf(ocr), kFirstLine + QStringLiteral(" of file format."));
}

void tst_CVOCR::aRegionOutsideTheImageHasNoText()
{
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    QCOMPARE(ocr.Decode(page.get(), nullptr), 0);
    for (const CRectangle& region :
         {CRectangle(1000.0, 10.0, 50.0, 50.0), CRectangle(-60.0, 10.0, 50.0, 50.0),
          CRectangle(10.0, 10.0, 0.0, 0.0), CRectangle(-1e9, -1e9, 10.0, 10.0)}) {
        QCOMPARE(ocr.Decode(page.get(), &region), 0);
        QCOMPARE(QString::fromUtf8(ocr.GetText()), QString());
    }
}

void tst_CVOCR::noTextIsASuccess()
{
    CVOCR ocr;
    QCOMPARE(QString::fromUtf8(ocr.GetText()), QString());
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    for (const auto& size :
         {std::pair(1, 1), std::pair(2, 3), std::pair(1, 200), std::pair(200, 1), std::pair(200, 100)}) {
        CImage white;
        QCOMPARE(white.Create(size.first, size.second, 3, 8, EImageType::Interleaved, 1), 0);
        std::memset(white.GetData(), 255,
                    static_cast<std::size_t>(white.GetStride()) * static_cast<std::size_t>(size.second));
        QCOMPARE(ocr.Decode(&white, nullptr), 0);
        QCOMPARE(QString::fromUtf8(ocr.GetText()), QString());
    }
}

void tst_CVOCR::transparentPixelsAreWhite_data()
{
    QTest::addColumn<int>("channels");
    QTest::newRow("grey and alpha") << 2;
    QTest::newRow("colour and alpha") << 4;
}

void tst_CVOCR::transparentPixelsAreWhite()
{
    // Black everywhere; only alpha tells the letters from the paper.
    QFETCH(int, channels);
    const auto page = Page(QStringLiteral("phototest.tif"));
    CImage image;
    QCOMPARE(image.Create(page->GetWidth(), page->GetHeight(), channels, 8, EImageType::Interleaved, 1), 0);
    for (int y = 0; y < page->GetHeight(); ++y) {
        for (int x = 0; x < page->GetWidth(); ++x)
            image.GetPixel(x, y)[channels - 1] = static_cast<unsigned char>(255 - page->GetPixel(x, y)[0]);
    }
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    QCOMPARE(ocr.Decode(&image, nullptr), 0);
    QCOMPARE(TextOf(ocr), Truth(QStringLiteral("phototest.gold.txt")));
}

void tst_CVOCR::sixteenBitsAreRead()
{
    const auto page = Page(QStringLiteral("phototest.tif"));
    CImage image;
    QCOMPARE(image.Create(page->GetWidth(), page->GetHeight(), 3, 16, EImageType::Interleaved, 1), 0);
    for (int y = 0; y < page->GetHeight(); ++y) {
        for (int x = 0; x < page->GetWidth(); ++x) {
            const std::uint16_t nSample = static_cast<std::uint16_t>(page->GetPixel(x, y)[0] * 257);
            for (int c = 0; c < 3; ++c)
                std::memcpy(image.GetPixel(x, y) + 2 * c, &nSample, sizeof nSample);
        }
    }
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    QCOMPARE(ocr.Decode(&image, nullptr), 0);
    QCOMPARE(TextOf(ocr), Truth(QStringLiteral("phototest.gold.txt")));
}

void tst_CVOCR::theImageIsLeftUntouched()
{
    const auto page = Page(QStringLiteral("phototest-rotated-180.png"));
    CImage copy;
    QCOMPARE(copy.CopyFrom(page.get()), 0);
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    QCOMPARE(ocr.Decode(page.get(), nullptr), 0);
    QCOMPARE(
        std::memcmp(page->GetData(), copy.GetData(),
                    static_cast<std::size_t>(copy.GetStride()) * static_cast<std::size_t>(copy.GetHeight())),
        0);
}

void tst_CVOCR::missingLanguageDataIsNamed_data()
{
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QByteArray>("folder");
    QTest::addColumn<QString>("names");
    const QByteArray folder(kFolder);
    QTest::newRow("unknown") << QByteArray("xyz") << folder << QStringLiteral("/xyz.traineddata");
    QTest::newRow("second") << QByteArray("eng+xyz") << folder << QStringLiteral("/xyz.traineddata");
    QTest::newRow("first") << QByteArray("xyz+eng") << folder << QStringLiteral("/xyz.traineddata");
    QTest::newRow("folder") << QByteArray("eng") << QByteArray("/no/such") << QStringLiteral("/no/such/eng.");
    QTest::newRow("empty") << QByteArray("") << folder << QStringLiteral("''");
    QTest::newRow("ends with +") << QByteArray("eng+") << folder << QStringLiteral("'eng+'");
    QTest::newRow("elsewhere") << QByteArray("../tessdata/eng") << folder
                               << QStringLiteral("../tessdata/eng");
}

void tst_CVOCR::missingLanguageDataIsNamed()
{
    QFETCH(QByteArray, language);
    QFETCH(QByteArray, folder);
    QFETCH(QString, names);
    CVOCR ocr;
    QVERIFY(ocr.SetLanguageData(language.constData(), folder.constData()) != 0);
    const QString strReason = QString::fromStdString(ocr.GetFailureReason());
    QVERIFY2(strReason.contains(names), qPrintable(strReason));
    QVERIFY(ocr.SetLanguageData(nullptr, folder.constData()) != 0);
    QVERIFY(ocr.SetLanguageData(language.constData(), nullptr) != 0);
    // The language of before stays selected.
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    QVERIFY(ocr.SetLanguageData(language.constData(), folder.constData()) != 0);
    const auto page = Page(QStringLiteral("phototest.tif"));
    const CRectangle firstLine(0.0, 85.0, 640.0, 40.0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    QCOMPARE(TextOf(ocr), kFirstLine);
    QCOMPARE(ocr.GetFailureReason(), std::string());
}

void tst_CVOCR::severalLanguagesAreRead()
{
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng+vie", kFolder), 0);
    const CRectangle firstLine(0.0, 85.0, 640.0, 40.0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    QCOMPARE(TextOf(ocr), kFirstLine);
}

void tst_CVOCR::brokenLanguageDataIsAnError()
{
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("bad.traineddata")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("this is no language");
    file.close();
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("bad", folder.path().toUtf8().constData()), 0);
    QVERIFY(ocr.Decode(page.get(), nullptr) != 0);
    QCOMPARE(ocr.GetFailureReason(), std::string("The OCR engine cannot use the language data."));
}

void tst_CVOCR::theResolutionHasLimits()
{
    CVOCR ocr;
    for (const int nDpi : {1, 70, 144, 2400})
        QCOMPARE(ocr.SetUserDefinedDpi(nDpi), 0);
    for (const int nDpi : {0, -1, 2401, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        QVERIFY(ocr.SetUserDefinedDpi(nDpi) != 0);
        QCOMPARE(ocr.GetFailureReason(), std::string("The resolution is not from 1 to 2400 dpi."));
    }
}

void tst_CVOCR::aFailedRunKeepsTheText()
{
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QVERIFY(ocr.Decode(page.get(), nullptr) != 0);
    QCOMPARE(ocr.GetFailureReason(), std::string("No language was selected."));
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    const CRectangle firstLine(0.0, 85.0, 640.0, 40.0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    const CImage empty;
    QVERIFY(ocr.Decode(&empty, nullptr) != 0);
    QVERIFY(ocr.Decode(nullptr, nullptr) != 0);
    CImage wide;
    QCOMPARE(wide.Create(40000, 2, 1, 8, EImageType::Interleaved, 1), 0);
    QVERIFY(ocr.Decode(&wide, nullptr) != 0);
    QCOMPARE(ocr.GetFailureReason(), std::string("The region is too large for the OCR engine."));
    QCOMPARE(TextOf(ocr), kFirstLine);
}

void tst_CVOCR::theEngineOutlivesItsLanguageFile()
{
    // Were it built anew for each run, the second one would fail.
    QTemporaryDir folder;
    const QString strFile = folder.filePath(QStringLiteral("eng.traineddata"));
    QVERIFY(QFile::copy(QString::fromLatin1(kFolder) + QStringLiteral("/eng.traineddata"), strFile));
    const auto page = Page(QStringLiteral("phototest.tif"));
    const CRectangle firstLine(0.0, 85.0, 640.0, 40.0);
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", folder.path().toUtf8().constData()), 0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    QFile file(strFile);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.close();
    QCOMPARE(ocr.SetLanguageData("eng", folder.path().toUtf8().constData()), 0);
    QCOMPARE(ocr.SetUserDefinedDpi(100), 0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    QCOMPARE(TextOf(ocr), kFirstLine);
}

void tst_CVOCR::theThreadsOfTheHostStayAsTheyWere()
{
    const auto page = Page(QStringLiteral("phototest.tif"));
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng", kFolder), 0);
    omp_set_max_active_levels(3);
    const CRectangle firstLine(0.0, 85.0, 640.0, 40.0);
    QCOMPARE(ocr.Decode(page.get(), &firstLine), 0);
    QCOMPARE(omp_get_max_active_levels(), 3);
}

VANTOR_CORE_TEST_MAIN(tst_CVOCR)
#include "tst_CVOCR.moc"
