// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Another application on the screen: covers it with the known picture until it is ended. The first argument
// is how many milliseconds it takes to paint what was uncovered. Says "ready" after the first painting.
#include "tests/VantorCommon/sniptool/KnownPicture.h"

#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>
#include <QThread>
#include <cstdio>

class CPicture : public QRasterWindow
{
public:
    explicit CPicture(unsigned long nDelay) : m_nDelay(nDelay)
    {
        setFlags(Qt::FramelessWindowHint);
        setGeometry(screen()->geometry());
        m_picture = KnownPicture(geometry());
    }

protected:
    void exposeEvent(QExposeEvent* pEvent) override
    {
        QThread::msleep(m_nDelay);
        QRasterWindow::exposeEvent(pEvent);
        if (!isExposed() || m_bReady)
            return;
        m_bReady = true;
        std::puts("ready");
        std::fflush(stdout);
    }
    void paintEvent(QPaintEvent*) override { QPainter(this).drawImage(0, 0, m_picture); }

private:
    unsigned long m_nDelay;
    QImage m_picture;
    bool m_bReady = false;
};

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    CPicture window(argc > 1 ? QByteArray(argv[1]).toULong() : 0);
    window.show();
    return app.exec();
}
