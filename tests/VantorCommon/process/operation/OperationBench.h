// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/CenterFixture.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationDlg.h>
#include <VantorCommon/process/operation/SProcessOperation.h>

#include <optional>

/// A centre of one viewer with an image of 200 x 150, and the dialog of one of its tools.
class OperationBench
{
public:
    /// With a tool of the test's own.
    explicit OperationBench(const SProcessOperation& operation)
    {
        OpenTool(fixture.center->RegisterOperation(operation));
    }
    /// With one of the centre's tools.
    explicit OperationBench(const QString& strTitle)
    {
        OpenTool(fixture.center->GetToolTitles().indexOf(strTitle));
    }

    void OpenTool(int nTool)
    {
        QVERIFY(nTool >= 0);
        fixture.center->OpenTool(nTool, 0);
        const QString strTitle = fixture.center->GetToolTitles().value(nTool);
        for (auto* pEach : fixture.window.findChildren<CImage2DProcessOperationDlg*>())
            if (pEach->windowTitle() == strTitle)
                pDlg = pEach;
        QVERIFY(pDlg);
        parts.emplace(*pDlg);
        QVERIFY(parts->Show());
    }
    /// Puts a value into a row as a program does.
    void Set(int nRow, const QVariant& varValue)
    {
        parts->Rows()->item(nRow, 1)->setData(varValue, Qt::EditRole);
    }
    QVariant Get(int nRow) const { return parts->Rows()->item(nRow, 1)->data(Qt::EditRole); }

    std::shared_ptr<Vantor::Algorithms::CImage> Image() const { return fixture.Ctrl(0)->GetImage(); }
    /// Draws a rectangle with the mouse and comes back to the dialog, where it is chosen.
    void DrawRegion()
    {
        QVERIFY(Activate(fixture.window));
        fixture.DrawRectangle(0, {20, 30}, {90, 80});
        QCOMPARE(fixture.Counts()[0], 1);
        QVERIFY(parts->Show());
        parts->Chooser("Source ROI")->setCurrentIndex(0);
    }
    std::shared_ptr<Vantor::Geometry::CGeometry> Region() const
    {
        const auto objects = fixture.Viewer(0)->Get2DDrawableObjects();
        return std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(objects.at(0))->GetData();
    }
    /// What a person does to take back a run.
    void PressUndo()
    {
        QVERIFY(Activate(fixture.window));
        fixture.PressToolButton("Select");
        fixture.ClickAt(0, {190, 140});
        QTRY_VERIFY(fixture.View(0)->hasFocus());
        fixture.Key(Qt::Key_Z, Qt::ControlModifier);
    }

    CenterFixture fixture{1, 1};
    QPointer<CImage2DProcessOperationDlg> pDlg;
    std::optional<ToolParts> parts;
};
