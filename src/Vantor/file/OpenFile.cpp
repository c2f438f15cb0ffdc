// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/file/OpenFile_p.h>

#include <QFile>
#include <QString>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Vantor
{

namespace
{
std::string WhyNotOpened(int error)
{
    if (error == ENOENT || error == ENOTDIR)
        return "There is no such file.";
    if (error == EACCES || error == EPERM)
        return "Reading the file is not permitted.";
    return "The file cannot be opened: " + std::generic_category().message(error) + '.';
}

bool Fail(std::string* reason, std::string text)
{
    if (reason)
        *reason = std::move(text);
    return false;
}
} // namespace

std::string ToSystemPath(const std::wstring& path)
{
    if (path.find(L'\0') != std::wstring::npos)
        return std::string();
    return QString::fromStdWString(path).toStdString();
}

bool OpenRegularFile(const std::wstring& path, QFile& file, std::string* reason)
{
    return OpenRegularFile(ToSystemPath(path), file, reason);
}

bool OpenRegularFile(const std::string& systemPath, QFile& file, std::string* reason)
{
    if (systemPath.empty() || systemPath.find('\0') != std::string::npos)
        return Fail(reason, "There is no such file.");
    // O_NONBLOCK: without it the open of a FIFO waits for a writer.
    const int nHandle = ::open(systemPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (nHandle < 0)
        return Fail(reason, WhyNotOpened(errno));
    struct stat status = {};
    if (::fstat(nHandle, &status) != 0 || !S_ISREG(status.st_mode) ||
        !file.open(nHandle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(nHandle);
        return Fail(reason, "It is not a regular file.");
    }
    return true;
}

} // namespace Vantor
