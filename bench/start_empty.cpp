// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The peer of bench_start: what any Qt program pays for a window of the host's size.
#include "bench/FirstFrame.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.resize(1200, 820);
    new CFirstFrame(window);
    window.show();
    return QApplication::exec();
}
