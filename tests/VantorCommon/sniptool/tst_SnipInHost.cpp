// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The example host from the outside: everything goes through the screen, the mouse and the clipboard.
#include "tests/VantorCommon/sniptool/ScreenParts.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QIcon>

using namespace ScreenParts;

namespace
{
constexpr int kIconSize = 20;

/// Whether every opaque pixel of the icon is on the screen there.
bool IsIconAt(const QImage& screen, const QImage& icon, int nLeft, int nTop)
{
    for (int y = 0; y < icon.height(); ++y)
        for (int x = 0; x < icon.width(); ++x)
            if (qAlpha(icon.pixel(x, y)) == 255 && icon.pixel(x, y) != screen.pixel(nLeft + x, nTop + y))
                return false;
    return true;
}

/// The middle of the first camera button on the screen; null when there is none.
QPoint FindCamera()
{
    const QImage screen = GrabScreen();
    const QImage icon = QIcon(QStringLiteral(":/Image/capture.png"))
                            .pixmap(kIconSize, kIconSize)
                            .toImage()
                            .convertToFormat(QImage::Format_ARGB32);
    if (icon.isNull())
        return QPoint();
    for (int y = 0; y + icon.height() <= screen.height(); ++y)
        for (int x = 0; x + icon.width() <= screen.width(); ++x)
            if (IsIconAt(screen, icon, x, y))
                return {x + icon.width() / 2, y + icon.height() / 2};
    return QPoint();
}

bool IsCovered()
{
    const QImage screen = GrabScreen();
    return screen.pixel(2, 2) == qRgb(63, 63, 63) && screen.pixel(1270, 1020) == qRgb(63, 63, 63);
}
} // namespace

class tst_SnipInHost : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void theCameraButtonCapturesARegionAndTheApplicationEndsWithItsWindow();

private:
    QProcess m_other;
    QProcess m_host;
};

void tst_SnipInHost::cleanup()
{
    Stop(m_host);
    Stop(m_other);
}

void tst_SnipInHost::theCameraButtonCapturesARegionAndTheApplicationEndsWithItsWindow()
{
    QVERIFY(!VisibleTool()); // of this process; it also links the library, for the icon
    QVERIFY(QFile::exists(QStringLiteral(":/Image/capture.png")));
    QVERIFY(Show(m_other, 0));
    m_host.setProcessChannelMode(QProcess::ForwardedChannels);
    m_host.start(QStringLiteral(HOST), QStringList());
    QTRY_VERIFY_WITH_TIMEOUT(!FindCamera().isNull(), kPatience);

    QVERIFY(Mouse(MoveTo(FindCamera()) + QStringLiteral(" click 1")));
    QTRY_VERIFY_WITH_TIMEOUT(IsCovered(), kPatience);
    const QRect region(150, 250, 500, 400);
    QVERIFY(Mouse(MoveTo(region.topLeft()) + QStringLiteral(" mousedown 1")));
    QVERIFY(Mouse(MoveTo(region.center())));
    QVERIFY(Mouse(MoveTo(region.bottomRight())));
    QVERIFY(Mouse(QStringLiteral("mouseup 1")));
    QTRY_VERIFY_WITH_TIMEOUT(!FindCamera().isNull(), kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(ReadClipboard(), KnownPicture(region), kPatience);

    // The button works again, and Escape leads back.
    QVERIFY(Mouse(MoveTo(FindCamera()) + QStringLiteral(" click 1")));
    QTRY_VERIFY_WITH_TIMEOUT(IsCovered(), kPatience);
    QVERIFY(Mouse(QStringLiteral("key Escape")));
    QTRY_VERIFY_WITH_TIMEOUT(!FindCamera().isNull(), kPatience);
    QCOMPARE(ReadClipboard(), KnownPicture(region));
    if (qEnvironmentVariableIsSet("VANTOR_PICTURES"))
        GrabScreen().save(qEnvironmentVariable("VANTOR_PICTURES") + QStringLiteral("/snip-host.png"));

    QVERIFY(Run(QStringLiteral("wmctrl"), {QStringLiteral("-c"), QStringLiteral("Vantor")}));
    QTRY_COMPARE_WITH_TIMEOUT(m_host.state(), QProcess::NotRunning, kPatience);
    QCOMPARE(m_host.exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_host.exitCode(), 0);
}

VANTOR_TEST_MAIN(tst_SnipInHost)
#include "tst_SnipInHost.moc"
