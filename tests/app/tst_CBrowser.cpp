// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// From image to image: the folder of the one that is shown, the title, the whole screen and the trash.
#include "CTrash.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <QDockWidget>
#include <QDropEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QScreen>
#include <QStatusBar>

namespace
{
/// A folder of three images, whose names come in another order as plain texts, beside other files.
struct Folder : Pictures {
    Folder()
    {
        for (const char* pName : {"p 10.png", "p 9.png", "P 11.png"})
            Add(QLatin1String(pName));
        Write(folder.filePath(QStringLiteral("p 9.txt")), "text");
        QDir(folder.path()).mkdir(QStringLiteral("p 12.png"));
    }
    QString Path(const char* pName) const { return folder.filePath(QLatin1String(pName)); }
};

/// Without the zoom.
QString Title(const Host& host)
{
    return host.window.windowTitle().remove(QRegularExpression(QStringLiteral(" [0-9.,]+ %")));
}
} // namespace

class tst_CBrowser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void withoutAnImageTheTitleIsTheProgram()
    {
        Host host;
        QVERIFY(host.Show());
        QCOMPARE(Title(host), QStringLiteral("Vantor[*]"));
    }

    void theKeysGoThroughTheFolderInTheOrderOfNumbers()
    {
        const Folder files;
        Host host;
        QVERIFY(host.Show({files.Path("p 10.png")}));
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (2/3) - Vantor"));
        host.Key(Qt::Key_PageDown);
        QTRY_COMPARE(Title(host), QStringLiteral("P 11.png[*] (3/3) - Vantor"));
        host.Key(Qt::Key_PageDown);
        QVERIFY(!host.IsEnabled("View", "Next Image"));
        QCOMPARE(Title(host), QStringLiteral("P 11.png[*] (3/3) - Vantor"));
        host.Key(Qt::Key_Home);
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        QVERIFY(!host.IsEnabled("View", "Previous Image"));
        host.Key(Qt::Key_End);
        QTRY_COMPARE(Title(host), QStringLiteral("P 11.png[*] (3/3) - Vantor"));
        host.Key(Qt::Key_PageUp);
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (2/3) - Vantor"));
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 1);
    }

    void theArrowsAndButtonsOfAFittedImageGoThroughTheFolder()
    {
        const Folder files;
        Host host;
        QVERIFY(host.Show({files.Path("p 9.png")}));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        host.View(0)->setFocus();
        host.Key(Qt::Key_Right);
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (2/3) - Vantor"));
        host.Key(Qt::Key_Left);
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        CtrlOf(host, 0)->slot_Next();
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (2/3) - Vantor"));
    }

    void theTitleHasTheZoom()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.View(0)->SetZoom(1.5, QPointF());
        QVERIFY(host.window.windowTitle().endsWith(QStringLiteral(" 150 % - Vantor")));
    }

    void aNameIsShownAsItIs()
    {
        const Pictures pictures;
        Host host;
        QVERIFY(host.Show({pictures.Add(QStringLiteral("a[*]b.png"))}));
        QTRY_COMPARE(Title(host), QStringLiteral("a[*][*]b.png[*] - Vantor"));
    }

    void aListOfTheUsersIsNotLeft()
    {
        const Folder files;
        Host host;
        QVERIFY(host.Show({files.Path("p 9.png")}));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor")); // the folder is known
        CtrlOf(host, 0)->AddImage(files.Path("p 10.png"));
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (2/2) - Vantor"));
        QVERIFY(!host.IsEnabled("View", "Next Image"));
        host.Key(Qt::Key_PageUp);
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/2) - Vantor"));
        QVERIFY(!host.IsEnabled("View", "Previous Image"));
    }

    void behindTheLastPageComesTheNextFile()
    {
        const Folder files;
        QVERIFY(QFile::copy(kDocument, files.Path("p 9a.pdf")));
        Host host;
        QVERIFY(host.Show({files.Path("p 9a.pdf")}));
        const int nPages = CtrlOf(host, 0)->GetImageModel()->GetImageCount();
        QVERIFY(nPages > 1);
        for (int i = 1; i < nPages; ++i)
            host.Key(Qt::Key_PageDown);
        QTRY_COMPARE(Title(host), QStringLiteral("p 9a.pdf[*] (%1/%1) - Vantor").arg(nPages));
        QTRY_VERIFY(host.IsEnabled("View", "Next Image"));
        host.Key(Qt::Key_PageDown);
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (3/4) - Vantor"));
    }

    void aFileThatCannotBeReadIsSteppedOver()
    {
        const Folder files;
        QVERIFY(Pictures::Write(files.Path("p 9b.png"), "no image"));
        Host host;
        QVERIFY(host.Show({files.Path("p 9.png")}));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/4) - Vantor"));
        host.Key(Qt::Key_PageDown);
        QTRY_VERIFY(host.Message().contains(QStringLiteral("p 9b.png")));
        QCOMPARE(Title(host), QStringLiteral("p 9.png[*] (1/4) - Vantor"));
        host.Key(Qt::Key_PageDown);
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (3/4) - Vantor"));
    }

    void whoKeepsAnImageStaysThere()
    {
        const Folder files;
        Host host;
        QVERIFY(host.Show({files.Path("p 9.png")}));
        host.DrawRectangle(0);
        {
            Answers cancel(QStringLiteral("Cancel"));
            host.Key(Qt::Key_PageDown);
            QTRY_COMPARE(cancel.lstAsked.size(), 1);
        }
        QCOMPARE(host.Annotations(0), 1);
        QCOMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        host.window.activateWindow();
        QTRY_VERIFY(host.window.isActiveWindow());
        Answers discard(QStringLiteral("Discard"));
        host.Key(Qt::Key_PageDown);
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (2/3) - Vantor"));
    }

    void whatComesIntoTheFolderIsThere()
    {
        const Folder files;
        Host host;
        QVERIFY(host.Show({files.Path("p 9.png")}));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        files.Add(QStringLiteral("p 8.png"));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (2/4) - Vantor"));
        QVERIFY(QFile::remove(files.Path("P 11.png")));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (2/3) - Vantor"));
    }

    void aFolderOpensItsFirstImage()
    {
        const Folder files;
        const QTemporaryDir empty;
        Host host;
        host.window.show();
        QCOMPARE(host.window.OpenFiles({files.folder.path()}), 1);
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(empty.path())});
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(host.View(0), &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(host.View(0), &drop);
        QTRY_COMPARE(host.Message(), QStringLiteral("There is no image in %1.").arg(empty.path()));
        QCOMPARE(Title(host).left(7), QStringLiteral("p 9.png"));
    }

    void whatIsMovedToTheTrashComesBack()
    {
        const Folder files;
        Host host;
        QVERIFY(host.Show({files.Path("p 9.png")}));
        host.DrawRectangle(0);
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(QFile::exists(Pictures::Beside(files.Path("p 9.png"))));
        QTRY_VERIFY(!host.window.isWindowModified());
        const QByteArray before = Pictures::Bytes(files.Path("p 9.png"));
        {
            Answers cancel(QStringLiteral("Cancel"));
            host.Entry("File", "Move to Trash...")->trigger();
            QCOMPARE(cancel.lstAsked.size(), 1);
            QVERIFY(QFile::exists(files.Path("p 9.png")));
        }
        Answers move(QStringLiteral("Move to Trash"));
        host.Entry("File", "Move to Trash...")->trigger();
        QVERIFY(!QFile::exists(files.Path("p 9.png")));
        QVERIFY(!QFile::exists(Pictures::Beside(files.Path("p 9.png"))));
        QTRY_COMPARE(Title(host), QStringLiteral("p 10.png[*] (1/2) - Vantor"));
        host.Entry("File", "Restore from Trash")->trigger();
        QCOMPARE(Pictures::Bytes(files.Path("p 9.png")), before);
        QVERIFY(QFile::exists(Pictures::Beside(files.Path("p 9.png"))));
        QTRY_COMPARE(Title(host), QStringLiteral("p 9.png[*] (1/3) - Vantor"));
        QTRY_COMPARE(host.Annotations(0), 1);
        QVERIFY(!host.IsEnabled("File", "Restore from Trash"));
    }

    void withoutATrashTheFileStays()
    {
        const Folder files;
        QVERIFY(Pictures::Write(files.Path("data"), "no folder"));
        const QByteArray before = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", files.Path("data").toUtf8());
        CTrash trash;
        const bool bMoved = trash.Move(files.Path("p 9.png"));
        before.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", before);
        QVERIFY(!bMoved);
        QVERIFY(QFile::exists(files.Path("p 9.png")));
        QVERIFY(!QDir(QStringLiteral("files")).exists());
    }

    void whatStandsInTheWayOfARestoredFileIsKept()
    {
        const Folder files;
        CTrash trash;
        QVERIFY(!trash.Move(files.Path("none.png")));
        QVERIFY(trash.Move(files.Path("p 9.png")));
        QVERIFY(Pictures::Write(files.Path("p 9.png"), "another"));
        QVERIFY(!trash.Restore());
        QCOMPARE(Pictures::Bytes(files.Path("p 9.png")), QByteArray("another"));
        QVERIFY(QFile::remove(files.Path("p 9.png")));
        QVERIFY(trash.Restore());
        QVERIFY(QFile::exists(files.Path("p 9.png")));
        QVERIFY(trash.Last().isEmpty());
    }

    void theWholeScreenHasTheViewersAlone()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.Key(Qt::Key_F11);
        QTRY_VERIFY(host.window.isFullScreen());
        QVERIFY(!host.window.menuBar()->isVisible() && !host.window.statusBar()->isVisible());
        for (const QDockWidget* pDock : host.window.findChildren<QDockWidget*>())
            QVERIFY(!pDock->isVisible());
        QTRY_COMPARE(host.window.size(), host.window.screen()->size());
        host.Key(Qt::Key_Escape);
        QTRY_VERIFY(!host.window.isFullScreen());
        QVERIFY(host.window.menuBar()->isVisible() && host.window.statusBar()->isVisible());
        host.Key(Qt::Key_F11);
        QTRY_VERIFY(host.window.isFullScreen());
        host.Key(Qt::Key_F11);
        QTRY_VERIFY(!host.window.isFullScreen());
        QVERIFY(host.window.menuBar()->isVisible());
    }
};

VANTOR_TEST_MAIN(tst_CBrowser)
#include "tst_CBrowser.moc"
