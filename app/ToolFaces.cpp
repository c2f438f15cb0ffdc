// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ToolFaces.h"

#include <QCoreApplication>

namespace
{
struct SRow {
    const char* pTitle;
    const char* pText;
    const char* pIcon; ///< null: none
    const char* pKeys; ///< null: none
};

const SRow kRows[] = {
    {"Median Filter", QT_TRANSLATE_NOOP("CMainWindow", "&Median Filter..."), "median", "Ctrl+M"},
    {"Sobel Filter", QT_TRANSLATE_NOOP("CMainWindow", "&Sobel Filter..."), "sobel", "Ctrl+E"},
    {"OCR", QT_TRANSLATE_NOOP("CMainWindow", "&OCR..."), "ocr", "Ctrl+T"},
    {"Gaussian Blur", QT_TRANSLATE_NOOP("CMainWindow", "Gaussian &Blur..."), nullptr, nullptr},
    {"Unsharp Mask", QT_TRANSLATE_NOOP("CMainWindow", "&Unsharp Mask..."), nullptr, nullptr},
    {"Threshold", QT_TRANSLATE_NOOP("CMainWindow", "&Threshold..."), nullptr, nullptr},
    {"Brightness, Contrast, Gamma", QT_TRANSLATE_NOOP("CMainWindow", "Brightness, Co&ntrast, Gamma..."),
     nullptr, nullptr},
    {"Invert", QT_TRANSLATE_NOOP("CMainWindow", "&Invert..."), nullptr, nullptr},
    {"Find Particles", QT_TRANSLATE_NOOP("CMainWindow", "&Find Particles..."), nullptr, nullptr},
};
} // namespace

SActionFace ToolFace(const QString& strTitle)
{
    for (const SRow& row : kRows) {
        if (strTitle != QLatin1String(row.pTitle))
            continue;
        SActionFace face{row.pText, QIcon(), {}};
        if (row.pIcon)
            face.icon = QIcon(QStringLiteral(":/app/Image/%1.png").arg(QLatin1String(row.pIcon)));
        if (row.pKeys)
            face.lstKeys = {QKeySequence(QLatin1String(row.pKeys))};
        return face;
    }
    return {{strTitle + QStringLiteral("..."), strTitle}, QIcon(), {}};
}
