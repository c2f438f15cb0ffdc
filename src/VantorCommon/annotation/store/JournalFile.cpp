// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/store/JournalFile_p.h>

#include <VantorCommon/annotation/store/AnnotationRecovery.h>

#include <QDir>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr mode_t kOwnerOnly = 0600;

int Lock(int nFile, int nHow)
{
    if (nFile < 0 || ::flock(nFile, nHow) == 0)
        return nFile;
    ::close(nFile);
    return -1;
}
} // namespace

int JournalFile::Create(const QString& strPath)
{
    QDir().mkpath(AnnotationRecovery::GetFolder());
    return Lock(
        ::open(strPath.toUtf8().constData(), O_RDWR | O_APPEND | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly),
        LOCK_EX); // somebody may be looking at it for a moment
}

int JournalFile::OpenUnheld(const QString& strPath)
{
    return Lock(::open(strPath.toUtf8().constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK),
                LOCK_EX | LOCK_NB);
}

bool JournalFile::WriteAll(int nFile, const std::string& bytes)
{
    std::size_t nDone = 0;
    while (nDone < bytes.size()) {
        const ssize_t nWritten = ::write(nFile, bytes.data() + nDone, bytes.size() - nDone);
        if (nWritten < 0 && errno == EINTR)
            continue;
        if (nWritten <= 0)
            return false;
        nDone += static_cast<std::size_t>(nWritten);
    }
    return true;
}

std::string JournalFile::Read(const QString& strPath, qint64 nSize)
{
    const int nFile = ::open(strPath.toUtf8().constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (nFile < 0)
        return {};
    struct stat status = {};
    const bool bRegular = ::fstat(nFile, &status) == 0 && S_ISREG(status.st_mode);
    std::string bytes(bRegular ? static_cast<std::size_t>(std::min<qint64>(nSize, status.st_size)) : 0, '\0');
    std::size_t nDone = 0;
    while (nDone < bytes.size()) {
        const ssize_t nRead = ::read(nFile, &bytes[nDone], bytes.size() - nDone);
        if (nRead < 0 && errno == EINTR)
            continue;
        if (nRead <= 0)
            break;
        nDone += static_cast<std::size_t>(nRead);
    }
    ::close(nFile);
    bytes.resize(nDone);
    return bytes;
}

bool JournalFile::Rename(const QString& strFrom, const QString& strTo)
{
    return std::rename(strFrom.toUtf8().constData(), strTo.toUtf8().constData()) == 0;
}

void JournalFile::Remove(const QString& strPath)
{
    ::unlink(strPath.toUtf8().constData());
}

void JournalFile::SyncFolder()
{
    const int nFolder = ::open(AnnotationRecovery::GetFolder().toUtf8().constData(), O_RDONLY | O_CLOEXEC);
    if (nFolder < 0)
        return;
    ::fsync(nFolder);
    ::close(nFolder);
}
