// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// A host that sets Qt::AA_ForceRasterWidgets starts without OpenGL; its window gets it when it is needed.
#include "tests/support/TestMain.h"

#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

namespace
{
/// A host's window: a button, and a 3D view that is not shown yet.
struct SHost {
    QMainWindow window;
    CImageView3DModel model;
    QPushButton* pButton;
    CImageView3D* pView;

    SHost()
    {
        auto* pCentral = new QWidget(&window);
        auto* pLayout = new QVBoxLayout(pCentral);
        pButton = new QPushButton(QStringLiteral("button"), pCentral);
        pView = new CImageView3D(&model, pCentral);
        pView->hide();
        pLayout->addWidget(pButton);
        pLayout->addWidget(pView);
        window.setCentralWidget(pCentral);
        window.setGeometry(200, 150, 400, 300);
    }
    QSurface::SurfaceType SurfaceType() const { return window.windowHandle()->surfaceType(); }
};
} // namespace

class tst_RasterWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, true); }
    void cleanup() { QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, false); }

    void aVisibleWindowGetsOpenGLWithTheFirst3DView();
    void aDialogStaysAboveTheWindow();
    void aMaximisedWindowStaysMaximised();
    void aWindowThatIsNotShownYetGetsOpenGL();
    void theGlobeHasAWindowOfItsOwnWithOpenGL();
    void a3DViewIsRightAlsoAfterAGlobe();
    void anOrdinaryWindowIsLeftAlone();
};

void tst_RasterWindow::aVisibleWindowGetsOpenGLWithTheFirst3DView()
{
    SHost host;
    host.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    QCOMPARE(host.SurfaceType(), QSurface::RasterSurface);
    host.pButton->setFocus();
    const QRect geometry = host.window.geometry();

    host.pView->setVisible(true);
    QCOMPARE(host.SurfaceType(), QSurface::RasterGLSurface);
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    QTRY_VERIFY(host.pView->isValid() && host.pView->isVisible());
    QCOMPARE(host.pView->grabFramebuffer().pixelColor(2, 2), QColor(51, 51, 51));
    QTRY_COMPARE(host.window.geometry(), geometry);
    QTRY_COMPARE(QApplication::focusWidget(), host.pButton);

    // Once: the window that can is kept.
    const WId id = host.window.winId();
    host.pView->setVisible(false);
    host.pView->setVisible(true);
    QCOMPARE(host.window.winId(), id);
}

void tst_RasterWindow::aDialogStaysAboveTheWindow()
{
    SHost host;
    host.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    QDialog dialog(&host.window);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const WId before = host.window.winId();
    host.pView->setVisible(true);
    QVERIFY(host.window.winId() != before);
    QVERIFY(dialog.isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    // What the window manager goes by.
    QProcess xprop;
    xprop.start(QStringLiteral("xprop"),
                {QStringLiteral("-id"), QString::number(dialog.winId()), QStringLiteral("WM_TRANSIENT_FOR")});
    QVERIFY(xprop.waitForFinished());
    QVERIFY(xprop.readAllStandardOutput().contains("0x" + QByteArray::number(host.window.winId(), 16)));
}

void tst_RasterWindow::aMaximisedWindowStaysMaximised()
{
    SHost host;
    host.window.showMaximized();
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    QTRY_VERIFY(host.window.width() > 1000);
    host.pView->setVisible(true);
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    QTRY_VERIFY(host.window.isMaximized() && host.window.width() > 1000);
    QTRY_VERIFY(host.pView->isValid());
}

void tst_RasterWindow::aWindowThatIsNotShownYetGetsOpenGL()
{
    SHost host;
    host.pView->setVisible(true);
    QVERIFY(!host.window.isVisible());
    host.window.show();
    QCOMPARE(host.SurfaceType(), QSurface::RasterGLSurface);
    QTRY_VERIFY(host.pView->isValid() && host.pView->isVisible());
}

void tst_RasterWindow::theGlobeHasAWindowOfItsOwnWithOpenGL()
{
    SHost host;
    host.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    auto* pGlobe = new CImageView3DEarth(&host.window);
    pGlobe->setWindowFlag(Qt::Window);
    pGlobe->resize(200, 200);
    pGlobe->show();
    QTRY_VERIFY(pGlobe->isValid() && pGlobe->isVisible());
    QCOMPARE(host.SurfaceType(), QSurface::RasterSurface);
}

void tst_RasterWindow::a3DViewIsRightAlsoAfterAGlobe()
{
    SHost host;
    host.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    auto* pGlobe = new CImageView3DEarth(&host.window);
    pGlobe->setWindowFlag(Qt::Window);
    pGlobe->resize(200, 200);
    pGlobe->show();
    QTRY_VERIFY(pGlobe->isValid() && pGlobe->isVisible());
    pGlobe->close();
    QVERIFY(!host.window.centralWidget()->windowHandle());
    host.pView->setVisible(true);
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    QTRY_VERIFY(host.pView->isValid() && host.pView->isVisible());
    // What is on the screen, not what the view has drawn.
    const QPoint corner = host.pView->mapToGlobal(QPoint(2, 2));
    QTRY_COMPARE(host.window.screen()->grabWindow(0, corner.x(), corner.y(), 1, 1).toImage().pixelColor(0, 0),
                 QColor(51, 51, 51));
}

void tst_RasterWindow::anOrdinaryWindowIsLeftAlone()
{
    cleanup();
    SHost host;
    host.window.show();
    QVERIFY(QTest::qWaitForWindowActive(&host.window));
    const WId id = host.window.winId();
    host.pView->setVisible(true);
    QCOMPARE(host.window.winId(), id);
    QTRY_VERIFY(host.pView->isValid());
}

VANTOR_TEST_MAIN(tst_RasterWindow)
#include "tst_RasterWindow.moc"
