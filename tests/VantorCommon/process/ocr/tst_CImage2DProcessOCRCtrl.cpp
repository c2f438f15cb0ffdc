// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "OcrBench.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogger.h>

#include <QRegularExpression>
#include <QTemporaryDir>

namespace
{
const QString kFolder = QStringLiteral(VANTOR_TEST_TESSDATA);

QString Line(const QString& strText)
{
    return QStringLiteral("%1:").arg(NORMAL) + strText;
}
} // namespace

class tst_CImage2DProcessOCRCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void aFreshModelRunsWithEngTheDefaultFolderAnd144Dpi()
    {
        OcrBench b;
        QCOMPARE(b.model.GetLanguageCode(), QStringLiteral("eng"));
        QCOMPARE(b.model.GetLanguagePath(), kFolder);
        QVERIFY(b.model.GetLanguagePath().endsWith(QStringLiteral("tessdata")));
        QCOMPARE(b.model.GetUserDefinedDpi(), 144);
        QVERIFY(!b.model.parent());
        b.parts.ClickRun();
        QVERIFY(b.Text().startsWith(OcrBench::FirstLine()));
        QCOMPARE(b.ctrl.GetFailureReason(), QString());
    }

    void eachSetterOfTheModelWritesItsLine()
    {
        CImage2DProcessOCRModel model;
        LogRecorder log;
        model.SetLanguageCode(QStringLiteral("eng+vie"));
        model.SetLanguageCode(QStringLiteral("eng+vie"));
        model.SetLanguagePath(QString::fromUtf8("/ti\xE1\xBA\xBFng/%s"));
        model.SetUserDefinedDpi(-7);
        QCOMPARE(log.Take(),
                 QStringList({Line(QStringLiteral("Image2DProcessOCRModel: SetLanguageCode(eng+vie)")),
                              Line(QStringLiteral("Image2DProcessOCRModel: SetLanguageCode(eng+vie)")),
                              Line(QString::fromUtf8(
                                  "Image2DProcessOCRModel: SetLanguagePath(/ti\xE1\xBA\xBFng/%s)")),
                              Line(QStringLiteral("Image2DProcessOCRModel: SetUserDefinedDpi(-7)"))}));
        QCOMPARE(model.GetLanguageCode(), QStringLiteral("eng+vie"));
        QCOMPARE(model.GetLanguagePath(), QString::fromUtf8("/ti\xE1\xBA\xBFng/%s"));
        QCOMPARE(model.GetUserDefinedDpi(), -7);
    }

    void choosingKorInTheFirstRowLogsItsLine()
    {
        OcrBench b;
        LogRecorder log;
        QVERIFY(qobject_cast<QComboBox*>(b.parts.OpenEditor(1, LanguageRow)));
        b.parts.Key(Qt::Key_Down);
        b.parts.Key(Qt::Key_Down);
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(b.model.GetLanguageCode(), QStringLiteral("kor"));
        QCOMPARE(log.Take(),
                 QStringList(Line(QStringLiteral("Image2DProcessOCRModel: SetLanguageCode(kor)"))));
        QCOMPARE(b.parts.Cell(LanguageRow, 1), QStringLiteral("kor"));
    }

    void aNumberFromTheSpinBoxIsTheResolution()
    {
        OcrBench b;
        QVERIFY(qobject_cast<QSpinBox*>(b.parts.OpenEditor(1, DpiRow)));
        b.parts.Type(QStringLiteral("300"));
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(b.model.GetUserDefinedDpi(), 300);
        QCOMPARE(b.parts.Cell(DpiRow, 1), QStringLiteral("300"));
    }

    void aDpiThatIsNoNumberIs0AndTheRunStops()
    {
        OcrBench b;
        b.dlg.SetResultText(QStringLiteral("before"));
        LogRecorder log;
        b.parts.Rows()->item(DpiRow, 1)->setText(QStringLiteral("many"));
        QCOMPARE(b.model.GetUserDefinedDpi(), 0);
        QCOMPARE(log.Take(),
                 QStringList(Line(QStringLiteral("Image2DProcessOCRModel: SetUserDefinedDpi(0)"))));
        b.parts.ClickRun();
        QCOMPARE(b.Text(), QStringLiteral("before"));
        QCOMPARE(b.parts.Message(), QString());
        QCOMPARE(log.Take(), QStringList());
        QCOMPARE(b.ctrl.GetFailureReason(), QStringLiteral("The resolution is not from 1 to 2400 dpi."));
    }

    void deliberateANewLabelIsSentLikeAValue()
    {
        OcrBench b;
        QVERIFY(b.parts.OpenEditor(0, DpiRow));
        b.parts.Type(QStringLiteral("dots"));
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(b.model.GetUserDefinedDpi(), 0);
        QCOMPARE(b.parts.Cell(DpiRow, 1), QStringLiteral("144"));
    }

    void theResolutionIsReadAsADecimalNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("dpi");
        QTest::newRow("number") << QStringLiteral("72") << 72;
        QTest::newRow("hexadecimal") << QStringLiteral("0x10") << 0;
        QTest::newRow("fraction") << QStringLiteral("72.5") << 0;
        QTest::newRow("beyond int") << QStringLiteral("99999999999") << 0;
        QTest::newRow("empty") << QString() << 0;
        QTest::newRow("leading zero") << QStringLiteral("0100") << 100;
    }
    void theResolutionIsReadAsADecimalNumber()
    {
        QFETCH(QString, text);
        QFETCH(int, dpi);
        CImage2DProcessOCRModel model;
        CImage2DProcessOCRCtrl ctrl(&model, nullptr);
        ctrl.slot_ChangeData(2, text);
        QCOMPARE(model.GetUserDefinedDpi(), dpi);
    }

    void codes0To2AreTheThreeParametersAndOthersAreIgnored()
    {
        CImage2DProcessOCRModel model;
        CImage2DProcessOCRCtrl ctrl(&model, nullptr);
        LogRecorder log;
        for (const int nCode : {-1, 3, 1000})
            ctrl.slot_ChangeData(nCode, QStringLiteral("1"));
        QCOMPARE(log.Take(), QStringList());
        ctrl.slot_ChangeData(0, QStringLiteral("vie"));
        ctrl.slot_ChangeData(1, QStringLiteral("/data"));
        ctrl.slot_ChangeData(2, QStringLiteral("96"));
        QCOMPARE(model.GetLanguageCode(), QStringLiteral("vie"));
        QCOMPARE(model.GetLanguagePath(), QStringLiteral("/data"));
        QCOMPARE(model.GetUserDefinedDpi(), 96);
    }

    void withoutARegionTheWholeImageIsDecoded()
    {
        OcrBench b;
        b.parts.ClickRun();
        QCOMPARE(b.Text().simplified(), OcrBench::WholePage().simplified());
    }

    void withARegionOnlyItsTextIsRead()
    {
        OcrBench b;
        b.DrawFirstLine();
        b.parts.ClickRun();
        QCOMPARE(b.Text(), OcrBench::FirstLine());
    }

    void aRunReplacesTheTextWholeAndLeavesImageAndRegions()
    {
        OcrBench b;
        b.dlg.SetResultText(QString(5000, QLatin1Char('x')));
        b.DrawFirstLine();
        const auto pImage = b.Image();
        const QByteArray pixels = b.Pixels();
        b.parts.ClickRun();
        QCOMPARE(b.Text(), OcrBench::FirstLine());
        QVERIFY(b.Image() == pImage);
        QCOMPARE(b.Pixels(), pixels);
        QCOMPARE(b.fixture.Counts()[0], 1);
        QCOMPARE(b.parts.Entries("Source ROI").size(), 1);
    }

    void aRunLogsTheTimeAndThenTheText()
    {
        OcrBench b;
        b.DrawFirstLine();
        LogRecorder log;
        b.parts.ClickRun();
        const QStringList lstLines = log.Take();
        QCOMPARE(lstLines.size(), 2);
        QCOMPARE(lstLines[0], Line(b.parts.Message()));
        const QRegularExpression form(QStringLiteral("^Processing Time \\d+ ms$"));
        QVERIFY(form.match(b.parts.Message()).hasMatch());
        QCOMPARE(lstLines[1], Line(QStringLiteral("Run OCR OK ") + OcrBench::FirstLine()));
    }

    void aPercentSignInTheTextIsNoFormat()
    {
        OcrBench b;
        b.Load(QStringLiteral("eurotext.tif"));
        LogRecorder log;
        b.parts.ClickRun();
        QVERIFY(b.Text().contains(QStringLiteral("12.5% of")));
        QVERIFY(log.Take().last().contains(QStringLiteral("12.5% of")));
    }

    void aPageWithoutTextIsASuccessAndEmptiesTheResult()
    {
        OcrBench b;
        b.dlg.SetResultText(QStringLiteral("before"));
        auto pWhite = std::make_shared<Vantor::Algorithms::CImage>();
        QCOMPARE(pWhite->Create(100, 50, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 1), 0);
        memset(pWhite->GetData(), 255, static_cast<std::size_t>(pWhite->GetStride()) * 50);
        b.SetImage(pWhite);
        LogRecorder log;
        b.parts.ClickRun();
        QCOMPARE(b.Text(), QString());
        QVERIFY(b.parts.Message().startsWith(QStringLiteral("Processing Time")));
        QCOMPARE(log.Take().last(), Line(QStringLiteral("Run OCR OK ")));
    }

    void missingLanguageDataStopsTheRunSilentlyAndKeepsTheText()
    {
        OcrBench b;
        b.dlg.SetResultText(QStringLiteral("before"));
        b.model.SetLanguageCode(QStringLiteral("eng+xyz"));
        LogRecorder log;
        b.parts.ClickRun();
        QCOMPARE(b.Text(), QStringLiteral("before"));
        QCOMPARE(b.parts.Message(), QString());
        QCOMPARE(log.Take(), QStringList());
        QVERIFY(b.ctrl.GetFailureReason().contains(QStringLiteral("xyz.traineddata")));
        b.model.SetLanguageCode(QStringLiteral("eng"));
        b.parts.ClickRun();
        QVERIFY(b.Text().startsWith(OcrBench::FirstLine()));
        QCOMPARE(b.ctrl.GetFailureReason(), QString());
    }

    void aDecodingThatFailsStopsTheRunSilentlyAndKeepsTextAndMessage()
    {
        OcrBench b;
        b.DrawFirstLine();
        b.parts.ClickRun();
        const QString strMessage = b.parts.Message();
        auto pWide = std::make_shared<Vantor::Algorithms::CImage>();
        QCOMPARE(pWide->Create(40000, 2, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 1), 0);
        b.SetImage(pWide);
        LogRecorder log;
        b.parts.ClickRun();
        QCOMPARE(b.Text(), OcrBench::FirstLine());
        QCOMPARE(b.parts.Message(), strMessage);
        QCOMPARE(log.Take(), QStringList());
        QVERIFY(!b.ctrl.GetFailureReason().isEmpty());
    }

    void theFolderOfTheModelIsUsedAndTheEngineIsKept()
    {
        // Were the engine made for each run, the second one would fail.
        QTemporaryDir folder;
        const QString strFile = folder.filePath(QStringLiteral("eng.traineddata"));
        QVERIFY(QFile::copy(kFolder + QStringLiteral("/eng.traineddata"), strFile));
        OcrBench b;
        b.model.SetLanguagePath(folder.path());
        b.DrawFirstLine();
        b.parts.ClickRun();
        QCOMPARE(b.Text(), OcrBench::FirstLine());
        QFile file(strFile);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.close();
        b.dlg.SetResultText(QString());
        b.parts.ClickRun();
        QCOMPARE(b.Text(), OcrBench::FirstLine());
        OCRTool::Dlg other(&b.model, nullptr);
        OCRTool::Ctrl otherCtrl(&b.model, &other);
        otherCtrl.slot_RunOCR();
        QCOMPARE(otherCtrl.GetFailureReason(),
                 QStringLiteral("The OCR engine cannot use the language data."));
    }

    void theChosenLanguageIsRead()
    {
        OcrBench b;
        b.Load(QStringLiteral("viet.tif"));
        QVERIFY(b.parts.OpenEditor(1, LanguageRow));
        b.parts.Key(Qt::Key_Down);
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(b.model.GetLanguageCode(), QStringLiteral("vie"));
        b.parts.ClickRun();
        QCOMPARE(b.Text(), QString::fromUtf8("ti\xE1\xBA\xBFng"));
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessOCRCtrl)
#include "tst_CImage2DProcessOCRCtrl.moc"
