// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// The user's wishes on the command line.
struct SCommandLine {
    Q_DECLARE_TR_FUNCTIONS(SCommandLine)

public:
    QStringList lstFiles;  ///< paths
    QString strLayout;     ///< "1x1", "2x1", "2x2", or empty
    QString strScreenshot; ///< a file, or empty
    QString strConfigDir;  ///< a folder, or empty
    QString strLogDir;     ///< a folder, or empty
    bool bHelp = false;
    bool bVersion = false;
    QString strError; ///< what is wrong with the command line, or empty
    QString strHelp;  ///< the text for --help

    /// Needs an application object of any kind.
    static SCommandLine Parse(const QStringList& lstArguments);
};
