// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Session.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

class tst_Session : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void anyNameSurvivesTheSettings()
    {
        const QStringList lstFiles{QStringLiteral("/a b;c'\"%20.png"), QStringLiteral("/é/한.png")};
        const QString strText = Session::ToText({{}, {lstFiles, 1}});
        QVERIFY(!strText.contains(QLatin1Char('\'')) && !strText.contains(QLatin1Char('"')));
        const auto vctOpen = Session::FromText(strText);
        QCOMPARE(vctOpen.size(), std::size_t(2));
        QVERIFY(vctOpen[0].lstFiles.isEmpty());
        QCOMPARE(vctOpen[1].lstFiles, lstFiles);
        QCOMPARE(vctOpen[1].nCurrent, 1);
    }

    void whatWasOpenComesBackOnlyWhenThatIsWished_data()
    {
        QTest::addColumn<bool>("bWished");
        QTest::newRow("no") << false;
        QTest::newRow("yes") << true;
    }
    void whatWasOpenComesBackOnlyWhenThatIsWished()
    {
        QFETCH(bool, bWished);
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        {
            Host host;
            QVERIFY(host.Show());
            host.window.OpenFiles({kDocument, strPicture, strPicture}, QStringLiteral("2x1"));
            CtrlOf(host, 0)->GetImageModel()->SetCurrentIndex(3);
            QAction* pEntry = host.Entry("Settings", "Reopen at the Start What Was Open");
            QVERIFY(pEntry && !pEntry->isChecked());
            if (bWished)
                pEntry->trigger();
            QVERIFY(host.window.close());
        }
        Host host;
        host.window.ReopenSession();
        QVERIFY(host.Show());
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), bWished ? 12 : 0);
        QCOMPARE(CtrlOf(host, 1)->GetImageModel()->GetImageCount(), bWished ? 1 : 0);
        if (bWished)
            QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetCurrentIndex(), 3);
    }

    void whatWasOpenComesBackWhileTheWindowLives()
    {
        const Pictures pictures;
        QStringList lstPictures;
        for (const char* pName : {"a.png", "b.png", "c.png"})
            lstPictures << pictures.Add(QLatin1String(pName));
        const QString strGone = pictures.folder.filePath(QStringLiteral("gone.png"));
        Host::StoreSetting(HostSettings::kReopen, 1);
        Host::StoreSetting(
            HostSettings::kSession,
            Session::ToText({{{kDocument, lstPictures[0]}, 7}, {lstPictures + QStringList{strGone}, 1}}));
        Host host;
        host.SetBackground(true);
        QVERIFY(host.Show());
        host.window.ReopenSession();
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 0);
        QCOMPARE(CtrlOf(host, 1)->GetImageModel()->GetImageCount(), 0);
        QTRY_COMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 12);
        QTRY_COMPARE(CtrlOf(host, 1)->GetImageModel()->GetImageCount(), 3);
        QTRY_VERIFY(!host.Message().isEmpty()); // about the one that is gone
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetCurrentIndex(), 7);
        QCOMPARE(CtrlOf(host, 1)->GetImageModel()->GetCurrentIndex(), 1);
    }
};

VANTOR_TEST_MAIN(tst_Session)
#include "tst_Session.moc"
