// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/EndChild.h"

#include <VantorCommon/database/CDatabaseHelper.h>
#include <VantorCommon/database/CDatabaseModelFactory.h>
#include <VantorCommon/database/CDatabaseModelSetting.h>

#include <QDir>
#include <QFile>
#include <QMap>
#include <QString>
#include <QTemporaryDir>
#include <QVector>
#include <csignal>
#include <functional>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs the function in a child process. It ends without the clean-up of the parent's objects.
inline pid_t Fork(const std::function<void()>& func)
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        func();
        EndChild(0);
    }
    return nChild;
}

inline void Wait(pid_t nChild)
{
    waitpid(nChild, nullptr, 0);
}

inline void Kill(pid_t nChild)
{
    kill(nChild, SIGKILL);
    Wait(nChild);
}

inline void SleepMicroseconds(int nMicroseconds)
{
    usleep(static_cast<useconds_t>(nMicroseconds));
}

/// A pipe by which children tell the parent numbers. What was sent before a kill arrives.
class CReport
{
public:
    CReport()
    {
        if (pipe(m_ends) != 0)
            qFatal("no pipe");
    }
    ~CReport()
    {
        close(m_ends[0]);
        close(m_ends[1]);
    }
    CReport(const CReport&) = delete;
    CReport& operator=(const CReport&) = delete;

    void Send(int nValue)
    {
        if (write(m_ends[1], &nValue, sizeof nValue) != sizeof nValue)
            _exit(1);
    }

    /// Everything that was sent so far.
    QVector<int> ReadAll()
    {
        QVector<int> values;
        pollfd end{m_ends[0], POLLIN, 0};
        int nValue = 0;
        while (poll(&end, 1, 0) == 1 && read(m_ends[0], &nValue, sizeof nValue) == sizeof nValue)
            values << nValue;
        return values;
    }

private:
    int m_ends[2];
};

/// Lets children that wait go on at the same moment.
class CStartLine
{
public:
    CStartLine()
    {
        if (pipe(m_ends) != 0)
            qFatal("no pipe");
    }
    ~CStartLine() { close(m_ends[0]); }
    CStartLine(const CStartLine&) = delete;
    CStartLine& operator=(const CStartLine&) = delete;

    void Wait()
    {
        close(m_ends[1]);
        char c = 0;
        if (read(m_ends[0], &c, 1) != 0) // it ends, nothing comes
            _exit(1);
    }
    void Open() { close(m_ends[1]); }

private:
    int m_ends[2];
};

/// A home folder with the folder of the settings in it, as HOME of this process and its children.
class CHome
{
public:
    CHome()
    {
        chmod(m_dir.path().toUtf8().constData(), 0755);
        qputenv("HOME", m_dir.path().toUtf8());
        QDir().mkpath(Folder());
    }
    ~CHome() { SetWritable(true); }
    CHome(const CHome&) = delete;
    CHome& operator=(const CHome&) = delete;

    QString Folder() const { return m_dir.path() + QStringLiteral("/Documents/Vantor"); }
    QString File() const { return Folder() + QStringLiteral("/settings.data"); }
    QStringList Files() const { return QDir(Folder()).entryList(QDir::Files | QDir::Hidden | QDir::System); }

    void WriteFile(const QByteArray& bytes)
    {
        QFile file(File());
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    }
    QByteArray ReadFile()
    {
        QFile file(File());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void RemoveJournals()
    {
        for (const char* pSuffix : {"-journal", "-wal", "-shm"})
            QFile::remove(File() + QLatin1String(pSuffix));
    }
    void SetWritable(bool bWritable)
    {
        const mode_t nMode = bWritable ? 0755 : 0555;
        for (const QString& strPath : {m_dir.path(), m_dir.path() + QStringLiteral("/Documents"), Folder()})
            chmod(strPath.toUtf8().constData(), nMode);
    }

private:
    QTemporaryDir m_dir;
};

/// What the file holds for somebody who starts now.
struct SStart {
    bool bLoaded = false;
    QMap<QString, QString> values;
};

inline SStart Start(const QString& strFile)
{
    CDatabaseModelFactory factory;
    CDatabaseHelper helper(&factory);
    CDatabaseHelper::RecordList records;
    SStart start;
    start.bLoaded = helper.OpenDatabase(QStringLiteral("localhost"), strFile, QString(), QString()) &&
                    helper.SelectFromTable(CDatabaseModelSetting::TABLE_NAME, records, {});
    for (const auto& pRecord : records) {
        const auto pSetting = std::static_pointer_cast<CDatabaseModelSetting>(pRecord);
        start.values.insert(pSetting->GetName(), pSetting->GetValue());
    }
    return start;
}
