// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/VantorCommon/sniptool/KnownPicture.h"

#include <VantorCommon/sniptool/CSnipTool.h>

#include <QApplication>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QStringList>
#include <QtTest/QtTest>

/// The other processes of a capture: the one that shows the known picture, the one that moves the mouse, and
/// the one that reads the clipboard.
namespace ScreenParts
{
constexpr int kPatience = 20000; // ms

/// Starts the other application and waits until it has painted: the known picture, or that of a file.
inline bool Show(QProcess& process, int nDelay, const QString& strFile = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_SCALE_FACTOR")); // it paints in device pixels
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(SHOW_PICTURE), {QString::number(nDelay), strFile});
    return QTest::qWaitFor([&] { return process.canReadLine(); }, kPatience) &&
           process.readLine() == QByteArray("ready\n");
}

inline void Stop(QProcess& process)
{
    process.kill();
    process.waitForFinished();
}

/// Runs a program while events are processed. False when it failed.
inline bool Run(const QString& strProgram, const QStringList& lstArguments, QByteArray* pOutput = nullptr)
{
    QProcess process;
    process.start(strProgram, lstArguments);
    if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kPatience))
        return false;
    if (pOutput)
        *pOutput = process.readAllStandardOutput();
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

/// Real mouse events, in device pixels of the screen; each word list as xdotool takes it.
inline bool Mouse(const QString& strWords)
{
    return Run(QStringLiteral("xdotool"), strWords.split(QLatin1Char(' ')));
}

inline QString MoveTo(const QPoint& pos)
{
    return QStringLiteral("mousemove %1 %2").arg(pos.x()).arg(pos.y());
}

/// A whole drag at once: nothing is painted between its events.
inline bool FastDrag(const QPoint& start, const QPoint& end)
{
    return Mouse(MoveTo(start) + QStringLiteral(" mousedown 1 ") + MoveTo(end) +
                 QStringLiteral(" mouseup 1"));
}

/// The picture on the clipboard as a third process gets it; null when there is none.
inline QImage ReadClipboard()
{
    QByteArray png;
    if (!Run(QStringLiteral("xclip"),
             {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-t"),
              QStringLiteral("image/png"), QStringLiteral("-o")},
             &png))
        return QImage();
    return QImage::fromData(png, "PNG").convertToFormat(QImage::Format_RGB32);
}

/// The whole screen in device pixels.
inline QImage GrabScreen()
{
    QImage image = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    image.setDevicePixelRatio(1.0);
    return image.convertToFormat(QImage::Format_RGB32);
}

inline CSnipTool* VisibleTool()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        if (auto* pTool = qobject_cast<CSnipTool*>(pWidget); pTool && pTool->isVisible())
            return pTool;
    return nullptr;
}
} // namespace ScreenParts
