// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/Centre.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/TestPdf.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>

#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace
{
const QString kPicture = QStringLiteral("png/bricks-color.png"); // 160 x 120

QByteArray Document()
{
    return MakeOnePagePdf("/MediaBox [0 0 100 60]"); // 200 x 120 at 144 dots per inch
}

std::shared_ptr<CImageView2DDrawableGeometry> MakeRectangle()
{
    auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
    pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(1, 2, 30, 40));
    return pObject;
}

QByteArray Picture()
{
    QFile file(TestDataPath(kPicture));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Folders that do not exist are made.
QString WriteFile(const QTemporaryDir& dir, const QString& strName, const QByteArray& bytes)
{
    const QString strPath = dir.filePath(strName);
    QFile file(strPath);
    const bool bWritten = QDir().mkpath(QFileInfo(strPath).path()) && file.open(QIODevice::WriteOnly) &&
                          file.write(bytes) == bytes.size();
    return bWritten ? strPath : QString();
}

QSize SizeIn(const CImageViewerCtrl* pCtrl)
{
    const auto pImage = pCtrl->GetImage();
    return pImage ? QSize(pImage->GetWidth(), pImage->GetHeight()) : QSize();
}
} // namespace

/// What each option changes, and that without it nothing changes.
class tst_SCenterOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void everythingIsOffAtFirst()
    {
        const SCentre c;
        QVERIFY(!c.pCtrl->GetOptions().bReaderByContent);
        QVERIFY(!c.pCtrl->GetOptions().bRestoreAfterCapture);
        QVERIFY(!c.pCtrl->GetOptions().bProposeSaveName);
        QVERIFY(!c.pCtrl->GetOptions().bKeepOnFailedLoad);
    }

    void theCentreKeepsWhatWasSet()
    {
        const SCentre c;
        SCenterOptions sOptions;
        sOptions.bReaderByContent = true;
        c.pCtrl->SetOptions(sOptions);
        QVERIFY(c.pCtrl->GetOptions().bReaderByContent);
        c.pCtrl->SetOptions({});
        QVERIFY(!c.pCtrl->GetOptions().bReaderByContent);
    }

    void aFailedLoadEmptiesTheViewerUnlessItIsToKeepWhatItShows()
    {
        const SCentre c;
        const QString strBroken = TestDataPath(QStringLiteral("broken/bmp_badbitcount.bmp"));
        for (const bool bKeep : {true, false}) {
            SCenterOptions sOptions;
            sOptions.bKeepOnFailedLoad = bKeep;
            c.pCtrl->SetOptions(sOptions);
            for (int i = 0; i < 4; ++i) {
                c.Ctrl(i)->LoadFile(TestDataPath(kPicture));
                c.Ctrl(i)->AddRectangle(MakeRectangle());
                c.Ctrl(i)->LoadFile(strBroken);
                QCOMPARE(bool(c.Ctrl(i)->GetImage()), bKeep);
                QCOMPARE(c.Ctrl(i)->Get2DDrawableObjects().empty(), !bKeep);
                QCOMPARE(c.Parts(i).List()->model()->rowCount(), bKeep ? 1 : 0);
            }
            c.Ctrl(0)->LoadFile(TestDataPath(kPicture));
            const unsigned int nBefore = c.Ctrl(0)->GetImageID();
            int nView = 7;
            unsigned int nImage = 7;
            c.pCtrl->OpenFileWithViewIDImageID(strBroken, nView, nImage);
            QCOMPARE(nView, 0);
            QCOMPARE(nImage, bKeep ? nBefore : 0xFFFFFFFFu);
            c.Ctrl(0)->LoadFile(TestDataPath(kPicture));
            c.pCtrl->OpenFile(strBroken);
            QCOMPARE(bool(c.Ctrl(0)->GetImage()), bKeep);
            c.Ctrl(0)->LoadFile(TestDataPath(kPicture));
            c.pCtrl->slot_SelectFiles({QFileInfo(strBroken)});
            QCOMPARE(bool(c.Ctrl(0)->GetImage()), bKeep);
        }
    }

    void theReaderIsChosenByTheFirstBytesInEveryViewerAndByThePathWithout_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("byContent");
        QTest::addColumn<QSize>("byPath");
        const QSize page(200, 120), picture(160, 120), none;
        QTest::newRow("document without pdf in its name") << "report" << Document() << page << none;
        QTest::newRow("document named as an image") << "report.png" << Document() << page << none;
        QTest::newRow("document, mixed case") << "report.Pdf" << Document() << page << none;
        QTest::newRow("document as it is named") << "report.pdf" << Document() << page << page;
        QTest::newRow("image below pdfs") << "pdfs/a.png" << Picture() << picture << none;
        QTest::newRow("image named as a document") << "a.pdf" << Picture() << picture << none;
        QTest::newRow("image as it is named") << "a.png" << Picture() << picture << picture;
        QTest::newRow("letters beyond ASCII") << QString::fromUtf8("한국어") << Document() << page << none;
        QTest::newRow("bytes before the header")
            << "late" << QByteArray(1019, 'x') + Document() << page << none;
        QTest::newRow("too many bytes before the header")
            << "too-late" << QByteArray(1020, 'x') + Document() << none << none;
    }
    void theReaderIsChosenByTheFirstBytesInEveryViewerAndByThePathWithout()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, byContent);
        QFETCH(QSize, byPath);
        const QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/options-XXXXXX"));
        const QString strPath = WriteFile(dir, name, bytes);
        QVERIFY(!strPath.isEmpty());
        const SCentre c;
        SCenterOptions sOptions;
        sOptions.bReaderByContent = true;
        c.pCtrl->SetOptions(sOptions);
        for (int i = 0; i < 4; ++i) {
            c.Ctrl(i)->LoadFile(strPath);
            QCOMPARE(SizeIn(c.Ctrl(i)), byContent);
        }
        c.pCtrl->SetOptions({});
        c.Ctrl(0)->CloseCurrentImage();
        c.Ctrl(0)->AddImage(strPath);
        QCOMPARE(SizeIn(c.Ctrl(0)), byPath);
        c.pCtrl->SetOptions(sOptions);
        c.Ctrl(0)->CloseCurrentImage();
        c.Ctrl(0)->AddImage(strPath);
        QCOMPARE(SizeIn(c.Ctrl(0)), byContent);
    }

    void theButtonThatDropsAllImagesStandsApart()
    {
        SCentre c;
        QVERIFY(c.Show());
        const auto* pViewer = c.pView->GetViewer(0);
        const QPushButton* pClear = nullptr;
        const QPushButton* pSave = nullptr;
        for (const auto* pButton : pViewer->findChildren<QPushButton*>()) {
            if (pButton->toolTip() == QStringLiteral("Clear the images"))
                pClear = pButton;
            if (pButton->toolTip() == QStringLiteral("Save the image"))
                pSave = pButton;
        }
        QVERIFY(pClear && pSave);
        const auto picture = [&] { return pClear->icon().pixmap(24, 24).toImage(); };
        const auto bin = QIcon(QStringLiteral(":/Image/clear.png")).pixmap(24, 24).toImage();
        const int nPlace = pClear->x();
        QVERIFY(nPlace < pSave->x());
        QCOMPARE(picture(), bin);
        SCenterOptions sOptions;
        sOptions.bClearApart = true;
        c.pCtrl->SetOptions(sOptions);
        QCOMPARE(pClear->x(), pSave->x() + pSave->width());
        QVERIFY(picture() != bin);
        c.pCtrl->SetOptions({});
        QCOMPARE(pClear->x(), nPlace);
        QCOMPARE(picture(), bin);
    }

    void whatCannotBeReadGoesByItsPath()
    {
        const QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/options-XXXXXX"));
        const QString strFifo = dir.filePath(QStringLiteral("fifo.pdf"));
        QCOMPARE(mkfifo(qPrintable(strFifo), 0600), 0);
        const SCentre c;
        SCenterOptions sOptions;
        sOptions.bReaderByContent = true;
        c.pCtrl->SetOptions(sOptions);
        LogRecorder log;
        c.Ctrl(0)->LoadFile(QStringLiteral("/nowhere/a.pdf"));
        QCOMPARE(log.Take(), QStringList(QStringLiteral("3:Cannot load pdf file /nowhere/a.pdf")));
        c.Ctrl(0)->LoadFile(QStringLiteral("/nowhere/a.png"));
        QCOMPARE(log.Take(), QStringList(QStringLiteral("3:Cannot load image /nowhere/a.png")));
        c.Ctrl(0)->LoadFile(strFifo); // returns
        QCOMPARE(log.Take(), QStringList(QStringLiteral("3:Cannot load pdf file ") + strFifo));
    }
};

VANTOR_TEST_MAIN(tst_SCenterOptions)
#include "tst_SCenterOptions.moc"
