// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "OcrBench.h"
#include "tests/support/TestMain.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QScreen>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTimer>

using Delegate = CImage2DProcessOCRDlgParameterDelegate;

namespace
{
const QString kFolder = QStringLiteral(VANTOR_TEST_TESSDATA);

/// Opens the folder's editor, and waits until it has the focus.
QFileDialog* OpenFolderEditor(OcrBench& b)
{
    auto* pDialog = qobject_cast<QFileDialog*>(b.parts.OpenEditor(1, FolderRow));
    return pDialog && Activate(*pDialog) ? pDialog : nullptr;
}

/// Enters a folder and presses the button "Choose".
void Choose(QFileDialog& dialog, const QString& strFolder)
{
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(strFolder);
    QWidget* pButton = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
    QVERIFY(pButton->isEnabled());
    QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      pButton->mapTo(&dialog, pButton->rect().center()));
}
} // namespace

class tst_CImage2DProcessOCRDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void aHostOffersOtherLanguagesAndWhatIsDoneWithTheText()
    {
        OcrBench b;
        QStringList lstChanges;
        connect(&b.dlg, &CImage2DProcessOCRDlg::signal_ChangeData, &b.dlg,
                [&](int nCode, const QString& strValue) { lstChanges << QString::number(nCode) + strValue; });
        b.dlg.SetLanguage(QStringLiteral("eng+kor"));
        QCOMPARE(lstChanges, QStringList{QStringLiteral("0eng+kor")});
        b.dlg.SetLanguages({QStringLiteral("deu"), QStringLiteral("eng+deu")});
        const auto* pBox = qobject_cast<QComboBox*>(b.parts.OpenEditor(1, LanguageRow));
        QVERIFY(pBox);
        QCOMPARE(pBox->count(), 2);
        QCOMPARE(pBox->itemText(1), QStringLiteral("eng+deu"));
        QPushButton* pButton = b.dlg.AddButton(QStringLiteral("Keep"));
        b.dlg.SetResultText(QStringLiteral("a\nb"));
        QString strKept;
        connect(pButton, &QPushButton::clicked, &b.dlg, [&] { strKept = b.dlg.GetResultText(); });
        pButton->click();
        QCOMPARE(strKept, QStringLiteral("a\nb"));
    }

    void theTreeHasThreeRowsWithTheValuesOfTheModel()
    {
        CImage2DProcessOCRModel model;
        model.SetLanguageCode(QStringLiteral("vie"));
        model.SetLanguagePath(QStringLiteral("/data"));
        model.SetUserDefinedDpi(300);
        CImage2DProcessOCRDlg dlg(&model, nullptr);
        const ToolParts parts(dlg);
        QCOMPARE(parts.Rows()->rowCount(), 3);
        QCOMPARE(parts.Rows()->columnCount(), 2);
        const QStringList lstLabels{QStringLiteral("Language code"), QStringLiteral("Language Data Path"),
                                    QStringLiteral("User Defined Dpi")};
        const QStringList lstValues{QStringLiteral("vie"), QStringLiteral("/data"), QStringLiteral("300")};
        for (int nRow = 0; nRow < 3; ++nRow) {
            QCOMPARE(parts.Cell(nRow, 0), lstLabels[nRow]);
            QCOMPARE(parts.Cell(nRow, 1), lstValues[nRow]);
        }
        QVERIFY(parts.Tree()->isHeaderHidden());
        QVERIFY(qobject_cast<Delegate*>(parts.Tree()->itemDelegateForColumn(1)));
        QVERIFY(!parts.Tree()->itemDelegateForColumn(0));
    }

    void withoutAModelTheValuesAreEmpty()
    {
        CImage2DProcessOCRDlg dlg(nullptr, nullptr);
        const ToolParts parts(dlg);
        QCOMPARE(parts.Rows()->rowCount(), 3);
        for (int nRow = 0; nRow < 3; ++nRow)
            QCOMPARE(parts.Cell(nRow, 1), QString());
    }

    void theSectionsAreFilledAsTheToolNeedsThem()
    {
        CImage2DProcessOCRModel model;
        CImage2DProcessOCRDlg dlg(&model, nullptr);
        const ToolParts parts(dlg);
        const auto* pLayout = qobject_cast<QVBoxLayout*>(parts.Group("Result")->layout());
        QVERIFY(pLayout);
        QCOMPARE(pLayout->count(), 1);
        QVERIFY(qobject_cast<QTextEdit*>(pLayout->itemAt(0)->widget()));
        QCOMPARE(pLayout->stretch(0), 32);
        QCOMPARE(parts.Group("Button")->findChildren<QPushButton*>().size(), 1);
        QCOMPARE(parts.RunButton()->text(), QStringLiteral("Run"));
        QCOMPARE(parts.RunButton()->sizePolicy().horizontalPolicy(), QSizePolicy::Maximum);
        QCOMPARE(parts.RunButton()->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
        for (const char* szGroup : {"Parameter", "Result", "Button"}) {
            QCOMPARE(parts.Group(szGroup)->layout()->contentsMargins(), QMargins());
            QCOMPARE(parts.Group(szGroup)->layout()->spacing(), 0);
        }
    }

    void theResultIsPlainText()
    {
        OcrBench b;
        const QString strText = QStringLiteral("<b>5 &lt; 6</b>\n<a href=\"x\">%s</a>");
        b.dlg.SetResultText(strText);
        QCOMPARE(b.Text(), strText);
        b.dlg.SetResultText(QString());
        QCOMPARE(b.Text(), QString());
    }

    void onlyTheThreeValuesHaveAnEditorOfTheDelegate()
    {
        const Delegate delegate;
        QStandardItemModel rows(4, 3);
        QStringListModel strings({QStringLiteral("a")});
        QWidget parent;
        for (int nRow = 0; nRow < 4; ++nRow)
            for (int nColumn = 0; nColumn < 3; ++nColumn) {
                const auto* pEditor = delegate.createEditor(&parent, {}, rows.index(nRow, nColumn));
                QCOMPARE(pEditor != nullptr, nRow < 3 && nColumn == 1);
            }
        QVERIFY(!delegate.createEditor(&parent, {}, strings.index(0, 0)));
        QVERIFY(!delegate.createEditor(&parent, {}, QModelIndex()));
    }

    void anEditorOfAnotherRowWritesNothing()
    {
        const Delegate delegate;
        QStandardItemModel rows(4, 2);
        QComboBox combo;
        combo.addItem(QStringLiteral("eng"));
        QSpinBox spin;
        QLineEdit line(QStringLiteral("text"));
        for (int nRow = 0; nRow < 4; ++nRow)
            delegate.setModelData(&line, &rows, rows.index(nRow, 1));
        delegate.setModelData(&combo, &rows, rows.index(DpiRow, 1));
        delegate.setModelData(&spin, &rows, rows.index(LanguageRow, 1));
        delegate.setModelData(&spin, nullptr, rows.index(DpiRow, 1));
        for (int nRow = 0; nRow < 4; ++nRow)
            QVERIFY(!rows.index(nRow, 1).data().isValid());
    }

    void theLanguagesAreEngVieKor()
    {
        OcrBench b;
        auto* pCombo = qobject_cast<QComboBox*>(b.parts.OpenEditor(1, LanguageRow));
        QVERIFY(pCombo);
        QStringList lstEntries;
        for (int i = 0; i < pCombo->count(); ++i)
            lstEntries << pCombo->itemText(i);
        QCOMPARE(lstEntries,
                 QStringList({QStringLiteral("eng"), QStringLiteral("vie"), QStringLiteral("kor")}));
    }

    void deliberateTheLanguageOpensAtEngNotAtTheStoredValue()
    {
        OcrBench b;
        b.parts.Rows()->item(LanguageRow, 1)->setText(QStringLiteral("kor"));
        QCOMPARE(b.model.GetLanguageCode(), QStringLiteral("kor"));
        auto* pCombo = qobject_cast<QComboBox*>(b.parts.OpenEditor(1, LanguageRow));
        QVERIFY(pCombo);
        QCOMPARE(pCombo->currentText(), QStringLiteral("eng"));
        b.parts.Key(Qt::Key_Escape);
        QTRY_VERIFY(!b.parts.Editor());
        QCOMPARE(b.model.GetLanguageCode(), QStringLiteral("kor"));
    }

    void deliberateTheResolutionOpensAt70NotAtTheStoredValue()
    {
        OcrBench b;
        QCOMPARE(b.parts.Cell(DpiRow, 1), QStringLiteral("144"));
        auto* pSpin = qobject_cast<QSpinBox*>(b.parts.OpenEditor(1, DpiRow));
        QVERIFY(pSpin);
        QCOMPARE(pSpin->value(), 70);
        QCOMPARE(pSpin->minimum(), 1);
        QCOMPARE(pSpin->maximum(), 1024);
        b.parts.Key(Qt::Key_Escape);
        QTRY_VERIFY(!b.parts.Editor());
        QCOMPARE(b.model.GetUserDefinedDpi(), 144);
        QVERIFY(b.parts.OpenEditor(1, DpiRow));
        b.parts.Key(Qt::Key_Return);
        QTRY_COMPARE(b.model.GetUserDefinedDpi(), 70);
    }

    void deliberateTheFolderOpensWhereTheProgramIsNotAtTheStoredValue()
    {
        OcrBench b;
        QVERIFY(QDir(kFolder).exists());
        QFileDialog* pDialog = OpenFolderEditor(b);
        QVERIFY(pDialog);
        QCOMPARE(pDialog->directory().absolutePath(), QDir::currentPath());
    }

    void theFolderIsPickedInAWindowOfItsOwn()
    {
        OcrBench b;
        QFileDialog* pDialog = OpenFolderEditor(b);
        QVERIFY(pDialog);
        QVERIFY(pDialog->isWindow() && !pDialog->isModal());
        QVERIFY(pDialog->testOption(QFileDialog::DontUseNativeDialog));
        QCOMPARE(pDialog->fileMode(), QFileDialog::Directory);
        const QRect cell = b.parts.Tree()->visualRect(b.parts.Rows()->index(FolderRow, 1));
        QVERIFY(pDialog->width() >= pDialog->minimumSizeHint().width());
        QVERIFY(pDialog->height() > 4 * cell.height());
        QVERIFY(pDialog->screen()->geometry().contains(pDialog->geometry()));
    }

    void aChosenFolderIsWritten()
    {
        QTemporaryDir folder;
        OcrBench b;
        QFileDialog* pDialog = OpenFolderEditor(b);
        QVERIFY(pDialog);
        Choose(*pDialog, folder.path());
        QTRY_VERIFY(!b.parts.Editor());
        QCOMPARE(b.parts.Cell(FolderRow, 1), folder.path());
        QCOMPARE(b.model.GetLanguagePath(), folder.path());
    }

    void aFolderThatIsNotThereIsRefusedAndTheChoiceGoesOn()
    {
        QTemporaryDir folder;
        OcrBench b;
        QFileDialog* pDialog = OpenFolderEditor(b);
        QVERIFY(pDialog);
        auto* pLine = pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        pLine->setFocus();
        pLine->setText(folder.filePath(QStringLiteral("no")));
        bool bTold = false;
        QTimer closer;
        connect(&closer, &QTimer::timeout, this, [&] {
            if (QWidget* pBox = QApplication::activeModalWidget()) {
                bTold = true;
                QTest::keyClick(pBox, Qt::Key_Escape);
            }
        });
        closer.start(20);
        QTest::keyClick(pDialog->windowHandle(), Qt::Key_Return);
        QTRY_VERIFY(bTold);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QVERIFY(pDialog->isVisible());
        QCOMPARE(b.model.GetLanguagePath(), kFolder);
        QVERIFY(Activate(*pDialog));
        Choose(*pDialog, folder.path());
        QTRY_COMPARE(b.model.GetLanguagePath(), folder.path());
    }

    void aCancelledChoiceOfFolderWritesNothing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Escape") << true;
        QTest::newRow("button") << false;
    }
    void aCancelledChoiceOfFolderWritesNothing()
    {
        QFETCH(bool, byKey);
        OcrBench b;
        QSignalSpy spy(&b.dlg, &CImage2DProcessOCRDlg::signal_ChangeData);
        QPointer<QFileDialog> pDialog = OpenFolderEditor(b);
        QVERIFY(pDialog);
        QWidget* pButton = pDialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel);
        if (byKey)
            QTest::keyPress(pDialog->windowHandle(), Qt::Key_Escape); // gone before the release
        else
            QTest::mouseClick(pDialog->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                              pButton->mapTo(pDialog, pButton->rect().center()));
        QTRY_VERIFY(!pDialog);
        QCOMPARE(spy.count(), 0);
        QCOMPARE(b.parts.Cell(FolderRow, 1), kFolder);
        QVERIFY(b.dlg.isVisible());
    }

    void theChoiceOfFolderStaysOpenWhileAnotherWindowHasTheFocus()
    {
        OcrBench b;
        const QPointer<QFileDialog> pDialog = OpenFolderEditor(b);
        QVERIFY(pDialog);
        QVERIFY(Activate(b.fixture.window));
        QVERIFY(pDialog && pDialog->isVisible());
        QCOMPARE(b.model.GetLanguagePath(), kFolder);
    }
};

VANTOR_TEST_MAIN(tst_CImage2DProcessOCRDlg)
#include "tst_CImage2DProcessOCRDlg.moc"
