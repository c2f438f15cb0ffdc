// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CPrinting.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QToolBar>

namespace
{
QImage Picture(int nWidth, int nHeight, QRgb nColor = qRgb(255, 0, 0))
{
    QImage picture(nWidth, nHeight, QImage::Format_RGB32);
    picture.fill(nColor);
    return picture;
}

/// Of the lines of an annotation; the photo has no such green.
bool IsGreen(QRgb color)
{
    return qGreen(color) > 230 && qRed(color) < 60 && qBlue(color) < 60;
}

QPrintPreviewDialog* OpenPreview(const Host& host)
{
    host.Entry("File", "Print...")->trigger();
    return host.window.findChild<QPrintPreviewDialog*>();
}
} // namespace

class tst_CPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void fittedThePictureIsAsLargeAsThePaperAndKeepsItsShape()
    {
        const CPrinting printing(Picture(200, 100), 0.0, nullptr);
        QCOMPARE(printing.Place(QRectF(0, 0, 1000, 1000), 300), QRectF(0, 250, 1000, 500));
        QCOMPARE(printing.Place(QRectF(0, 0, 1000, 100), 300), QRectF(400, 0, 200, 100));
    }

    void atItsTrueSizeAPageIsAsLargeAsItIs()
    {
        CPrinting page(Picture(288, 144), 144.0, nullptr); // 2 x 1 inches
        page.SetTrueSize(true);
        QCOMPARE(page.Place(QRectF(0, 0, 1200, 1200), 300), QRectF(300, 450, 600, 300));
        CPrinting photo(Picture(96, 96), 0.0, nullptr); // an inch on the screen
        photo.SetTrueSize(true);
        QCOMPARE(photo.Place(QRectF(0, 0, 300, 300), 300), QRectF(0, 0, 300, 300));
    }

    void whatIsLargerThanThePaperIsCutAtItsEdges()
    {
        CPrinting printing(Picture(960, 960), 96.0, nullptr);
        printing.SetTrueSize(true);
        QImage sheet = Picture(100, 100, qRgb(255, 255, 255));
        QPainter painter(&sheet);
        printing.Paint(painter, QRectF(20, 20, 60, 60), 96);
        painter.end();
        QCOMPARE(sheet.pixel(50, 50), qRgb(255, 0, 0));
        QCOMPARE(sheet.pixel(21, 79), qRgb(255, 0, 0));
        QCOMPARE(sheet.pixel(19, 50), qRgb(255, 255, 255));
        QCOMPARE(sheet.pixel(81, 50), qRgb(255, 255, 255));
    }

    void thePreviewShowsTheImageWithItsAnnotations()
    {
        Host host;
        QVERIFY(host.Show());
        QVERIFY(!host.IsEnabled("File", "Print..."));
        QCOMPARE(host.window.OpenFiles({kPhoto}), 1);
        host.DrawRectangle(0);
        auto* pPreview = OpenPreview(host);
        QVERIFY(pPreview);
        QTRY_VERIFY(pPreview->isVisible());
        QCOMPARE(pPreview->printer()->pageLayout().orientation(), QPageLayout::Landscape);
        const auto* pWidget = pPreview->findChild<QPrintPreviewWidget*>();
        QTRY_COMPARE(pWidget->pageCount(), 1);
        // What a printer gets, on a sheet of our own.
        QImage sheet = Picture(1600, 1200, qRgb(255, 255, 255));
        const auto* pPrinting = pPreview->findChild<CPrinting*>();
        QVERIFY(pPrinting);
        QPainter painter(&sheet);
        pPrinting->Paint(painter, sheet.rect(), 100);
        painter.end();
        int nGreen = 0; // of the rectangle's lines
        for (int y = 0; y < sheet.height(); ++y)
            for (int x = 0; x < sheet.width(); ++x)
                nGreen += IsGreen(sheet.pixel(x, y)) ? 1 : 0;
        QVERIFY2(nGreen > 100, qPrintable(QString::number(nGreen)));
        pPreview->close();
        QTRY_VERIFY(!host.window.findChild<QPrintPreviewDialog*>());
    }

    void trueSizeIsChosenInThePreview()
    {
        Host host;
        QVERIFY(host.Show({TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf"))})); // 200 x 200 points
        auto* pPreview = OpenPreview(host);
        const auto* pPrinting = pPreview->findChild<CPrinting*>();
        const QRectF paper(0, 0, 720, 720);
        QCOMPARE(pPrinting->Place(paper, 72), paper);
        for (QAction* pAction : pPreview->findChild<QToolBar*>()->actions())
            if (pAction->text() == QLatin1String("&True Size"))
                pAction->trigger();
        QCOMPARE(pPrinting->Place(paper, 72), QRectF(260, 260, 200, 200));
    }
};

VANTOR_TEST_MAIN(tst_CPrinting)
#include "tst_CPrinting.moc"
