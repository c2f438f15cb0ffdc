// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Documents with SCenterOptions::bDeferredPages: CImageView2DCtrlPages, CPageMemory and what the views show.
#include "tests/support/CenterFixture.h"
#include "tests/support/Centre.h"
#include "tests/support/ChildProcesses.h"
#include "tests/support/HostilePdf.h"
#include "tests/support/PauseProbe.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/ocr/CVOCR.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CPageMemory.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <QElapsedTimer>
#include <QListView>
#include <QThreadPool>
#include <QTimer>
#include <random>
#include <thread>
#include <utility>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using ImagePtr = std::shared_ptr<CImage>;

namespace
{
constexpr int kPauseMs = 5000;     // of a page that takes ten seconds, on a busy machine
constexpr int kPatienceMs = 30000; // until a process has rendered, on a busy machine

const CImage& Const(const ImagePtr& pImage)
{
    return *pImage;
}

/// Pages of 100 x 80 points; the rectangle on each has a place and a colour of its own.
QByteArray Document(int nPages)
{
    QByteArray kids;
    QList<QByteArray> lstObjects;
    for (int i = 0; i < nPages; ++i) {
        const QByteArray page = QByteArray::number(3 + 2 * i);
        const QByteArray contents = QByteArray::number(4 + 2 * i);
        const QByteArray drawing = QByteArray::number((i % 10) / 10.0) + " " +
                                   QByteArray::number((i / 10 % 10) / 10.0) + " 0.5 rg " +
                                   QByteArray::number(i % 50) + " 10 30 20 re f";
        kids += page + " 0 R ";
        lstObjects << "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 100 80] /Contents " + contents + " 0 R >>"
                   << Stream(drawing);
    }
    return MakePdf(QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R >>",
                                     "<< /Type /Pages /Kids [" + kids + "] /Count " +
                                         QByteArray::number(nPages) + " >>"} +
                   lstObjects);
}

/// The first viewer of a centre, empty, with the options on.
class CBench
{
public:
    explicit CBench(int nColumns = 1, bool bDeferred = true) : f(nColumns, 1)
    {
        SCenterOptions sOptions;
        sOptions.bBackground = true;
        sOptions.bDeferredPages = bDeferred;
        sOptions.bAnnotationsPerImage = true;
        sOptions.bCarryAnnotations = true;
        f.center->SetOptions(sOptions);
        QObject::connect(Ctrl(), &CImageView2DCtrl::signal_Failed, &receiver,
                         [this](const QString& strLine) { lstFailed << strLine; });
    }
    ~CBench() { CPageMemory::Get().SetLimit(CPageMemory::kDefaultLimit); }

    CImageView2DCtrl* Ctrl(int nView = 0) const { return f.Ctrl(nView)->Get2DCtrl(); }
    CImageView2DModel* Model(int nView = 0) const { return Ctrl(nView)->GetImageModel(); }
    /// Opens a document and returns as soon as its list is there.
    void Open(const QByteArray& pdf, int nView = 0)
    {
        strPath = f.folder.filePath(QStringLiteral("a%1.pdf").arg(nView));
        QFile file(strPath);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size());
        file.close();
        f.Ctrl(nView)->LoadFile(strPath);
        CJobs::Get().Finish(Ctrl(nView));
    }
    int CountPixels() const
    {
        int nCount = 0;
        for (int i = 0; i < Model()->GetImageCount(); ++i)
            nCount += Model()->GetImage(i)->HasPixels() ? 1 : 0;
        return nCount;
    }
    /// Until so many pages are rendered, and told.
    void AwaitAll(int nPages) const
    {
        QTRY_COMPARE_WITH_TIMEOUT(CountPixels(), nPages, kPatienceMs);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }
    QImage Thumbnail(int nRow) const
    {
        const auto* pModel = f.Viewer(0)->findChild<QListView*>()->model();
        return pModel->index(nRow, 0).data(Qt::DecorationRole).value<QPixmap>().toImage();
    }
    QImage Shown() const { return f.View(0)->grab().toImage(); }

    CenterFixture f;
    QObject receiver;
    QStringList lstFailed;
    QString strPath;
};

/// The pages as they are without the option.
std::vector<ImagePtr> RenderedAtOnce(const QByteArray& pdf)
{
    CBench b(1, false);
    b.Open(pdf);
    std::vector<ImagePtr> vctImages;
    for (int i = 0; i < b.Model()->GetImageCount(); ++i)
        vctImages.push_back(b.Model()->GetImage(i));
    return vctImages;
}

bool IsWhite(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if ((image.pixel(x, y) & 0xFFFFFF) != 0xFFFFFF)
                return false;
    return !image.isNull();
}

qint64 BytesOf(const CImage& image)
{
    return qint64(image.GetStride()) * image.GetHeight();
}

std::shared_ptr<CImageView2DDrawableGeometry> Rectangle()
{
    auto pShape = std::make_shared<CImageView2DDrawableGeometry>();
    pShape->SetData(std::make_shared<Vantor::Geometry::CRectangle>(5, 5, 50, 40));
    return pShape;
}

/// Keeps no page that nobody holds.
void DropAll()
{
    CPageMemory::Get().SetLimit(0);
    CPageMemory::Get().Trim();
}
} // namespace

class tst_DeferredPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(CJobs::Get().GetJobs().empty());
        QVERIFY(CMVCManager::m_vctItems.empty());
        QTRY_COMPARE_WITH_TIMEOUT(ChildrenOf(::getpid()).size(), 0, kPatienceMs);
    }

    void withoutTheOptionAllPagesAreRendered()
    {
        const auto vctImages = RenderedAtOnce(Document(7));
        QCOMPARE(vctImages.size(), std::size_t(7));
        for (const ImagePtr& pImage : vctImages)
            QVERIFY(!pImage->IsDeferred() && pImage->HasPixels());
    }

    void thePagesAreThereAtOnceAndTheirPixelsCome()
    {
        const auto vctExpected = RenderedAtOnce(Document(12));
        CBench b;
        b.Open(Document(12));
        QCOMPARE(b.Model()->GetImageCount(), 12);
        QVERIFY(b.CountPixels() < 12);
        for (int i = 0; i < 12; ++i) {
            const CImage& page = *b.Model()->GetImage(i);
            QVERIFY(page.IsDeferred());
            QCOMPARE(QSize(page.GetWidth(), page.GetHeight()), QSize(200, 160));
            QCOMPARE(page.GetPageResolution(), 144.0);
            QVERIFY(page.GetName() == L"a0.pdf");
            QCOMPARE(QString::fromStdWString(page.GetFolder()), b.f.folder.path());
        }
        b.AwaitAll(12);
        for (std::size_t i = 0; i < 12; ++i)
            QVERIFY(SamePixels(*b.Model()->GetImage(int(i)), *vctExpected[i]));
        QVERIFY(b.lstFailed.isEmpty());
    }

    void theCurrentPageComesFirstThenItsNeighboursThenTheRest()
    {
        CBench b;
        QVector<int> vctOrder;
        QObject::connect(b.Model(), &CImageView2DModel::signal_PixelsCame, &b.receiver,
                         [&](int nIndex) { vctOrder << nIndex; });
        QObject::connect(b.Model(), &CImageView2DModel::signal_ChangeImageList, &b.receiver,
                         [&] { vctOrder.clear(); });
        b.Open(Document(30));
        b.Model()->SetCurrentIndex(20);
        const int nBefore = b.CountPixels(); // more than this thread has heard of, when it is slow
        QTRY_COMPARE_WITH_TIMEOUT(vctOrder.size(), 30, kPatienceMs);
        // What was begun before may come between, and two that run together may swap.
        const int nShown = vctOrder.indexOf(20);
        QVERIFY2(nShown <= nBefore + 6, qPrintable(QString::number(nShown)));
        for (const int nNeighbour : {19, 21})
            QVERIFY(vctOrder.indexOf(nNeighbour) <= nBefore + 10);
        QVERIFY(vctOrder.indexOf(5) > vctOrder.indexOf(15));
        QVERIFY(vctOrder.indexOf(10) > vctOrder.indexOf(27));
    }

    void theViewShowsAnEmptySheetUntilThePageIsThere()
    {
        CBench b;
        b.Open(DoublingForms()); // the first page takes ten seconds
        QCOMPARE(b.Model()->GetImageCount(), 2);
        QElapsedTimer timer;
        timer.start();
        CPauseProbe probe;
        probe.Start();
        const QImage waiting = b.Shown();
        const QPointF middle = b.f.View(0)->MapToWidget(QPointF(3, 3));
        QCOMPARE(waiting.pixel(middle.toPoint()) & 0xFFFFFF, 0xFFFFFFU);
        QCOMPARE(b.f.View(0)->GetViewPort().width(), b.f.View(0)->GetViewPort().height());
        b.Model()->SetMousePosition(QPointF(5, 5)); // the readouts do not wait
        b.Model()->SetCurrentIndex(1);
        QVERIFY2(timer.elapsed() < kPauseMs, qPrintable(QString::number(timer.elapsed())));
        QTRY_VERIFY_WITH_TIMEOUT(b.Model()->GetImage(1)->HasPixels(), kPatienceMs);
        QVERIFY(!b.Model()->GetImage(0)->HasPixels());
        b.Ctrl()->CopyToClipBoard();
        QVERIFY(b.lstFailed.isEmpty()); // the second page is there
        b.Model()->SetCurrentIndex(0);
        b.Ctrl()->CopyToClipBoard();
        QCOMPARE(b.lstFailed, QStringList{QStringLiteral("Cannot copy the image. The page is still being "
                                                         "rendered.")});
        b.Model()->SetImages({});
        QCoreApplication::processEvents();
        QVERIFY2(probe.LongestMs() < kPauseMs, qPrintable(QString::number(probe.LongestMs())));
    }

    void thePageIsPaintedWhenItComes()
    {
        CBench plain(1, false);
        plain.Open(Document(1));
        const QImage expected = plain.Shown();
        CBench b;
        b.f.window.setGeometry(plain.f.window.geometry());
        b.Open(Document(1));
        QTRY_COMPARE_WITH_TIMEOUT(b.Shown(), expected, kPatienceMs);
        QVERIFY(b.Model()->GetImage(0)->IsDeferred());
    }

    void thumbnailsArriveAsPagesAreRendered()
    {
        CBench b;
        bool bCame = false;
        QObject::connect(b.Model(), &CImageView2DModel::signal_PixelsCame, &b.receiver,
                         [&](int nIndex) { bCame = bCame || nIndex == 0; });
        b.Open(DoublingForms()); // the first page takes ten seconds
        QVERIFY(!bCame);
        QVERIFY(IsWhite(b.Thumbnail(0)));
        b.Open(Document(9));
        const QSize size = b.Thumbnail(8).size();
        b.AwaitAll(9);
        QCoreApplication::processEvents();
        for (int i = 0; i < 9; ++i)
            QVERIFY(!IsWhite(b.Thumbnail(i)));
        QCOMPARE(b.Thumbnail(8).size(), size);
    }

    void thumbnailsOutliveTheirPixels()
    {
        CBench b;
        b.Open(Document(9));
        b.AwaitAll(9);
        QCoreApplication::processEvents();
        const QImage before = b.Thumbnail(5);
        DropAll();
        b.Model()->CloseCurrentImage(); // the list is made anew
        QCOMPARE(b.Thumbnail(4), before);
        QTRY_VERIFY_WITH_TIMEOUT(b.Model()->GetImage(0)->HasPixels(), kPatienceMs);
        QVERIFY(!b.Model()->GetImage(4)->HasPixels());
        b.f.window.resize(b.f.window.width() / 3, b.f.window.height()); // narrower ones are asked for
        QTRY_VERIFY_WITH_TIMEOUT(b.Thumbnail(4).width() < before.width(), kPatienceMs);
        CPageMemory::Get().SetLimit(CPageMemory::kDefaultLimit);
        QTRY_VERIFY_WITH_TIMEOUT(b.Model()->GetImage(4)->HasPixels(), kPatienceMs);
    }

    void renderedPagesKeepWithinTheLimit()
    {
        const auto vctExpected = RenderedAtOnce(Document(40));
        CBench b;
        const qint64 nLimit = 5 * BytesOf(*vctExpected[0]);
        CPageMemory::Get().SetLimit(nLimit);
        int nCame = 0;
        qint64 nMost = 0;
        QObject::connect(b.Model(), &CImageView2DModel::signal_PixelsCame, &b.receiver, [&] {
            ++nCame;
            nMost = std::max(nMost, CPageMemory::Get().GetUsed());
        });
        b.Open(Document(40));
        QTRY_COMPARE_WITH_TIMEOUT(nCame, 40, kPatienceMs);
        QVERIFY2(nMost <= nLimit + 2 * BytesOf(*vctExpected[0]), qPrintable(QString::number(nMost)));
        CPageMemory::Get().Trim();
        QVERIFY(CPageMemory::Get().GetUsed() <= nLimit);
        QVERIFY(Const(b.Model()->GetImage(0)).HasPixels()); // it is on show
        for (std::size_t i = 0; i < 40; ++i) {
            QVERIFY(SamePixels(*b.Model()->GetImage(int(i)), *vctExpected[i]));
            CPageMemory::Get().Trim();
            QVERIFY(CPageMemory::Get().GetUsed() <= nLimit);
        }
        QVERIFY(b.lstFailed.isEmpty());
    }

    void theLeastRecentlyUsedPagesGo()
    {
        CBench b;
        b.Open(Document(10));
        b.AwaitAll(10);
        for (const int nIndex : {4, 7, 2})
            b.Model()->SetCurrentIndex(nIndex);
        CPageMemory::Get().SetLimit(3 * BytesOf(*b.Model()->GetImage(0)));
        CPageMemory::Get().Trim();
        for (int i = 0; i < 10; ++i)
            QCOMPARE(b.Model()->GetImage(i)->HasPixels(), i == 4 || i == 7 || i == 2);
    }

    void whoHoldsAPageKeepsItsPixels()
    {
        CBench b;
        b.Open(Document(6));
        b.AwaitAll(6);
        ImagePtr pHeld = b.Model()->GetImage(3);
        const unsigned char* pData = Const(pHeld).GetData();
        DropAll();
        QTRY_COMPARE_WITH_TIMEOUT(b.CountPixels(), 2, kPatienceMs); // that one and the current one
        QVERIFY(Const(pHeld).GetData() == pData);
        pHeld.reset();
        QTRY_COMPARE_WITH_TIMEOUT(b.CountPixels(), 1, kPatienceMs); // by itself
    }

    void aPageThatIsChangedInPlaceKeepsItsPixels()
    {
        CBench b;
        b.Open(Document(6));
        b.AwaitAll(6);
        *b.Model()->GetImage(3)->GetPixel(5, 5) = 77;
        DropAll();
        QTRY_COMPARE_WITH_TIMEOUT(b.CountPixels(), 2, kPatienceMs);
        QCOMPARE(int(*Const(b.Model()->GetImage(3)).GetPixel(5, 5)), 77);
    }

    void filterAndUndoWorkOnADroppedPage()
    {
        const auto vctExpected = RenderedAtOnce(Document(6));
        CImage filtered;
        filtered.CopyFrom(vctExpected[4].get());
        filtered.MedianFilter(3, 3, nullptr, ERegionMode::All, 0.0);
        CBench b;
        b.Open(Document(6));
        b.AwaitAll(6);
        DropAll();
        b.Model()->SetCurrentIndex(4);
        b.Ctrl()->EditImage(QStringLiteral("Median"), QStringLiteral("It failed."),
                            [](CImage& image, SImageChange&) {
                                return image.MedianFilter(3, 3, nullptr, ERegionMode::All, 0.0);
                            });
        CJobs::Get().Finish(b.Ctrl());
        QVERIFY(SamePixels(*b.Model()->GetCurrentImage(), filtered));
        b.Model()->SetCurrentIndex(0);
        DropAll(); // neither the changed image nor the one that the step holds goes
        QVERIFY(b.Model()->GetImage(4)->HasPixels());
        b.f.View(0)->setFocus();
        QVERIFY(b.Ctrl()->Undo());
        QCOMPARE(b.Model()->GetCurrentIndex(), 4);
        QVERIFY(b.Model()->GetImage(4)->HasPixels());
        QVERIFY(SamePixels(*b.Model()->GetImage(4), *vctExpected[4]));
        QVERIFY(b.Ctrl()->Redo());
        QVERIFY(SamePixels(*b.Model()->GetImage(4), filtered));
        QVERIFY(b.lstFailed.isEmpty());
    }

    void turningAndSavingWorkOnADroppedPage()
    {
        const auto vctExpected = RenderedAtOnce(Document(4));
        CBench b;
        b.Open(Document(4));
        b.AwaitAll(4);
        DropAll();
        b.Model()->SetCurrentIndex(2);
        const QString strSaved = b.f.folder.filePath(QStringLiteral("page.png"));
        b.Ctrl()->SaveFile(strSaved);
        b.Ctrl()->RotateRight();
        CJobs::Get().Finish(b.Ctrl());
        CImage loaded;
        QCOMPARE(loaded.Load(strSaved.toStdWString()), 0);
        QVERIFY(SamePixels(loaded, *vctExpected[2]));
        QCOMPARE(b.Model()->GetCurrentImage()->GetWidth(), vctExpected[2]->GetHeight());
        QVERIFY(b.lstFailed.isEmpty());
    }

    void aPictureOfADroppedPageHasItsPixels()
    {
        CBench b;
        b.Open(Document(4));
        b.AwaitAll(4);
        DropAll();
        b.Model()->SetCurrentIndex(2);
        const QString strPicture = b.f.folder.filePath(QStringLiteral("picture.png"));
        QCOMPARE(PictureExport::Save(*b.Ctrl(), strPicture, true), QString());
        CImage loaded;
        QCOMPARE(loaded.Load(strPicture.toStdWString()), 0);
        QVERIFY(SamePixels(loaded, *b.Model()->GetImage(2)));
        QVERIFY(b.Model()->GetImage(2)->IsDeferred());
    }

    void textIsReadOnADroppedPage()
    {
        const QByteArray drawing = "BT /F1 36 Tf 20 30 Td (Garden) Tj ET";
        CBench b;
        b.Open(MakeOnePagePdf("/MediaBox [0 0 200 80] /Resources << /Font << /F1 5 0 R >> >>", drawing,
                              {"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"}));
        const ImagePtr pPage = b.Model()->GetImage(0);
        QTRY_VERIFY_WITH_TIMEOUT(pPage->HasPixels(), kPatienceMs);
        b.Model()->PushImage(MakeTestImage(20, 20, 3));
        QVERIFY(pPage->DropPixels()); // nobody uses it now
        Vantor::Algorithms::CVOCR ocr;
        QCOMPARE(ocr.SetLanguageData("eng", VANTOR_TEST_TESSDATA), 0);
        const Vantor::Geometry::CRectangle region(10, 10, 380, 140);
        QCOMPARE(ocr.Decode(pPage.get(), &region), 0);
        QCOMPARE(QString::fromUtf8(ocr.GetText()), QStringLiteral("Garden"));
        QVERIFY(pPage->IsDeferred());
    }

    void annotationsStayWithTheirPages()
    {
        CBench b;
        b.Open(Document(5));
        b.AwaitAll(5);
        for (int i = 0; i < 5; ++i) {
            b.Model()->SetCurrentIndex(i);
            for (int n = 0; n <= i; ++n)
                b.Ctrl()->AddRectangle(Rectangle());
        }
        DropAll();
        QTRY_COMPARE_WITH_TIMEOUT(b.CountPixels(), 1, kPatienceMs); // the annotations do not keep the others
        for (int i = 0; i < 5; ++i) {
            b.Model()->SetCurrentIndex(i);
            QCOMPARE(int(b.Ctrl()->GetGeometryModel()->GetObjects().size()), i + 1);
        }
        b.Model()->SetCurrentIndex(2);
        b.Ctrl()->CloseCurrentImage();
        QCOMPARE(int(b.Ctrl()->GetGeometryModel()->GetObjects().size()), 4);
        b.Model()->SetCurrentIndex(0);
        QCOMPARE(int(b.Ctrl()->GetGeometryModel()->GetObjects().size()), 1);
    }

    void aPageThatCannotBeRenderedIsWhiteAndToldWheneverItIsShown()
    {
        CBench b;
        b.Open(
            MakePdf({"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>",
                     "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 10 20] >>",
                     "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 900000 900000] >>"}));
        QStringList lstExpected{
            QStringLiteral("Cannot load all of pdf file %1. Page 2 of 2 cannot be rendered. The page is "
                           "empty or larger than the limit.")
                .arg(b.strPath)};
        QTRY_COMPARE_WITH_TIMEOUT(b.lstFailed, lstExpected, kPatienceMs);
        for (int i = 0; i < 4; ++i) {
            if (i % 2 == 1)
                DropAll(); // it is told when its pixels have come again
            b.Model()->SetCurrentIndex(1);
            lstExpected << lstExpected.first();
            QTRY_COMPARE_WITH_TIMEOUT(b.lstFailed, lstExpected, kPatienceMs);
            QTRY_VERIFY_WITH_TIMEOUT(b.Model()->GetImage(1)->HasPixels(), kPatienceMs);
            QCOMPARE(int(*Const(b.Model()->GetImage(1)).GetPixel(7, 7)), 255);
            b.f.View(0)->repaint();
            Q_EMIT b.Model()->signal_ChangeImageList();
            QCOMPARE(b.lstFailed, lstExpected); // not twice
            b.Model()->SetCurrentIndex(0);
            QTRY_VERIFY_WITH_TIMEOUT(b.Model()->GetImage(0)->HasPixels(), kPatienceMs);
        }
        QCOMPARE(b.lstFailed, lstExpected);
    }

    void closingADocumentEndsItsProcessesSoon_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("list") << 0;
        QTest::newRow("another file") << 1;
        QTest::newRow("page by page") << 2;
    }
    void closingADocumentEndsItsProcessesSoon()
    {
        QFETCH(int, way);
        CBench b;
        b.Open(DoublingForms());
        QTRY_VERIFY_WITH_TIMEOUT(!ChildrenOf(::getpid()).isEmpty(), kPatienceMs);
        QElapsedTimer timer;
        timer.start();
        if (way == 0)
            b.Model()->Clear();
        else if (way == 1)
            b.f.LoadInto(0, 3);
        else
            for (int i = 0; i < 2; ++i)
                b.Ctrl()->CloseCurrentImage();
        QTRY_VERIFY_WITH_TIMEOUT(ChildrenOf(::getpid()).isEmpty(), kPatienceMs);
        QVERIFY2(timer.elapsed() < 2 * kPauseMs - 1000,
                 qPrintable(QString::number(timer.elapsed()))); // of ten seconds
        QVERIFY(b.lstFailed.isEmpty());
    }

    void closingTheViewerEndsItsProcessesSoon()
    {
        QElapsedTimer timer;
        {
            CBench b;
            b.Open(DoublingForms());
            QTRY_VERIFY_WITH_TIMEOUT(!ChildrenOf(::getpid()).isEmpty(), kPatienceMs);
            timer.start();
        }
        QThreadPool::globalInstance()->waitForDone();
        QTRY_VERIFY_WITH_TIMEOUT(ChildrenOf(::getpid()).isEmpty(), kPatienceMs);
        QVERIFY2(timer.elapsed() < 2 * kPauseMs - 1000, qPrintable(QString::number(timer.elapsed())));
    }

    void viewersShareTheRenderingAhead()
    {
        CBench b(2);
        b.Open(DoublingForms(), 0);
        b.Open(Document(20), 1);
        QTRY_VERIFY_WITH_TIMEOUT(b.Model(1)->GetImage(19)->HasPixels(),
                                 kPatienceMs); // although a page of the other one runs
        QVERIFY(!b.Model(0)->GetImage(0)->HasPixels());
        b.Model(0)->Clear();
    }

    void somebodyWhoPagesFastGetsTheLastPage()
    {
        CBench b;
        b.Open(Document(60));
        for (int i = 0; i < 59; ++i)
            b.Ctrl()->slot_Next();
        QTRY_VERIFY_WITH_TIMEOUT(b.Model()->GetCurrentImage()->HasPixels(), kPatienceMs);
        QVERIFY2(ChildrenOf(::getpid()).size() <= 3, "processes");
        b.AwaitAll(60);
    }

    void theReliefOfADroppedPageIsThatOfTheImage()
    {
        const auto vctExpected = RenderedAtOnce(Document(2));
        CBench b;
        b.Open(Document(2));
        const ImagePtr pPage = b.Model()->GetImage(1);
        std::vector<float> vctVertices[2];
        std::vector<unsigned int> vctIndices[2];
        int nModel = 0;
        for (const ImagePtr& pImage : {vctExpected[1], pPage}) {
            CImageView3DModel model;
            model.LoadImage(pImage);
            QVERIFY(model.TakeBuffers(vctVertices[nModel], vctIndices[nModel]));
            ++nModel;
        }
        QVERIFY(!vctVertices[0].empty());
        QCOMPARE(vctVertices[1], vctVertices[0]);
        QCOMPARE(vctIndices[1], vctIndices[0]);
        QVERIFY(pPage->IsDeferred());
    }

    /// Paging, filters, undo, redo and lost pixels in random order, beside a list of what each page must be.
    void randomEditingOfADocumentIsUndoneExactly()
    {
        constexpr int kPages = 6;
        auto vctPages = RenderedAtOnce(Document(kPages));
        std::vector<ImagePtr> vctInverted;
        for (const ImagePtr& pPage : vctPages) {
            vctInverted.push_back(std::make_shared<CImage>());
            vctInverted.back()->CopyFrom(pPage.get());
            vctInverted.back()->Invert(nullptr, ERegionMode::All, 0.0);
        }
        CBench b;
        CPageMemory::Get().SetLimit(0);
        b.Open(Document(kPages));
        std::mt19937 random(7);
        std::vector<bool> vctIsInverted(kPages, false);
        std::vector<int> vctDone;
        std::vector<int> vctUndone;
        const auto flip = [&](std::vector<int>& from, std::vector<int>& to) {
            if (from.empty())
                return;
            const int nPage = from.back();
            vctIsInverted[std::size_t(nPage)] = !vctIsInverted[std::size_t(nPage)];
            from.pop_back();
            to.push_back(nPage);
        };
        for (int nStep = 0; nStep < 300; ++nStep) {
            b.f.View(0)->setFocus();
            switch (random() % 5) {
            case 0:
                b.Model()->SetCurrentIndex(int(random() % kPages));
                break;
            case 1:
                b.Ctrl()->EditImage(QStringLiteral("Invert"), QStringLiteral("It failed."),
                                    [](CImage& image, SImageChange&) {
                                        return image.Invert(nullptr, ERegionMode::All, 0.0);
                                    });
                CJobs::Get().Finish(b.Ctrl());
                vctUndone = {b.Model()->GetCurrentIndex()};
                flip(vctUndone, vctDone);
                break;
            case 2:
                QVERIFY(b.Ctrl()->Undo());
                flip(vctDone, vctUndone);
                break;
            case 3:
                if (vctUndone.empty()) // a new step does not clear what could be done again before it
                    break;
                QVERIFY(b.Ctrl()->Redo());
                flip(vctUndone, vctDone);
                break;
            default:
                CPageMemory::Get().Trim();
            }
            const auto nPage = std::size_t(random() % kPages);
            QVERIFY2(SamePixels(*b.Model()->GetImage(int(nPage)),
                                vctIsInverted[nPage] ? *vctInverted[nPage] : *vctPages[nPage]),
                     qPrintable(QString::number(nStep)));
        }
        QVERIFY(!vctDone.empty());
        QVERIFY(b.lstFailed.isEmpty());
    }

    void threadsMayReadPagesWhileTheyAreDropped()
    {
        const auto vctExpected = RenderedAtOnce(Document(8));
        CBench b;
        b.Open(Document(8));
        CPageMemory::Get().SetLimit(0);
        std::atomic<int> nGood{0};
        std::atomic<int> nDone{0};
        std::vector<std::thread> vctThreads;
        for (int t = 0; t < 3; ++t)
            vctThreads.emplace_back([&, t] {
                for (int i = 0; i < 40; ++i) {
                    const int nIndex = (i * 3 + t) % 8;
                    const ImagePtr pImage = b.Model()->GetImage(nIndex);
                    nGood += SamePixels(*pImage, *vctExpected[std::size_t(nIndex)]) ? 1 : 0;
                }
                ++nDone;
            });
        while (nDone < 3)
            CPageMemory::Get().Trim();
        for (std::thread& thread : vctThreads)
            thread.join();
        QCOMPARE(nGood.load(), 120);
    }
};

VANTOR_TEST_MAIN(tst_DeferredPages)
#include "tst_DeferredPages.moc"
