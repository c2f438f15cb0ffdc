// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CommandLine.h"

#include <QCommandLineParser>
#include <QSysInfo>
#include <QUrl>

namespace
{
/// The path of an address such as "file:///home/me/a%20b.png", any other argument unchanged.
QString PathOf(const QString& strArgument)
{
    if (!strArgument.startsWith(QLatin1String("file://")))
        return strArgument;
    QUrl url(strArgument);
    if (url.host() == QLatin1String("localhost") || url.host() == QSysInfo::machineHostName())
        url.setHost(QString());
    return url.isLocalFile() ? url.toLocalFile() : strArgument;
}
} // namespace

SCommandLine SCommandLine::Parse(const QStringList& lstArguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Shows, annotates and processes images and PDF documents."));
    const QCommandLineOption layout(QStringLiteral("layout"),
                                    tr("Show one, two or four viewers (1x1, 2x1 or 2x2) and deal the files "
                                       "over them."),
                                    tr("layout"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        tr("Write a picture of the main window and quit."), tr("file"));
    const QCommandLineOption configDir(QStringLiteral("config-dir"),
                                       tr("Keep the settings in this folder; it is made if need be."),
                                       tr("folder"));
    const QCommandLineOption logDir(QStringLiteral("log-dir"),
                                    tr("Write the log files into this folder; it is made if need be."),
                                    tr("folder"));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     tr("Show the version and quit."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  tr("Show this help and quit."));
    parser.addOptions({layout, screenshot, configDir, logDir, version, help});
    parser.addPositionalArgument(QStringLiteral("files"),
                                 tr("Images and documents, as paths or file:// addresses: up to four side by "
                                    "side, more as the list of one viewer."),
                                 QStringLiteral("[files...]"));

    SCommandLine line;
    if (!parser.parse(lstArguments))
        line.strError = parser.errorText();
    for (const QString& strArgument : parser.positionalArguments())
        line.lstFiles.append(PathOf(strArgument));
    line.strLayout = parser.value(layout);
    line.strScreenshot = parser.value(screenshot);
    line.strConfigDir = parser.value(configDir);
    line.strLogDir = parser.value(logDir);
    line.bVersion = parser.isSet(version);
    line.bHelp = parser.isSet(help);
    if (line.bHelp)
        line.strHelp = parser.helpText();
    const QStringList lstLayouts{QStringLiteral("1x1"), QStringLiteral("2x1"), QStringLiteral("2x2")};
    if (parser.isSet(layout) && !lstLayouts.contains(line.strLayout))
        line.strError = tr("\"%1\" is no layout; use 1x1, 2x1 or 2x2.").arg(line.strLayout);
    for (const QCommandLineOption& option : {screenshot, configDir, logDir})
        if (parser.isSet(option) && parser.value(option).isEmpty())
            line.strError = tr("The option --%1 needs a name.").arg(option.names().constFirst());
    return line;
}
