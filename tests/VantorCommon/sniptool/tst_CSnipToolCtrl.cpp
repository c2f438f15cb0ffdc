// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/CSnipToolCtrl.h>

#include "tests/VantorCommon/sniptool/ScreenParts.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>
#include <functional>
#include <memory>

using namespace ScreenParts;

namespace
{
/// A main window with one 2D view and its controller, as a host registers it.
struct SHost {
    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    QMainWindow window;
    CImageView2D* pView = new CImageView2D(&images, &geometry, &tools, 0, &window);
    std::unique_ptr<CImageView2DCtrl> pCtrl =
        std::make_unique<CImageView2DCtrl>(&images, &geometry, &tools, pView, nullptr, nullptr, nullptr);

    SHost()
    {
        window.setCentralWidget(pView);
        CMVCManager::PushMVC(nullptr, &window, nullptr);
    }

    bool Start()
    {
        window.showMaximized();
        return QTest::qWaitForWindowActive(&window, kPatience);
    }

    /// Opens the tool and waits until it covers the screen and has the keyboard.
    CSnipTool* OpenTool()
    {
        pCtrl->slot_OpenSnipTool();
        CSnipTool* pTool = VisibleTool();
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const auto covers = [&] {
            return pTool->isActiveWindow() && pTool->geometry() == screen && pTool->mask() == pTool->rect() &&
                   pTool->windowHandle()->isExposed() && window.isMinimized();
        };
        return pTool && QTest::qWaitFor(covers, kPatience) ? pTool : nullptr;
    }

    bool IsBack() const
    {
        return !VisibleTool() && window.isMaximized() && !window.isMinimized() && window.isActiveWindow();
    }

    /// The current image in Qt's form, four channels.
    QImage Current()
    {
        QImage image;
        const auto pImage = images.GetCurrentImage();
        if (!pImage || !CUtilManager::ConvertImage(pImage.get(), image, true))
            return QImage();
        return image.convertToFormat(QImage::Format_RGB32);
    }
};

/// Runs one function of this program in a process of its own; the environment as NAME=VALUE.
QByteArray RunChild(const char* pFunction, const QStringList& lstEnvironment, int& nExitCode)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const QString& strEntry : lstEnvironment)
        environment.insert(strEntry.section(QLatin1Char('='), 0, 0), strEntry.section(QLatin1Char('='), 1));
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(pFunction)});
    const bool bEnded = QTest::qWaitFor([&] { return child.state() == QProcess::NotRunning; }, 3 * kPatience);
    nExitCode = bEnded && child.exitStatus() == QProcess::NormalExit ? child.exitCode() : -1;
    if (!bEnded)
        Stop(child);
    return child.readAll();
}

#define VERIFY_CHILD(function, ...)                                                                          \
    do {                                                                                                     \
        int nExitCode = -1;                                                                                  \
        const QByteArray output = RunChild(function, {__VA_ARGS__}, nExitCode);                              \
        QVERIFY2(nExitCode == 0, output.constData());                                                        \
        QVERIFY2(output.contains(QByteArray("PASS   : tst_CSnipToolCtrl::") + function),                     \
                 output.constData());                                                                        \
        QVERIFY2(!output.contains("QWARN"), output.constData());                                             \
        QVERIFY2(!output.contains("SKIP "), output.constData());                                             \
    } while (false)

constexpr int kQuit = 0;
constexpr int kConditionMet = 1;
constexpr int kTooLate = 2;

/// The application's own event loop, which ends with its last window, on a condition, or late.
int ExecUntil(const std::function<bool()>& condition)
{
    QElapsedTimer clock;
    clock.start();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (condition())
            QApplication::exit(kConditionMet);
        else if (clock.elapsed() > kPatience)
            QApplication::exit(kTooLate);
    });
    timer.start(20);
    return QApplication::exec();
}

bool IsMinimal()
{
    return QGuiApplication::platformName() == QStringLiteral("minimal");
}
} // namespace

class tst_CSnipToolCtrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aDraggedRegionBecomesAnImageAndGoesToTheClipboard();
    void theRegionIsExactAtDevicePixelRatio2();
    void theOverlayIsNeverInThePicture_data();
    void theOverlayIsNeverInThePicture();
    void aClickWithoutADragCapturesOnePixel();
    void deliberateAnInvertedDragIsPassedOnAndPushesNothing();
    void escapeDuringADragRestoresTheApplicationAndCapturesNothing();
    void closingTheOverlayRestoresTheApplication();
    void anEmptyGrabPushesNothingAndSaysWhy();
    void hiddenSnipWindowsDoNotKeepTheApplicationAlive();
    void theToolHasNoParentAndGoesWithThe2DController();
    void aHostWithoutAMainWindowCanCaptureToo();
    void theApplicationMayEndDuringACapture();
    void everyPartMayBeMissing();
    void undoAndRedoAreIgnored();
    void deliberateOpeningIsNotItsJob();
    void theOverlayGreysAllButTheSelection();

private:
    std::unique_ptr<QProcess> m_pOther;
};

void tst_CSnipToolCtrl::init()
{
    m_pOther = std::make_unique<QProcess>();
    QGuiApplication::clipboard()->clear();
}

void tst_CSnipToolCtrl::cleanup()
{
    Stop(*m_pOther);
}

void tst_CSnipToolCtrl::aDraggedRegionBecomesAnImageAndGoesToTheClipboard()
{
    QVERIFY(Show(*m_pOther, 0));
    SHost host;
    QVERIFY(host.Start());
    QVERIFY(host.OpenTool());
    const int nRatio = qRound(QGuiApplication::primaryScreen()->devicePixelRatio());
    const QRect region(200, 150, 300, 220); // device pixels
    // The pointer stands on the first device pixel of a device independent one.
    const QPoint end = region.bottomRight() - QPoint(nRatio - 1, nRatio - 1);
    QVERIFY(Mouse(MoveTo(region.topLeft()) + QStringLiteral(" mousedown 1")));
    QVERIFY(Mouse(MoveTo(region.center())));
    QVERIFY(Mouse(MoveTo(end)));
    QVERIFY(Mouse(QStringLiteral("mouseup 1")));
    QTRY_COMPARE_WITH_TIMEOUT(host.images.GetImageCount(), 1, kPatience);
    const QImage image = host.Current();
    QCOMPARE(image.size(), region.size());
    QCOMPARE(image, KnownPicture(region));
    QCOMPARE(host.images.GetCurrentImage()->GetChannel(), 4);
    const QString strName = QString::fromStdWString(host.images.GetCurrentImage()->GetName());
    const auto when = QDateTime::fromString(strName, QStringLiteral("'Capture 'yyyy-MM-dd hh.mm.ss'.png'"));
    QVERIFY2(qAbs(when.secsTo(QDateTime::currentDateTime())) < 60, qPrintable(strName));
    QTRY_VERIFY(host.IsBack());
    QCOMPARE(ReadClipboard(), KnownPicture(region));
}

void tst_CSnipToolCtrl::theRegionIsExactAtDevicePixelRatio2()
{
    VERIFY_CHILD("aDraggedRegionBecomesAnImageAndGoesToTheClipboard", QStringLiteral("QT_SCALE_FACTOR=2"));
}

void tst_CSnipToolCtrl::theOverlayIsNeverInThePicture_data()
{
    QTest::addColumn<int>("nDelay");
    QTest::newRow("other application paints at once") << 0;
    // For each part that the overlay uncovers: the drag uncovers some, and patience must reach for all.
    QTest::newRow("other application needs 300 ms to paint") << 300;
}

void tst_CSnipToolCtrl::theOverlayIsNeverInThePicture()
{
    QFETCH(int, nDelay);
    QVERIFY(Show(*m_pOther, nDelay));
    SHost host;
    QVERIFY(host.Start());
    for (int i = 0; i < 5; ++i) {
        QVERIFY(host.OpenTool());
        const QRect region(50 + 90 * i, 60 + 70 * i, 400, 350);
        QVERIFY(FastDrag(region.topLeft(), region.bottomRight()));
        QTRY_COMPARE_WITH_TIMEOUT(host.images.GetImageCount(), i + 1, kPatience);
        QCOMPARE(host.Current(), KnownPicture(region));
        QTRY_VERIFY(host.IsBack());
    }
}

void tst_CSnipToolCtrl::aClickWithoutADragCapturesOnePixel()
{
    QVERIFY(Show(*m_pOther, 0));
    SHost host;
    QVERIFY(host.Start());
    QVERIFY(host.OpenTool());
    QVERIFY(Mouse(MoveTo({333, 222}) + QStringLiteral(" click 1")));
    QTRY_COMPARE_WITH_TIMEOUT(host.images.GetImageCount(), 1, kPatience);
    QCOMPARE(host.Current(), KnownPicture(QRect(333, 222, 1, 1)));
    QTRY_VERIFY(host.IsBack());
}

void tst_CSnipToolCtrl::deliberateAnInvertedDragIsPassedOnAndPushesNothing()
{
    SHost host;
    QVERIFY(host.Start());
    CSnipTool* pTool = host.OpenTool();
    QVERIFY(pTool);
    QSignalSpy capture(pTool, &CSnipTool::signal_CaptureScreen);
    QSignalSpy failed(host.pCtrl.get(), &CImageView2DCtrl::signal_Failed);
    LogRecorder log;
    QVERIFY(FastDrag({500, 400}, {300, 250}));
    QTRY_COMPARE(capture.count(), 1);
    QCOMPARE(capture[0][0].toRect(), QRect(QPoint(500, 400), QPoint(300, 250)));
    QTRY_VERIFY(host.IsBack());
    QVERIFY(host.images.GetImageCount() == 0);
    QCOMPARE(log.Take(), QStringList{QStringLiteral("2:Cannot capture a region of -199 x -149 pixels")});
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed[0][0].toString(), QStringLiteral("Cannot capture a region of -199 x -149 pixels."));
    // A width of zero is the least that is inverted.
    QVERIFY(host.OpenTool());
    QVERIFY(FastDrag({500, 400}, {499, 450}));
    QTRY_VERIFY(host.IsBack());
    QVERIFY(host.images.GetImageCount() == 0);
    QCOMPARE(log.Take(), QStringList{QStringLiteral("2:Cannot capture a region of 0 x 51 pixels")});
}

void tst_CSnipToolCtrl::escapeDuringADragRestoresTheApplicationAndCapturesNothing()
{
    SHost host;
    QVERIFY(host.Start());
    CSnipTool* pTool = host.OpenTool();
    QVERIFY(pTool);
    QSignalSpy capture(pTool, &CSnipTool::signal_CaptureScreen);
    LogRecorder log;
    QVERIFY(Mouse(MoveTo({300, 300}) + QStringLiteral(" mousedown 1 ") + MoveTo({400, 400})));
    QTRY_VERIFY(pTool->mask() != QRegion(pTool->rect()));
    QVERIFY(Mouse(QStringLiteral("key Escape")));
    QTRY_VERIFY(host.IsBack());
    QVERIFY(Mouse(MoveTo({500, 500}) + QStringLiteral(" mouseup 1")));
    // The next drag begins afresh: the late release has ended nothing.
    QVERIFY(host.OpenTool());
    QCOMPARE(capture.count(), 0);
    QVERIFY(host.images.GetImageCount() == 0);
    QVERIFY(Mouse(QStringLiteral("key Escape")));
    QTRY_VERIFY(host.IsBack());
    QVERIFY(host.images.GetImageCount() == 0);
    QCOMPARE(log.Take(), QStringList());
}

void tst_CSnipToolCtrl::closingTheOverlayRestoresTheApplication()
{
    SHost host;
    QVERIFY(host.Start());
    CSnipTool* pTool = host.OpenTool();
    QVERIFY(pTool);
    QTimer::singleShot(0, this, [] { Mouse(QStringLiteral("key alt+F4")); });
    // The application goes on: the loop ends because the window is back, not for want of windows.
    QCOMPARE(ExecUntil([&] { return host.IsBack(); }), kConditionMet);
    QVERIFY(host.images.GetImageCount() == 0);
}

void tst_CSnipToolCtrl::anEmptyGrabPushesNothingAndSaysWhy()
{
    if (!IsMinimal()) { // a display server that gives no pictures
        VERIFY_CHILD("anEmptyGrabPushesNothingAndSaysWhy", QStringLiteral("QT_QPA_PLATFORM=minimal"),
                     QStringLiteral("ASAN_OPTIONS=detect_leaks=0"));
        return;
    }
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support setting window masks");
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()"); // the tool,
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support raise()"); // then the application
    SHost host;
    host.window.showMaximized();
    host.pCtrl->slot_OpenSnipTool();
    CSnipTool* pTool = VisibleTool();
    QVERIFY(pTool);
    QVERIFY(host.window.isMinimized());
    QTRY_COMPARE(pTool->mask(), QRegion(pTool->rect()));
    LogRecorder log;
    QSignalSpy failed(host.pCtrl.get(), &CImageView2DCtrl::signal_Failed);
    Q_EMIT pTool->signal_CaptureScreen(QRect(10, 10, 50, 40));
    QTRY_VERIFY(host.IsBack());
    QVERIFY(host.images.GetImageCount() == 0);
    QCOMPARE(log.Take(),
             QStringList{QStringLiteral("3:Cannot capture the screen: the display server gives no picture")});
    QCOMPARE(failed.count(), 1);
    QCOMPARE(failed[0][0].toString(),
             QStringLiteral("Cannot capture the screen: the display server gives no picture."));
}

void tst_CSnipToolCtrl::hiddenSnipWindowsDoNotKeepTheApplicationAlive()
{
    SHost host;
    QVERIFY(host.Start());
    QVERIFY(host.OpenTool()); // so that its window has really been made
    QVERIFY(Mouse(QStringLiteral("key Escape")));
    QTRY_VERIFY(host.IsBack());
    QTimer::singleShot(0, &host.window, &QWidget::close);
    QCOMPARE(ExecUntil([] { return false; }), kQuit);
}

void tst_CSnipToolCtrl::theToolHasNoParentAndGoesWithThe2DController()
{
    const auto tools = [] {
        QList<CSnipTool*> lst;
        for (QWidget* pWidget : QApplication::topLevelWidgets())
            if (auto* pTool = qobject_cast<CSnipTool*>(pWidget))
                lst << pTool;
        return lst;
    };
    QVERIFY(tools().isEmpty());
    {
        SHost host;
        QCOMPARE(tools().size(), 1);
        QVERIFY(!tools()[0]->parent());
        QVERIFY(tools()[0]->isHidden());
    }
    QVERIFY(tools().isEmpty());
    SHost host;
    delete tools()[0]; // a host that tidies up its windows early
    host.pCtrl->slot_OpenSnipTool();
    QVERIFY(!VisibleTool());
}

void tst_CSnipToolCtrl::aHostWithoutAMainWindowCanCaptureToo()
{
    QVERIFY(Show(*m_pOther, 0));
    CImageView2DModel images;
    CImageView2D view(&images, nullptr, nullptr, 0, nullptr);
    CImageView2DCtrl ctrl(&images, nullptr, nullptr, &view, nullptr, nullptr, nullptr);
    ctrl.slot_OpenSnipTool();
    CSnipTool* pTool = VisibleTool();
    QVERIFY(pTool);
    QTRY_VERIFY(pTool->isActiveWindow() && pTool->mask() == pTool->rect());
    QVERIFY(FastDrag({20, 30}, {119, 79}));
    QTRY_COMPARE_WITH_TIMEOUT(images.GetImageCount(), 1, kPatience);
    QVERIFY(!VisibleTool());
}

void tst_CSnipToolCtrl::theApplicationMayEndDuringACapture()
{
    SHost host;
    QVERIFY(host.Start());
    CSnipTool* pTool = host.OpenTool();
    QVERIFY(pTool);
    const QPointer<CSnipTool> pGone(pTool);
    const auto send = [&](QEvent::Type eType, const QPointF& pos, Qt::MouseButtons held) {
        QMouseEvent event(eType, pos, pos, Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(pTool, &event);
    };
    send(QEvent::MouseButtonPress, {100, 100}, Qt::LeftButton);
    QTimer::singleShot(0, &host.window, [&] { host.pCtrl.reset(); });
    send(QEvent::MouseButtonRelease, {200, 200}, Qt::NoButton);
    QVERIFY(!pGone);
    QVERIFY(!host.pCtrl);
    QVERIFY(host.images.GetImageCount() == 0);
}

void tst_CSnipToolCtrl::everyPartMayBeMissing()
{
    SHost host;
    CSnipToolModel model;
    CSnipTool tool(&model, nullptr);
    LogRecorder log;
    {
        CSnipToolCtrl without2D(&model, &tool, nullptr);
        tool.show();
        Q_EMIT tool.signal_ExitCapture();
        QVERIFY(tool.isVisible());
        Q_EMIT tool.signal_CaptureScreen(QRect(0, 0, 10, 10));
        QVERIFY(tool.isHidden());
    }
    CSnipToolCtrl withoutTool(&model, nullptr, host.pCtrl.get());
    withoutTool.slot_ExitCapture();
    QVERIFY(!host.window.isVisible());
    withoutTool.slot_CaptureScreen(QRect(0, 0, 10, 12));
    QVERIFY(host.window.isMaximized());
    QCOMPARE(host.images.GetImageCount(), 1);
    QCOMPARE(host.Current().size(), QSize(10, 12));
    CSnipToolCtrl withoutModel(nullptr, &tool, host.pCtrl.get());
    withoutModel.slot_CaptureScreen(QRect(0, 0, 10, 12));
    QCOMPARE(host.images.GetImageCount(), 1);
    QCOMPARE(log.Take(), QStringList{QStringLiteral("0:Push Image")}); // the model's own line, once
}

void tst_CSnipToolCtrl::undoAndRedoAreIgnored()
{
    CSnipToolCtrl ctrl(nullptr, nullptr, nullptr);
    QVERIFY(!ctrl.Undo());
    QVERIFY(!ctrl.Redo());
}

void tst_CSnipToolCtrl::deliberateOpeningIsNotItsJob()
{
    SHost host;
    CSnipTool tool(nullptr, nullptr);
    CSnipToolCtrl ctrl(nullptr, &tool, host.pCtrl.get());
    ctrl.slot_OpenCaptureScreen();
    QVERIFY(tool.isHidden());
    QVERIFY(!host.window.isVisible());
}

void tst_CSnipToolCtrl::theOverlayGreysAllButTheSelection()
{
    QVERIFY(Show(*m_pOther, 0));
    SHost host;
    QVERIFY(host.Start());
    CSnipTool* pTool = host.OpenTool();
    QVERIFY(pTool);
    const QRect region(300, 200, 400, 300);
    QVERIFY(Mouse(MoveTo(region.topLeft()) + QStringLiteral(" mousedown 1 ") + MoveTo(region.bottomRight())));
    const QRect frame = region.adjusted(-1, -1, 1, 1);
    // The window is shaped at once and painted a little later, each part as the screen comes to it.
    const auto isFramed = [&](const QImage& screen) {
        const QPoint corners[] = {frame.topLeft(), frame.topRight(), frame.bottomLeft(), frame.bottomRight()};
        return std::all_of(std::begin(corners), std::end(corners),
                           [&](const QPoint& pos) { return screen.pixel(pos) == qRgb(0, 255, 0); });
    };
    const auto isCovered = [](const QImage& screen) {
        const QPoint corners[] = {{0, 0}, {1279, 0}, {0, 1023}, {1279, 1023}};
        return std::none_of(std::begin(corners), std::end(corners), [&](const QPoint& pos) {
            return screen.pixel(pos) == KnownPixel(pos.x(), pos.y());
        });
    };
    QTRY_COMPARE_WITH_TIMEOUT(GrabScreen().copy(region), KnownPicture(region), kPatience); // untouched
    QTRY_VERIFY_WITH_TIMEOUT(isFramed(GrabScreen()), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(isCovered(GrabScreen()), kPatience); // up to the corners
    QVERIFY(Mouse(QStringLiteral("key Escape mouseup 1")));
    QTRY_VERIFY(host.IsBack());
}

VANTOR_TEST_MAIN(tst_CSnipToolCtrl)
#include "tst_CSnipToolCtrl.moc"
