// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The peer of bench_start: what any Qt program pays for a window of the host's size. With an argument its
// limit: the same without OpenGL, which windows load by themselves.
#include "bench/FirstFrame.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, argc > 1);
    QMainWindow window;
    window.resize(1200, 820);
    new CFirstFrame(window);
    window.show();
    return QApplication::exec();
}
