// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <ctime>

/// The longest time in which the event loop of its thread does not turn: a timer of 1 ms watches.
class CPauseProbe
{
public:
    CPauseProbe()
    {
        m_timer.setInterval(1);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Tick(); });
        m_timer.start();
    }
    /// Begins anew.
    void Start()
    {
        m_dblLongest = 0.0;
        m_dblMostWork = 0.0;
        m_dblWork = WorkMs();
        m_clock.start();
    }
    double LongestMs() const { return m_dblLongest; } ///< since Start
    /// The most processor time of the thread between two turns: what a pause would be on an idle machine.
    double MostWorkMs() const { return m_dblMostWork; }

private:
    void Tick()
    {
        if (!m_clock.isValid())
            return;
        m_dblLongest = std::max(m_dblLongest, static_cast<double>(m_clock.nsecsElapsed()) / 1e6);
        m_dblMostWork = std::max(m_dblMostWork, WorkMs() - m_dblWork);
        m_dblWork = WorkMs();
        m_clock.restart();
    }
    static double WorkMs()
    {
        timespec time{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    QTimer m_timer;
    QElapsedTimer m_clock;
    double m_dblLongest = 0.0;
    double m_dblMostWork = 0.0;
    double m_dblWork = 0.0; ///< processor time so far
};
