// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The peer of bench_start: the costs of any Qt program with a window of the host's size. With an argument its
// limit: the same without OpenGL, which windows load by default.
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
