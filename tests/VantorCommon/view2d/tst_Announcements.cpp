// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/CenterFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/TestPdf.h"

#include <VantorCommon/shell/dock/CStatusBarView.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QProgressBar>
#include <QUrl>

namespace
{
const QString kMissing = QStringLiteral("/nowhere/a.png");
const QString kPages = QStringLiteral("pdf/11-pages.pdf");
} // namespace

/// What the 2D controller announces to a host: files opened and saved, failures with their reasons, progress.
class tst_Announcements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void anOpenedFileIsAnnouncedOnceWhateverItsPages()
    {
        CenterFixture f(1, 1);
        QSignalSpy opened(Ctrl(f), &CImageView2DCtrl::signal_FileOpened);
        f.Ctrl(0)->LoadFile(TestDataPath(kPages));
        f.Ctrl(0)->AddImage(TestDataPath(QStringLiteral("png/bricks-color.png")));
        QCOMPARE(opened.size(), 2);
        QCOMPARE(opened[0][0].toString(), TestDataPath(kPages));
        QCOMPARE(opened[1][0].toString(), TestDataPath(QStringLiteral("png/bricks-color.png")));
    }

    void aFileThatCannotBeLoadedIsAnnouncedWithTheReason()
    {
        CenterFixture f(1, 1);
        QSignalSpy opened(Ctrl(f), &CImageView2DCtrl::signal_FileOpened);
        QSignalSpy failed(Ctrl(f), &CImageView2DCtrl::signal_Failed);
        f.Ctrl(0)->LoadFile(kMissing);
        f.Ctrl(0)->AddImage(TestDataPath(QStringLiteral("broken/bmp_badbitcount.bmp")));
        f.Ctrl(0)->LoadFile(QStringLiteral("/nowhere/a.pdf"));
        QCOMPARE(opened.size(), 0);
        QCOMPARE(failed.size(), 3);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("Cannot load image /nowhere/a.png. There is no such file."));
        QCOMPARE(failed[1][0].toString(),
                 QStringLiteral("Cannot load image %1. The BMP file is of an unsupported kind: compression 0 "
                                "with 30000 bits per pixel.")
                     .arg(TestDataPath(QStringLiteral("broken/bmp_badbitcount.bmp"))));
        QCOMPARE(failed[2][0].toString(),
                 QStringLiteral("Cannot load pdf file /nowhere/a.pdf. The file is missing, no regular file, "
                                "or must not be read."));
    }

    void aFailureInEitherViewIsTheViewers()
    {
        CenterFixture f(1, 1);
        QSignalSpy failed(f.Ctrl(0), &CImageViewerCtrl::signal_Failed);
        f.Ctrl(0)->LoadFile(kMissing);
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("Cannot load image /nowhere/a.png. There is no such file."));
        f.LoadInto(0, 3);
        const std::size_t nLimit = CImageView3DModel::GetBufferLimit();
        CImageView3DModel::SetBufferLimit(1000);
        const auto restore = qScopeGuard([&] { CImageView3DModel::SetBufferLimit(nLimit); });
        f.Viewer(0)->slot_Press3D();
        QTRY_COMPARE(failed.size(), 2);
        QCOMPARE(failed[1][0].toString(),
                 QStringLiteral("The image of 200 x 150 pixels is too large for the 3D view."));
    }

    void aSavedImageIsAnnouncedAndAFailureHasItsReason()
    {
        CenterFixture f(1, 1);
        QSignalSpy saved(Ctrl(f), &CImageView2DCtrl::signal_FileSaved);
        QSignalSpy failed(Ctrl(f), &CImageView2DCtrl::signal_Failed);
        const QString strGood = f.folder.filePath(QStringLiteral("saved.png"));
        f.Ctrl(0)->SaveFile(strGood);
        f.Ctrl(0)->SaveFile(kMissing);
        QCOMPARE(saved.size(), 1);
        QCOMPARE(saved[0][0].toString(), strGood);
        QCOMPARE(failed.size(), 1);
        QCOMPARE(
            failed[0][0].toString(),
            QStringLiteral("Cannot save image /nowhere/a.png. The file or its folder cannot be written."));
    }

    void aFileThatCannotBePastedIsAnnouncedThoughItIsNotLogged()
    {
        CenterFixture f(1, 1);
        QSignalSpy failed(Ctrl(f), &CImageView2DCtrl::signal_Failed);
        auto* pData = new QMimeData;
        pData->setUrls({QUrl::fromLocalFile(kMissing)});
        QApplication::clipboard()->setMimeData(pData);
        Ctrl(f)->slot_Paste();
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("Cannot paste file:///nowhere/a.png. There is no such file."));
    }

    void aRotationThatCannotBeDoneIsAnnounced()
    {
        CenterFixture f(1, 1);
        QSignalSpy failed(Ctrl(f), &CImageView2DCtrl::signal_Failed);
        f.Ctrl(0)->ChangeCurrentImage(std::make_shared<Vantor::Algorithms::CImage>()); // without pixels
        Ctrl(f)->RotateLeft();
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral("Cannot rotate the image. There is no image to rotate."));
    }

    void thePagesOfADocumentAreCountedWhileTheyAreRendered()
    {
        CenterFixture f(1, 1);
        QSignalSpy range(Ctrl(f), &CImageView2DCtrl::signal_ChangeProgressMaxRange);
        QStringList values;
        connect(Ctrl(f), &CImageView2DCtrl::signal_ChangeProgressValue, this,
                [&](int nValue) { values << QString::number(nValue); });
        f.Ctrl(0)->LoadFile(TestDataPath(kPages));
        QCOMPARE(range.size(), 1);
        QCOMPARE(range[0][0].toInt(), 11);
        QCOMPARE(values.join(QLatin1Char(' ')), QStringLiteral("0 1 2 3 4 5 6 7 8 9 10 11"));
    }

    void theProgressIsPaintedAlthoughTheThreadIsBusy()
    {
        CenterFixture f(1, 1);
        auto* pBar = f.Viewer(0)->findChild<QProgressBar*>();
        QVERIFY(pBar && !pBar->isVisible());
        struct CPaintCounter : QObject {
            int nPaints = 0;
            bool eventFilter(QObject*, QEvent* pEvent) override
            {
                nPaints += pEvent->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        } counter;
        pBar->installEventFilter(&counter);
        f.Ctrl(0)->LoadFile(TestDataPath(kPages)); // returns with all pages, and without an event loop
        QVERIFY2(counter.nPaints >= 9, qPrintable(QString::number(counter.nPaints)));
        QVERIFY(!pBar->isVisible());
    }

    void undoAndRedoSayWhetherTheyWouldDoSomething()
    {
        CenterFixture f(1, 1);
        QVERIFY(!Ctrl(f)->CanUndo() && !Ctrl(f)->CanRedo());
        f.DrawRectangle(0, {20, 30}, {90, 80});
        QVERIFY(Ctrl(f)->CanUndo() && !Ctrl(f)->CanRedo());
        f.View(0)->setFocus();
        QVERIFY(Ctrl(f)->Undo());
        QVERIFY(!Ctrl(f)->CanUndo() && Ctrl(f)->CanRedo());
    }

    void changingTheViewKeepsTheKeyboardInTheViewer()
    {
        CenterFixture f(2, 1);
        f.View(0)->setFocus();
        f.Viewer(0)->slot_Press3D();
        QVERIFY(f.Viewer(0)->isAncestorOf(QApplication::focusWidget()));
        f.Viewer(0)->slot_Press2D();
        QVERIFY(f.View(0)->hasFocus());
        f.Viewer(1)->slot_Press3D(); // not that of the focus
        QVERIFY(f.View(0)->hasFocus());
    }

    void theViewerTellsWhichViewItShows()
    {
        CenterFixture f(2, 1);
        QVERIFY(!f.Viewer(0)->Is3DShown());
        f.Viewer(0)->slot_Press3D();
        QVERIFY(f.Viewer(0)->Is3DShown() && !f.Viewer(1)->Is3DShown());
        f.Viewer(0)->slot_Press2D();
        QVERIFY(!f.Viewer(0)->Is3DShown());
    }

    void thePageThatCannotBeRenderedIsNamed()
    {
        CenterFixture f(1, 1);
        QSignalSpy failed(Ctrl(f), &CImageView2DCtrl::signal_Failed);
        const QString strPath = f.folder.filePath(QStringLiteral("large.pdf"));
        QFile file(strPath);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(MakePdf({"<< /Type /Catalog /Pages 2 0 R >>",
                            "<< /Type /Pages /Kids [3 0 R 4 0 R 3 0 R] /Count 3 >>",
                            "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 100 60] >>",
                            "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9000000 9000000] >>"}));
        file.close();
        f.Ctrl(0)->LoadFile(strPath);
        QCOMPARE(failed.size(), 1);
        QCOMPARE(failed[0][0].toString(),
                 QStringLiteral(
                     "Cannot load all of pdf file %1. Page 2 of 3 cannot be rendered. The page is empty or "
                     "larger than the limit.")
                     .arg(strPath));
    }

private:
    static CImageView2DCtrl* Ctrl(const CenterFixture& f) { return f.Ctrl(0)->Get2DCtrl(); }
};

VANTOR_TEST_MAIN(tst_Announcements)
#include "tst_Announcements.moc"
