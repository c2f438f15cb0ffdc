// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What the host does with files: which viewer gets them, and what it says of them.
#include "CommandLine.h"
#include "HostSupport.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QDockWidget>
#include <QDragEnterEvent>
#include <QLabel>
#include <QListView>
#include <QMimeData>
#include <QTemporaryDir>

namespace
{
const QString kOther = TestDataPath(QStringLiteral("jpeg/hopper.jpg"));
const QString kLocked = TestDataPath(QStringLiteral("pdf/enc-R3,V2,U=view,O=master.pdf"));

/// Such as "2 1 0 0": how many images each viewer has.
QString Counts(const Host& host)
{
    QStringList lstCounts;
    for (int i = 0; i < 4; ++i)
        lstCounts << QString::number(host.Viewer(i)->findChild<QListView*>()->model()->rowCount());
    return lstCounts.join(QLatin1Char(' '));
}

/// The row of the thumbnail that is current.
int Current(const Host& host, int nView)
{
    return host.Viewer(nView)->findChild<QListView*>()->currentIndex().row();
}

void DropOn(QWidget* pWidget, const QStringList& lstPaths)
{
    QMimeData data;
    QList<QUrl> lstUrls;
    for (const QString& strPath : lstPaths)
        lstUrls << QUrl::fromLocalFile(strPath);
    data.setUrls(lstUrls);
    const QPoint at = pWidget->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pWidget, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pWidget, &drop);
}
} // namespace

class tst_HostFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void filesAreDealtOverTheViewersThatAreShown_data()
    {
        QTest::addColumn<int>("nFiles");
        QTest::addColumn<QString>("strLayout");
        QTest::addColumn<int>("nShown");
        QTest::addColumn<QString>("strCounts");
        QTest::newRow("one") << 1 << QString() << 1 << "1 0 0 0";
        QTest::newRow("two") << 2 << QString() << 2 << "1 1 0 0";
        QTest::newRow("three") << 3 << QString() << 4 << "1 1 1 0";
        QTest::newRow("four") << 4 << QString() << 4 << "1 1 1 1";
        QTest::newRow("more than viewers: a list") << 5 << QString() << 1 << "5 0 0 0";
        QTest::newRow("in one") << 3 << QStringLiteral("1x1") << 1 << "3 0 0 0";
        QTest::newRow("in two") << 5 << QStringLiteral("2x1") << 2 << "3 2 0 0";
        QTest::newRow("in four") << 6 << QStringLiteral("2x2") << 4 << "2 2 1 1";
    }
    void filesAreDealtOverTheViewersThatAreShown()
    {
        QFETCH(int, nFiles);
        QFETCH(QString, strLayout);
        QFETCH(int, nShown);
        QFETCH(QString, strCounts);
        Host host;
        QVERIFY(host.Show());
        QStringList lstFiles;
        for (int i = 0; i < nFiles; ++i)
            lstFiles << (i % 2 == 0 ? kPhoto : kOther);
        QCOMPARE(host.window.OpenFiles(lstFiles, strLayout), nFiles);
        QCOMPARE(host.ShownViewers(), nShown);
        QCOMPARE(Counts(host), strCounts);
        QCOMPARE(Current(host, 0), 0); // each begins with its first
    }

    void aStoredLayoutHoldsOnlyWithoutFiles()
    {
        Host::StoreSetting(HostSettings::kLayout, QStringLiteral("2x2"));
        Host empty;
        QVERIFY(empty.Show());
        QCOMPARE(empty.ShownViewers(), 4);
        Host one;
        QVERIFY(one.Show({kPhoto}));
        QCOMPARE(one.ShownViewers(), 1);
    }

    void anAddressOfAFileIsUnderstoodOnTheCommandLine_data()
    {
        QTest::addColumn<QString>("strArgument");
        QTest::addColumn<QString>("strPath");
        QTest::newRow("address") << "file:///home/me/a%20b%C3%A9.png" << QStringLiteral("/home/me/a bé.png");
        QTest::newRow("local host") << "file://localhost/home/a.png" << QStringLiteral("/home/a.png");
        QTest::newRow("path") << "/home/me/a%20b.png" << QStringLiteral("/home/me/a%20b.png");
        QTest::newRow("relative") << "file:a.png" << QStringLiteral("file:a.png");
        QTest::newRow("other") << "http://example.org/a.png" << QStringLiteral("http://example.org/a.png");
    }
    void anAddressOfAFileIsUnderstoodOnTheCommandLine()
    {
        QFETCH(QString, strArgument);
        QFETCH(QString, strPath);
        QCOMPARE(SCommandLine::Parse({QStringLiteral("vantor-viewer"), strArgument}).lstFiles,
                 QStringList(strPath));
    }

    void aDocumentDroppedOnADockOpensInTheActiveViewerWithItsFirstPage()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.View(1)->setFocus();
        auto* pDock = host.window.findChild<QDockWidget*>(QStringLiteral("Tools"));
        DropOn(pDock->widget(), {kDocument});
        QCOMPARE(Counts(host), QStringLiteral("1 12 0 0"));
        QCOMPARE(Current(host, 1), 1);
    }

    void aMessageGoesWhenTheFileSucceeds()
    {
        QTemporaryDir folder;
        const QString strLate = folder.filePath(QStringLiteral("late.png"));
        Host host;
        QVERIFY(host.Show());
        host.window.OpenFiles({strLate, QStringLiteral("/nowhere/b.png")});
        QCOMPARE(host.Message().count(QLatin1Char('\n')), 1);
        QVERIFY(QFile::copy(kPhoto, strLate));
        host.window.OpenFiles({strLate}); // nobody has touched anything: the other message is still new
        QVERIFY2(!host.Message().contains(strLate), qPrintable(host.Message()));
        QVERIFY(host.Message().contains(QStringLiteral("/nowhere/b.png")));
    }

    void oldMessagesGoWithTheNextThingThatSucceeds_data()
    {
        QTest::addColumn<int>("nAction");
        QTest::newRow("turned") << 0;
        QTest::newRow("drawn") << 1;
        QTest::newRow("back from 3D") << 2;
        QTest::newRow("dropped") << 3;
    }
    void oldMessagesGoWithTheNextThingThatSucceeds()
    {
        QFETCH(int, nAction);
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.window.OpenFiles({QStringLiteral("/nowhere/a.png")});
        QVERIFY(!host.Message().isEmpty());
        host.View(0)->setFocus();
        if (nAction == 0)
            host.Key(Qt::Key_R, Qt::ControlModifier);
        else if (nAction == 1)
            host.DrawRectangle(0);
        else if (nAction == 2)
            host.Key(Qt::Key_F2);
        else
            DropOn(&host.window, {kPhoto});
        QCOMPARE(host.Message(), QString());
    }

    void ofFilesDroppedTogetherTheMessageOfABadOneStays()
    {
        Host host;
        QVERIFY(host.Show());
        DropOn(&host.window, {kPhoto, QStringLiteral("/nowhere/a.png"), kOther});
        QCOMPARE(Counts(host), QStringLiteral("2 0 0 0"));
        QVERIFY(host.Message().contains(QStringLiteral("/nowhere/a.png")));
    }

    void whatFailsChangesNoOtherMessage()
    {
        Host host;
        QVERIFY(host.Show());
        host.window.OpenFiles({QStringLiteral("/nowhere/a.png")});
        DropOn(&host.window, {QStringLiteral("/nowhere/b.png")});
        QCOMPARE(host.Message().count(QLatin1Char('\n')), 1);
    }

    void whatIsToBeKnownOfAFileIsTold_data()
    {
        QTest::addColumn<QString>("strFile");
        QTest::newRow("whole") << QStringLiteral("png/bricks-color.png");
        QTest::newRow("several pages") << QStringLiteral("tiff/multipage.tiff");
        QTest::newRow("several frames") << QStringLiteral("gif/animated-red-blue.gif");
    }
    void whatIsToBeKnownOfAFileIsTold()
    {
        QFETCH(QString, strFile);
        Vantor::Algorithms::CImage image;
        QCOMPARE(image.Load(TestDataPath(strFile).toStdWString()), 0);
        QStringList lstNotes;
        for (const std::string& strNote : image.GetNotes())
            lstNotes << QFileInfo(strFile).fileName() + QStringLiteral(": ") +
                            QString::fromStdString(strNote);
        QCOMPARE(lstNotes.isEmpty(), strFile.startsWith(QLatin1String("png")));
        Host host;
        QVERIFY(host.Show({TestDataPath(strFile)}));
        QCOMPARE(host.Message(), lstNotes.join(QLatin1Char('\n')));
    }
};

VANTOR_TEST_MAIN(tst_HostFiles)
#include "tst_HostFiles.moc"
