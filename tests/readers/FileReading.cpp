// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "FileReading.h"

#include "tests/support/ChildProcesses.h"

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <malloc.h>
#include <memory>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr int kFillPatterns[] = {85, 170};
constexpr int kMaxPages = 3; // of a document
constexpr double kDotsPerInch = 144.0;
constexpr unsigned kMaxSeconds = 120; // on the wall: a limit of processor time makes its clock coarse

/// What one reading of a file gave.
struct SResult {
    EOutcome eOutcome = EOutcome::Refused;
    int nPages = 0;
    qint64 nCpuMicroseconds = 0;
    QString strReason;
    QByteArray digest; ///< of sizes, channels and pixels
};

/// What starting the process that reads a document costs, whatever the document.
SChildCosts g_start;

/// Of this process and those that read documents for it.
qint64 CpuMicroseconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<qint64>(now.tv_sec) * 1000000 + now.tv_nsec / 1000 + ChildCosts().nCpuMicroseconds;
}

void AddPixels(const CImage& image, QCryptographicHash& hash)
{
    const int sizes[] = {image.GetWidth(), image.GetHeight(), image.GetChannel(), image.GetBitDepth()};
    hash.addData(reinterpret_cast<const char*>(sizes), sizeof sizes);
    const int nRow = image.GetWidth() * image.GetChannel() * (image.GetBitDepth() / 8);
    for (int y = 0; y < image.GetHeight(); ++y)
        hash.addData(reinterpret_cast<const char*>(image.GetRows()[y]), nRow);
}

bool IsDocument(const QString& strPath)
{
    constexpr qint64 kHead = 1024;
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) && file.read(kHead).contains("%PDF-");
}

SResult ReadImage(const QString& strPath)
{
    SResult result;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    CImage image;
    const qint64 nStart = CpuMicroseconds();
    const bool bLoaded = image.Load(strPath.toStdWString()) == 0;
    result.nCpuMicroseconds = CpuMicroseconds() - nStart;
    result.strReason = QString::fromStdString(image.GetFailureReason());
    result.eOutcome = bLoaded ? EOutcome::Loaded : EOutcome::Refused;
    if (bLoaded != result.strReason.isEmpty() || bLoaded != (image.GetData() != nullptr))
        result.eOutcome = EOutcome::AtOdds;
    result.nPages = bLoaded ? 1 : 0;
    AddPixels(image, hash);
    result.digest = hash.result();
    return result;
}

SResult ReadDocument(const QString& strPath)
{
    SResult result;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    CPDFReader reader;
    reader.SetResolutionX(kDotsPerInch);
    qint64 nStart = CpuMicroseconds();
    const int nRead = reader.Read(strPath.toStdWString(), std::wstring());
    result.nCpuMicroseconds = std::max<qint64>(CpuMicroseconds() - nStart - g_start.nCpuMicroseconds, 0);
    const int nPages = reader.GetPageNumber();
    if ((nRead == CPDFReader::EReadResult_OK) != (nPages > 0)) {
        result.eOutcome = EOutcome::AtOdds;
        result.strReason = QStringLiteral("Read gave %1 with %2 pages.").arg(nRead).arg(nPages);
    } else if (nRead != CPDFReader::EReadResult_OK) {
        result.strReason = QStringLiteral("result %1").arg(nRead);
    } else {
        result.eOutcome = EOutcome::Loaded;
    }
    for (int i = 0; i < std::min(nPages, kMaxPages); ++i) {
        CImage page;
        nStart = CpuMicroseconds();
        if (reader.RenderPage(i, &page) == 0)
            ++result.nPages;
        result.nCpuMicroseconds = std::max(result.nCpuMicroseconds, CpuMicroseconds() - nStart);
        AddPixels(page, hash);
    }
    result.digest = hash.result();
    return result;
}

SResult ReadOnce(const QString& strPath)
{
    return IsDocument(strPath) ? ReadDocument(strPath) : ReadImage(strPath);
}

/// The child's whole life: two readings, and what they gave into the pipe.
[[noreturn]] void ReadInChild(const QString& strPath, int nPipe, int nNoise)
{
    ::dup2(nNoise, STDOUT_FILENO);
    ::dup2(nNoise, STDERR_FILENO);
    const rlimit core{0, 0};
    ::setrlimit(RLIMIT_CORE, &core);
    ::alarm(kMaxSeconds);

    QFile peak(QStringLiteral("/proc/self/clear_refs")); // begins the peak anew
    if (peak.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        peak.write("5");
    const qint64 nBefore = StatusBytesOf(::getpid(), "VmRSS:");
    SResult results[2];
    for (int i = 0; i < 2; ++i) {
        ::mallopt(M_PERTURB, kFillPatterns[i]);
        qputenv("MALLOC_PERTURB_",
                QByteArray::number(kFillPatterns[i])); // for the process that reads documents
        results[i] = ReadOnce(strPath);
    }
    const bool bDiffers =
        results[0].digest != results[1].digest || results[0].eOutcome != results[1].eOutcome;

    QByteArray answer;
    QDataStream stream(&answer, QIODevice::WriteOnly);
    stream << static_cast<int>(results[0].eOutcome) << bDiffers << results[0].nPages
           << std::min(results[0].nCpuMicroseconds, results[1].nCpuMicroseconds)
           << std::max<qint64>(StatusBytesOf(::getpid(), "VmHWM:") - nBefore, 0) +
                  std::max<qint64>(ChildCosts().nPeakBytes - g_start.nPeakBytes, 0)
           << results[0].strReason;
    const bool bWritten = ::write(nPipe, answer.constData(), static_cast<std::size_t>(answer.size())) ==
                          static_cast<ssize_t>(answer.size());
    ::_exit(bWritten ? 0 : 1);
}

QByteArray ReadAll(int nPipe)
{
    QByteArray content;
    char buffer[4096];
    ssize_t nRead = 0;
    while ((nRead = ::read(nPipe, buffer, sizeof buffer)) > 0)
        content.append(buffer, static_cast<int>(nRead));
    return content;
}
} // namespace

SReading ReadApart(const QString& strPath)
{
    SReading reading;
    reading.strPath = strPath;
    reading.nFileBytes = QFileInfo(strPath).size();
    reading.bDocument = IsDocument(strPath);
    int pipes[2];
    const int nNoise = ::memfd_create("noise", 0);
    if (nNoise < 0 || ::pipe(pipes) != 0)
        qFatal("no pipe");
    std::fflush(nullptr);
    const pid_t nChild = ::fork();
    if (nChild == 0)
        ReadInChild(strPath, pipes[1], nNoise);
    ::close(pipes[1]);
    const QByteArray answer = ReadAll(pipes[0]);
    ::close(pipes[0]);
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    reading.nNoiseBytes = ::lseek(nNoise, 0, SEEK_END);
    ::close(nNoise);

    if (WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0) {
        int nOutcome = 0;
        QDataStream stream(answer);
        stream >> nOutcome >> reading.bDiffers >> reading.nPages >> reading.nCpuMicroseconds >>
            reading.nPeakBytes >> reading.strReason;
        reading.eOutcome = static_cast<EOutcome>(nOutcome);
        return reading;
    }
    const int nSignal = WIFSIGNALED(nStatus) ? WTERMSIG(nStatus) : 0;
    if (nSignal == SIGALRM)
        reading.eOutcome = EOutcome::OverTime;
    reading.strReason = nSignal != 0 ? QStringLiteral("signal %1").arg(nSignal)
                                     : QStringLiteral("exit %1").arg(WEXITSTATUS(nStatus));
    return reading;
}

void MeasureStart(const QString& strPath)
{
    CPDFReader reader;
    CImage page;
    if (reader.Read(strPath.toStdWString(), std::wstring()) != 0 || reader.RenderPage(0, &page) != 0)
        qFatal("documents cannot be rendered");
    g_start = ChildCosts();
}

void ReadHere(const QString& strPath)
{
    const SResult result = ReadOnce(strPath);
    std::printf("%s %s %s\n", result.digest.toHex().constData(),
                result.eOutcome == EOutcome::Loaded ? "loaded" : "refused", qUtf8Printable(strPath));
}

void ReadUnwritten()
{
    const std::unique_ptr<char[]> pUnwritten(new char[64]);
    const QByteArray digest =
        QCryptographicHash::hash(QByteArray::fromRawData(pUnwritten.get(), 64), QCryptographicHash::Sha256);
    std::printf("%s\n", digest.toHex().constData());
}
