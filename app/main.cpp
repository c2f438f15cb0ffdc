// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    window.show();
    return QApplication::exec();
}
