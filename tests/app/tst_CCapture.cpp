// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CCapture.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/sniptool/CSnipTool.h>

#include <QScreen>

namespace
{
CSnipTool* Tool()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        if (auto* pTool = qobject_cast<CSnipTool*>(pWidget); pTool && pTool->isVisible())
            return pTool;
    return nullptr;
}
} // namespace

class tst_CCapture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void theWholeScreenIsTakenWithoutTheWindow()
    {
        QWidget behind;
        behind.setStyleSheet(QStringLiteral("background: rgb(10, 20, 30)"));
        behind.setGeometry(behind.screen()->geometry());
        behind.show();
        QVERIFY(QTest::qWaitForWindowExposed(&behind));
        Host host;
        QVERIFY(host.Show());
        const QPoint middle = host.window.geometry().center();
        host.Entry("Tools", "Capture the Whole Screen")->trigger();
        QTRY_COMPARE(CtrlOf(host, 0)->GetImageModel()->GetImageCount(), 1);
        const auto pImage = CtrlOf(host, 0)->GetCurrentImgage();
        QCOMPARE(QSize(pImage->GetWidth(), pImage->GetHeight()), host.window.screen()->geometry().size());
        const unsigned char* pPixel = pImage->GetPixel(middle.x(), middle.y());
        QCOMPARE(QColor(pPixel[0], pPixel[1], pPixel[2]), QColor(10, 20, 30));
        QVERIFY(!Tool());
        QTRY_VERIFY(!host.window.isMinimized());
    }

    void aDelayLeavesTimeAndTheLastOneCounts()
    {
        Host host;
        QVERIFY(host.Show());
        CCapture capture(nullptr);
        capture.OpenAfter(CtrlOf(host, 0), 100000);
        capture.OpenAfter(CtrlOf(host, 0), 300);
        QVERIFY(!Tool());
        QTRY_VERIFY(Tool());
        QTest::keyClick(Tool(), Qt::Key_Escape);
        QTRY_VERIFY(!Tool());
        QVERIFY(host.IsEnabled("Tools", "Capture after 3 Seconds"));
        QVERIFY(host.IsEnabled("Tools", "Capture after 5 Seconds"));
    }
};

VANTOR_TEST_MAIN(tst_CCapture)
#include "tst_CCapture.moc"
