// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>

#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    CCenterModel model;
    auto* pView = new CCenterView(&model, &window);
    window.setCentralWidget(pView);
    CCenterCtrl ctrl(&model, pView, nullptr, nullptr, nullptr);
    window.show();
    ctrl.OpenFile(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""));
    return ctrl.FindImage(QString()) ? 0 : 1;
}
