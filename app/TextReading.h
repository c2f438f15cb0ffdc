// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <functional>

class CImage2DProcessOCRDlg;

/// What the viewer adds to the tool that reads text: all installed languages, and what is done with the text.
class TextReading
{
    Q_DECLARE_TR_FUNCTIONS(TextReading)

public:
    TextReading() = delete;

    /// Each language with installed data, English first, then English together with each other one: "eng",
    /// "kor", "eng+kor".
    static QStringList Languages();
    /// Once for each dialog; later calls do nothing.
    /// @param tell  tells the user what failed
    static void SetUp(CImage2DProcessOCRDlg& dialog, const std::function<void(const QString&)>& tell);
    /// Writes a text as UTF-8 in one step. @return whether it is there
    static bool Save(const QString& strText, const QString& strPath);
};
