// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/settings/CSettingCtrlFile_p.h>

#include <VantorCommon/database/CDatabaseHelper.h>

#include <QDeadlineTimer>
#include <QString>
#include <QThread>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr int c_nLockTimeoutMs = 5000;
constexpr int c_nLockPollMs = 5;

// Like SQLite, all functions here take paths as UTF-8, in every locale.

/// The exclusive right to create files in a folder, until this object or the process ends.
class CFolderLock
{
public:
    explicit CFolderLock(const QString& strFolder)
        : m_nFolder(open(strFolder.toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
    }
    ~CFolderLock()
    {
        if (m_nFolder >= 0)
            close(m_nFolder);
    }
    CFolderLock(const CFolderLock&) = delete;
    CFolderLock& operator=(const CFolderLock&) = delete;

    /// False if the folder cannot be opened, or another process holds the lock for too long. On a file system
    /// that cannot lock folders it returns true without a lock.
    bool Lock()
    {
        const QDeadlineTimer deadline(c_nLockTimeoutMs);
        while (m_nFolder >= 0 && !deadline.hasExpired()) {
            if (flock(m_nFolder, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
                return true;
            QThread::msleep(c_nLockPollMs);
        }
        return false;
    }

private:
    int m_nFolder;
};

/// An empty file counts as missing: an interrupted start or a full disk may have left it.
bool IsThere(const QByteArray& path)
{
    struct stat status;
    return stat(path.constData(), &status) == 0 && (!S_ISREG(status.st_mode) || status.st_size > 0);
}

bool BuildTable(const QString& strPath)
{
    CDatabaseHelper helper(nullptr);
    return helper.OpenDatabase(QStringLiteral("localhost"), strPath, QString(), QString()) &&
           helper.RunQueryFile(QStringLiteral(":/Files/database_sqlite.sql"), false);
}
} // namespace

bool EnsureSettingFile(const QString& strFolder, const QString& strPath)
{
    const QByteArray path = strPath.toUtf8();
    if (IsThere(path))
        return true;
    CFolderLock lock(strFolder);
    if (!lock.Lock())
        return false;
    if (IsThere(path)) // another process was faster
        return true;

    const QString strAside = strPath + QStringLiteral(".new");
    const QByteArray aside = strAside.toUtf8();
    const auto removeAside = [&] {
        unlink((aside + "-journal").constData());
        unlink(aside.constData());
    };
    removeAside(); // of a start that was interrupted
    if (BuildTable(strAside) && std::rename(aside.constData(), path.constData()) == 0)
        return true;
    removeAside();
    return false;
}
