// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QVector>

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

/// Whether a process runs: it exists and is no zombie.
inline bool IsRunning(pid_t nProcess)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(nProcess));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray line = file.readAll();
    const char cState = line.mid(line.lastIndexOf(')') + 2).at(0);
    return cState != 'Z' && cState != 'X';
}

inline int CountOpenFiles()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}
