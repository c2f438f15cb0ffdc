// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The preferences: their page in the settings, and that each is read at its place.
#include "Preferences.h"

#include "CPreferencesPage.h"
#include "TextReading.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/JpegQuality.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/view2d/CPageMemory.h>
#include <VantorCommon/view2d/CReadAhead.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace
{
class CPreferencesHost : public Host
{
public:
    CPreferencesPage* Page() const { return window.findChild<CPreferencesPage*>(); }
    template <class T> T* Editor(const QString& strKey) const { return Page()->findChild<T*>(strKey); }
    SCenterOptions Options() const
    {
        const auto item = CMVCManager::FindFirst(
            [](const SMVC& each) { return dynamic_cast<CCenterCtrl*>(each.pCtrl) != nullptr; });
        return dynamic_cast<CCenterCtrl*>(item->pCtrl)->GetOptions();
    }
    QPushButton* Button(const QWidget* pOf, const char* pText) const
    {
        for (QPushButton* pButton : pOf->findChildren<QPushButton*>())
            if (pButton->text().remove(QLatin1Char('&')) == QLatin1String(pText))
                return pButton;
        return nullptr;
    }
    int WidthOfPage() const { return CtrlOf(*this, 0)->GetCurrentImgage()->GetWidth(); }
    CImage2DProcessOCRDlg* OpenReading() const
    {
        Entry("Tools", "OCR...")->trigger();
        return window.findChild<CImage2DProcessOCRDlg*>();
    }
};
} // namespace

class tst_Preferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Host::ForgetSettings();
        for (const auto& row : Preferences::Rows())
            Host::StoreSetting(row.strKey, row.varDefault);
        Host::StoreSetting(CSettingManager::kLoaderResolutionX, 144);
    }

    // First, because it holds until a file has been chosen.
    void theFirstDialogStartsInTheChosenFolder()
    {
        const QTemporaryDir folder;
        CPreferencesHost host;
        QVERIFY(host.Show());
        host.Editor<QLineEdit>(CSettingManager::kStartFolder)->setText(folder.path());
        QString strFolder;
        QTimer look;
        connect(&look, &QTimer::timeout, &look, [&] {
            if (auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
                strFolder = pDialog->directory().absolutePath();
                pDialog->reject();
            }
        });
        look.start(0);
        host.Entry("File", "Open...")->trigger();
        QCOMPARE(strFolder, QDir(folder.path()).absolutePath());
    }

    void thePageShowsWhatHolds()
    {
        CPreferencesHost host;
        QVERIFY(host.Show());
        host.Entry("Settings", "Preferences...")->trigger();
        QVERIFY(host.Page()->isVisible());
        QCOMPARE(host.Editor<QSpinBox>(CSettingManager::kLoaderResolutionY)->value(), 144);
        QCOMPARE(host.Editor<QSpinBox>(HostSettings::kJpegQuality)->value(), 95);
        QCOMPARE(host.Editor<QSpinBox>(HostSettings::kPageMemory)->value(), 512);
        QCOMPARE(host.Editor<QComboBox>(HostSettings::kOcrLanguage)->currentText(), QStringLiteral("eng"));
        QVERIFY(host.Editor<QCheckBox>(HostSettings::kAskUnsaved)->isChecked());
        QVERIFY(!host.Editor<QCheckBox>(HostSettings::kAutoSave)->isChecked());
    }

    void whatIsEnteredHoldsAtOnceAndInTheNextWindow()
    {
        {
            CPreferencesHost host;
            QVERIFY(host.Show());
            host.Editor<QSpinBox>(HostSettings::kPageMemory)->setValue(100);
            host.Editor<QSpinBox>(HostSettings::kReadAheadMemory)->setValue(0);
            host.Editor<QSpinBox>(HostSettings::kJpegQuality)->setValue(70);
            host.Editor<QCheckBox>(HostSettings::kCheckerboard)->setChecked(false);
            host.Editor<QCheckBox>(HostSettings::kBackground)->setChecked(false);
            QCOMPARE(CPageMemory::Get().GetLimit(), qint64(100) << 20);
            QCOMPARE(CReadAhead::Get().GetLimit(), qint64(0));
            QCOMPARE(Vantor::Algorithms::GetJpegQuality(), 70);
            QVERIFY(!host.Options().bCheckerboard && !host.Options().bBackground);
            QVERIFY(host.Options().bViewKeys); // the others stay
        }
        Vantor::Algorithms::SetJpegQuality(95);
        CPageMemory::Get().SetLimit(1);
        CPreferencesHost host;
        QCOMPARE(CPageMemory::Get().GetLimit(), qint64(100) << 20);
        QCOMPARE(Vantor::Algorithms::GetJpegQuality(), 70);
        QVERIFY(!host.Options().bCheckerboard);
    }

    void aStoredNumberOutOfItsRangeIsBroughtIntoIt()
    {
        Host::StoreSetting(HostSettings::kJpegQuality, 900);
        Host::StoreSetting(HostSettings::kPageMemory, QStringLiteral("much"));
        CPreferencesHost host;
        QCOMPARE(Preferences::Number(HostSettings::kJpegQuality), 100);
        QCOMPARE(Preferences::Number(HostSettings::kPageMemory), 512);
    }

    void documentsComeAtTheChosenResolutionAndOpenOnesAfterAQuestionForThem()
    {
        CPreferencesHost host;
        QVERIFY(host.Show({kDocument}));
        CtrlOf(host, 0)->GetImageModel()->SetCurrentIndex(3);
        const int nBefore = host.WidthOfPage();
        host.Editor<QSpinBox>(CSettingManager::kLoaderResolutionY)->setValue(72);
        QCOMPARE(host.WidthOfPage(), nBefore);
        host.Button(host.Page(), "Open the Documents Again")->click();
        QTRY_COMPARE(host.WidthOfPage(), nBefore / 2);
        QTRY_COMPARE(CtrlOf(host, 0)->GetImageModel()->GetCurrentIndex(), 3);
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 11);
    }

    void whoWantsNoQuestionIsAskedNone()
    {
        CPreferencesHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Editor<QCheckBox>(HostSettings::kAskUnsaved)->setChecked(false);
        host.DrawRectangle(0);
        QCOMPARE(host.Annotations(0), 1);
        const Answers answers(QStringLiteral("Cancel"));
        QVERIFY(host.window.close());
        QVERIFY(answers.lstAsked.isEmpty());
        QVERIFY(StoreOf(host, 0)->HasUnsaved()); // so the next start offers it
    }

    void installedLanguagesAreOfferedAloneAndWithEnglish()
    {
        const QStringList lstLanguages = TextReading::Languages();
        QCOMPARE(lstLanguages.first(), QStringLiteral("eng"));
        for (const char* pLanguage : {"kor", "vie", "eng+kor", "eng+vie"})
            QVERIFY2(lstLanguages.contains(QLatin1String(pLanguage)), pLanguage);
        QVERIFY(!lstLanguages.contains(QStringLiteral("osd")));
    }

    void theToolReadsInTheChosenLanguagesAndGivesTheTextAway()
    {
        CPreferencesHost host;
        QVERIFY(host.Show({TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf"))}));
        host.Editor<QComboBox>(HostSettings::kOcrLanguage)->setEditText(QStringLiteral("eng+kor"));
        auto* pDialog = host.OpenReading();
        QVERIFY(pDialog);
        QCOMPARE(host.OpenReading(), pDialog);
        QCOMPARE(pDialog->findChildren<QPushButton*>().size(), 4); // with "Run" and "Whole image"
        host.Button(pDialog, "Run")->click();
        QTRY_VERIFY(pDialog->GetResultText().contains(QLatin1String("Hello, world!")));
        host.Button(pDialog, "Copy All")->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), pDialog->GetResultText());
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.txt"));
        ChooseFile(strPath);
        host.Button(pDialog, "Save Text...")->click();
        QCOMPARE(QString::fromUtf8(Pictures::Bytes(strPath)), pDialog->GetResultText() + QLatin1Char('\n'));
    }

    void aTextThatCannotBeSavedIsToldOf()
    {
        QVERIFY(!TextReading::Save(QStringLiteral("x"), QStringLiteral("/nowhere/a.txt")));
    }
};

VANTOR_TEST_MAIN(tst_Preferences)
#include "tst_Preferences.moc"
