// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Nothing is lost without a question: every way that drops something unsaved asks, and the title says it.
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <QClipboard>
#include <QListView>
#include <QPushButton>
#include <QToolButton>

namespace
{
/// Ways to drop what a viewer has, by what a person would do.
enum EWay : int { EWay_Open, EWay_Recent, EWay_Close, EWay_CloseAll, EWay_Bin, EWay_Menu, EWay_Quit };

void Go(Host& host, int nWay)
{
    const auto file = [&](const char* pText) { host.Entry("File", pText)->trigger(); };
    switch (nWay) {
    case EWay_Open:
        ChooseFile(kPhoto);
        return file("Open...");
    case EWay_Recent:
        return host.Entry({QStringLiteral("File"), QStringLiteral("Open Recent")})
            ->menu()
            ->actions()
            .constFirst()
            ->trigger();
    case EWay_Close:
        return file("Close Image");
    case EWay_CloseAll:
        return file("Close All Images");
    case EWay_Bin:
        Q_EMIT host.Viewer(0)->signal_ClearImage();
        return;
    case EWay_Menu:
        Q_EMIT host.View(0)->signal_CloseImage();
        return;
    default:
        host.window.close();
    }
}
} // namespace

class tst_CUnsavedWork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void everyWayThatDropsAnnotationsAsksOnceAndCancelKeepsThem_data()
    {
        QTest::addColumn<int>("nWay");
        QTest::newRow("open") << int(EWay_Open);
        QTest::newRow("recent") << int(EWay_Recent);
        QTest::newRow("close image") << int(EWay_Close);
        QTest::newRow("close all") << int(EWay_CloseAll);
        QTest::newRow("the bin") << int(EWay_Bin);
        QTest::newRow("close in the menu of the image") << int(EWay_Menu);
        QTest::newRow("quit") << int(EWay_Quit);
    }
    void everyWayThatDropsAnnotationsAsksOnceAndCancelKeepsThem()
    {
        QFETCH(int, nWay);
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        Host host;
        QVERIFY(host.Show({strPicture}));
        host.DrawRectangle(0);
        {
            Answers cancel(QStringLiteral("Cancel"));
            Go(host, nWay);
            QCOMPARE(cancel.lstAsked,
                     QStringList{QStringLiteral("Save what would be lost?\na.png: annotations")});
        }
        for (QWidget* pDialog : QApplication::topLevelWidgets()) // that of Open did not come
            QVERIFY(!qobject_cast<QFileDialog*>(pDialog) || !pDialog->isVisible());
        QCOMPARE(host.Annotations(0), 1);
        QVERIFY(host.window.isVisible());
        {
            Answers save(QStringLiteral("Save"));
            Go(host, nWay);
            QCOMPARE(save.lstAsked.size(), 1);
        }
        QVERIFY(QFile::exists(Pictures::Beside(strPicture)));
        QVERIFY(!host.window.isWindowModified());
        QCOMPARE(host.window.isVisible(), nWay != EWay_Quit);
        if (nWay == EWay_CloseAll || nWay == EWay_Bin)
            QCOMPARE(host.Annotations(0), 0);
    }

    void discardSavesNothingAndOffersNothingLater()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        {
            Host host;
            QVERIFY(host.Show({strPicture}));
            host.DrawRectangle(0);
            Answers discard(QStringLiteral("Discard"));
            QVERIFY(host.window.close());
            QCOMPARE(discard.lstAsked.size(), 1);
        }
        QVERIFY(!QFile::exists(Pictures::Beside(strPicture)));
        QVERIFY(AnnotationRecovery::Find().empty());
    }

    void quittingAsksOnceForAllViewers()
    {
        const Pictures pictures;
        const QStringList lstPictures{pictures.Add(QStringLiteral("a.png")),
                                      pictures.Add(QStringLiteral("b.png"))};
        Host host;
        QVERIFY(host.Show(lstPictures));
        host.View(0)->setFocus();
        host.DrawRectangle(0);
        host.View(1)->setFocus();
        host.DrawRectangle(1);
        host.Entry("Edit", "Rotate Left")->trigger();
        Answers save(QStringLiteral("Save"));
        QVERIFY(host.window.close());
        QCOMPARE(save.lstAsked,
                 QStringList{QStringLiteral("Save what would be lost?\na.png: annotations\n"
                                            "b.png: the image was changed\nb.png: annotations")});
        QVERIFY(QFile::exists(Pictures::Beside(lstPictures[0])));
        const QSize size = QImage(kPhoto).size();
        QCOMPARE(QImage(lstPictures[1]).size(), size.transposed());
    }

    /// Three images in one viewer; the first and the last are annotated, the last is shown.
    static bool ShowThree(Host& host, const QStringList& lstPictures)
    {
        if (!host.Show())
            return false;
        host.window.OpenFiles(lstPictures, QStringLiteral("1x1"));
        host.DrawRectangle(0);
        CtrlOf(host, 0)->slot_SelectImage(2);
        host.DrawRectangle(0);
        return StoreOf(host, 0)->HasUnsaved(0) && StoreOf(host, 0)->HasUnsaved(2);
    }
    static QStringList AddThree(const Pictures& pictures)
    {
        return {pictures.Add(QStringLiteral("a.png")), pictures.Add(QStringLiteral("b.png")),
                pictures.Add(QStringLiteral("c.png"))};
    }

    void quittingListsEachFileOnceAndSavesAll_data()
    {
        QTest::addColumn<int>("nWay");
        QTest::newRow("quit") << int(EWay_Quit);
        QTest::newRow("close all") << int(EWay_CloseAll);
        QTest::newRow("open") << int(EWay_Open);
    }
    void quittingListsEachFileOnceAndSavesAll()
    {
        QFETCH(int, nWay);
        const Pictures pictures;
        const QStringList lstPictures = AddThree(pictures);
        Host host;
        QVERIFY(ShowThree(host, lstPictures));
        Answers save(QStringLiteral("Save"));
        Go(host, nWay);
        QCOMPARE(save.lstAsked, QStringList{QStringLiteral(
                                    "Save what would be lost?\na.png: annotations\nc.png: annotations")});
        QVERIFY(QFile::exists(Pictures::Beside(lstPictures[0])));
        QVERIFY(!QFile::exists(Pictures::Beside(lstPictures[1])));
        QVERIFY(QFile::exists(Pictures::Beside(lstPictures[2])));
    }

    void closingAnImageAsksForItsOwnAnnotationsOnly()
    {
        const Pictures pictures;
        const QStringList lstPictures = AddThree(pictures);
        Host host;
        QVERIFY(ShowThree(host, lstPictures));
        CtrlOf(host, 0)->slot_SelectImage(1);
        {
            Answers none(QStringLiteral("Cancel"));
            Go(host, EWay_Close);
            QCOMPARE(none.lstAsked, QStringList());
        }
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 2);
        CtrlOf(host, 0)->slot_SelectImage(1);
        {
            Answers discard(QStringLiteral("Discard"));
            Go(host, EWay_Close);
            QCOMPARE(discard.lstAsked,
                     QStringList{QStringLiteral("Save what would be lost?\nc.png: annotations")});
        }
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 1);
        QVERIFY(!QFile::exists(Pictures::Beside(lstPictures[2])));
        QVERIFY(StoreOf(host, 0)->HasUnsaved(0));
        QCOMPARE(host.Annotations(0), 1);
    }

    /// As long as another page is open, its annotations are there.
    void closingAPageOfADocumentAsksOnlyAtTheLastOne()
    {
        const QTemporaryDir folder;
        const QString strDocument = folder.filePath(QStringLiteral("a.pdf"));
        QVERIFY(QFile::copy(kDocument, strDocument));
        Host host;
        QVERIFY(host.Show({strDocument}));
        host.DrawRectangle(0);
        Answers save(QStringLiteral("Save"));
        while (CtrlOf(host, 0)->GetImageModel()->GetImageCount() > 1)
            Go(host, EWay_Close);
        QCOMPARE(save.lstAsked, QStringList());
        QVERIFY(host.window.isWindowModified());
        Go(host, EWay_Close);
        QCOMPARE(save.lstAsked, QStringList{QStringLiteral("Save what would be lost?\na.pdf: annotations")});
        QVERIFY(Pictures::Bytes(Pictures::Beside(strDocument)).contains("rectangle"));
    }

    void aPageThatIsSavedAsAnImageTakesItsAnnotationsThere()
    {
        const QTemporaryDir folder;
        const QString strDocument = folder.filePath(QStringLiteral("a.pdf"));
        QVERIFY(QFile::copy(kDocument, strDocument));
        Host host;
        QVERIFY(host.Show({strDocument}));
        host.DrawRectangle(0);
        host.Entry("Edit", "Rotate Left")->trigger();
        ChooseFile(folder.filePath(QStringLiteral("page.png")));
        Answers save(QStringLiteral("Save"));
        QVERIFY(host.window.close());
        QCOMPARE(save.lstAsked.size(), 1);
        for (const char* pName : {"a.pdf.vantor.json", "page.png.vantor.json"})
            QVERIFY2(Pictures::Bytes(folder.filePath(QLatin1String(pName))).contains("rectangle"), pName);
    }

    void onlyTheThumbnailsOfUnsavedImagesAreMarked()
    {
        const Pictures pictures;
        Host host;
        QVERIFY(ShowThree(host, AddThree(pictures)));
        auto* pList = host.Viewer(0)->findChild<QListView*>();
        const auto isMarked = [&](int nRow) {
            const QRect rect = pList->visualRect(pList->model()->index(nRow, 0));
            const QImage image = pList->viewport()->grab(rect).toImage();
            int nDot = 0;
            for (int y = 0; y < image.height() / 2; ++y)
                for (int x = image.width() / 2; x < image.width(); ++x)
                    nDot += image.pixelColor(x, y) == QColor(200, 60, 0) ? 1 : 0;
            return nDot > 20;
        };
        QVERIFY(isMarked(0) && !isMarked(1) && isMarked(2));
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!StoreOf(host, 0)->HasUnsaved(2));
        QVERIFY(isMarked(0) && !isMarked(1) && !isMarked(2));
    }

    void whatCannotBeSavedKeepsTheWindowOpen()
    {
        const Pictures pictures;
        const QString strPicture = pictures.Add(QStringLiteral("a.png"));
        QVERIFY(Pictures::Write(Pictures::Beside(strPicture), "damaged"));
        Host host;
        QVERIFY(host.Show({strPicture}));
        QTRY_VERIFY(!host.Message().isEmpty());
        host.DrawRectangle(0);
        Answers save(QStringLiteral("Save"));
        QVERIFY(!host.window.close());
        QCOMPARE(host.Annotations(0), 1);
        QVERIFY(host.Message().contains(QStringLiteral("Cannot save the annotations")));
    }

    void nothingIsAskedWhereNothingWouldBeLost_data()
    {
        everyWayThatDropsAnnotationsAsksOnceAndCancelKeepsThem_data();
    }
    void nothingIsAskedWhereNothingWouldBeLost()
    {
        QFETCH(int, nWay);
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        host.Entry("Edit", "Rotate Left")->trigger();
        host.Entry("Edit", "Undo")->trigger();
        host.Entry("Edit", "Undo")->trigger();
        QVERIFY(!host.window.isWindowModified());
        Answers none(QStringLiteral("Cancel"));
        Go(host, nWay);
        QCOMPARE(none.lstAsked, QStringList());
    }

    void aCapturedOrPastedImageIsAskedForByItself()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        const auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
        QCOMPARE(pImage->Load(kPhoto.toStdWString()), 0);
        pImage->SetName(L"");
        CtrlOf(host, 0)->PushImage(pImage);
        QVERIFY(host.window.isWindowModified());
        const QTemporaryDir folder;
        const QString strFile = folder.filePath(QStringLiteral("shot.png"));
        Answers save(QStringLiteral("Save"));
        ChooseFile(strFile);
        QVERIFY(host.window.close());
        QVERIFY2(save.lstAsked.size() == 1, qPrintable(save.lstAsked.join(QLatin1Char('|'))));
        QCOMPARE(save.lstAsked[0], QStringLiteral("Save what would be lost?\na captured or pasted image"));
        QVERIFY(QFile::exists(strFile));
    }

    void aPageOfADocumentIsNeverWrittenOverTheDocument()
    {
        const QTemporaryDir folder;
        const QString strDocument = folder.filePath(QStringLiteral("a.pdf"));
        QVERIFY(QFile::copy(kDocument, strDocument));
        const QByteArray before = Pictures::Bytes(strDocument);
        Host host;
        QVERIFY(host.Show({strDocument}));
        host.Entry("Edit", "Rotate Left")->trigger();
        ChooseFile(folder.filePath(QStringLiteral("page.png")));
        host.Entry("File", "Save")->trigger();
        QVERIFY(QFile::exists(folder.filePath(QStringLiteral("page.png"))));
        QCOMPARE(Pictures::Bytes(strDocument), before);
        QVERIFY(!host.window.isWindowModified());
    }

    void anImageThatIsInItsFileNoLongerIsUnsaved()
    {
        const Pictures pictures;
        const QString strFile = pictures.Add(QStringLiteral("a.png"));
        const QByteArray before = Pictures::Bytes(strFile);
        Host host;
        QVERIFY(host.Show({strFile}));
        host.Entry("Edit", "Rotate Left")->trigger();
        QTRY_VERIFY(host.window.isWindowModified());
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!host.window.isWindowModified());
        QVERIFY(Pictures::Bytes(strFile) != before);
        host.Entry("Edit", "Undo")->trigger();
        QTRY_VERIFY(host.window.isWindowModified());
        host.Entry("Edit", "Redo")->trigger();
        QTRY_VERIFY(!host.window.isWindowModified());
    }

    void aChangedImageIsSavedWhereItWasSavedBefore()
    {
        const Pictures pictures;
        const QString strFile = pictures.Add(QStringLiteral("a.png"));
        const QString strOther = pictures.folder.filePath(QStringLiteral("b.png"));
        const QByteArray before = Pictures::Bytes(strFile);
        Host host;
        QVERIFY(host.Show({strFile}));
        CtrlOf(host, 0)->SaveFile(strOther);
        QTRY_VERIFY(QFile::exists(strOther));
        const QByteArray other = Pictures::Bytes(strOther);
        host.Entry("Edit", "Rotate Left")->trigger();
        QTRY_VERIFY(host.window.isWindowModified());
        host.Entry("File", "Save")->trigger();
        QTRY_VERIFY(!host.window.isWindowModified());
        QCOMPARE(Pictures::Bytes(strFile), before);
        QVERIFY(Pictures::Bytes(strOther) != other);
    }

    void aFilePastedFromTheClipboardIsNotUnsaved()
    {
        Host host;
        QVERIFY(host.Show());
        auto* pData = new QMimeData;
        pData->setUrls({QUrl::fromLocalFile(kPhoto)});
        QGuiApplication::clipboard()->setMimeData(pData);
        CtrlOf(host, 0)->slot_Paste();
        QCOMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 1);
        QVERIFY(!host.window.isWindowModified());
    }

    void theTitleAndTheThumbnailAreMarked()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(host.window.windowTitle().startsWith(QStringLiteral("bricks-color.png[*] (")));
        QVERIFY(!host.window.isWindowModified());
        auto* pList = host.Viewer(0)->findChild<QListView*>();
        const QImage clean = pList->viewport()->grab().toImage();
        host.DrawRectangle(0);
        QVERIFY(host.window.isWindowModified());
        QVERIFY(pList->viewport()->grab().toImage() != clean);
        host.Entry("Edit", "Undo")->trigger();
        QVERIFY(!host.window.isWindowModified());
        QCOMPARE(pList->viewport()->grab().toImage(), clean);
    }
};

VANTOR_TEST_MAIN(tst_CUnsavedWork)
#include "tst_CUnsavedWork.moc"
