// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// A person's way through the host on a Wayland compositor (tools/wlrun), which has neither mouse nor
// keyboard: events go into the window. What the compositor shows is looked at.
#include "HostSupport.h"
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ScreenshotPortal.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>

namespace
{
constexpr QRgb kMark = 0xffff00ff; // nothing else on the screen has this colour

/// How many points of the screen have a colour; -1 when no picture was taken.
int OnScreen(QRgb nColor)
{
    const QTemporaryDir folder;
    QProcess camera;
    camera.setWorkingDirectory(folder.path());
    camera.start(QStringLiteral("weston-screenshooter"), QStringList());
    if (!camera.waitForFinished() || camera.exitCode() != 0)
        return -1;
    QDirIterator files(folder.path(), {QStringLiteral("*.png")});
    if (!files.hasNext())
        return -1;
    const QImage screen = QImage(files.next()).convertToFormat(QImage::Format_RGB32);
    int nFound = 0;
    for (int y = 0; y < screen.height(); ++y) {
        const auto* pRow = reinterpret_cast<const QRgb*>(screen.constScanLine(y));
        nFound += static_cast<int>(std::count(pRow, pRow + screen.width(), nColor));
    }
    return nFound;
}

/// Whether the window's 3D view has come to the screen: nearly all of it has the colour behind the relief.
bool Is3DOnScreen()
{
    return OnScreen(qRgb(51, 51, 51)) > 50000;
}

void Press(const Host& host, const QString& strTip)
{
    for (auto* pButton : host.Viewer(0)->findChildren<QPushButton*>())
        if (pButton->toolTip().startsWith(strTip)) {
            QTest::mouseClick(host.window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                              pButton->mapTo(&host.window, pButton->rect().center()));
            return;
        }
    QFAIL(qPrintable(strTip));
}
} // namespace

class tst_Wayland : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("wayland"));
        QVERIFY(m_folder.isValid());
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(kMark);
        m_strPicture = m_folder.filePath(QStringLiteral("mark.png"));
        QVERIFY(picture.save(m_strPicture));
    }
    void init() { Host::ForgetSettings(); }

    void theFirstWindowIsOnTheScreenWithItsPicture()
    {
        Host host;
        QVERIFY(Show(host));
        QCOMPARE(host.window.windowHandle()->surfaceType(), QSurface::RasterSurface);
        QTRY_VERIFY(OnScreen(kMark) > 10000);
    }

    void whatIsDrawnIsThereUndoneAndDoneAgain()
    {
        Host host;
        QVERIFY(Show(host));
        QTRY_VERIFY(OnScreen(kMark) > 10000);
        const int nBare = OnScreen(kMark);
        host.DrawRectangle(0);
        QCOMPARE(host.Annotations(0), 1);
        QTRY_VERIFY(OnScreen(kMark) < nBare - 80 * 60 / 2);
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(host.Annotations(0), 0);
        QTRY_COMPARE(OnScreen(kMark), nBare);
        host.Entry("Edit", "Redo")->trigger();
        QCOMPARE(host.Annotations(0), 1);
    }

    void aToolRunsInItsDialog()
    {
        Host host;
        QVERIFY(Show(host));
        QTRY_VERIFY(OnScreen(kMark) > 10000);
        QTest::ignoreMessage(QtWarningMsg, "Wayland does not support QWindow::requestActivate()");
        host.Entry("Tools", "Invert...")->trigger();
        CImage2DProcessBaseDlg* pDialog = nullptr;
        for (auto* pEach : host.window.findChildren<CImage2DProcessBaseDlg*>())
            if (pEach->isVisible())
                pDialog = pEach;
        QVERIFY(pDialog);
        QVERIFY(QTest::qWaitForWindowExposed(pDialog));
        ToolParts(*pDialog).ClickRun();
        pDialog->close();
        QTRY_VERIFY(OnScreen(qRgb(0, 255, 0)) > 10000);
    }

    void theWindowGetsOpenGLWithTheFirst3DViewAndStaysRight()
    {
        Host host;
        QVERIFY(Show(host));
        Press(host, QStringLiteral("3D"));
        QCOMPARE(host.window.windowHandle()->surfaceType(), QSurface::RasterGLSurface);
        auto* pView = host.Viewer(0)->findChild<CImageView3D*>();
        QVERIFY(pView);
        QTRY_VERIFY(pView->isValid() && pView->isVisible());
        QTRY_VERIFY(Is3DOnScreen());
        Press(host, QStringLiteral("2D"));
        QTRY_VERIFY(OnScreen(kMark) > 10000);
        const int nBare = OnScreen(kMark);
        host.DrawRectangle(0);
        QTRY_VERIFY(OnScreen(kMark) < nBare - 80 * 60 / 2);
    }

    void theGlobeOpensInAWindowOfItsOwn()
    {
        Host host;
        QVERIFY(Show(host));
        QTRY_VERIFY(OnScreen(kMark) > 10000);
        QTest::ignoreMessage(QtWarningMsg, "Wayland does not support QWindow::requestActivate()");
        host.Entry("Tools", "Globe")->trigger();
        auto* pGlobe = host.window.findChild<CImageView3DEarth*>();
        QVERIFY(pGlobe);
        QTRY_VERIFY(pGlobe->isValid() && pGlobe->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(pGlobe));
        QCOMPARE(host.window.windowHandle()->surfaceType(), QSurface::RasterSurface);
        pGlobe->window()->close();
        host.DrawRectangle(0);
        const int nBare = OnScreen(kMark);
        host.Entry("Edit", "Undo")->trigger();
        QTRY_VERIFY(OnScreen(kMark) > nBare);
    }

    void theDesktopTakesThePictureOfTheScreen()
    {
        CScreenshotPortal desktop;
        desktop.mapResults[QStringLiteral("uri")] = QUrl::fromLocalFile(m_strPicture).toString();
        Host host;
        host.window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host.window));
        QTest::ignoreMessage(QtWarningMsg, "Can't set clipboard contents with no wl_seats available");
        host.Entry("Tools", "Capture the Screen")->trigger();
        QTRY_VERIFY(host.View(0)->GetImageUID() != Vantor::CVObject::kNoUID);
        QVERIFY(!host.window.isMinimized());
        QTRY_VERIFY(OnScreen(kMark) > 10000);
    }

private:
    /// Nothing gives a window the focus here.
    bool Show(Host& host)
    {
        host.window.show();
        if (host.window.OpenFiles({m_strPicture}) != 1 || !QTest::qWaitForWindowExposed(&host.window))
            return false;
        QApplication::setActiveWindow(&host.window);
        return true;
    }

    QTemporaryDir m_folder;
    QString m_strPicture;
};

int main(int argc, char* argv[])
{
    const CPrivateBus bus;
    const QApplication app(argc, argv);
    tst_Wayland test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_Wayland.moc"
