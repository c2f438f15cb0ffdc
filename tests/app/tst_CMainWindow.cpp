// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "HostSupport.h"
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogView.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTableView>
#include <QTemporaryDir>

namespace
{
/// Opens the settings as a person does.
CSettingDlg* OpenSettings(const Host& host)
{
    auto* pDialog = host.window.findChild<CSettingDlg*>();
    host.Entry("Settings", "Preferences...")->trigger();
    return pDialog && QTest::qWaitForWindowActive(pDialog) ? pDialog : nullptr;
}

bool IsInside(const QWidget& window)
{
    return window.screen()->availableGeometry().contains(window.geometry().center());
}
} // namespace

class tst_CMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void aResolutionChangedInTheSettingsIsFoundAgainByTheNextWindow()
    {
        {
            Host host;
            QVERIFY(host.Show());
            CSettingDlg* pDialog = OpenSettings(host);
            QVERIFY(pDialog);
            auto* pBox = pDialog->findChild<QSpinBox*>(QStringLiteral("GENERAL_PDF_RESOLUTION_X"));
            QCOMPARE(pBox->value(), 0);
            pBox->setFocus();
            pBox->selectAll();
            QTest::keyClicks(pBox, QStringLiteral("300"));
            QCOMPARE(pDialog->GetGeneralPDFResolutionX(), 300);
            QCOMPARE(CSettingManager::GetInt(QStringLiteral("GENERAL_PDF_RESOLUTION_X"), 0), 0);
        }
        Host host;
        QVERIFY(host.Show());
        CSettingDlg* pDialog = OpenSettings(host);
        QVERIFY(pDialog);
        QCOMPARE(pDialog->GetGeneralPDFResolutionX(), 300);
        QCOMPARE(pDialog->GetGeneralPDFResolutionY(), 0);
    }

    void theLogDockShowsTheLinesThatArriveWhileWorking()
    {
        Host host;
        QVERIFY(host.Show());
        auto* pDock = host.window.findChild<QDockWidget*>(QStringLiteral("Log"));
        QVERIFY(pDock);
        host.Entry({QStringLiteral("View"), QStringLiteral("Docks"), QStringLiteral("Log")})->trigger();
        QVERIFY(pDock->isVisible());
        const auto* pView = pDock->findChild<CLogView*>();
        QVERIFY(pView);
        const QAbstractItemModel* pRows = pView->findChild<QTableView*>()->model();
        CLogger::Write(WARNING, "a line");
        QTRY_VERIFY(pRows->rowCount() > 0 &&
                    pRows->index(pRows->rowCount() - 1, 2).data().toString() == QStringLiteral("a line"));
    }

    void aToolIsOpenedFromTheMenuByKeys_data()
    {
        QTest::addColumn<char>("key");
        QTest::newRow("Median Filter") << 'm';
        QTest::newRow("Sobel Filter") << 's';
        QTest::newRow("OCR") << 'o';
    }
    void aToolIsOpenedFromTheMenuByKeys()
    {
        QFETCH(char, key);
        CMainWindow window;
        QVERIFY(Activate(window));
        QTest::keyClick(window.windowHandle(), Qt::Key_T, Qt::AltModifier);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QTest::keyClick(QApplication::activePopupWidget(), key);
        const auto tool = [&] { return window.findChild<CImage2DProcessBaseDlg*>(); };
        QTRY_VERIFY(tool() && QApplication::activeWindow() == tool());
        QCOMPARE(tool()->windowTitle(), QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(!tool()->isModal());
        QCOMPARE(ToolParts(*tool()).Entries("Source Image"), QStringList(QStringLiteral("Image View [0]")));
    }

    void theGlobeIsOpenedFromTheMenuByKeysAndTurnedByTheMouse()
    {
        CMainWindow window;
        QVERIFY(Activate(window));
        QVERIFY(!window.findChild<CImageView3DEarth*>());
        const auto open = [&] {
            QTest::keyClick(window.windowHandle(), Qt::Key_T, Qt::AltModifier);
            if (!QTest::qWaitFor([] { return QApplication::activePopupWidget(); }))
                return false;
            QTest::keyClick(QApplication::activePopupWidget(), 'g');
            return QTest::qWaitFor([&] {
                auto* pGlobe = window.findChild<CImageView3DEarth*>();
                return pGlobe && QApplication::activeWindow() == pGlobe->window() && pGlobe->isValid();
            });
        };
        QVERIFY(open());
        auto* pGlobe = window.findChild<CImageView3DEarth*>();
        QCOMPARE(pGlobe->window()->windowTitle(), QStringLiteral("Globe"));
        const QImage before = pGlobe->grabFramebuffer();
        const QPoint centre = pGlobe->rect().center();
        QVERIFY(before.pixelColor(centre) != QColor(Qt::black)); // it has its picture
        QWindow* pHandle = pGlobe->window()->windowHandle();
        QTest::mousePress(pHandle, Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseMove(pHandle, centre + QPoint(30, 0));
        QTest::mouseMove(pHandle, centre + QPoint(60, 20));
        QTest::mouseRelease(pHandle, Qt::LeftButton, Qt::NoModifier, centre + QPoint(60, 20));
        QTRY_COMPARE(pGlobe->GetYaw(), -96.0F);
        QCOMPARE(pGlobe->GetPitch(), 2.0F);
        QVERIFY(pGlobe->grabFramebuffer() != before);

        pGlobe->window()->close();
        QVERIFY(Activate(window));
        QVERIFY(open()); // the same again
        QCOMPARE(window.findChildren<CImageView3DEarth*>().size(), 1);
    }

    void twoFilesAreShownSideBySideAndThreeInFour()
    {
        Host two;
        QVERIFY(two.Show({kPhoto, kDocument}));
        QCOMPARE(two.ShownViewers(), 2);
        Host three;
        QVERIFY(three.Show({kPhoto, kDocument, kPhoto}));
        QCOMPARE(three.ShownViewers(), 4);
        for (int i = 0; i < 3; ++i)
            QVERIFY(three.View(i)->GetImageUID() != 0xFFFFFFFFu);
        QCOMPARE(three.View(3)->GetImageUID(), 0xFFFFFFFFu);
    }

    void theNextWindowHasTheGeometryTheDocksAndTheLayoutOfTheLast()
    {
        {
            Host host;
            QVERIFY(host.Show());
            host.window.setGeometry(100, 120, 700, 600);
            QTRY_COMPARE(host.window.size(), QSize(700, 600));
            host.window.findChild<QDockWidget*>(QStringLiteral("Tools"))->hide();
            host.window.findChild<QDockWidget*>(QStringLiteral("Log"))->show();
            QVERIFY(host.window.ChangeLayout(QStringLiteral("2x2")));
            QVERIFY(host.window.close());
        }
        Host host;
        QVERIFY(host.Show());
        QCOMPARE(host.window.size(), QSize(700, 600));
        QVERIFY(host.window.findChild<QDockWidget*>(QStringLiteral("Tools"))->isHidden());
        QVERIFY(!host.window.findChild<QDockWidget*>(QStringLiteral("Log"))->isHidden());
        QCOMPARE(host.ShownViewers(), 4);
    }

    void aGeometryFromALargerScreenIsBroughtInside()
    {
        {
            Host host;
            host.window.setGeometry(5000, 4000, 640, 480); // never shown: no window manager corrects it
            host.window.close();
        }
        Host host;
        QVERIFY(host.Show());
        QVERIFY(IsInside(host.window));
    }

    void storedNonsenseGivesTheStandardWindow()
    {
        Host::StoreSetting(HostSettings::kGeometry, QStringLiteral("no base64 at all"));
        Host::StoreSetting(HostSettings::kState, QStringLiteral("AAAA"));
        Host::StoreSetting(HostSettings::kLayout, QStringLiteral("9x9"));
        Host::StoreSetting(HostSettings::kScheme, 77);
        Host host;
        QVERIFY(host.Show());
        QCOMPARE(host.window.size(), QSize(1144, 820)); // nine tenths of the screen's width
        QCOMPARE(host.ShownViewers(), 1);
    }

    void whatCannotBeOpenedLeavesWhatIsShown()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        const auto item =
            CMVCManager::FindFirst([&](const SMVC& mvc) { return mvc.pView == host.Viewer(0); });
        auto* pCtrl = item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl) : nullptr;
        QVERIFY(pCtrl);
        pCtrl->LoadFile(QStringLiteral("/nowhere/a.png"));
        QCOMPARE(host.Viewer(0)->findChild<QListView*>()->model()->rowCount(), 1);
        QCOMPARE(host.Annotations(0), 1);
    }

    void aFileIsOpenedByItsBytesWhateverItsName()
    {
        const QTemporaryDir dir;
        const QString strDocument = dir.filePath(QStringLiteral("report"));
        const QString strImage = dir.filePath(QStringLiteral("photo.pdf"));
        QVERIFY(QFile::copy(kDocument, strDocument) && QFile::copy(kPhoto, strImage));
        Host host;
        QVERIFY(host.Show({strDocument, strImage}));
        QCOMPARE(host.Message(), QString());
    }

    void whatCannotBeOpenedIsToldInTheWindowWithTheReason()
    {
        Host host;
        QVERIFY(host.Show());
        QCOMPARE(host.Message(), QString());
        QCOMPARE(host.window.OpenFiles({QStringLiteral("/nowhere/a.png")}), 0);
        QCOMPARE(host.Message(), QStringLiteral("Cannot load image /nowhere/a.png. There is no such file."));
        QVERIFY(!QApplication::activeModalWidget());
        // The log says it once more, later; what it says never reaches the bar.
        CLogger::Write(ERROR, "the end of the queue");
        const auto* pRows = host.window.findChild<CLogView*>()->findChild<QTableView*>()->model();
        QTRY_COMPARE(pRows->index(pRows->rowCount() - 1, 2).data().toString(),
                     QStringLiteral("the end of the queue"));
        QCoreApplication::processEvents();
        QCOMPARE(host.Message(), QStringLiteral("Cannot load image /nowhere/a.png. There is no such file."));
    }

    void aSettingThatCannotBeStoredAnyMoreIsTold()
    {
        Host host;
        QVERIFY(host.Show());
        QTest::qWait(100); // long enough for the look at the folders
        QCOMPARE(host.Message(), QString());
        CSettingManager::Set(QStringLiteral("HOST_TRIED"), QStringLiteral("a quote ' is refused"));
        QCOMPARE(host.Message(), QStringLiteral("The setting HOST_TRIED cannot be stored."));
    }

    void aCaptureOfNothingIsTold()
    {
        Host host;
        QVERIFY(host.Show());
        auto* pTool = [] {
            for (QWidget* pWidget : QApplication::topLevelWidgets())
                if (auto* pEach = qobject_cast<CSnipTool*>(pWidget))
                    return pEach;
            return static_cast<CSnipTool*>(nullptr);
        }();
        QVERIFY(pTool);
        Q_EMIT pTool->signal_CaptureScreen(QRect(QPoint(50, 40), QPoint(30, 25)));
        QCOMPARE(host.Message(), QStringLiteral("Cannot capture a region of -19 x -14 pixels."));
    }

    void aToolRunThatFailedIsToldWithTheReason()
    {
        Host host;
        QVERIFY(host.Show());
        host.Entry("Tools", "Median Filter...")->trigger();
        auto* pDlg = host.window.findChild<CImage2DProcessBaseDlg*>();
        for (auto* pButton : pDlg->findChildren<QPushButton*>())
            if (pButton->text() == QStringLiteral("Run"))
                pButton->click();
        QCOMPARE(host.Message(), QStringLiteral("Median Filter: The source viewer shows no image."));
    }

    void aSettingsFolderThatCannotBeWrittenIsTold()
    {
        QTemporaryDir folder;
        const QString strKey = QStringLiteral("GENERAL_PROGRAM_CONFIG_DIR");
        const QString strBefore =
            QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QStringLiteral("/Vantor");
        const QString strBad = folder.filePath(QStringLiteral("missing"));
        CSettingManager::Set(strKey, strBad);
        {
            Host host;
            QVERIFY(host.Show());
            QTRY_VERIFY(host.Message().contains(
                QStringLiteral("Settings cannot be kept in the folder %1").arg(strBad)));
            QTRY_VERIFY(CLogModel::GetInstance()->IsEmpty());
            QCoreApplication::processEvents();
        }
        CSettingManager::Set(strKey, folder.path());
        Host host;
        QVERIFY(host.Show());
        QTest::qWait(100); // long enough for the look at the folders
        QCOMPARE(host.Message(), QString());
        CSettingManager::Set(strKey, strBefore);
    }

    void aLogFolderThatCannotBeWrittenIsTold()
    {
        const QString strKey = QStringLiteral("GENERAL_LOG_DIR");
        CSettingManager::Set(strKey, QStringLiteral("/proc/nowhere"));
        {
            Host host;
            QVERIFY(host.Show());
            QTRY_VERIFY(host.Message().contains(QStringLiteral("Log files cannot be written")));
        }
        CSettingManager::Set(strKey, QDir::tempPath());
    }

    void anotherAppearanceReachesEverythingInTheViewers()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        const QPalette before = QApplication::palette();
        const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
        const auto menu = [](const char* pText) {
            return QStringList{QStringLiteral("View"), QStringLiteral("Appearance"), QLatin1String(pText)};
        };
        for (const char* pText : {"Dark", "Light", "Dark"}) {
            host.Entry(menu(pText))->trigger();
            for (const QWidget* pPart : host.Viewer(0)->findChildren<QWidget*>())
                for (auto eRole : {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::Mid})
                    if (pPart->styleSheet().isEmpty()) // the title has colours of its own
                        QCOMPARE(pPart->palette().color(eRole), QApplication::palette().color(eRole));
        }
        QVERIFY(QApplication::palette() != before);
    }

    void theNextWindowShowsAsManyViewersAsTheLast()
    {
        const std::pair<const char*, int> kLayouts[] = {{"2x1", 2}, {"1x1", 1}, {"2x2", 4}};
        for (const auto& layout : kLayouts) {
            {
                Host host;
                QVERIFY(host.Show());
                QVERIFY(host.window.ChangeLayout(QString::fromLatin1(layout.first)));
                QVERIFY(host.window.close());
            }
            Host host;
            QVERIFY(host.Show());
            QCOMPARE(host.ShownViewers(), layout.second);
        }
    }
};

VANTOR_TEST_MAIN(tst_CMainWindow)
#include "tst_CMainWindow.moc"
