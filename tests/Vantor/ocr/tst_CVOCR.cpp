// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/ocr/OcrPages.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <Vantor/ocr/CVOCR.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

extern "C" void omp_set_max_active_levels(int levels);
extern "C" int omp_get_max_active_levels();

using OcrPages::Page;
using OcrPages::Truth;
using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CVOCR;
using Vantor::Algorithms::EImageType;
using Vantor::Geometry::CRectangle;

namespace
{
constexpr const char* kFolder = VANTOR_TEST_TESSDATA;

QString TextOf(const CVOCR& ocr)
{
    return OcrPages::Plain(ocr.GetText());
}

const QString kFirstLine = QStringLiteral("This is a lot of 12 point text to test the");
} // namespace

class tst_CVOCR : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
    void aTurnedPageOfOneBlockIsReadAsTheUprightOne();
    void brokenLanguageDataIsAnError();
    void theResolutionHasLimits();
    void aFailedRunKeepsTheText();
    void theEngineOutlivesItsLanguageFile();
    void theThreadsOfTheHostStayAsTheyWere();
    void anotherLanguageIsUsedFromTheNextRunOn();
};

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

void tst_CVOCR::aTurnedPageOfOneBlockIsReadAsTheUprightOne()
{
    constexpr double kHalfTurn = 3.14159265358979324;
    CVOCR ocr;
    QCOMPARE(ocr.SetLanguageData("eng+kor", kFolder), 0);
    const auto pPage = Page(QStringLiteral("phototest.tif"));
    QVERIFY(pPage);
    QCOMPARE(ocr.Decode(pPage.get(), nullptr), 0);
    const QString strUpright = TextOf(ocr);
    QVERIFY2(strUpright.contains(QStringLiteral("12 point text")), qPrintable(strUpright));
    QCOMPARE(pPage->Rotate(Vantor::Geometry::CPoint<double>(0, 0), kHalfTurn, 0.0,
                           Vantor::Algorithms::ERotationMode::GrowCanvas),
             0);
    QCOMPARE(ocr.Decode(pPage.get(), nullptr), 0);
    QCOMPARE(TextOf(ocr), strUpright);
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

void tst_CVOCR::anotherLanguageIsUsedFromTheNextRunOn()
{
    const auto page = Page(QStringLiteral("udhr_kor_144dpi.png"));
    const CRectangle top(0.0, 0.0, page->GetWidth(), page->GetHeight() / 8.0);
    CVOCR ocr;
    const QStringList lstCodes{QStringLiteral("eng"), QStringLiteral("kor"), QStringLiteral("eng")};
    for (const QString& strCode : lstCodes) {
        QCOMPARE(ocr.SetLanguageData(qPrintable(strCode), kFolder), 0);
        QCOMPARE(ocr.Decode(page.get(), &top), 0);
        const QString strText = QString::fromUtf8(ocr.GetText());
        const bool bHangul = std::any_of(strText.begin(), strText.end(),
                                         [](QChar c) { return c.script() == QChar::Script_Hangul; });
        QVERIFY2(bHangul == (strCode == QStringLiteral("kor")), qUtf8Printable(strText));
    }
}

VANTOR_CORE_TEST_MAIN(tst_CVOCR)
#include "tst_CVOCR.moc"
