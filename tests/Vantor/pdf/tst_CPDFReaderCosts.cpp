// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What reading and rendering a document costs, this process and the one that reads it together: each in a
// child of its own, so that one crash or one greedy document is seen for what it is. Prints a table.
#include "tests/support/ChildProcesses.h"
#include "tests/support/EndChild.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cstdio>
#include <string>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr double kDpi = 144.0;
#ifdef VANTOR_COVERAGE // neither optimised nor alone with its counters
constexpr double kSlowness = 4.0;
#else
constexpr double kSlowness = 1.0;
#endif
constexpr double kHangMs = kSlowness * 2000.0;
constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr double kSlackMb = 64.0;
constexpr qint64 kSmallFile = 1024;
constexpr double kSmallFileMs = kSlowness * 50.0;
constexpr double kSmallFileMb = 32.0;

struct SCosts {
    int nResult = -1;
    int nPages = 0;
    int nRendered = 0;
    double dMs = 0.0; ///< processor time
    double dMb = 0.0; ///< growth of the process
};

struct SUsage {
    double dMs = 0.0;
    double dPeakMb = 0.0;
};

SUsage UsageNow()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto toMs = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
    };
    const SChildCosts reading = ChildCosts();
    return {toMs(usage.ru_utime) + toMs(usage.ru_stime) + static_cast<double>(reading.nCpuMicroseconds) / 1e3,
            static_cast<double>(usage.ru_maxrss) / 1024.0 +
                static_cast<double>(reading.nPeakBytes) / kMegabyte};
}

/// The first page only, or all pages into the same image.
SCosts Measure(const std::wstring& path, bool bAllPages)
{
    const SUsage before = UsageNow();
    SCosts costs;
    CPDFReader reader;
    reader.SetResolutionX(kDpi);
    costs.nResult = reader.Read(path, L"view");
    costs.nPages = reader.GetPageNumber();
    CImage image;
    const int nPages = bAllPages ? costs.nPages : std::min(costs.nPages, 1);
    for (int i = 0; i < nPages; ++i)
        costs.nRendered += reader.RenderPage(i, &image) == 0 ? 1 : 0;
    const SUsage after = UsageNow();
    costs.dMs = after.dMs - before.dMs;
    costs.dMb = after.dPeakMb - before.dPeakMb;
    return costs;
}

/// Measures in a child process. @return false when the child did not end well
bool MeasureInChild(const QString& path, bool bAllPages, SCosts& costs)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return false;
    const pid_t child = ::fork();
    if (child == 0) {
        const SCosts result = Measure(path.toStdWString(), bAllPages);
        const bool bWritten = ::write(ends[1], &result, sizeof result) == ssize_t(sizeof result);
        EndChild(bWritten ? 0 : 1);
    }
    ::close(ends[1]);
    const bool bRead = child > 0 && ::read(ends[0], &costs, sizeof costs) == ssize_t(sizeof costs);
    ::close(ends[0]);
    int nStatus = 0;
    return child > 0 && ::waitpid(child, &nStatus, 0) == child && bRead && WIFEXITED(nStatus) &&
           WEXITSTATUS(nStatus) == 0;
}
} // namespace

class tst_CPDFReaderCosts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The start of a process and its search for fonts are no document's doing.
        const QString path = TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf"));
        QVERIFY(MeasureInChild(path, true, m_start));
        QCOMPARE(m_start.nRendered, 1);
        std::printf(
            "| document | bytes | result | pages | rendered | ms | MB |\n|---|---|---|---|---|---|---|\n");
    }

    void aDocumentCostsNoMoreThanItMay_data()
    {
        QTest::addColumn<QString>("path");
        for (const char* folder : {"pdf", "broken"}) {
            const QDir dir(TestDataPath(QString::fromLatin1(folder)));
            const QStringList files = dir.entryList({QStringLiteral("*.pdf")}, QDir::Files);
            QVERIFY(!files.isEmpty());
            for (const QString& file : files)
                QTest::newRow(qPrintable(dir.dirName() + QLatin1Char('/') + file)) << dir.filePath(file);
        }
    }

    void aDocumentCostsNoMoreThanItMay()
    {
        QFETCH(QString, path);
        const qint64 nBytes = QFileInfo(path).size();
        SCosts costs;
        QVERIFY(MeasureBeyondStart(path, true, costs));
        std::printf("| %s | %lld | %d | %d | %d | %.1f | %.1f |\n", QTest::currentDataTag(),
                    static_cast<long long>(nBytes), costs.nResult, costs.nPages, costs.nRendered, costs.dMs,
                    costs.dMb);
        std::fflush(stdout);
#ifndef __SANITIZE_ADDRESS__ // it multiplies both time and memory
        QVERIFY(costs.dMs < kHangMs);
        QVERIFY(costs.dMb < static_cast<double>(CImage::GetDecodeLimit()) / kMegabyte + kSlackMb);
        if (nBytes <= kSmallFile) {
            SCosts again;
            QVERIFY(MeasureBeyondStart(path, false, costs) && MeasureBeyondStart(path, false, again));
            costs.dMs = std::min(costs.dMs, again.dMs); // a busy machine has slow moments
            QVERIFY2(costs.dMs < kSmallFileMs, qPrintable(QString::number(costs.dMs)));
            QVERIFY2(costs.dMb < kSmallFileMb, qPrintable(QString::number(costs.dMb)));
        }
#endif
    }

private:
    bool MeasureBeyondStart(const QString& path, bool bAllPages, SCosts& costs) const
    {
        if (!MeasureInChild(path, bAllPages, costs))
            return false;
        costs.dMs = std::max(costs.dMs - m_start.dMs, 0.0);
        costs.dMb = std::max(costs.dMb - m_start.dMb, 0.0);
        return true;
    }

    SCosts m_start;
};

VANTOR_CORE_TEST_MAIN(tst_CPDFReaderCosts)
#include "tst_CPDFReaderCosts.moc"
