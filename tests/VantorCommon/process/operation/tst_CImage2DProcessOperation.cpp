// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// The dialog, controller, model and delegate that serve every operation, with one of the test's own.
#include "OperationBench.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/process/operation/CImage2DProcessOperationCtrl.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationModel.h>

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QSpinBox>
#include <stdexcept>

using Vantor::Algorithms::CImage;
using Vantor::Geometry::CGeometry;
using P = SProcessParameter;

namespace
{
enum ERow { ERow_Choice, ERow_Whole, ERow_Real, ERow_Text, ERow_Folder };

QString Text(const char* pText)
{
    return QString::fromLatin1(pText);
}

/// What an operation was called with, and what it does.
struct SCalls {
    std::vector<ProcessValues> vctValues;
    std::vector<bool> vctRegions; ///< whether there was one
    std::function<QString(const ProcessProgress&)> behave;
};

/// Makes the image black and tells of it.
SProcessOperation Recorder(SCalls& calls)
{
    return {Text("Recorder"),
            {P::Choice(Text("Choice"), {Text("one"), Text("two"), Text("three")}),
             P::Whole(Text("Whole"), 12, 0, 255), P::Real(Text("Real"), 2.5, 0.1, 100.0, 0.5),
             P::Text(Text("Text"), Text("words")), P::Folder(Text("Folder"), QDir::tempPath())},
            [&calls](CImage& image, const CGeometry* pRegion, const ProcessValues& vctValues,
                     const ProcessProgress& progress) {
                calls.vctValues.push_back(vctValues);
                calls.vctRegions.push_back(pRegion != nullptr);
                for (int y = 0; y < image.GetHeight(); ++y)
                    memset(image.GetRows()[y], 0, static_cast<std::size_t>(image.GetWidth()));
                return calls.behave ? calls.behave(progress) : QString();
            }};
}

/// Replaces what an editor holds and ends the edit.
void TypeOver(OperationBench& b, int nRow, const char* pText)
{
    QWidget* pEditor = b.parts->OpenEditor(1, nRow);
    QVERIFY(pEditor);
    QTest::keyClick(b.parts->Window(), Qt::Key_A, Qt::ControlModifier);
    b.parts->Type(Text(pText));
    b.parts->Key(Qt::Key_Return);
    QTRY_VERIFY(!b.parts->Editor());
}
} // namespace

class tst_CImage2DProcessOperation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachKindHasItsEditorThatOpensAtTheStoredValue()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        b.Set(ERow_Choice, Text("three"));
        auto* pCombo = qobject_cast<QComboBox*>(b.parts->OpenEditor(1, ERow_Choice));
        QVERIFY(pCombo && pCombo->count() == 3);
        QCOMPARE(pCombo->currentText(), Text("three"));
        auto* pWhole = qobject_cast<QSpinBox*>(b.parts->OpenEditor(1, ERow_Whole));
        QVERIFY(pWhole && pWhole->minimum() == 0 && pWhole->maximum() == 255);
        QCOMPARE(pWhole->value(), 12);
        QCOMPARE(pWhole->accessibleName(), Text("Whole"));
        auto* pReal = qobject_cast<QDoubleSpinBox*>(b.parts->OpenEditor(1, ERow_Real));
        QVERIFY(pReal && pReal->minimum() == 0.1 && pReal->maximum() == 100.0 && pReal->singleStep() == 0.5);
        QCOMPARE(pReal->decimals(), 2);
        QCOMPARE(pReal->value(), 2.5);
        auto* pLine = qobject_cast<QLineEdit*>(b.parts->OpenEditor(1, ERow_Text));
        QVERIFY(pLine);
        QCOMPARE(pLine->text(), Text("words"));
        b.parts->Key(Qt::Key_Escape);
        QTRY_VERIFY(!b.parts->Editor());
        QVERIFY(!b.parts->OpenEditor(0, ERow_Real)); // labels have none
    }

    void typedValuesReachTheOperationByTheirTypes()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QVERIFY(b.parts->OpenEditor(1, ERow_Choice));
        b.parts->Key(Qt::Key_Down);
        b.parts->Key(Qt::Key_Return);
        QTRY_VERIFY(!b.parts->Editor());
        TypeOver(b, ERow_Whole, "77");
        TypeOver(b, ERow_Real, "0.25");
        TypeOver(b, ERow_Text, "new");
        b.parts->ClickRun();
        QCOMPARE(calls.vctValues.size(), std::size_t(1));
        const ProcessValues expected{1, 77, 0.25, Text("new"), QDir::tempPath()};
        QVERIFY(calls.vctValues[0] == expected);
        for (std::size_t i = 0; i < expected.size(); ++i)
            QCOMPARE(calls.vctValues[0][i].userType(), expected[i].userType());
    }

    void aTextMayBeEmptied()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QVERIFY(b.parts->OpenEditor(1, ERow_Text));
        QTest::keyClick(b.parts->Window(), Qt::Key_A, Qt::ControlModifier);
        b.parts->Key(Qt::Key_Delete);
        b.parts->Key(Qt::Key_Return);
        QTRY_VERIFY(!b.parts->Editor());
        b.parts->ClickRun();
        QCOMPARE(calls.vctValues.at(0)[ERow_Text].toString(), QString());
    }

    void theFolderDialogOpensInTheFolderAndWritesWhatWasAccepted()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QTemporaryDir folder;
        b.Set(ERow_Folder, folder.path());
        QTemporaryDir other;
        for (const bool bAccept : {false, true}) {
            b.parts->Tree()->scrollToBottom();
            auto* pDialog = qobject_cast<QFileDialog*>(b.parts->OpenEditor(1, ERow_Folder));
            QVERIFY(pDialog && Activate(*pDialog));
            QCOMPARE(pDialog->directory().absolutePath(), folder.path());
            pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(other.path());
            const auto eButton = bAccept ? QDialogButtonBox::Open : QDialogButtonBox::Cancel;
            QWidget* pButton = pDialog->findChild<QDialogButtonBox*>()->button(eButton);
            QTest::mouseClick(pDialog->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                              pButton->mapTo(pDialog, pButton->rect().center()));
            QTRY_VERIFY(!b.parts->Editor());
            QCOMPARE(b.Get(ERow_Folder).toString(), bAccept ? other.path() : folder.path());
            QVERIFY(b.parts->Show());
        }
    }

    void whatIsTypedOutOfTheRangeStaysInIt()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        TypeOver(b, ERow_Whole, "256");
        TypeOver(b, ERow_Real, "0");
        b.parts->ClickRun();
        QVERIFY(calls.vctValues.at(0)[ERow_Whole].toInt() <= 255);
        QVERIFY(calls.vctValues.at(0)[ERow_Real].toDouble() >= 0.1);
    }

    void aValueOfAProgramThatDoesNotFitIsPutBackAndTold_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("before");
        QTest::addColumn<QString>("message");
        const QString strWhole = Text("Whole must be a whole number from 0 to 255.");
        const QString strReal = Text("Real must be a number from 0.1 to 100.");
        const QString strChoice = Text("Choice has no such choice.");
        QTest::newRow("too large") << int(ERow_Whole) << QVariant(256) << QVariant(12) << strWhole;
        QTest::newRow("negative") << int(ERow_Whole) << QVariant(-1) << QVariant(12) << strWhole;
        QTest::newRow("not whole") << int(ERow_Whole) << QVariant(7.5) << QVariant(12) << strWhole;
        QTest::newRow("no number") << int(ERow_Whole) << QVariant(Text("abc")) << QVariant(12) << strWhole;
        QTest::newRow("too small") << int(ERow_Real) << QVariant(0.09) << QVariant(2.5) << strReal;
        QTest::newRow("NaN") << int(ERow_Real) << QVariant(qQNaN()) << QVariant(2.5) << strReal;
        QTest::newRow("infinite") << int(ERow_Real) << QVariant(qInf()) << QVariant(2.5) << strReal;
        QTest::newRow("nothing") << int(ERow_Real) << QVariant() << QVariant(2.5) << strReal;
        QTest::newRow("no choice") << int(ERow_Choice) << QVariant(Text("four")) << QVariant(Text("one"))
                                   << strChoice;
        QTest::newRow("no index") << int(ERow_Choice) << QVariant(3) << QVariant(Text("one")) << strChoice;
    }
    void aValueOfAProgramThatDoesNotFitIsPutBackAndTold()
    {
        QFETCH(int, row);
        QFETCH(QVariant, value);
        QFETCH(QVariant, before);
        QFETCH(QString, message);
        SCalls calls;
        OperationBench b(Recorder(calls));
        b.Set(row, value);
        QCOMPARE(b.Get(row), before);
        QCOMPARE(b.parts->Message(), message);
        b.parts->ClickRun();
        const ProcessValues defaults{0, 12, 2.5, Text("words"), QDir::tempPath()};
        QVERIFY(calls.vctValues.at(0) == defaults);
    }

    void runTakesWhatAnOpenEditorHolds()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QVERIFY(b.parts->OpenEditor(1, ERow_Whole));
        QTest::keyClick(b.parts->Window(), Qt::Key_A, Qt::ControlModifier);
        b.parts->Type(Text("33"));
        b.parts->ClickRun();
        QCOMPARE(calls.vctValues.at(0)[ERow_Whole].toInt(), 33);
    }

    void theRegionIsHandedOverAndNoneIsTheWholeImage()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        b.parts->ClickRun();
        b.DrawRegion();
        b.parts->ClickRun();
        QCOMPARE(calls.vctRegions, (std::vector<bool>{false, true}));
    }

    void aRunIsOneStepThatUndoTakesBack()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        b.DrawRegion();
        const auto pBefore = b.Image();
        const QByteArray before = PixelsOf(*pBefore);
        b.parts->ClickRun();
        QVERIFY(b.Image() != pBefore && PixelsOf(*b.Image()) != before);
        QVERIFY(b.parts->Message().startsWith(Text("Processing Time")));
        QCOMPARE(PixelsOf(*pBefore), before); // the copy was changed, not the viewer's image
        b.PressUndo();
        QCOMPARE(b.Image(), pBefore);
        QCOMPARE(b.fixture.Counts()[0], 1); // the rectangle is there again, and no step was taken for it
    }

    void aFailureIsToldAndChangesNothing()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QSignalSpy failed(b.fixture.center.get(), &CCenterCtrl::signal_ProcessFailed);
        const auto pBefore = b.Image();
        calls.behave = [](const ProcessProgress&) { return Text("It does not work."); };
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), Text("It does not work."));
        calls.behave = [](const ProcessProgress&) -> QString { throw std::runtime_error("broken"); };
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), Text("The operation failed: broken."));
        QCOMPARE(b.Image(), pBefore);
        QCOMPARE(failed.count(), 2);
        QCOMPARE(failed[0], (QVariantList{Text("Recorder"), Text("It does not work.")}));
        b.fixture.Ctrl(0)->CloseCurrentImage();
        b.parts->ClickRun();
        QCOMPARE(b.parts->Message(), Text("The source viewer shows no image."));
        QCOMPARE(calls.vctValues.size(), std::size_t(2));
    }

    void progressIsShownWhileItRuns()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QStringList lstShown;
        calls.behave = [&](const ProcessProgress& progress) {
            for (const double dblDone : {0.0, 0.254, 1.0, 7.0}) {
                progress(dblDone);
                lstShown << b.parts->Message();
            }
            return QString();
        };
        b.parts->ClickRun();
        QCOMPARE(lstShown, QStringList({Text("0 %"), Text("25 %"), Text("100 %"), Text("100 %")}));
    }

    void theDialogMayDieWithAnOpenEditorAndIsMadeAnew()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        QVERIFY(b.parts->OpenEditor(1, ERow_Whole));
        b.parts->Type(Text("9"));
        delete b.pDlg;
        b.OpenTool(b.fixture.center->GetToolTitles().indexOf(Text("Recorder")));
        QCOMPARE(b.Get(ERow_Whole).toInt(), 12);
        b.parts->ClickRun();
        QCOMPARE(calls.vctValues.size(), std::size_t(1));
    }

    void theCentreListsItsToolsAndTakesMore()
    {
        SCalls calls;
        OperationBench b(Recorder(calls));
        CCenterCtrl& center = *b.fixture.center;
        const QStringList lstTitles{Text("Median Filter"),
                                    Text("Sobel Filter"),
                                    Text("OCR"),
                                    Text("Gaussian Blur"),
                                    Text("Unsharp Mask"),
                                    Text("Threshold"),
                                    Text("Brightness, Contrast, Gamma"),
                                    Text("Invert"),
                                    Text("Find Particles"),
                                    Text("Recorder")};
        QCOMPARE(center.GetToolTitles(), lstTitles);
        SProcessOperation good = Recorder(calls);
        good.strTitle = Text("Another");
        SProcessOperation bad[] = {good, good, good, good, good, good};
        bad[0].strTitle.clear();
        bad[1].strTitle = Text("OCR");
        bad[2].apply = nullptr;
        bad[3].vctParameters[ERow_Whole].varDefault = 256;
        bad[4].vctParameters[ERow_Choice].lstChoices.clear();
        bad[5].find = [](const CImage&, const CGeometry*, const ProcessValues&, const ProcessProgress&,
                         SProcessOperation::Shapes&) { return QString(); };
        for (const SProcessOperation& operation : bad)
            QCOMPARE(center.RegisterOperation(operation), -1);
        QCOMPARE(center.GetToolTitles(), lstTitles);
        QCOMPARE(center.RegisterOperation(good), 10);
        for (const int nNone : {-1, 11}) {
            center.OpenTool(nNone);
            center.OpenTool(nNone, 0);
        }
    }

    void everyTitleIsThatOfItsWindow()
    {
        CenterFixture fixture(1, 1);
        const QStringList lstTitles = fixture.center->GetToolTitles();
        for (int i = 0; i < lstTitles.size(); ++i)
            fixture.center->OpenTool(i);
        QStringList lstWindows;
        for (const auto* pDlg : fixture.centerView->findChildren<CImage2DProcessBaseDlg*>())
            lstWindows << pDlg->windowTitle();
        QCOMPARE(lstWindows, lstTitles);
    }

    void whereModelOrDialogHaveDiedNothingRuns()
    {
        SCalls calls;
        auto pModel = std::make_unique<CImage2DProcessOperationModel>(Recorder(calls));
        auto pDlg = std::make_unique<CImage2DProcessOperationDlg>(*pModel, nullptr);
        CImage2DProcessOperationCtrl ctrl(pModel.get(), pDlg.get());
        QVERIFY(!ctrl.Undo() && !ctrl.Redo());
        QCOMPARE(pModel->SetValue(-1, 0), Text("There is no such parameter."));
        QCOMPARE(pModel->SetValue(5, 0), Text("There is no such parameter."));
        ctrl.slot_ChangeValue(5, 0);
        pModel.reset();
        ctrl.slot_Run();
        ctrl.slot_ChangeValue(0, 0);
        pDlg.reset();
        ctrl.slot_Run();
        QVERIFY(calls.vctValues.empty());
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessOperation)
#include "tst_CImage2DProcessOperation.moc"
