// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "ToolParts.h"
#include "tests/support/CenterFixture.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/process/median/CImage2DProcessMedianCtrl.h>
#include <VantorCommon/process/median/CImage2DProcessMedianDlg.h>
#include <VantorCommon/process/median/CImage2DProcessMedianDlgParameterDelegate.h>
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRCtrl.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelCtrl.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlg.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlgParameterDelegate.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

/// The classes of one tool.
struct MedianTool {
    using Enum = EImage2DProcessMedian;
    using Model = CImage2DProcessMedianModel;
    using Dlg = CImage2DProcessMedianDlg;
    using Ctrl = CImage2DProcessMedianCtrl;
    static void Run(Ctrl& ctrl) { ctrl.slot_Run(); }
    using Delegate = CImage2DProcessMedianDlgParameterDelegate;
};
struct SobelTool {
    using Enum = EImage2DProcessSobel;
    using Model = CImage2DProcessSobelModel;
    using Dlg = CImage2DProcessSobelDlg;
    using Ctrl = CImage2DProcessSobelCtrl;
    static void Run(Ctrl& ctrl) { ctrl.slot_Run(); }
    using Delegate = CImage2DProcessSobelDlgParameterDelegate;
};
struct OCRTool {
    using Model = CImage2DProcessOCRModel;
    using Dlg = CImage2DProcessOCRDlg;
    using Ctrl = CImage2DProcessOCRCtrl;
    static void Run(Ctrl& ctrl) { ctrl.slot_RunOCR(); }
};

/// A centre of one viewer with an image of 200 x 150, and a tool whose model the test can see.
template <class Tool> class ToolBench
{
public:
    explicit ToolBench(int nColumns = 1, int nRows = 1) : fixture(nColumns, nRows) { QVERIFY(parts.Show()); }

    std::shared_ptr<Vantor::Algorithms::CImage> Image() const { return fixture.Ctrl(0)->GetImage(); }
    QByteArray Pixels() const { return PixelsOf(*Image()); }
    /// Draws a rectangle in the viewer with the mouse and comes back to the dialog, where it is chosen.
    void DrawRegion()
    {
        QVERIFY(Activate(fixture.window));
        fixture.DrawRectangle(0, {20, 30}, {90, 80});
        QCOMPARE(fixture.Counts()[0], 1);
        QVERIFY(parts.Show());
    }
    /// What a person does to take back a run: a click beside the shapes, and the keys.
    void PressUndo()
    {
        QVERIFY(Activate(fixture.window));
        fixture.PressToolButton("Select");
        fixture.ClickAt(0, {190, 140});
        QTRY_VERIFY(fixture.View(0)->hasFocus());
        fixture.Key(Qt::Key_Z, Qt::ControlModifier);
    }
    /// Puts an image into the viewer as a program does.
    void SetImage(std::shared_ptr<Vantor::Algorithms::CImage> pImage)
    {
        fixture.Ctrl(0)->ChangeCurrentImage(std::move(pImage));
    }

    CenterFixture fixture;
    typename Tool::Model model;
    typename Tool::Dlg dlg{&model, &fixture.window};
    typename Tool::Ctrl ctrl{&model, &dlg};
    ToolParts parts{dlg};
};
