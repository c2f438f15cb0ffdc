// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The main window of the example host, for bench_start.
#include "app/CMainWindow.h"
#include "bench/FirstFrame.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vantor-viewer"));
    CMainWindow window;
    new CFirstFrame(window);
    window.show();
    return QApplication::exec();
}
