// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The page box in the status bar, and the wheel that turns pages.
#include "CPageField.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <QStatusBar>
#include <QWheelEvent>

namespace
{
class CPageHost : public Host
{
public:
    CPageField* Field() const { return window.findChild<CPageField*>(); }
    int Current() const { return CtrlOf(*this, 0)->GetImageModel()->GetCurrentIndex(); }
    void Type(const char* pText)
    {
        Entry("View", "Page...")->trigger();
        QTRY_COMPARE(Field()->selectedText(), Field()->text());
        QTest::keyClicks(Field(), QString::fromLatin1(pText));
        QTest::keyClick(Field(), Qt::Key_Return);
    }
};
} // namespace

class tst_HostPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Host::ForgetSettings();
        Host::StoreSetting(HostSettings::kWheelPages, QString());
    }

    void theBoxShowsThePageOfTheDocument()
    {
        CPageHost host;
        QVERIFY(host.Show());
        QVERIFY(!host.Field()->isEnabled() && host.Field()->text().isEmpty());
        QVERIFY(!host.IsEnabled("View", "Page..."));
        QCOMPARE(host.window.OpenFiles({kDocument}), 1);
        QCOMPARE(host.Field()->text(), QStringLiteral("1 / 11"));
        host.Key(Qt::Key_PageDown);
        QCOMPARE(host.Field()->text(), QStringLiteral("2 / 11"));
        host.Entry("File", "Close All Images")->trigger();
        QVERIFY(!host.Field()->isEnabled() && host.Field()->text().isEmpty());
    }

    void aTypedPageIsGoneTo()
    {
        CPageHost host;
        QVERIFY(host.Show({kDocument}));
        QVERIFY(host.Entry("View", "Page...")->shortcut() == QKeySequence(QStringLiteral("Ctrl+Shift+G")));
        host.Type("7");
        QCOMPARE(host.Current(), 6);
        QVERIFY(host.View(0)->hasFocus());
        host.Type("11 / 11");
        QCOMPARE(host.Current(), 10);
        QCOMPARE(host.Field()->text(), QStringLiteral("11 / 11"));
    }

    void whatIsNoPageIsToldAndStays()
    {
        CPageHost host;
        QVERIFY(host.Show({kDocument}));
        host.Type("12");
        QCOMPARE(host.Message(), QStringLiteral("There is no page \"12\". Type a number from 1 to 11."));
        for (const char* pBad : {"0", "-1", "x", "99999999999", "1.5", ""}) {
            QSignalSpy refused(host.Field(), &CStatusField::signal_Refused);
            host.Field()->setText(QLatin1String(pBad));
            QTest::keyClick(host.Field(), Qt::Key_Return);
            QCOMPARE(refused.size(), 1);
            QCOMPARE(host.Current(), 0);
        }
        QTest::keyClick(host.Field(), Qt::Key_Escape);
        QCOMPARE(host.Field()->text(), QStringLiteral("1 / 11"));
        QVERIFY(host.View(0)->hasFocus());
    }

    void inAFolderTheBoxCountsTheFiles()
    {
        const Pictures files;
        const QString strSecond = files.Add(QStringLiteral("b.png"));
        QVERIFY(!files.Add(QStringLiteral("a.png")).isEmpty() &&
                !files.Add(QStringLiteral("c.png")).isEmpty());
        CPageHost host;
        QVERIFY(host.Show({strSecond}));
        QTRY_COMPARE(host.Field()->text(), QStringLiteral("2 / 3"));
        host.Type("3");
        QTRY_COMPARE(host.Field()->text(), QStringLiteral("3 / 3"));
        QVERIFY(host.window.windowTitle().startsWith(QLatin1String("c.png")));
    }

    void theWheelTurnsPagesIfTheUserChoosesSoAndStillDoesNextTime()
    {
        const auto turn = [](const Host& host) {
            QWheelEvent wheel(QPointF(9, 9), host.View(0)->mapToGlobal(QPoint(9, 9)), QPoint(),
                              QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(host.View(0), &wheel);
        };
        {
            CPageHost host;
            QVERIFY(host.Show({kDocument}));
            QVERIFY(!host.Entry("View", "Wheel Turns Pages")->isChecked());
            turn(host);
            QCOMPARE(host.Current(), 0);
            host.View(0)->ZoomFit();
            host.Entry("View", "Wheel Turns Pages")->trigger();
            turn(host);
            QCOMPARE(host.Current(), 1);
        }
        CPageHost host;
        QVERIFY(host.Show({kDocument}));
        QVERIFY(host.Entry("View", "Wheel Turns Pages")->isChecked());
        turn(host);
        QCOMPARE(host.Current(), 1);
    }
};

VANTOR_TEST_MAIN(tst_HostPages)
#include "tst_HostPages.moc"
