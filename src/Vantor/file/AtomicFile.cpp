// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/file/AtomicFile_p.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantor
{

namespace
{
constexpr int kMaxLinks = 40;
constexpr int kMaxAttempts = 100;
constexpr mode_t kNewFileMode = 0666; // less the umask
constexpr mode_t kPermissionBits = 07777;

/// The path up to and with its last separator.
std::string FolderOf(const std::string& path)
{
    const std::size_t nSlash = path.rfind('/');
    return nSlash == std::string::npos ? std::string() : path.substr(0, nSlash + 1);
}

/// Follows symbolic links, even to a file that does not exist yet; empty for a loop.
std::string FollowLinks(std::string path)
{
    for (int i = 0; i < kMaxLinks; ++i) {
        char target[PATH_MAX];
        const ssize_t nBytes = ::readlink(path.c_str(), target, sizeof(target));
        if (nBytes < 0 || nBytes == static_cast<ssize_t>(sizeof(target)))
            return path;
        const std::string strTarget(target, static_cast<std::size_t>(nBytes));
        path = strTarget.front() == '/' ? strTarget : FolderOf(path).append(strTarget);
    }
    return std::string();
}

/// A name in the folder that nobody else uses at the moment.
std::string TemporaryName(const std::string& folder)
{
    static std::atomic<unsigned> nCounter{0};
    return folder + ".vantor-" + std::to_string(::getpid()) + "-" + std::to_string(nCounter++) + ".tmp";
}

int CreateTemporary(const std::string& folder, std::string& path)
{
    for (int i = 0; i < kMaxAttempts; ++i) {
        path = TemporaryName(folder);
        const int nHandle = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
        if (nHandle >= 0 || errno != EEXIST)
            return nHandle;
    }
    return -1;
}
} // namespace

AtomicFile::~AtomicFile()
{
    m_file.close();
    if (!m_strTemporary.empty())
        ::unlink(m_strTemporary.c_str());
}

CResult AtomicFile::Open(const std::string& path)
{
    m_strTarget = FollowLinks(path);
    if (m_strTarget.empty())
        return CResult::Failure(kNotWritable);
    struct stat old = {};
    const bool bExists = ::stat(m_strTarget.c_str(), &old) == 0;
    if (bExists && (!S_ISREG(old.st_mode) || ::access(m_strTarget.c_str(), W_OK) != 0))
        return CResult::Failure(kNotWritable);
    std::string strTemporary;
    const int nHandle = CreateTemporary(FolderOf(m_strTarget), strTemporary);
    if (nHandle < 0)
        return CResult::Failure(kNotWritable);
    m_strTemporary.swap(strTemporary); // from here on a failure removes it
    if (bExists) {
        // Without the rights to keep another owner, the file becomes ours, with the old permissions.
        [[maybe_unused]] const int nIgnored = ::fchown(nHandle, old.st_uid, old.st_gid);
        ::fchmod(nHandle, old.st_mode & kPermissionBits);
    }
    // Unbuffered, so that every write passes the check.
    if (m_file.open(nHandle, QIODevice::ReadWrite | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return CResult::Success();
    ::close(nHandle);
    return CResult::Failure(kNotWritable);
}

CResult AtomicFile::Commit()
{
    if (CProgress::IsThreadCancelled())
        return CResult::Failure(kCancelled);
    if (m_file.HasFailed() || ::fsync(m_file.handle()) != 0)
        return CResult::Failure(kNotWhole);
    m_file.close();
    if (CProgress* pProgress = CProgress::OfThread(); pProgress && !pProgress->Commit())
        return CResult::Failure(kCancelled);
    if (::rename(m_strTemporary.c_str(), m_strTarget.c_str()) != 0)
        return CResult::Failure(kNotWhole);
    m_strTemporary.clear();
    return CResult::Success();
}

} // namespace Vantor
