// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/view/CImageView2DGeometryPropertyView.h>
#include <VantorCommon/annotation/view/CImageView2DToolView.h>
#include <VantorCommon/settings/CSettingManager.h>
#include <VantorCommon/shell/dock/CPropertyDockView.h>
#include <VantorCommon/shell/dock/CStatusBarDockView.h>
#include <VantorCommon/shell/dock/CToolBoxDockView.h>
#include <VantorCommon/shell/dock/CViewParameterView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CImageView2DPropertyView.h>
#include <VantorCommon/view2d/CImageView2DStatusView.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QInputDialog>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstring>
#include <random>

using Vantor::Algorithms::CImage;
using ImagePtr = std::shared_ptr<CImage>;

namespace
{
const QString kLocked = QStringLiteral("pdf/enc-R3,V2,U=view,O=master.pdf");

std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle()
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(1, 2, 3, 4));
    return pObject;
}

struct SFixture {
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    QWidget window;
    CImageView2D* pView = new CImageView2D(&model, &geometry, &tools, 0, &window);
    CImageView2DCtrl ctrl{&model, &geometry, &tools, pView, nullptr, nullptr, nullptr};
    LogRecorder log;

    SFixture() { window.resize(400, 300); }

    bool Focus()
    {
        window.show();
        window.activateWindow();
        const bool bActive = QTest::qWaitForWindowActive(&window);
        pView->setFocus();
        return bActive && pView->hasFocus();
    }
    std::vector<ImagePtr> List() const
    {
        std::vector<ImagePtr> images;
        for (int i = 0; i < model.GetImageCount(); ++i)
            images.push_back(model.GetImage(i));
        return images;
    }
};

/// Calls the function with the next dialog of the type that becomes modal, while the caller blocks in it.
template <class Dialog, class Function> void AnswerNext(QObject* pContext, Function function)
{
    auto* pTimer = new QTimer(pContext);
    QObject::connect(pTimer, &QTimer::timeout, pContext, [pTimer, function] {
        if (auto* pDialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
            pTimer->stop();
            pTimer->deleteLater();
            function(pDialog);
        }
    });
    pTimer->start(10);
}

void TypePassword(QObject* pContext, const QString& strPassword, QStringList* pSeen = nullptr)
{
    AnswerNext<QInputDialog>(pContext, [=](QInputDialog* pDialog) {
        if (pSeen)
            *pSeen << pDialog->windowTitle() << pDialog->labelText()
                   << QString::number(pDialog->textEchoMode());
        pDialog->setTextValue(strPassword);
        pDialog->accept();
    });
}

/// Enters a path into the next file dialog and accepts it.
void TypeFile(QObject* pContext, const QString& strPath)
{
    AnswerNext<QFileDialog>(pContext, [strPath](QFileDialog* pDialog) {
        pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(strPath);
        static_cast<QDialog*>(pDialog)->accept();
    });
}

QMessageBox* VisibleBox()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        if (auto* pBox = qobject_cast<QMessageBox*>(pWidget))
            if (pBox->isVisible())
                return pBox;
    return nullptr;
}

void SetClipboard(const QImage& image, const QString& strText, const QList<QUrl>& urls)
{
    auto* pData = new QMimeData;
    if (!image.isNull())
        pData->setImageData(image);
    if (!strText.isNull())
        pData->setText(strText);
    if (!urls.isEmpty())
        pData->setUrls(urls);
    QApplication::clipboard()->setMimeData(pData);
}

QImage SomeImage()
{
    QImage image(7, 5, QImage::Format_ARGB32);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x)
            image.setPixelColor(x, y, QColor(30 * x, 40 * y, 5, 255));
    return image;
}
/// All channels differ, some pixels are half or wholly transparent, and what has 8 bits a channel has all of
/// it.
QImage Colourful()
{
    QImage image(23, 11, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y,
                                QColor(11 * x, 23 * y, 255 - 11 * x, x == 22 ? 0 : (y == 10 ? 128 : 255)));
    return image;
}

/// The first pixel in which a pasted image differs from what was on the clipboard; empty when none does.
QString Different(const CImage& pasted, const QImage& image)
{
    if (QSize(pasted.GetWidth(), pasted.GetHeight()) != image.size() || pasted.GetChannel() != 4)
        return QStringLiteral("size or channels");
    const QImage straight = image.convertToFormat(QImage::Format_ARGB32); // 8 bits, not premultiplied
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const unsigned char* p = pasted.GetPixel(x, y);
            const QColor expected = QColor::fromRgba(straight.pixel(x, y));
            if (QColor(p[0], p[1], p[2], p[3]) != expected)
                return QStringLiteral("(%1, %2): %3 %4 %5 %6, not %7")
                    .arg(x)
                    .arg(y)
                    .arg(p[0])
                    .arg(p[1])
                    .arg(p[2])
                    .arg(p[3])
                    .arg(expected.name(QColor::HexArgb));
        }
    return QString();
}
} // namespace

class tst_CImageView2DCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        CSettingManager::Set(QStringLiteral("PDF_RESOLUTION_X"), QVariant());
        CSettingManager::Set(QStringLiteral("PDF_RESOLUTION_Y"), QVariant());
        if (QMessageBox* pBox = VisibleBox())
            pBox->close();
        QApplication::clipboard()->clear();
    }

    void loadFileReplacesTheListAndClearsTheDrawableObjects()
    {
        SFixture f;
        f.model.SetImages({MakeTestImage(3, 3, 3), MakeTestImage(4, 4, 3)});
        f.geometry.AddObject(MakeRectangle());
        f.ctrl.LoadFile(TestDataPath(QStringLiteral("png/bricks-color.png")));
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(QString::fromStdWString(f.model.GetCurrentImage()->GetName()),
                 QStringLiteral("bricks-color.png"));
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.log.Take().filter(QStringLiteral("3:")), QStringList());
    }

    void deliberateAFailedLoadIsLoggedAndLeavesNothing_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("kind");
        QTest::newRow("no such image") << QStringLiteral("/no/such %s%n file.png") << "image";
        QTest::newRow("no such document") << QStringLiteral("/no/such.pdf") << "pdf file";
        QTest::newRow("damaged image")
            << TestDataPath(QStringLiteral("broken/bmp_badbitcount.bmp")) << "image";
        QTest::newRow("damaged document")
            << TestDataPath(QStringLiteral("broken/pdfium_page_tree_empty_node.pdf")) << "pdf file";
        QTest::newRow("wrong password") << TestDataPath(kLocked) << "pdf file";
        QTest::newRow("refused password") << TestDataPath(kLocked) << "pdf file";
    }
    void deliberateAFailedLoadIsLoggedAndLeavesNothing()
    {
        QFETCH(QString, path);
        QFETCH(QString, kind);
        const auto answer = [](QObject* pContext) {
            if (qstrcmp(QTest::currentDataTag(), "wrong password") == 0)
                TypePassword(pContext, QStringLiteral("wrong"));
            if (qstrcmp(QTest::currentDataTag(), "refused password") == 0)
                AnswerNext<QInputDialog>(pContext, [](QInputDialog* pDialog) { pDialog->reject(); });
        };
        const QStringList logged(QStringLiteral("3:Cannot load %1 ").arg(kind) + path);
        for (const bool bKeep : {true, false}) {
            SFixture f;
            SCenterOptions sOptions;
            sOptions.bKeepOnFailedLoad = bKeep;
            f.ctrl.SetOptions(sOptions);
            f.model.SetImages({MakeTestImage(3, 3, 3), MakeTestImage(4, 4, 3)});
            f.geometry.AddObject(MakeRectangle());
            const auto before = f.List();
            f.log.Take();
            int nFailed = 0, nOpened = 0;
            connect(&f.ctrl, &CImageView2DCtrl::signal_Failed, &f.ctrl, [&] { ++nFailed; });
            connect(&f.ctrl, &CImageView2DCtrl::signal_FileOpened, &f.ctrl, [&] { ++nOpened; });
            answer(f.pView);
            f.ctrl.LoadFile(path);
            QCOMPARE(f.log.Take(), logged);
            QCOMPARE(f.List(), bKeep ? before : std::vector<ImagePtr>());
            QCOMPARE(f.geometry.Size(), bKeep ? 1 : 0);
            QCOMPARE(nFailed, 1);
            QCOMPARE(nOpened, 0);
            if (!bKeep) { // an emptied viewer works on
                f.ctrl.LoadFile(TestDataPath(QStringLiteral("jpeg/hopper.jpg")));
                QVERIFY(f.model.GetCurrentImage());
            }
        }
    }

    void anEmptyPathChangesNothing()
    {
        SFixture f;
        f.model.SetImages({MakeTestImage(3, 3, 3)});
        f.geometry.AddObject(MakeRectangle());
        f.log.Take();
        f.ctrl.LoadFile(QString());
        QCOMPARE(f.log.Take(), QStringList());
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(f.geometry.Size(), 1);
    }

    void deliberateAFailedLoadFromADialogLeavesNothing_data()
    {
        QTest::addColumn<QString>("slot");
        QTest::newRow("file") << QStringLiteral("slot_LoadFile");
        QTest::newRow("image") << QStringLiteral("slot_LoadImage");
        QTest::newRow("pdf") << QStringLiteral("slot_LoadPdf");
    }
    void deliberateAFailedLoadFromADialogLeavesNothing()
    {
        QFETCH(QString, slot);
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("no picture.png")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        for (const bool bKeep : {true, false}) {
            SFixture f;
            SCenterOptions sOptions;
            sOptions.bKeepOnFailedLoad = bKeep;
            f.ctrl.SetOptions(sOptions);
            f.model.SetImages({MakeTestImage(3, 3, 3)});
            f.geometry.AddObject(MakeRectangle());
            AnswerNext<QFileDialog>(f.pView, [](QFileDialog* pDialog) { pDialog->reject(); });
            QVERIFY(QMetaObject::invokeMethod(&f.ctrl, qPrintable(slot)));
            QCOMPARE(f.model.GetImageCount(), 1); // cancelled
            QCOMPARE(f.geometry.Size(), 1);
            TypeFile(f.pView, file.fileName());
            QVERIFY(QMetaObject::invokeMethod(&f.ctrl, qPrintable(slot)));
            QCOMPARE(f.model.GetImageCount(), bKeep ? 1 : 0);
            QCOMPARE(f.geometry.Size(), bKeep ? 1 : 0);
            QCOMPARE(f.log.Take().filter(QStringLiteral("3:")).size(), 1);
        }
    }

    void aFailedLoadLosesNothingWithTheOption()
    {
        SFixture f;
        SCenterOptions sOptions;
        sOptions.bKeepOnFailedLoad = true;
        f.ctrl.SetOptions(sOptions);
        f.model.SetImages({MakeTestImage(3, 3, 3)});
        f.geometry.AddObject(MakeRectangle());
        const auto before = f.List();
        f.log.Take();
        f.ctrl.LoadFile(QStringLiteral("/no/such %s%n file.png"));
        QCOMPARE(f.log.Take(), QStringList{QStringLiteral("3:Cannot load image /no/such %s%n file.png")});
        f.ctrl.LoadFile(QStringLiteral("/no/such.pdf"));
        QCOMPARE(f.log.Take(), QStringList{QStringLiteral("3:Cannot load pdf file /no/such.pdf")});
        QVERIFY(!VisibleBox());
        f.ctrl.LoadFile(QString());
        QCOMPARE(f.log.Take(), QStringList());
        QCOMPARE(f.List(), before);
        QCOMPARE(f.geometry.Size(), 1);
    }

    void aPngInsideAFolderNamedPdfsIsLoadedAsADocument()
    {
        // Deliberate: the expression is loose.
        QTemporaryDir dir;
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("pdfs")));
        const QString strPath = dir.path() + QStringLiteral("/pdfs/a.png");
        QVERIFY(QFile::copy(TestDataPath(QStringLiteral("png/bricks-color.png")), strPath));
        SFixture f;
        f.model.SetImages({MakeTestImage(3, 3, 3)});
        f.geometry.AddObject(MakeRectangle());
        f.log.Take();
        f.ctrl.LoadFile(strPath);
        QCOMPARE(f.model.GetImageCount(), 0);
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(f.log.Take(), QStringList{QStringLiteral("3:Cannot load pdf file ") + strPath});
    }

    void theDocumentTestIsLooseAndCaseSensitive_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("document");
        QTest::newRow("suffix") << QStringLiteral("/x/a.pdf") << true;
        QTest::newRow("capitals") << QStringLiteral("/x/a.PDF") << true;
        QTest::newRow("any character before") << QStringLiteral("/x/apdf") << true;
        QTest::newRow("capitals inside") << QStringLiteral("/xPDFy/a.png") << true;
        QTest::newRow("mixed case") << QStringLiteral("/x/a.Pdf") << false;
        QTest::newRow("nothing before") << QStringLiteral("pdf") << false;
    }

    void theDocumentTestIsLooseAndCaseSensitive()
    {
        QFETCH(QString, path);
        QFETCH(bool, document);
        SFixture f;
        f.ctrl.LoadFile(path);
        const QString strKind = document ? QStringLiteral("pdf file ") : QStringLiteral("image ");
        QCOMPARE(f.log.Take(), QStringList{QStringLiteral("3:Cannot load ") + strKind + path});
        f.ctrl.AddImage(path);
        QCOMPARE(f.log.Take(), QStringList{QStringLiteral("3:Cannot load ") + strKind + path});
    }

    void loadPdfGivesThePagesWithNameAndFolder()
    {
        SFixture f;
        const QString strPath = TestDataPath(QStringLiteral("pdf/11-pages.pdf"));
        const auto pages = f.ctrl.LoadPDF(strPath);
        QCOMPARE(pages.size(), std::size_t(11));
        for (const ImagePtr& pPage : pages) {
            QCOMPARE(QString::fromStdWString(pPage->GetName()), QStringLiteral("11-pages.pdf"));
            QCOMPARE(QString::fromStdWString(pPage->GetFolder()), QFileInfo(strPath).path());
            QCOMPARE(pPage->GetChannel(), 3);
        }
        QCOMPARE(f.model.GetImageCount(), 0);
    }

    void theYResolutionOverwritesTheXResolution()
    {
        // Deliberate: both settings go to the X resolution, so the Y setting decides alone.
        SFixture f;
        const QString strPath = TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf"));
        const auto size = [&] {
            const auto pages = f.ctrl.LoadPDF(strPath);
            return pages.empty() ? QSize() : QSize(pages[0]->GetWidth(), pages[0]->GetHeight());
        };
        const QSize at144 = size(); // the default of both
        QVERIFY(at144.width() > 0);
        CSettingManager::Set(QStringLiteral("PDF_RESOLUTION_X"), 30.0);
        QCOMPARE(size(), at144);
        CSettingManager::Set(QStringLiteral("PDF_RESOLUTION_Y"), 72.0);
        QCOMPARE(size(), at144 / 2);
    }

    void aLockedDocumentAsksForItsPassword()
    {
        SFixture f;
        QStringList seen;
        TypePassword(f.pView, QStringLiteral("view"), &seen);
        f.ctrl.LoadFile(TestDataPath(kLocked));
        QCOMPARE(seen, (QStringList{QStringLiteral("Input the password"), QStringLiteral("Password"),
                                    QString::number(QLineEdit::Password)}));
        QCOMPARE(f.model.GetImageCount(), 30);
        QCOMPARE(f.log.Take().filter(QStringLiteral("3:")), QStringList());
        QVERIFY(!VisibleBox());
    }

    void aDocumentWithAnEmptyPasswordOpensWithoutAsking()
    {
        SFixture f;
        QCOMPARE(f.ctrl.LoadPDF(TestDataPath(QStringLiteral("pdf/enc-R3,V2.pdf"))).size(), std::size_t(30));
    }

    void aWrongPasswordShowsABoxWithoutBlocking()
    {
        SFixture f;
        TypePassword(f.pView, QStringLiteral("wrong"));
        const QSignalSpy failures(&f.ctrl, &CImageView2DCtrl::signal_Failed);
        f.ctrl.LoadFile(TestDataPath(kLocked)); // returns
        QCOMPARE(failures.size(), 1);
        QVERIFY(failures[0][0].toString().endsWith(QStringLiteral(" The password is wrong.")));
        QCOMPARE(f.log.Take(),
                 QStringList{QStringLiteral("3:Cannot load pdf file ") + TestDataPath(kLocked)});
        QCOMPARE(f.model.GetImageCount(), 0);
        QTRY_VERIFY(VisibleBox());
        QCOMPARE(VisibleBox()->icon(), QMessageBox::Critical);
        QCOMPARE(VisibleBox()->text(), QStringLiteral("Cannot load pdf file ") + TestDataPath(kLocked));
        QPointer<QMessageBox> pBox = VisibleBox();
        pBox->accept();
        QTRY_VERIFY(!pBox); // nobody else would delete it
    }

    void cancellingThePasswordShowsNoBox()
    {
        SFixture f;
        AnswerNext<QInputDialog>(f.pView, [](QInputDialog* pDialog) { pDialog->reject(); });
        const QSignalSpy failures(&f.ctrl, &CImageView2DCtrl::signal_Failed);
        f.ctrl.LoadFile(TestDataPath(kLocked));
        QCOMPARE(failures.size(), 1);
        QVERIFY(failures[0][0].toString().endsWith(QStringLiteral(" The document needs a password.")));
        QCOMPARE(f.log.Take(),
                 QStringList{QStringLiteral("3:Cannot load pdf file ") + TestDataPath(kLocked)});
        QApplication::processEvents();
        QVERIFY(!VisibleBox());
    }

    void theViewMayGoWhileThePasswordIsAskedFor()
    {
        SFixture f;
        QObject context;
        AnswerNext<QInputDialog>(&context, [&](QInputDialog*) { delete f.pView; });
        f.ctrl.LoadFile(TestDataPath(kLocked));
        QCOMPARE(f.model.GetImageCount(), 0);
        QCOMPARE(f.log.Take(),
                 QStringList{QStringLiteral("3:Cannot load pdf file ") + TestDataPath(kLocked)});
    }

    void addImageAppendsAndKeepsTheDrawableObjects()
    {
        SFixture f;
        const ImagePtr pFirst = MakeTestImage(3, 3, 3);
        f.model.SetImages({pFirst});
        f.geometry.AddObject(MakeRectangle());
        f.ctrl.AddImage(TestDataPath(QStringLiteral("jpeg/hopper.jpg")));
        QCOMPARE(f.model.GetImageCount(), 2);
        QCOMPARE(f.model.GetImage(0), pFirst);
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        f.ctrl.slot_AddImageDragDrop(TestDataPath(QStringLiteral("pdf/pdfium_hello_world_2_pages.pdf")));
        QCOMPARE(f.model.GetImageCount(), 4);
        QCOMPARE(f.model.GetCurrentIndex(), 2); // the first page of those added
        QCOMPARE(f.geometry.Size(), 1);
        Q_EMIT f.pView->signal_AddImage(TestDataPath(QStringLiteral("jpeg/hopper.jpg")));
        QCOMPARE(f.model.GetImageCount(), 5);
    }

    void saveFileSavesTheCurrentImageAndLogsAFailure()
    {
        SFixture f;
        QTemporaryDir dir;
        f.ctrl.SaveFile(dir.filePath(QStringLiteral("nothing.png"))); // no image
        QVERIFY(!QFile::exists(dir.filePath(QStringLiteral("nothing.png"))));
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        f.model.SetImages({pImage});
        f.ctrl.SaveFile(dir.filePath(QStringLiteral("a.png")));
        CImage back;
        QCOMPARE(back.Load(dir.filePath(QStringLiteral("a.png")).toStdWString()), 0);
        QVERIFY(SamePixels(back, *pImage));
        f.log.Take();
        f.ctrl.SaveFile(QString());
        QCOMPARE(f.log.Take(), QStringList());
        f.ctrl.SaveFile(QStringLiteral("/no/such/folder/a%s.png"));
        QCOMPARE(f.log.Take(), QStringList{QStringLiteral("3:Cannot save image /no/such/folder/a%s.png")});
    }

    void copyAndPasteGiveTheImageBack()
    {
        SFixture f;
        f.ctrl.slot_Copy(); // no image: nothing
        const ImagePtr pImage = MakeTestImage(13, 9, 4);
        for (int x = 0; x < 13; ++x)
            for (int y = 0; y < 9; ++y)
                pImage->GetRows()[y][pImage->GetColumnOffsets()[x] + 3] = 255;
        f.model.SetImages({pImage});
        f.ctrl.slot_Copy();
        QVERIFY(QApplication::clipboard()->mimeData()->hasImage());
        f.model.Clear(); // the clipboard has pixels of its own
        f.ctrl.slot_Paste();
        QCOMPARE(f.model.GetImageCount(), 1);
        QVERIFY(SamePixels(*f.model.GetImage(0), *pImage));
    }

    void otherProgramsCanReadWhatWasCopied()
    {
        SFixture f;
        QVERIFY(f.Focus());
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        f.model.SetImages({pImage});
        f.ctrl.CopyToClipBoard();
        QProcess xclip;
        xclip.start(QStringLiteral("xclip"),
                    {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-t"),
                     QStringLiteral("image/png"), QStringLiteral("-o")});
        QTRY_COMPARE(xclip.state(), QProcess::NotRunning);
        const QImage image = QImage::fromData(xclip.readAllStandardOutput(), "PNG");
        QCOMPARE(image.size(), QSize(13, 9));
        for (int y = 0; y < 9; ++y)
            for (int x = 0; x < 13; ++x) {
                const unsigned char* p = pImage->GetPixel(x, y);
                QCOMPARE(image.pixelColor(x, y), QColor(p[0], p[1], p[2]));
            }
    }

    void pastingAnImageAppendsItAndKeepsTheDrawableObjects()
    {
        SFixture f;
        f.model.SetImages({MakeTestImage(3, 3, 3)});
        f.geometry.AddObject(MakeRectangle());
        SetClipboard(SomeImage(), QString(), {});
        f.ctrl.slot_Paste();
        QCOMPARE(f.model.GetImageCount(), 2);
        QCOMPARE(f.model.GetCurrentIndex(), 1);
        const unsigned char* pPixel = f.model.GetCurrentImage()->GetPixel(6, 4);
        QCOMPARE(QColor(pPixel[0], pPixel[1], pPixel[2], pPixel[3]), QColor(180, 160, 5, 255));
        QCOMPARE(f.geometry.Size(), 1);
    }

    void copyAndPasteKeepEveryPixelWhateverTheChannels()
    {
        for (const int nChannels : {1, 2, 3, 4}) {
            SFixture f;
            const ImagePtr pImage = MakeTestImage(13, 9, nChannels);
            f.model.SetImages({pImage});
            QImage copied;
            QVERIFY(CUtilManager::ConvertImage(pImage.get(), copied, true));
            f.ctrl.slot_Copy();
            f.ctrl.slot_Paste();
            QCOMPARE(f.model.GetImageCount(), 2);
            QCOMPARE(Different(*f.model.GetCurrentImage(), copied), QString());
        }
    }

    void aPastedImageHasEveryPixelWhateverItsFormat_data()
    {
        QTest::addColumn<int>("format");
        for (int i = QImage::Format_Mono; i < QImage::NImageFormats; ++i)
            QTest::newRow(qPrintable(QString::number(i))) << i;
    }
    void aPastedImageHasEveryPixelWhateverItsFormat()
    {
        QFETCH(int, format);
        const QImage image = Colourful().convertToFormat(static_cast<QImage::Format>(format));
        QVERIFY(!image.isNull());
        SFixture f;
        SetClipboard(image, QString(), {});
        f.ctrl.slot_Paste();
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(Different(*f.model.GetCurrentImage(), image), QString());
    }

    void whatAnotherProgramCopiedIsPastedToTheLastPixel_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("1 bit") << int(QImage::Format_Mono);
        QTest::newRow("palette") << int(QImage::Format_Indexed8);
        QTest::newRow("grey") << int(QImage::Format_Grayscale8);
        QTest::newRow("grey, 16 bits") << int(QImage::Format_Grayscale16);
        QTest::newRow("RGB") << int(QImage::Format_RGB888);
        QTest::newRow("RGBA") << int(QImage::Format_RGBA8888);
        QTest::newRow("RGBA, 16 bits") << int(QImage::Format_RGBA64);
    }
    void whatAnotherProgramCopiedIsPastedToTheLastPixel()
    {
        QFETCH(int, format);
        QTemporaryDir dir;
        const QString strFile = dir.filePath(QStringLiteral("a.png"));
        const QImage image = Colourful().convertToFormat(static_cast<QImage::Format>(format));
        QVERIFY(image.save(strFile));
        SFixture f;
        QVERIFY(f.Focus());
        QProcess other; // holds the clipboard while it runs
        other.start(QStringLiteral("xclip"),
                    {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                     QStringLiteral("-t"), QStringLiteral("image/png"), QStringLiteral("-i"), strFile});
        QTRY_VERIFY(QApplication::clipboard()->mimeData()->hasImage() &&
                    !QApplication::clipboard()->ownsClipboard());
        f.ctrl.slot_Paste();
        other.kill();
        QVERIFY(other.waitForFinished());
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(Different(*f.model.GetCurrentImage(), image), QString());
    }

    void pastingAnImageWithTextPastesNeither()
    {
        SFixture f;
        SetClipboard(SomeImage(), QStringLiteral("text"), {});
        f.ctrl.slot_Paste();
        QCOMPARE(f.model.GetImageCount(), 0);
    }

    void pastingTextDoesNothing()
    {
        SFixture f;
        SetClipboard(QImage(), QStringLiteral("/etc/passwd"), {});
        f.ctrl.slot_Paste();
        QCOMPARE(f.model.GetImageCount(), 0);
        QCOMPARE(f.log.Take(), QStringList());
    }

    void pastingTwoFilesOfWhichOneIsNotAnImageAppendsOnlyTheImageThatLoads()
    {
        SFixture f;
        // A document is tried as an image, too: no test of its name.
        SetClipboard(SomeImage(), QString(),
                     {QUrl::fromLocalFile(TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf"))),
                      QUrl::fromLocalFile(TestDataPath(QStringLiteral("jpeg/hopper.jpg")))});
        f.log.Take();
        f.ctrl.slot_Paste();
        QCOMPARE(f.model.GetImageCount(), 1);
        QCOMPARE(QString::fromStdWString(f.model.GetImage(0)->GetName()), QStringLiteral("hopper.jpg"));
        QCOMPARE(f.log.Take().filter(QStringLiteral("3:")), QStringList());
    }

    void rotatingLeftAndRightGivesTheExactImageBackAndCanBeUndone()
    {
        SFixture f;
        QVERIFY(f.Focus());
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        f.model.SetImages({pImage});
        f.ctrl.slot_RotateLeft();
        const ImagePtr pLeft = f.model.GetCurrentImage();
        QCOMPARE(QSize(pLeft->GetWidth(), pLeft->GetHeight()), QSize(9, 13));
        QCOMPARE(std::memcmp(pLeft->GetPixel(0, 12), pImage->GetPixel(0, 0), 3), 0); // counter-clockwise
        f.ctrl.slot_RotateRight();
        QVERIFY(f.model.GetCurrentImage() != pImage);
        QVERIFY(SamePixels(*f.model.GetCurrentImage(), *pImage));
        QVERIFY(f.ctrl.Undo());
        QCOMPARE(f.model.GetCurrentImage(), pLeft);
        QVERIFY(f.ctrl.Undo());
        QCOMPARE(f.model.GetCurrentImage(), pImage);
        QVERIFY(f.ctrl.Redo());
        QCOMPARE(f.model.GetCurrentImage(), pLeft);
    }

    void rotatingWithoutAnImageDoesNothing()
    {
        SFixture f;
        f.ctrl.RotateLeft();
        QCOMPARE(f.model.GetImageCount(), 0);
    }

    void undoWithTheViewUnfocusedDoesNothingAndReportsFalse()
    {
        SFixture f;
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        f.model.SetImages({pImage});
        f.ctrl.RotateRight();
        const ImagePtr pRotated = f.model.GetCurrentImage();
        QVERIFY(!f.ctrl.Undo());
        f.ctrl.slot_Undo();
        QCOMPARE(f.model.GetCurrentImage(), pRotated);
        QVERIFY(f.Focus());
        QVERIFY(f.ctrl.Undo());
        QVERIFY(f.ctrl.Undo()); // an empty history counts, too
        QCOMPARE(f.model.GetCurrentImage(), pImage);
        f.pView->clearFocus();
        QVERIFY(!f.ctrl.Redo());
        QCOMPARE(f.model.GetCurrentImage(), pImage);
    }

    void theShortcutsOfTheViewUndoAndRedo()
    {
        SFixture f;
        QVERIFY(f.Focus());
        const auto pObject = MakeRectangle();
        f.ctrl.AddRectangle(pObject);
        QCOMPARE(f.geometry.Size(), 1);
        QTest::keyClick(f.pView, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.geometry.Size(), 0);
        QTest::keyClick(f.pView, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.geometry.GetAt(0).get(), pObject.get());
        f.ctrl.AddRectangle(nullptr);
        QCOMPARE(f.geometry.Size(), 1);
    }

    void theImageListOperationsForward()
    {
        SFixture f;
        const ImagePtr pA = MakeTestImage(3, 3, 3), pB = MakeTestImage(4, 4, 3), pC = MakeTestImage(5, 5, 3);
        QVERIFY(!f.ctrl.GetCurrentImgage());
        QVERIFY(f.ctrl.PushImage(pA));
        f.geometry.AddObject(MakeRectangle());
        QVERIFY(f.ctrl.PushImage(pB));
        QCOMPARE(f.geometry.Size(), 1); // kept
        QCOMPARE(f.ctrl.GetCurrentImgage(), pB);
        f.ctrl.slot_Previous();
        QCOMPARE(f.ctrl.GetCurrentImgage(), pA);
        f.ctrl.slot_Next();
        QCOMPARE(f.ctrl.GetCurrentImgage(), pB);
        f.ctrl.slot_SelectImage(0);
        QCOMPARE(f.ctrl.GetCurrentImgage(), pA);
        f.ctrl.ChangeImage(pC, 1);
        QCOMPARE(f.List(), (std::vector<ImagePtr>{pA, pC}));
        QCOMPARE(f.geometry.Size(), 0);
        f.geometry.AddObject(MakeRectangle());
        f.ctrl.SetCurrentImage(pB);
        QCOMPARE(f.List(), (std::vector<ImagePtr>{pB, pC}));
        QCOMPARE(f.geometry.Size(), 0);
        f.geometry.AddObject(MakeRectangle());
        f.ctrl.slot_CloseImage();
        QCOMPARE(f.List(), std::vector<ImagePtr>{pC});
        QCOMPARE(f.geometry.Size(), 0);
        f.ctrl.slot_ClearImage();
        QVERIFY(f.List().empty());
    }

    void withoutModelsAndViewEverythingIsHarmless()
    {
        CImageView2DCtrl ctrl(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        const LogRecorder log;
        const ImagePtr pImage = MakeTestImage(3, 3, 3);
        ctrl.LoadFile(TestDataPath(QStringLiteral("jpeg/hopper.jpg")));
        ctrl.AddImage(TestDataPath(QStringLiteral("jpeg/hopper.jpg")));
        ctrl.SaveFile(QStringLiteral("/tmp/never-written.png"));
        QVERIFY(!ctrl.PushImage(pImage));
        QVERIFY(!ctrl.GetCurrentImgage());
        QVERIFY(!ctrl.Undo());
        QVERIFY(!ctrl.Redo());
        ctrl.ChangeCurrentImage(pImage);
        ctrl.ChangeImage(pImage, 0);
        ctrl.SetCurrentImage(pImage);
        ctrl.CloseCurrentImage();
        ctrl.RotateLeft();
        ctrl.CopyToClipBoard();
        ctrl.slot_Paste();
        ctrl.slot_Previous();
        ctrl.slot_Next();
        ctrl.slot_SelectImage(0);
        ctrl.slot_ClearImage();
        ctrl.slot_OpenSnipTool();
        ctrl.SetApplicationVisible(true);
        ctrl.slot_Active();
        ctrl.AddRectangle(MakeRectangle());
        ctrl.slot_ShowContextMenu(QPointF());
    }

    void setApplicationVisibleShowsAndMinimisesTheFirstMainWindow()
    {
        SFixture f;
        QVERIFY(CMVCManager::m_vctItems.empty());
        f.ctrl.SetApplicationVisible(true);
        f.ctrl.SetApplicationVisible(false);
        QVERIFY(!f.window.isMaximized() && !f.window.isMinimized());
        QMainWindow main, other;
        CMVCManager::PushMVC(nullptr, &f.window, nullptr);
        CMVCManager::PushMVC(nullptr, &main, nullptr);
        CMVCManager::PushMVC(nullptr, &other, nullptr);
        f.ctrl.SetApplicationVisible(true);
        QTRY_VERIFY(main.isVisible() && main.isMaximized() && main.isActiveWindow());
        QVERIFY(!other.isVisible());
        f.ctrl.SetApplicationVisible(false);
        QTRY_VERIFY(main.isMinimized());
    }

    void withTheOptionTheMainWindowComesBackAsItWas_data()
    {
        QTest::addColumn<int>("nState");
        QTest::newRow("normal") << int(Qt::WindowNoState);
        QTest::newRow("maximised") << int(Qt::WindowMaximized);
        QTest::newRow("full screen") << int(Qt::WindowFullScreen);
    }
    void withTheOptionTheMainWindowComesBackAsItWas()
    {
        QFETCH(int, nState);
        SFixture f;
        SCenterOptions options;
        options.bRestoreAfterCapture = true;
        f.ctrl.SetOptions(options);
        QMainWindow main;
        CMVCManager::PushMVC(nullptr, &main, nullptr);
        main.resize(400, 300);
        main.setWindowState(Qt::WindowStates(nState));
        main.show();
        QVERIFY(QTest::qWaitForWindowActive(&main));
        QTRY_COMPARE(int(main.windowState()), nState);
        f.ctrl.SetApplicationVisible(false);
        QTRY_VERIFY(main.isMinimized());
        f.ctrl.SetApplicationVisible(true);
        QTRY_VERIFY(main.isActiveWindow());
        QCOMPARE(int(main.windowState() & ~Qt::WindowActive), nState);
    }

    void withTheOptionTheSaveDialogProposesFolderNameAndFormat_data()
    {
        QTest::addColumn<QString>("strName");
        QTest::addColumn<QString>("strProposed");
        QTest::addColumn<QString>("strFilter");
        QTest::addColumn<QString>("strSuffix");
        const auto row = [](const char* pName, const char* pProposed, const char* pFilter,
                            const char* pSuffix) {
            QTest::newRow(pName) << QString::fromLatin1(pName) << QString::fromLatin1(pProposed)
                                 << QString::fromLatin1(pFilter) << QString::fromLatin1(pSuffix);
        };
        row("photo.one.JPG", "photo.one.JPG", "JPEG (*.jpg *.JPG *.jpeg *.JPEG)", "jpg");
        row("scan.tiff", "scan.tiff", "TIFF (*.tif *.TIF *.tiff *.TIFF)", "tif");
        row("report.pdf", "report", "PNG (*.png *.PNG)", "png");
        row("", "", "PNG (*.png *.PNG)", "png");
    }
    void withTheOptionTheSaveDialogProposesFolderNameAndFormat()
    {
        QFETCH(QString, strName);
        QFETCH(QString, strProposed);
        QFETCH(QString, strFilter);
        QFETCH(QString, strSuffix);
        QTemporaryDir dir;
        SFixture f;
        SCenterOptions options;
        options.bProposeSaveName = true;
        f.ctrl.SetOptions(options);
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        pImage->SetName(strName.toStdWString());
        pImage->SetFolder(dir.path().toStdWString());
        f.model.SetImages({pImage});
        QStringList lstSeen;
        QStringList lstFilters;
        AnswerNext<QFileDialog>(f.pView, [&](QFileDialog* pDialog) {
            lstSeen = QStringList{pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
                                  pDialog->directory().path(), pDialog->selectedNameFilter(),
                                  pDialog->defaultSuffix()};
            lstFilters = pDialog->nameFilters();
            pDialog->selectNameFilter(QStringLiteral("GIF (*.gif *.GIF)"));
            Q_EMIT pDialog->filterSelected(QStringLiteral("GIF (*.gif *.GIF)"));
            pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QStringLiteral("other"));
            static_cast<QDialog*>(pDialog)->accept();
        });
        f.ctrl.slot_SaveImage();
        QCOMPARE(lstSeen, QStringList({strProposed, dir.path(), strFilter, strSuffix}));
        QCOMPARE(lstFilters.mid(0, 7),
                 QStringList({QStringLiteral("PNG (*.png *.PNG)"), QStringLiteral("BMP (*.bmp *.BMP)"),
                              QStringLiteral("JPEG (*.jpg *.JPG *.jpeg *.JPEG)"),
                              QStringLiteral("TIFF (*.tif *.TIF *.tiff *.TIFF)"),
                              QStringLiteral("PPM (*.ppm *.PPM)"), QStringLiteral("PGM (*.pgm *.PGM)"),
                              QStringLiteral("GIF (*.gif *.GIF)")}));
        QCOMPARE(lstFilters.size(), 8);
        QVERIFY(QFileInfo::exists(dir.filePath(QStringLiteral("other.gif"))));
    }

    void theFileDialogsHaveTheirTitlesAndFilters_data()
    {
        const QString strImages = QStringLiteral(
            "*.bmp *.BMP *.jpg *.JPG *.jpeg *.JPEG *.png *.PNG *.gif *.GIF *.tif *.TIF *.tiff *.TIFF");
        const QString strAll = QStringLiteral("All files (*.*)");
        QTest::addColumn<QString>("slot");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("filters");
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("images");
        const QString strFiles = QStringLiteral("Files (%1 *.pdf *.PDF)").arg(strImages);
        const QString strHopper = TestDataPath(QStringLiteral("jpeg/hopper.jpg"));
        const QString strPdf = TestDataPath(QStringLiteral("pdf/pdfium_hello_world_2_pages.pdf"));
        QTest::newRow("file") << QStringLiteral("slot_LoadFile") << QStringLiteral("Load File")
                              << QStringList{strFiles, strAll} << strPdf << 2;
        QTest::newRow("image") << QStringLiteral("slot_LoadImage") << QStringLiteral("Load Image")
                               << QStringList{QStringLiteral("Images (%1)").arg(strImages), strAll}
                               << strHopper << 1;
        QTest::newRow("add") << QStringLiteral("slot_AddImage") << QStringLiteral("Add Images")
                             << QStringList{strFiles, strAll} << strPdf << 3;
        QTest::newRow("pdf") << QStringLiteral("slot_LoadPdf") << QStringLiteral("Load PDF File")
                             << QStringList{QStringLiteral("PDF (*.pdf *.PDF)"), strAll} << strPdf << 2;
    }

    void theFileDialogsHaveTheirTitlesAndFilters()
    {
        QFETCH(QString, slot);
        QFETCH(QString, title);
        QFETCH(QStringList, filters);
        QFETCH(QString, file);
        QFETCH(int, images);
        SFixture f;
        f.model.SetImages({MakeTestImage(3, 3, 3)});
        QString seenTitle;
        QStringList seenFilters;
        AnswerNext<QFileDialog>(f.pView, [&](QFileDialog* pDialog) {
            seenTitle = pDialog->windowTitle();
            seenFilters = pDialog->nameFilters();
            pDialog->reject();
        });
        QVERIFY(QMetaObject::invokeMethod(&f.ctrl, qPrintable(slot)));
        QCOMPARE(seenTitle, title);
        QCOMPARE(seenFilters, filters);
        QCOMPARE(f.model.GetImageCount(), 1); // cancelled
        QCOMPARE(f.log.Take().filter(QStringLiteral("3:")), QStringList());
        AnswerNext<QFileDialog>(f.pView, [&](QFileDialog* pDialog) {
            pDialog->setDirectory(QFileInfo(file).path());
            pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(file);
            static_cast<QDialog*>(pDialog)->accept();
        });
        QVERIFY(QMetaObject::invokeMethod(&f.ctrl, qPrintable(slot)));
        QCOMPARE(f.model.GetImageCount(), images);
    }

    void theSaveDialogHasItsTitleFilterAndDefaultSuffix()
    {
        QTemporaryDir dir;
        SFixture f;
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        f.model.SetImages({pImage});
        QString strTitle, strSuffix;
        QStringList filters;
        QFileDialog::AcceptMode eMode = QFileDialog::AcceptOpen;
        AnswerNext<QFileDialog>(f.pView, [&](QFileDialog* pDialog) {
            strTitle = pDialog->windowTitle();
            strSuffix = pDialog->defaultSuffix();
            filters = pDialog->nameFilters();
            eMode = pDialog->acceptMode();
            pDialog->setDirectory(dir.path());
            pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                ->setText(dir.filePath(QStringLiteral("plain")));
            static_cast<QDialog*>(pDialog)->accept();
        });
        f.ctrl.slot_SaveImage();
        QCOMPARE(strTitle, QStringLiteral("Save Image"));
        QCOMPARE(strSuffix, QStringLiteral("bmp"));
        QCOMPARE(filters,
                 QStringList{QStringLiteral("Files (*.bmp *.BMP *.jpg *.JPG *.jpeg *.JPEG *.png *.PNG *.gif "
                                            "*.GIF *.tif *.TIF *.tiff *.TIFF)")});
        QCOMPARE(eMode, QFileDialog::AcceptSave);
        CImage back;
        QCOMPARE(back.Load(dir.filePath(QStringLiteral("plain.bmp")).toStdWString()), 0);
        QVERIFY(SamePixels(back, *pImage));
    }

    void aNameWithoutASuffixGetsBmpWhateverItsFolder_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("saved");
        QTest::newRow("folder with a dot") << "v1.0/scan"
                                           << "v1.0/scan.bmp";
        QTest::newRow("dots above") << "v1.0/plain/scan"
                                    << "v1.0/plain/scan.bmp";
        QTest::newRow("suffix and a folder with a dot") << "v1.0/scan.png"
                                                        << "v1.0/scan.png";
        QTest::newRow("folder without") << "plain/scan"
                                        << "plain/scan.bmp";
    }
    void aNameWithoutASuffixGetsBmpWhateverItsFolder()
    {
        QFETCH(QString, typed);
        QFETCH(QString, saved);
        const QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/save-XXXXXX"));
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("v1.0/plain")) &&
                QDir(dir.path()).mkpath(QStringLiteral("plain")));
        SFixture f;
        const ImagePtr pImage = MakeTestImage(13, 9, 3);
        f.model.SetImages({pImage});
        TypeFile(f.pView, dir.filePath(typed));
        f.ctrl.slot_SaveImage();
        CImage back;
        QCOMPARE(back.Load(dir.filePath(saved).toStdWString()), 0);
        QVERIFY(SamePixels(back, *pImage));
        QCOMPARE(f.log.Take().filter(QStringLiteral("3:")), QStringList());
    }

    void aFileWithTheCompletedNameIsReplacedOnlyWhenThePersonSaysSo_data()
    {
        QTest::addColumn<bool>("replace");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }
    void aFileWithTheCompletedNameIsReplacedOnlyWhenThePersonSaysSo()
    {
        QFETCH(bool, replace);
        const QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/save-XXXXXX"));
        QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("v1.0")));
        QFile old(dir.filePath(QStringLiteral("v1.0/scan.bmp")));
        QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
        old.close();
        SFixture f;
        f.model.SetImages({MakeTestImage(13, 9, 3)});
        TypeFile(f.pView, dir.filePath(QStringLiteral("v1.0/scan")));
        QString strQuestion;
        bool bAgain = false;
        AnswerNext<QMessageBox>(f.pView, [&](QMessageBox* pBox) {
            strQuestion = pBox->text();
            if (!replace) // back to the dialog, which is left then
                AnswerNext<QFileDialog>(f.pView, [&](QFileDialog* pDialog) {
                    bAgain = true;
                    pDialog->reject();
                });
            pBox->button(replace ? QMessageBox::Yes : QMessageBox::No)->click();
        });
        f.ctrl.slot_SaveImage();
        QCOMPARE(strQuestion, QStringLiteral("scan.bmp already exists.\nDo you want to replace it?"));
        QCOMPARE(bAgain, !replace);
        QCOMPARE(QFileInfo(old).size() > 3, replace);
    }

    void thePanelsMoveIntoTheDocksWhenTheViewBecomesActive()
    {
        CToolBoxDockView toolDock;
        CPropertyDockView propertyDock;
        CStatusBarDockView statusDock;
        SFixture f;
        auto pFirst = std::make_unique<CImageView2DCtrl>(&f.model, &f.geometry, &f.tools, f.pView, &toolDock,
                                                         &propertyDock, &statusDock);
        CImageView2D otherView(&f.model, &f.geometry, &f.tools, 1, nullptr);
        CImageView2DCtrl second(&f.model, &f.geometry, &f.tools, &otherView, &toolDock, &propertyDock,
                                &statusDock);
        QVERIFY(!toolDock.widget());
        Q_EMIT f.pView->signal_Active();
        const QPointer<QWidget> pTools = toolDock.widget(), pPage = propertyDock.widget(),
                                pStatus = statusDock.widget();
        QVERIFY(qobject_cast<CImageView2DToolView*>(pTools.data()));
        QVERIFY(qobject_cast<CViewParameterView*>(pPage.data()));
        QVERIFY(qobject_cast<CImageView2DStatusView*>(pStatus.data()));
        auto* pLayout = pPage->layout(); // the image's properties above the geometry's
        QVERIFY(qobject_cast<CImageView2DPropertyView*>(pLayout->itemAt(0)->widget()));
        QVERIFY(qobject_cast<CImageView2DGeometryPropertyView*>(pLayout->itemAt(1)->widget()));
        toolDock.show();
        QVERIFY(pTools->isVisibleTo(&toolDock));

        Q_EMIT otherView.signal_Active();
        QVERIFY(toolDock.widget() && toolDock.widget() != pTools);
        QVERIFY(pTools && pPage && pStatus); // taken out, not deleted
        QVERIFY(!pTools->parentWidget() && !pTools->isVisible());
        const QPointer<QWidget> pSecondTools = toolDock.widget();
        Q_EMIT otherView.signal_Active(); // again: nothing changes
        QCOMPARE(toolDock.widget(), pSecondTools.data());
        Q_EMIT f.pView->signal_Active();
        QCOMPARE(toolDock.widget(), pTools.data());
        QCOMPARE(propertyDock.widget(), pPage.data());
        QCOMPARE(statusDock.widget(), pStatus.data());
        pFirst.reset(); // its panels go with it
        QVERIFY(!pTools && !pPage && !pStatus && !toolDock.widget());
        QVERIFY(pSecondTools);
    }

    void controllersViewsAndDocksMayDieInAnyOrder()
    {
        std::vector<int> order{0, 1, 2, 3, 4, 5, 6, 7};
        std::mt19937 random(5);
        for (int nRound = 0; nRound < 60; ++nRound) {
            std::vector<std::unique_ptr<QObject>> all;
            auto* pModel = new CImageView2DModel;
            auto* pGeometry = new CImageView2DGeometryModel;
            auto* pTools = new CImageView2DToolModel;
            auto* pView = new CImageView2D(pModel, pGeometry, pTools, 0, nullptr);
            auto* pToolDock = new CToolBoxDockView;
            auto* pPropertyDock = new CPropertyDockView;
            auto* pStatusDock = new CStatusBarDockView;
            auto* pCtrl =
                new CImageView2DCtrl(pModel, pGeometry, pTools, pView, pToolDock, pPropertyDock, pStatusDock);
            for (QObject* p : std::initializer_list<QObject*>{pModel, pGeometry, pTools, pView, pToolDock,
                                                              pPropertyDock, pStatusDock, pCtrl})
                all.emplace_back(p);
            pModel->SetImages({MakeTestImage(5, 5, 3)});
            pCtrl->AddRectangle(MakeRectangle());
            pCtrl->RotateLeft();
            if (nRound % 3 != 0)
                Q_EMIT pView->signal_Active();
            std::shuffle(order.begin(), order.end(), random);
            for (const int i : order) {
                all[size_t(i)].reset();
                if (all[7]) {
                    pCtrl->slot_Active();
                    pCtrl->slot_SelectROIRectangle();
                    pCtrl->slot_ClearImage();
                    pCtrl->AddRectangle(MakeRectangle());
                }
                if (all[3])
                    Q_EMIT pView->signal_Active();
            }
        }
    }

    void theToolSlotsSetTheMode()
    {
        SFixture f;
        f.ctrl.slot_ChangePanningMode();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Panning);
        f.ctrl.slot_SelectROIRectangle();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Drawing_Rectanlge);
        f.ctrl.slot_SelectROIEllipse();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Drawing_Ellipse);
        f.ctrl.slot_SelectROICircle();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Drawing_Circle);
        f.ctrl.slot_SelectROIPolygon();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Drawing_Polygon);
        f.ctrl.slot_DrawRuler();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Drawing_Line);
        f.ctrl.slot_ChangeSelectMode();
        QCOMPARE(f.tools.GetViewMode(), EImageView2DMode_Selecting);
    }

    void theMousePositionReachesTheModel()
    {
        SFixture f;
        QPointF position(3.5, -2);
        Q_EMIT f.pView->signal_ChangeMousePosition(position);
        QCOMPARE(f.model.GetMousePosition(), QPointF(3.5, -2));
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DCtrl)
#include "tst_CImageView2DCtrl.moc"
