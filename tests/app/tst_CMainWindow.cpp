// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "app/CMainWindow.h"
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/TestMain.h"

#include <QMenuBar>

class tst_CMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aToolIsOpenedFromTheMenuByKeys_data()
    {
        QTest::addColumn<char>("key");
        QTest::newRow("Median Filter") << 'm';
        QTest::newRow("Sobel Filter") << 's';
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
};

VANTOR_TEST_MAIN(tst_CMainWindow)
#include "tst_CMainWindow.moc"
