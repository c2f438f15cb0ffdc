// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/VantorCommon/process/ToolBench.h"

#include <VantorCommon/process/ocr/CImage2DProcessOCRDlgParameterDelegate.h>

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QSpinBox>
#include <QTextEdit>

/// The rows of the parameter tree, which are the codes of a change too.
enum EOcrRow { LanguageRow, FolderRow, DpiRow };

/// The OCR tool over a page of text, and what a person does with it.
class OcrBench : public ToolBench<OCRTool>
{
public:
    OcrBench() { Load(QStringLiteral("phototest.tif")); }

    void Load(const QString& strName)
    {
        fixture.Ctrl(0)->LoadFile(TestDataPath(QStringLiteral("ocr/") + strName));
        QVERIFY(Image());
    }
    QTextEdit* Result() const { return parts.Group("Result")->findChild<QTextEdit*>(); }
    QString Text() const { return Result()->toPlainText(); }
    /// With the mouse, in the viewer; it is the chosen one of the dialog then.
    void DrawFirstLine()
    {
        QVERIFY(Activate(fixture.window));
        fixture.DrawRectangle(0, {4, 86}, {632, 124});
        QTRY_COMPARE(parts.Entries("Source ROI").size(), 1);
        QVERIFY(parts.Show());
    }
    static QString FirstLine() { return QStringLiteral("This is a lot of 12 point text to test the"); }
    static QString WholePage()
    {
        QFile file(TestDataPath(QStringLiteral("ocr/phototest.gold.txt")));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
    }
};
