// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The dock of annotations, exported and copied pictures, and the keys of annotations in the viewer.
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/annotation/view/CAnnotationTableView.h>
#include <VantorCommon/view2d/BurnIn.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QClipboard>
#include <QDockWidget>
#include <QLineEdit>

namespace
{
using M = CAnnotationTableModel;

class CAnnotationsHost : public Host
{
public:
    CAnnotationTableView* Table() const { return window.findChild<CAnnotationTableView*>(); }
    bool ShowDock()
    {
        Entry({QStringLiteral("View"), QStringLiteral("Docks"), QStringLiteral("Annotations")})->trigger();
        return QTest::qWaitFor([this] { return Table()->isVisible(); });
    }
    QString Text(int nRow, int nColumn) const
    {
        return Rows()->data(Rows()->index(nRow, nColumn), Qt::DisplayRole).toString();
    }
    bool HasRows(int nRows) const
    {
        return QTest::qWaitFor([&] { return Rows()->rowCount() == nRows; });
    }
    void ClickRow(int nRow)
    {
        const QRect rect = Table()->visualRect(Rows()->index(nRow, M::EColumn_Kind));
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          Table()->viewport()->mapTo(&window, rect.center()));
    }
    M* Rows() const { return Table()->GetModel(); }
    QRectF Box() const { return Viewer(0)->Get2DDrawableObjects().at(0)->GetBoundary(); }
};

/// Where a box lies after an entry of the menu has changed an image of this size.
QRectF Carried(const QString& strEntry, const QRectF& box, const QSizeF& size)
{
    if (strEntry == QStringLiteral("Rotate Right"))
        return {size.height() - box.bottom(), box.left(), box.height(), box.width()};
    if (strEntry == QStringLiteral("Rotate Left"))
        return {box.top(), size.width() - box.right(), box.height(), box.width()};
    if (strEntry == QStringLiteral("Flip Horizontally"))
        return {size.width() - box.right(), box.top(), box.width(), box.height()};
    if (strEntry == QStringLiteral("Flip Vertically"))
        return {box.left(), size.height() - box.bottom(), box.width(), box.height()};
    return box;
}
} // namespace

class tst_HostAnnotations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void theDockFollowsTheActiveViewer()
    {
        CAnnotationsHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        QVERIFY(host.ShowDock());
        host.View(0)->setFocus();
        host.DrawRectangle(0);
        QVERIFY(host.HasRows(1));
        QCOMPARE(host.Text(0, M::EColumn_Kind), QStringLiteral("Rectangle"));
        host.View(1)->setFocus();
        QVERIFY(host.HasRows(0));
        host.View(0)->setFocus();
        QVERIFY(host.HasRows(1));
        host.Table()->setFocus(); // which is no viewer
        QVERIFY(host.HasRows(1));
        if (const QString strFolder = qEnvironmentVariable("VANTOR_PICTURES"); !strFolder.isEmpty()) {
            host.DrawRectangle(0);
            host.Entry({QStringLiteral("Tools"), QStringLiteral("Ruler")})->trigger();
            host.Drag(0, {60, 60}, {180, 200});
            QVERIFY(host.HasRows(3));
            host.ClickRow(1);
            QCoreApplication::processEvents();
            host.window.grab().save(strFolder + QStringLiteral("/dock.png"));
        }
    }

    void f2InTheDockRenamesInsteadOfShowingTheView()
    {
        CAnnotationsHost host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(host.ShowDock());
        host.DrawRectangle(0);
        QVERIFY(host.HasRows(1));
        host.ClickRow(0);
        host.Key(Qt::Key_F2);
        auto* pEditor = host.Table()->findChild<QLineEdit*>();
        QVERIFY(pEditor);
        QTest::keyClicks(pEditor, QStringLiteral("door"));
        QTest::keyClick(pEditor, Qt::Key_Return);
        QTRY_COMPARE(host.Text(0, M::EColumn_Name), QStringLiteral("door"));
        host.Key(Qt::Key_Delete);
        QVERIFY(host.HasRows(0));
    }

    void keysOfTheMenuSelectAllAndDuplicateAndArrowsMove()
    {
        CAnnotationsHost host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        const auto pBox = host.Viewer(0)->Get2DDrawableObjects().at(0);
        const QPointF before = pBox->GetBoundary().topLeft();
        pBox->SetSelected(false);
        QVERIFY(!host.IsEnabled("Edit", "Duplicate"));
        host.Key(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(pBox->GetSelected());
        host.Key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(pBox->GetBoundary().topLeft(), before + QPointF(10, 0));
        host.Key(Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(host.Annotations(0), 2);
        host.Entry("Edit", "Duplicate")->trigger();
        QCOMPARE(host.Annotations(0), 3);
        host.Entry("Edit", "Select All")->trigger();
        host.Key(Qt::Key_Delete);
        QCOMPARE(host.Annotations(0), 0);
        QVERIFY(!host.IsEnabled("Edit", "Select All"));
    }

    void annotationsGoAlongWithTheirImageAndUndoBringsBothBack_data()
    {
        QTest::addColumn<QString>("entry");
        for (const char* pEntry :
             {"Rotate Left", "Rotate Right", "Flip Horizontally", "Flip Vertically", "Greyscale"})
            QTest::newRow(pEntry) << QString::fromLatin1(pEntry);
    }
    void annotationsGoAlongWithTheirImageAndUndoBringsBothBack()
    {
        QFETCH(QString, entry);
        CAnnotationsHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Entry({QStringLiteral("Tools"), QStringLiteral("Draw"), QStringLiteral("Rectangle")})->trigger();
        host.Drag(0, host.View(0)->rect().center() - QPoint(50, 35),
                  host.View(0)->rect().center() + QPoint(20, 10));
        const QRectF before = host.Box();
        const auto pBefore = CtrlOf(host, 0)->GetCurrentImgage();
        const QRectF after = Carried(entry, before, QImage(kPhoto).size());
        QCOMPARE(after == before, entry == QStringLiteral("Greyscale"));
        host.Entry({QStringLiteral("Edit"), entry})->trigger();
        QVERIFY(CtrlOf(host, 0)->GetCurrentImgage() != pBefore);
        QCOMPARE(host.Annotations(0), 1);
        QCOMPARE(host.Box(), after);
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(CtrlOf(host, 0)->GetCurrentImgage(), pBefore);
        QCOMPARE(host.Box(), before);
        host.Entry("Edit", "Redo")->trigger();
        QCOMPARE(host.Box(), after);
    }

    void whatWentWithTheOldImageIsToldAndComesBack()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(!host.IsEnabled("Edit", "Restore Cleared Annotations"));
        host.DrawRectangle(0);
        CtrlOf(host, 0)->ChangeCurrentImage(MakeTestImage(20, 10, 3));
        QCOMPARE(host.Annotations(0), 0);
        QVERIFY2(host.Message().contains(QStringLiteral("Restore Cleared Annotations")),
                 qPrintable(host.Message()));
        host.Entry("Edit", "Restore Cleared Annotations")->trigger();
        QCOMPARE(host.Annotations(0), 1);
        QVERIFY(!host.IsEnabled("Edit", "Restore Cleared Annotations"));
        Answers discard(QStringLiteral("Discard"));
        host.Entry("File", "Close All Images")->trigger();
        QCOMPARE(discard.lstAsked.size(), 1);
        QCOMPARE(host.Annotations(0), 0);
    }

    void whatCouldNotGoAlongIsTold()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        Vantor::Annotations::SDocument document;
        document.pages.resize(1);
        document.pages[0].objects.resize(1);
        document.pages[0].objects[0].raw = "{\"kind\":\"later\"}";
        StoreOf(host, 0)->Apply(document);
        host.Entry("Edit", "Rotate Left")->trigger();
        QVERIFY2(host.Message().contains(QStringLiteral("did not go along")), qPrintable(host.Message()));
    }

    void aPictureIsExportedWithItsAnnotations_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("as it comes") << QString() << QStringLiteral("png");
        QTest::newRow("PDF") << QStringLiteral("PDF (*.pdf)") << QStringLiteral("pdf");
    }
    void aPictureIsExportedWithItsAnnotations()
    {
        QFETCH(QString, filter);
        QFETCH(QString, suffix);
        CAnnotationsHost host;
        QVERIFY(!host.IsEnabled("File", "Export Picture..."));
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        host.Entry("File", "Export Picture...")->trigger();
        auto* pDialog = host.window.findChild<QFileDialog*>();
        QVERIFY(pDialog);
        QCOMPARE(QFileInfo(pDialog->selectedFiles().value(0)).baseName(), QStringLiteral("bricks-color"));
        if (!filter.isEmpty()) {
            pDialog->selectNameFilter(filter);
            Q_EMIT pDialog->filterSelected(filter);
        }
        const QTemporaryDir folder;
        pDialog->setDirectory(folder.path());
        pDialog->selectFile(QStringLiteral("out"));
        static_cast<QDialog*>(pDialog)->accept();
        const QString strPath = folder.filePath(QStringLiteral("out.") + suffix);
        QTRY_VERIFY(QFile::exists(strPath)); // it comes into being whole
        if (suffix == QStringLiteral("png")) {
            const QImage plain = QImage(kPhoto).convertToFormat(QImage::Format_RGB32);
            const QImage written = QImage(strPath).convertToFormat(QImage::Format_RGB32);
            QCOMPARE(written.size(), plain.size());
            QVERIFY(written != plain);
            if (const QString strFolder = qEnvironmentVariable("VANTOR_PICTURES"); !strFolder.isEmpty()) {
                QFile::copy(strPath, strFolder + QStringLiteral("/exported.png"));
                host.window.grab().save(strFolder + QStringLiteral("/screen.png"));
            }
        }
        QVERIFY(host.Message().isEmpty());
    }

    void whatCannotBeExportedIsTold()
    {
        CAnnotationsHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Entry("File", "Export Picture...")->trigger();
        auto* pDialog = host.window.findChild<QFileDialog*>();
        QVERIFY(pDialog);
        Q_EMIT pDialog->fileSelected(QStringLiteral("/nowhere/out.png"));
        QTRY_VERIFY(host.Message().startsWith(QStringLiteral("The picture cannot be exported. ")));
        pDialog->close();
    }

    void aCopyWithAnnotationsIsThePictureOnTheClipboard()
    {
        CAnnotationsHost host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        host.Entry("Edit", "Copy with Annotations")->trigger();
        const QImage plain = QImage(kPhoto).convertToFormat(QImage::Format_RGB32);
        const QImage copied = QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(copied.size(), plain.size());
        QVERIFY(copied != plain);
    }
};

VANTOR_TEST_MAIN(tst_HostAnnotations)
#include "tst_HostAnnotations.moc"
