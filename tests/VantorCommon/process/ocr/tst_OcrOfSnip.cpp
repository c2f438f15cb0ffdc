// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// From what another application shows on the screen to its text: the camera button, a drag over the screen,
// a region drawn in the captured image, and the OCR tool.
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/VantorCommon/sniptool/ScreenParts.h"
#include "tests/support/CenterFixture.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>

#include <QTextEdit>

using namespace ScreenParts;

class tst_OcrOfSnip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Stop(m_other); }
    void aTextOnTheScreenIsSnippedAndReadInARegion();

private:
    QProcess m_other;
};

void tst_OcrOfSnip::aTextOnTheScreenIsSnippedAndReadInARegion()
{
    QVERIFY(Show(m_other, 0, TestDataPath(QStringLiteral("ocr/tj_testocr.png"))));
    CenterFixture fixture(1, 1);
    CMVCManager::PushMVC(nullptr, &fixture.window, nullptr);
    const auto pBefore = fixture.Ctrl(0)->GetImage();

    fixture.PressFrameButton(0, "Capture the screen");
    CSnipTool* pTool = VisibleTool();
    QVERIFY(pTool);
    QTRY_VERIFY_WITH_TIMEOUT(pTool->isActiveWindow() && fixture.window.isMinimized(), kPatience);
    // The first three lines of the text and a part of the fourth.
    const QRect part(20, 80, 610, 125);
    QVERIFY(FastDrag(part.topLeft(), part.bottomRight()));
    QTRY_VERIFY_WITH_TIMEOUT(fixture.Ctrl(0)->GetImage() != pBefore, kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(!fixture.window.isMinimized(), kPatience);
    const auto pCaptured = fixture.Ctrl(0)->GetImage();
    QCOMPARE(QSize(pCaptured->GetWidth(), pCaptured->GetHeight()), part.size());

    QVERIFY(Activate(fixture.window));
    fixture.DrawRectangle(0, {5, 8}, {604, 38});
    QCOMPARE(fixture.Counts()[0], 1);
    fixture.center->slot_OpenOCRTool();
    auto* pDlg = fixture.centerView->findChild<CImage2DProcessOCRDlg*>();
    QVERIFY(pDlg);
    ToolParts parts(*pDlg);
    QVERIFY(parts.Show());
    QCOMPARE(parts.Entries("Source ROI").size(), 1);
    parts.ClickRun();
    QCOMPARE(parts.Group("Result")->findChild<QTextEdit*>()->toPlainText(),
             QStringLiteral("This is a lot of 12 point text to test the"));
    QVERIFY(parts.Message().startsWith(QStringLiteral("Processing Time")));
    QVERIFY(fixture.Ctrl(0)->GetImage() == pCaptured);
}

VANTOR_TEST_MAIN(tst_OcrOfSnip)
#include "tst_OcrOfSnip.moc"
