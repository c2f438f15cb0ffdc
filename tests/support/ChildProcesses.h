// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QVector>

#include <algorithm>
#include <ctime>

#include <sys/resource.h>
#include <sys/types.h>
#include <unistd.h>

/// The processes whose parent is this one, zombies included.
inline QVector<pid_t> ChildrenOf(pid_t nParent)
{
    QVector<pid_t> vctChildren;
    for (const QString& strName : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool bNumber = false;
        const pid_t nProcess = strName.toInt(&bNumber);
        QFile file(QStringLiteral("/proc/%1/stat").arg(strName));
        if (!bNumber || !file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray line = file.readAll(); // "number (name) state parent ..."
        if (line.mid(line.lastIndexOf(')') + 2).split(' ').value(1).toInt() == nParent)
            vctChildren << nProcess;
    }
    return vctChildren;
}

/// The state of a process as the system names it, such as 'S' while it waits; 'X' when there is none.
inline char StateOf(pid_t nProcess)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(nProcess));
    if (!file.open(QIODevice::ReadOnly))
        return 'X';
    const QByteArray line = file.readAll();
    return line.isEmpty() ? 'X' : line.at(line.lastIndexOf(')') + 2);
}

/// Whether a process runs: it exists and is no zombie.
inline bool IsRunning(pid_t nProcess)
{
    const char cState = StateOf(nProcess);
    return cState != 'Z' && cState != 'X';
}

/// Processor time that a process has used, 0 when there is none.
inline qint64 CpuMicrosecondsOf(pid_t nProcess)
{
    clockid_t clock = 0;
    timespec now{};
    if (::clock_getcpuclockid(nProcess, &clock) != 0 || ::clock_gettime(clock, &now) != 0)
        return 0;
    return static_cast<qint64>(now.tv_sec) * 1000000 + now.tv_nsec / 1000;
}

/// A line of a process's status, such as "VmHWM:", in bytes; 0 when there is none.
inline qint64 StatusBytesOf(pid_t nProcess, const QByteArray& name)
{
    QFile file(QStringLiteral("/proc/%1/status").arg(nProcess));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(name.size()).simplified().split(' ').value(0).toLongLong() * 1024;
    }
    return 0;
}

/// What the processes that read documents for this one have taken: the running ones and those that were
/// reaped.
struct SChildCosts {
    qint64 nCpuMicroseconds = 0;
    qint64 nPeakBytes = 0; ///< of the largest
};
inline SChildCosts ChildCosts()
{
    rusage ended{};
    ::getrusage(RUSAGE_CHILDREN, &ended);
    SChildCosts costs{(ended.ru_utime.tv_sec + ended.ru_stime.tv_sec) * qint64(1000000) +
                          ended.ru_utime.tv_usec + ended.ru_stime.tv_usec,
                      ended.ru_maxrss * qint64(1024)};
    for (const pid_t nChild : ChildrenOf(::getpid())) {
        costs.nCpuMicroseconds += CpuMicrosecondsOf(nChild);
        costs.nPeakBytes = std::max(costs.nPeakBytes, StatusBytesOf(nChild, "VmHWM:"));
    }
    return costs;
}

inline int CountOpenFiles()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}
