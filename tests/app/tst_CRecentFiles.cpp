// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include "CRecentFiles.h"

#include <QTemporaryDir>

class tst_CRecentFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void theNewestStandsFirstAndNoFileTwice()
    {
        QMenu menu;
        CRecentFiles recent(&menu, {});
        for (const char* pName : {"/a.png", "/b.png", "/a.png"})
            recent.Add(QString::fromLatin1(pName));
        QCOMPARE(recent.Files(), (QStringList{QStringLiteral("/a.png"), QStringLiteral("/b.png")}));
    }

    void onlyTheLastTenAreKept()
    {
        QMenu menu;
        CRecentFiles recent(&menu, {});
        for (int i = 0; i < 15; ++i)
            recent.Add(QStringLiteral("/%1.png").arg(i));
        QCOMPARE(recent.Files().size(), 10);
        QCOMPARE(recent.Files().first(), QStringLiteral("/14.png"));
    }

    void everyNameComesBackAsItWas()
    {
        QMenu menu;
        CRecentFiles recent(&menu, {});
        const QStringList names{QStringLiteral("/it's.png"), QStringLiteral("/a b%20&.png"),
                                QString::fromUtf8("/\xed\x95\x9c\xea\xb5\xad.png"),
                                QStringLiteral("/a\nb;.png")};
        for (const QString& strName : names)
            recent.Add(strName);
        for (const QString& strName : names)
            QVERIFY2(recent.Files().contains(strName), qPrintable(strName));
        QVERIFY(
            !CSettingManager::GetString(HostSettings::kRecentFiles, QString()).contains(QLatin1Char('\'')));
    }

    void theMenuOpensTheFileThatWasChosen()
    {
        QMenu menu;
        QStringList opened;
        CRecentFiles recent(&menu, [&](const QString& strPath) { opened << strPath; });
        recent.Add(QStringLiteral("/x/a&b.png"));
        recent.Add(QStringLiteral("/y/c.png"));
        Q_EMIT menu.aboutToShow();
        QCOMPARE(menu.actions()[0]->text(), QStringLiteral("&1 c.png (/y)"));
        QCOMPARE(menu.actions()[1]->text(), QStringLiteral("&2 a&&b.png (/x)"));
        menu.actions()[1]->trigger();
        QCOMPARE(opened, QStringList{QStringLiteral("/x/a&b.png")});
        menu.actions().last()->trigger();
        QCOMPARE(recent.Files(), QStringList());
    }

    void theNextWindowOffersWhatTheLastOneOpened()
    {
        {
            Host host;
            QVERIFY(host.Show({kPhoto}));
            QCOMPARE(host.window.OpenFiles({QStringLiteral("/nowhere/a.png")}), 0); // not remembered
        }
        Host host;
        QVERIFY(host.Show());
        QAction* pRecent = host.Entry("File", "Open Recent");
        QVERIFY(pRecent && pRecent->menu());
        Q_EMIT pRecent->menu()->aboutToShow();
        QCOMPARE(pRecent->menu()->actions().size(), 3); // the file, a separator, the clearing
        pRecent->menu()->actions().first()->trigger();

        QVERIFY(host.View(0)->GetImageUID() != 0xFFFFFFFFu);
    }

    void aFolderIsOneEntryHoweverFarOneGoesInIt()
    {
        const Pictures files;
        for (const char* pName : {"a.png", "b.png"})
            files.Add(QLatin1String(pName));
        const QString strFolder = QFileInfo(files.folder.path()).absoluteFilePath();
        QMenu menu;
        const CRecentFiles recent(&menu, {});
        {
            Host host;
            QVERIFY(host.Show());
            host.window.StartOpening({strFolder}, QString());
            QTRY_VERIFY(host.window.windowTitle().startsWith(QLatin1String("a.png")));
            QTRY_VERIFY(host.IsEnabled("View", "Next Image"));
            host.Key(Qt::Key_PageDown);
            QTRY_VERIFY(host.window.windowTitle().startsWith(QLatin1String("b.png")));
            QCOMPARE(recent.Files(), QStringList{strFolder});
        }
        Host host;
        QVERIFY(host.Show());
        host.Entry("File", "Open Recent")->menu()->actions().first()->trigger();
        QTRY_VERIFY(host.window.windowTitle().startsWith(QLatin1String("a.png")));
    }
};

VANTOR_TEST_MAIN(tst_CRecentFiles)
#include "tst_CRecentFiles.moc"
