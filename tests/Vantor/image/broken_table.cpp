// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// broken_table FOLDER: loads every file below the folder, each in a process of its own, and prints what came
// of it, the time and the growth of the process. Fails when a bound of one of the loaders is broken.
#include "tests/support/EndChild.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <QDirIterator>
#include <QFileInfo>

#include <chrono>
#include <cstdio>
#include <vector>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;

namespace
{
#ifdef __SANITIZE_ADDRESS__
constexpr bool kMeasures = false; // memory and time are the sanitizer's own, only crashes count
#else
constexpr bool kMeasures = true;
#endif
constexpr double kMostMilliseconds = 2000.0;
constexpr long kMostMegabytes = 1024 + 64;
constexpr qint64 kSmallFile = 1024;
constexpr double kMostMillisecondsOfSmall = 50.0;
constexpr long kMostMegabytesOfSmall = 32;
constexpr unsigned kSecondsUntilKilled = 30;

/// What loads the files of some suffixes; returns 0 on success.
struct SLoader {
    QStringList suffixes;
    int (*pLoad)(const QString& path);
};

struct SRow {
    bool bDied = true;
    int nResult = 0;
    double dMilliseconds = 0.0;
    long nMegabytes = 0;
};

int LoadImageFile(const QString& path)
{
    CImage image;
    return image.Load(path.toStdWString());
}

const std::vector<SLoader>& Loaders()
{
    static const std::vector<SLoader> loaders = {
        {{QStringLiteral("bmp"), QStringLiteral("gif"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
          QStringLiteral("png"), QStringLiteral("tif"), QStringLiteral("tiff")},
         LoadImageFile}};
    return loaders;
}

/// The most memory that this process has ever held, in kilobytes. Unlike getrusage it starts afresh in a
/// child.
long PeakKilobytes()
{
    std::FILE* pFile = std::fopen("/proc/self/status", "r");
    char line[256];
    long nKilobytes = 0;
    while (pFile && std::fgets(line, sizeof(line), pFile)) {
        if (std::sscanf(line, "VmHWM: %ld kB", &nKilobytes) == 1)
            break;
    }
    if (pFile)
        std::fclose(pFile);
    return nKilobytes;
}

/// Loads in the child and writes the row to the pipe.
[[noreturn]] void RunChild(const SLoader& loader, const QString& path, int nPipe)
{
    ::alarm(kSecondsUntilKilled);
    const int nNull = ::open("/dev/null", O_WRONLY); // the decoders' complaints
    ::dup2(nNull, STDERR_FILENO);
    if (kMeasures) {
        const rlimit limit{4UL << 30, 4UL << 30};
        ::setrlimit(RLIMIT_AS, &limit);
    }
    SRow row;
    const long nBefore = PeakKilobytes();
    const auto start = std::chrono::steady_clock::now();
    row.nResult = loader.pLoad(path);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    row.bDied = false;
    row.dMilliseconds = took.count();
    row.nMegabytes = (PeakKilobytes() - nBefore) / 1024;
    const bool bWritten = ::write(nPipe, &row, sizeof(row)) == static_cast<ssize_t>(sizeof(row));
    EndChild(bWritten ? 0 : 1);
}

SRow Measure(const SLoader& loader, const QString& path)
{
    int pipes[2] = {};
    SRow row;
    if (::pipe(pipes) != 0)
        return row;
    std::fflush(nullptr);
    const pid_t nChild = ::fork();
    if (nChild == 0)
        RunChild(loader, path, pipes[1]);
    ::close(pipes[1]);
    if (::read(pipes[0], &row, sizeof(row)) != static_cast<ssize_t>(sizeof(row)))
        row = SRow();
    ::close(pipes[0]);
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    row.bDied |= !WIFEXITED(nStatus) || WEXITSTATUS(nStatus) != 0;
    return row;
}

bool IsWithinBounds(const SRow& row, qint64 nFileBytes)
{
    if (row.bDied)
        return false;
    if (!kMeasures)
        return true;
    const bool bSmall = nFileBytes <= kSmallFile;
    return row.dMilliseconds <= (bSmall ? kMostMillisecondsOfSmall : kMostMilliseconds) &&
           row.nMegabytes <= (bSmall ? kMostMegabytesOfSmall : kMostMegabytes);
}

const SLoader* FindLoader(const QString& suffix)
{
    for (const SLoader& loader : Loaders()) {
        if (loader.suffixes.contains(suffix, Qt::CaseInsensitive))
            return &loader;
    }
    return nullptr;
}
} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: broken_table FOLDER\n");
        return 2;
    }
    const QDir root(QFileInfo(QString::fromUtf8(argv[1])).absoluteFilePath());
    QStringList paths;
    for (QDirIterator it(root.path(), QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
        paths << root.relativeFilePath(it.next());
    paths.sort();
    // The codecs load their plugins once; that is not the cost of a file.
    for (const char* pWarm : {"jpeg/pjw-thumbnail.jpeg", "gif/background-color.gif", "png/basn0g01.png"})
        LoadImageFile(root.filePath(QString::fromLatin1(pWarm)));
    int nFiles = 0;
    int nBroken = 0;
    std::printf("%-55s %8s %-7s %9s %6s\n", "file", "bytes", "result", "ms", "MB");
    for (const QString& path : paths) {
        const QFileInfo info(root.filePath(path));
        const SLoader* pLoader = FindLoader(info.suffix());
        if (!pLoader)
            continue;
        const SRow row = Measure(*pLoader, info.filePath());
        const bool bWithin = IsWithinBounds(row, info.size());
        const char* pResult = row.bDied ? "died" : row.nResult == 0 ? "loaded" : "refused";
        std::printf("%-55s %8lld %-7s %9.2f %6ld%s\n", qPrintable(path), static_cast<long long>(info.size()),
                    pResult, row.dMilliseconds, row.nMegabytes, bWithin ? "" : "  OUT OF BOUNDS");
        ++nFiles;
        nBroken += bWithin ? 0 : 1;
    }
    std::printf("%d files, %d out of bounds\n", nFiles, nBroken);
    return nFiles > 0 && nBroken == 0 ? 0 : 1;
}
