// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/file/OpenFile_p.h>

#include <QFile>
#include <QString>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantor::Algorithms
{

std::string ToSystemPath(const std::wstring& path)
{
    if (path.find(L'\0') != std::wstring::npos)
        return std::string();
    return QString::fromStdWString(path).toStdString();
}

bool OpenRegularFile(const std::wstring& path, QFile& file)
{
    const std::string strPath = ToSystemPath(path);
    if (strPath.empty())
        return false;
    // O_NONBLOCK: without it the open of a FIFO waits for a writer.
    const int nHandle = ::open(strPath.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (nHandle < 0)
        return false;
    struct stat status = {};
    if (::fstat(nHandle, &status) != 0 || !S_ISREG(status.st_mode) ||
        !file.open(nHandle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(nHandle);
        return false;
    }
    return true;
}

} // namespace Vantor::Algorithms
