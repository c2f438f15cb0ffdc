// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>

#include <sys/resource.h>

/// Writes the costs of the process to standard output when its window has painted its first frame, as "<CPU
/// ms> <peak MB>", and quits.
class CFirstFrame : public QObject
{
public:
    explicit CFirstFrame(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::Paint) {
            pWatched->removeEventFilter(this);
            QTimer::singleShot(0, this, &CFirstFrame::Report);
        }
        return QObject::eventFilter(pWatched, pEvent);
    }

private:
    static void Report()
    {
        rusage usage = {};
        ::getrusage(RUSAGE_SELF, &usage);
        const auto ms = [](const timeval& t) {
            return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
        };
        std::printf("%.3f %.3f\n", ms(usage.ru_utime) + ms(usage.ru_stime),
                    static_cast<double>(usage.ru_maxrss) / 1024.0);
        QCoreApplication::quit();
    }
};
