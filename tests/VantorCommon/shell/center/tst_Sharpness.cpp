// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What is shown on a screen of double density (or of the density in QT_SCALE_FACTOR) has that density.
#include "tests/support/CenterFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/ViewerParts.h"

#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QMouseEvent>
#include <cmath>

namespace
{
/// Opens a picture of upright lines, black and white by turns.
void OpenStripes(const CenterFixture& f, int nWidth, int nHeight)
{
    const QString strFile = f.folder.filePath(QStringLiteral("stripes.png"));
    auto pImage = MakeTestImage(nWidth, nHeight, 1);
    for (int y = 0; y < nHeight; ++y)
        for (int x = 0; x < nWidth; ++x)
            *pImage->GetPixel(x, y) = x % 2 ? 255 : 0;
    QCOMPARE(pImage->Save(strFile.toStdWString()), 0);
    f.Ctrl(0)->LoadFile(strFile);
}

/// How many pixels of a row are neither black nor white.
int Blurred(const QImage& shown, int y)
{
    int nBlurred = 0;
    for (int x = 0; x < shown.width(); ++x) {
        const int nGray = qGray(shown.pixel(x, y));
        nBlurred += nGray > 16 && nGray < 239 ? 1 : 0;
    }
    return nBlurred;
}
/// How many pixels of the picture would change if it were drawn in points and blown up.
int FinerThanPoints(const QImage& shown)
{
    const QImage coarse = shown.scaled(shown.size() / shown.devicePixelRatioF());
    const QImage blown = coarse.scaled(shown.size()).convertToFormat(shown.format());
    int nFiner = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            nFiner += shown.pixel(x, y) != blown.pixel(x, y);
    return nFiner;
}

QImage Grab(QWidget& widget, const QRect& rect)
{
    QImage shown = widget.grab(rect).toImage();
    shown.setDevicePixelRatio(widget.devicePixelRatioF());
    return shown;
}
} // namespace

class tst_Sharpness : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thumbnailsHaveThePixelsOfTheScreen()
    {
        CenterFixture f(1, 1);
        const ViewerParts parts(f.Viewer(0));
        const int nWidth = parts.List()->viewport()->width();
        const double dblRatio = f.window.devicePixelRatioF();
        QVERIFY(dblRatio > 1.0);
        OpenStripes(f, qRound(nWidth * dblRatio), 80);
        const QPixmap thumbnail = parts.Thumbnail(0);
        QCOMPARE(thumbnail.width(), qRound(nWidth * dblRatio));
        QCOMPARE(thumbnail.devicePixelRatioF(), dblRatio);
        parts.List()->clearSelection(); // which tints
        const QImage shown = parts.List()->viewport()->grab(QRect(0, 4, nWidth, 10)).toImage();
        QCOMPARE(shown.width(), qRound(nWidth * dblRatio));
        if (dblRatio == std::floor(dblRatio)) // else the list is no whole number of pixels wide
            QVERIFY2(Blurred(shown, 5) <= 8, qPrintable(QString::number(Blurred(shown, 5))));
    }

    void theImageIsDrawnInThePixelsOfTheScreen()
    {
        CenterFixture f(1, 1);
        CImageView2D* pView = f.View(0);
        const double dblRatio = f.window.devicePixelRatioF();
        OpenStripes(f, qRound(pView->width() * dblRatio), 100);
        pView->slot_ZoomFit();
        const QImage shown = pView->grab().toImage();
        QCOMPARE(shown.width(), qRound(pView->width() * dblRatio));
        QCOMPARE(Blurred(shown, shown.height() / 2), 0);
        int nChanges = 0;
        for (int x = 1; x < shown.width(); ++x)
            nChanges += shown.pixel(x, shown.height() / 2) != shown.pixel(x - 1, shown.height() / 2);
        QVERIFY2(nChanges > shown.width() * 9 / 10, qPrintable(QString::number(nChanges)));
    }

    void pixelValuesAndAnnotationsAreDrawnInThePixelsOfTheScreen()
    {
        CenterFixture f(1, 1);
        CImageView2D* pView = f.View(0);
        OpenStripes(f, 6, 5);
        pView->slot_ZoomFit();
        const auto cell = [&](const QPoint& at) {
            return pView->MapToWidget(QRectF(at, QSizeF(1, 1))).toRect();
        };
        const QRect value = cell({1, 1}).adjusted(20, 20, -20, -20);
        QVERIFY(FinerThanPoints(Grab(*pView, value)) > 10);
        const QRect name(cell({3, 3}).topLeft() + QPoint(1, -20), QSize(70, 20));
        const int nBefore = FinerThanPoints(Grab(*pView, name));
        f.DrawRectangle(0, QPointF(3, 3), QPointF(5, 4));
        QTRY_VERIFY(FinerThanPoints(Grab(*pView, name)) > nBefore + 50);
    }

    void the3DViewHasTheResolutionOfTheScreen()
    {
        CenterFixture f(1, 1);
        f.Viewer(0)->slot_Press3D();
        auto* pView = f.Viewer(0)->findChild<CImageView3D*>();
        QTRY_VERIFY(pView->isVisible() && pView->isValid());
        QCOMPARE(pView->grabFramebuffer().size(), pView->size() * f.window.devicePixelRatioF());
        QTRY_VERIFY(FinerThanPoints(pView->grabFramebuffer()) > 1000);
    }

    void theGlobeFillsTheMiddleOfItsWindowInTheResolutionOfTheScreen()
    {
        CImageView3DEarth globe;
        globe.resize(300, 300);
        globe.show();
        QVERIFY(QTest::qWaitForWindowExposed(&globe));
        const QImage shown = globe.grabFramebuffer();
        QCOMPARE(shown.size(), globe.size() * globe.devicePixelRatioF());
        const QRgb ground = shown.pixel(1, 1);
        QRegion drawn;
        for (int y = 0; y < shown.height(); y += 4)
            for (int x = 0; x < shown.width(); x += 4)
                if (shown.pixel(x, y) != ground)
                    drawn += QRect(x, y, 4, 4);
        QVERIFY((drawn.boundingRect().center() - shown.rect().center()).manhattanLength() <= 8);
        QVERIFY(FinerThanPoints(shown) > 1000);
    }

    void theOutlineOfTheSnipToolLiesCloselyAroundTheSelection()
    {
        CSnipToolModel model;
        CSnipTool tool(&model, nullptr);
        tool.resize(200, 150);
        tool.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tool));
        tool.clearMask();
        const QRect selection(40, 30, 80, 60); // whole pixels of the screen also at one and a half
        QMouseEvent press(QEvent::MouseButtonPress, selection.topLeft(), Qt::LeftButton, Qt::LeftButton, {});
        QMouseEvent move(QEvent::MouseMove, selection.bottomRight(), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&tool, &press);
        QApplication::sendEvent(&tool, &move);
        QImage shown(tool.size() * tool.devicePixelRatioF(), QImage::Format_ARGB32);
        shown.setDevicePixelRatio(tool.devicePixelRatioF());
        shown.fill(Qt::black);
        tool.render(&shown, QPoint(), QRegion(tool.rect()), {});
        const double dblRatio = tool.devicePixelRatioF();
        const QRect device(selection.topLeft() * dblRatio, selection.size() * dblRatio);
        QRegion green;
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x)
                if (shown.pixel(x, y) == qRgb(0, 255, 0))
                    green += QRect(x, y, 1, 1);
        QVERIFY(!green.intersects(device));
        const QRegion around = QRegion(device.adjusted(-1, -1, 1, 1)) - device;
        QVERIFY((around - green).isEmpty());
        QVERIFY((green - device.adjusted(-2, -2, 2, 2)).isEmpty());
    }
};

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        qputenv("QT_SCALE_FACTOR", "2");
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    tst_Sharpness test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_Sharpness.moc"
