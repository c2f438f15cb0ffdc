// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "app/CMainWindow.h"
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/log/CLogView.h>
#include <VantorCommon/settings/CSettingDlg.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QApplication>
#include <QDockWidget>
#include <QMenuBar>
#include <QSpinBox>
#include <QTableView>

namespace
{
QAction* MenuEntry(const CMainWindow& window, const QString& strMenu, const QString& strText)
{
    for (const QAction* pMenu : window.menuBar()->actions()) {
        if (pMenu->text() != strMenu)
            continue;
        for (QAction* pEntry : pMenu->menu()->actions())
            if (pEntry->text() == strText)
                return pEntry;
    }
    return nullptr;
}

/// Opens the settings as a person does.
CSettingDlg* OpenSettings(CMainWindow& window)
{
    QAction* pEntry = MenuEntry(window, QStringLiteral("&File"), QStringLiteral("S&ettings..."));
    auto* pDialog = window.findChild<CSettingDlg*>();
    if (!pEntry || !pDialog)
        return nullptr;
    pEntry->trigger();
    return QTest::qWaitForWindowActive(pDialog) ? pDialog : nullptr;
}
} // namespace

class tst_CMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aResolutionChangedInTheSettingsIsFoundAgainByTheNextWindow()
    {
        {
            CMainWindow window;
            window.show();
            QVERIFY(QTest::qWaitForWindowActive(&window));
            CSettingDlg* pDialog = OpenSettings(window);
            QVERIFY(pDialog);
            auto* pBox = pDialog->findChild<QSpinBox*>(QStringLiteral("GENERAL_PDF_RESOLUTION_X"));
            QCOMPARE(pBox->value(), 0);
            pBox->setFocus();
            pBox->selectAll();
            QTest::keyClicks(pBox, QStringLiteral("300"));
            QCOMPARE(pDialog->GetGeneralPDFResolutionX(), 300);
            QCOMPARE(CSettingManager::GetInt(QStringLiteral("GENERAL_PDF_RESOLUTION_X"), 0), 0);
        }
        CMainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        CSettingDlg* pDialog = OpenSettings(window);
        QVERIFY(pDialog);
        QCOMPARE(pDialog->GetGeneralPDFResolutionX(), 300);
        QCOMPARE(pDialog->GetGeneralPDFResolutionY(), 0);
    }

    void theLogDockShowsTheLinesThatArriveWhileWorking()
    {
        CMainWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto* pDock = window.findChild<QDockWidget*>(QStringLiteral("Log"));
        QVERIFY(pDock);
        QVERIFY(pDock->isVisible());
        const auto* pView = qobject_cast<CLogView*>(pDock->widget());
        QVERIFY(pView);
        const QAbstractItemModel* pRows = pView->findChild<QTableView*>()->model();
        CLogger::Write(WARNING, "a line");
        QTRY_VERIFY(pRows->rowCount() > 0 &&
                    pRows->index(pRows->rowCount() - 1, 2).data().toString() == QStringLiteral("a line"));
        QVERIFY(MenuEntry(window, QStringLiteral("&View"), QStringLiteral("Log")));
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
            QTest::keyClick(window.windowHandle(), Qt::Key_V, Qt::AltModifier);
            if (!QTest::qWaitFor([] { return QApplication::activePopupWidget(); }))
                return false;
            QTest::keyClick(QApplication::activePopupWidget(), 'g');
            return QTest::qWaitFor([&] {
                auto* pGlobe = window.findChild<CImageView3DEarth*>();
                return pGlobe && QApplication::activeWindow() == pGlobe && pGlobe->isValid();
            });
        };
        QVERIFY(open());
        auto* pGlobe = window.findChild<CImageView3DEarth*>();
        QCOMPARE(pGlobe->windowTitle(), QStringLiteral("Globe"));
        const QImage before = pGlobe->grabFramebuffer();
        const QPoint centre = pGlobe->rect().center();
        QVERIFY(before.pixelColor(centre) != QColor(Qt::black)); // it has its picture
        QWindow* pHandle = pGlobe->windowHandle();
        QTest::mousePress(pHandle, Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseMove(pHandle, centre + QPoint(30, 0));
        QTest::mouseMove(pHandle, centre + QPoint(60, 20));
        QTest::mouseRelease(pHandle, Qt::LeftButton, Qt::NoModifier, centre + QPoint(60, 20));
        QTRY_COMPARE(pGlobe->GetYaw(), -96.0F);
        QCOMPARE(pGlobe->GetPitch(), 2.0F);
        QVERIFY(pGlobe->grabFramebuffer() != before);

        pGlobe->close();
        QVERIFY(Activate(window));
        QVERIFY(open()); // the same again
        QCOMPARE(window.findChildren<CImageView3DEarth*>().size(), 1);
    }
};

VANTOR_TEST_MAIN(tst_CMainWindow)
#include "tst_CMainWindow.moc"
