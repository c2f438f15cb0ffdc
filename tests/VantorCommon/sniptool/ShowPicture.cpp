// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Another application on the screen: covers it with the known picture until it is ended. The first argument
// is how many milliseconds it takes to paint what was uncovered. A second one names an image file, which is
// then shown in the upper left corner of a white screen instead. Says "ready" after the first painting.
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
    CPicture(unsigned long nDelay, const QString& strFile) : m_nDelay(nDelay)
    {
        setFlags(Qt::FramelessWindowHint);
        setGeometry(screen()->geometry());
        m_picture = strFile.isEmpty() ? KnownPicture(geometry()) : QImage(strFile);
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
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(QRect(QPoint(), size()), Qt::white);
        painter.drawImage(0, 0, m_picture);
    }

private:
    unsigned long m_nDelay;
    QImage m_picture;
    bool m_bReady = false;
};

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    CPicture window(argc > 1 ? QByteArray(argv[1]).toULong() : 0,
                    argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString());
    window.show();
    return app.exec();
}
