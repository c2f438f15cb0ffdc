// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// kill_settings [--long]: what the settings file survives. Processes are killed while they write settings and
// in the first milliseconds of a first start, two of them start at once, the disk is full, the home folder is
// read-only, the file is damaged. It prints what happened and what was lost, and fails if that is not
// nothing.
// --long: 1,000 kills while writing, 500 of a first start, 200 pairs, 1,000 damages; a tenth of it otherwise.

#include "tests/VantorCommon/settings/KillSupport.h"

#include <VantorCommon/settings/CSettingCtrl.h>
#include <VantorCommon/settings/CSettingManager.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <random>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace
{
constexpr int c_nKeys = 8;
constexpr int c_nNobody = 65534;
constexpr int c_nStartLimitMs = 2000;
constexpr unsigned c_nHangSeconds = 60;

std::mt19937 g_random(20161);
int g_nFailures = 0;

int Random(int nEnd)
{
    return static_cast<int>(g_random() % static_cast<unsigned>(nEnd));
}

/// Counts as a failure what must not be, and shows the first ones.
void Expect(bool bOk, const char* pWhat)
{
    if (bOk)
        return;
    if (++g_nFailures <= 20)
        std::printf("  FAILED: %s\n", pWhat);
}

QString KeyOf(int i)
{
    return QStringLiteral("KEY_%1").arg(i % c_nKeys);
}

/// Stores one value in a process of its own, as every start here is: the settings of this one stay untouched.
bool StoreInChild(const QString& strKey, int nValue)
{
    CReport report;
    Wait(Fork([&] { report.Send(CSettingCtrl(nullptr).UpdateParameter(strKey, nValue)); }));
    return report.ReadAll() == QVector<int>{1};
}

/// Writes the values nFirst, nFirst + 1, ... under the keys in turn, and reports each as soon as it was
/// acknowledged; -1 for one that was refused.
void WriteForEver(CReport& report, int nFirst)
{
    CSettingCtrl ctrl(nullptr);
    for (int i = nFirst;; ++i)
        report.Send(ctrl.UpdateParameter(KeyOf(i), i) ? i : -1);
}

void KillWhileWriting(int nRounds)
{
    CHome home;
    Expect(StoreInChild(KeyOf(0), 0), "the first value was not stored");
    int nAcknowledged = 0, nRefused = 0, nUntold = 0, nJournals = 0, nLost = 0, nUnreadable = 0;
    int last[c_nKeys] = {};
    int nNext = 1;
    for (int i = 0; i < nRounds; ++i) {
        CReport report;
        const pid_t nChild = Fork([&] { WriteForEver(report, nNext); });
        SleepMicroseconds(2000 + Random(60000));
        Kill(nChild);
        int nLast = nNext - 1;
        for (const int nValue : report.ReadAll()) {
            nRefused += nValue < 0 ? 1 : 0;
            nAcknowledged += nValue < 0 ? 0 : 1;
            nLast = qMax(nLast, nValue);
            if (nValue >= 0)
                last[nValue % c_nKeys] = nValue;
        }
        nJournals += QFileInfo(home.File() + QStringLiteral("-journal")).size() > 0 ? 1 : 0;
        const SStart start = Start(home.File());
        nUnreadable += start.bLoaded ? 0 : 1;
        for (int nKey = 0; nKey < c_nKeys; ++nKey) {
            const int nRead = start.values.value(KeyOf(nKey), QStringLiteral("0")).toInt();
            // The value that was being written may be there, although nobody was told.
            const bool bUntold = nRead == nLast + 1 && nRead % c_nKeys == nKey;
            nUntold += bUntold ? 1 : 0;
            nLost += nRead != last[nKey] && !bUntold ? 1 : 0;
            last[nKey] = nRead;
        }
        nNext = nLast + 2;
    }
    std::printf(
        "kills while writing     %5d: %d values acknowledged, %d refused; %d kills inside a write (a journal "
        "was left), %d between a write and its acknowledgement; lost %d, files that did not open %d\n",
        nRounds, nAcknowledged, nRefused, nJournals, nUntold, nLost, nUnreadable);
    Expect(nLost == 0 && nRefused == 0 && nUnreadable == 0 && nAcknowledged > 0, "kills while writing");
}

void KillFirstStart(int nRounds)
{
    int nNoFile = 0, nAside = 0, nWithTable = 0, nWithoutTable = 0, nDead = 0;
    for (int i = 0; i < nRounds; ++i) {
        CHome home;
        if (i % 4 == 3)
            home.WriteFile(QByteArray()); // as a full disk may have left it
        const pid_t nChild = Fork([] { CSettingCtrl ctrl(nullptr); });
        SleepMicroseconds(Random(15000));
        Kill(nChild);
        nAside += QFile::exists(home.File() + QStringLiteral(".new")) ? 1 : 0;
        if (QFileInfo(home.File()).size() == 0)
            ++nNoFile;
        else
            ++(Start(home.File()).bLoaded ? nWithTable : nWithoutTable);
        // The next start stores, the one after it reads that, and nothing lies about.
        const bool bStored = StoreInChild(KeyOf(0), i);
        const SStart start = Start(home.File());
        if (!bStored || start.values.value(KeyOf(0)) != QString::number(i) || home.Files().size() != 1)
            ++nDead;
    }
    std::printf("kills of a first start  %5d: %d before the file was there (%d left a half-built one aside), "
                "%d after "
                "it; files without their table %d, next starts that did not work %d\n",
                nRounds, nNoFile, nAside, nWithTable, nWithoutTable, nDead);
    Expect(nWithoutTable == 0 && nDead == 0, "kills of a first start");
}

/// One of two processes that start at once: it stores nEach values and reports their numbers, or -1.
void StartAsOneOfTwo(CReport& report, CStartLine& line, int nChild, int nEach)
{
    line.Wait();
    CSettingCtrl ctrl(nullptr);
    for (int i = nChild * nEach; i < (nChild + 1) * nEach; ++i)
        report.Send(ctrl.UpdateParameter(QStringLiteral("OF_TWO_%1").arg(i), i) ? i : -1);
}

void PairsOfFirstStarts(int nRounds)
{
    constexpr int nEach = 5;
    int nAcknowledged = 0, nRefused = 0, nLost = 0;
    for (int i = 0; i < nRounds; ++i) {
        CHome home;
        if (i % 2 == 1)
            home.WriteFile(QByteArray());
        CReport report;
        CStartLine line;
        const pid_t nFirst = Fork([&] { StartAsOneOfTwo(report, line, 0, nEach); });
        const pid_t nSecond = Fork([&] { StartAsOneOfTwo(report, line, 1, nEach); });
        line.Open();
        Wait(nFirst);
        Wait(nSecond);
        const SStart start = Start(home.File());
        const QVector<int> reports = report.ReadAll();
        Expect(reports.size() == 2 * nEach, "one of two died");
        for (const int nReport : reports) {
            nRefused += nReport < 0 ? 1 : 0;
            nAcknowledged += nReport < 0 ? 0 : 1;
            const QString strRead = start.values.value(QStringLiteral("OF_TWO_%1").arg(nReport));
            nLost += nReport >= 0 && strRead != QString::number(nReport) ? 1 : 0;
        }
        Expect(home.Files().size() == 1, "a pair left something behind");
    }
    std::printf("pairs of first starts   %5d: %d values acknowledged, %d refused; lost %d\n", nRounds,
                nAcknowledged, nRefused, nLost);
    Expect(nLost == 0 && nRefused == 0, "pairs of first starts");
}

/// Stores ever longer texts until some are refused; then everything acknowledged must still be there.
void FillUp(const QString& strFile, int& nStored, int& nRefused, int& nLost)
{
    QMap<QString, QString> stored;
    {
        CSettingCtrl ctrl(nullptr);
        for (int i = 0; i < 200; ++i) {
            const QString strKey = QStringLiteral("K%1").arg(i % 40);
            const QString strText(50 + 37 * i % 4000, QLatin1Char('a' + static_cast<char>(i % 26)));
            if (ctrl.UpdateParameter(strKey, strText))
                stored[strKey] = strText;
            else
                ++nRefused;
        }
    }
    nStored += stored.size();
    const SStart start = Start(strFile);
    for (auto it = stored.cbegin(); it != stored.cend(); ++it)
        nLost += start.values.value(it.key()) == it.value() ? 0 : 1;
}

/// The report of a child that fills the disk as Limit limits it: {stored, refused, lost}.
template <class Limit> QVector<int> FillUpInChild(const QString& strFile, Limit limit)
{
    CReport report;
    Wait(Fork([&] {
        limit();
        int nStored = 0, nRefused = 0, nLost = 0;
        FillUp(strFile, nStored, nRefused, nLost);
        for (const int n : {nStored, nRefused, nLost})
            report.Send(n);
    }));
    return report.ReadAll();
}

void LimitFileSize(rlim_t nBytes)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{nBytes, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
}

void FullDiskByLimit()
{
    // 0 bytes: not even the table; 20 KB: some settings.
    for (const int nKilobytes : {0, 6, 20}) {
        CHome home;
        const auto counts =
            FillUpInChild(home.File(), [&] { LimitFileSize(static_cast<rlim_t>(nKilobytes) * 1024); });
        Expect(counts.size() == 3, "full disk: the process died");
        if (counts.size() != 3)
            continue;
        std::printf("full disk, limit %2d KB       : %d keys stored, %d writes refused; lost %d\n",
                    nKilobytes, counts[0], counts[1], counts[2]);
        Expect(counts[2] == 0 && counts[1] > 0, "full disk: values lost");
        // With room again the next start stores.
        Expect(StoreInChild(KeyOf(0), 1), "full disk: nothing stored after it");
        Expect(home.Files().size() == 1, "full disk: something was left behind");
    }
}

void FullDiskByMount()
{
    CHome home;
    const QByteArray folder = home.Folder().toUtf8();
    if (mount("tmpfs", folder.constData(), "tmpfs", 0, "size=64k") != 0) {
        std::printf("full disk, tmpfs of 64 KB    : not run, mounting is not allowed here (%s)\n",
                    std::strerror(errno));
        return;
    }
    const auto counts = FillUpInChild(home.File(), [] {});
    umount(folder.constData());
    Expect(counts.size() == 3, "full tmpfs: the process died");
    if (counts.size() != 3)
        return;
    std::printf("full disk, tmpfs of 64 KB    : %d keys stored, %d writes refused; lost %d\n", counts[0],
                counts[1], counts[2]);
    Expect(counts[2] == 0 && counts[1] > 0 && counts[0] > 0, "full tmpfs: values lost");
}

/// Starts as a user who may not write; root could write everywhere.
QVector<int> StartWithoutRights(bool bExpectValue)
{
    CReport report;
    Wait(Fork([&] {
        if (getuid() == 0 && (setgid(c_nNobody) != 0 || setuid(c_nNobody) != 0))
            return;
        CSettingCtrl ctrl(nullptr);
        report.Send(CSettingManager::GetInt(KeyOf(0), -1) == (bExpectValue ? 5 : -1));
        report.Send(!ctrl.UpdateParameter(KeyOf(0), 6));
    }));
    return report.ReadAll();
}

void ReadOnlyHome()
{
    const QVector<int> good = {1, 1};
    CHome empty;
    empty.SetWritable(false);
    const bool bEmpty = StartWithoutRights(false) == good;
    empty.SetWritable(true);
    Expect(empty.Files().isEmpty(), "read-only home: something was made");

    CHome filled;
    Expect(StoreInChild(KeyOf(0), 5), "read-only home: the value was not stored before");
    filled.SetWritable(false);
    const bool bFilled = StartWithoutRights(true) == good;
    filled.SetWritable(true);
    const bool bKept = Start(filled.File()).values.value(KeyOf(0)) == QStringLiteral("5");
    std::printf("read-only home               : without a file %s, with one %s; lost %d\n",
                bEmpty ? "starts with defaults, refuses to store" : "WRONG",
                bFilled ? "reads it, refuses to store" : "WRONG", bKept ? 0 : 1);
    Expect(bEmpty && bFilled && bKept, "read-only home");
}

QByteArray Damaged(QByteArray bytes, int nWay)
{
    const int nPlace = Random(bytes.size());
    switch (nWay % 8) {
    case 0: // single bytes
        for (int n = 1 + Random(64); n > 0; --n)
            bytes[Random(bytes.size())] = static_cast<char>(Random(256));
        break;
    case 1: // the header
        for (int n = 1 + Random(16); n > 0; --n)
            bytes[Random(100)] = static_cast<char>(Random(256));
        break;
    case 2:
        bytes.truncate(nPlace);
        break;
    case 3: // a block of zeros
        bytes.replace(nPlace, 512, QByteArray(512, '\0'));
        break;
    case 4: // pages swapped
        bytes = bytes.mid(4096, 4096) + bytes.left(4096) + bytes.mid(8192);
        bytes.insert(nPlace, bytes.mid(Random(bytes.size()), 100));
        break;
    case 5: // nothing of it left
        for (char& c : bytes)
            c = static_cast<char>(Random(256));
        break;
    case 6: // single bits of the tables
        for (int n = 1 + Random(40); n > 0; --n)
            bytes[100 + Random(bytes.size() - 100)] =
                static_cast<char>(bytes[100 + Random(bytes.size() - 100)] ^ (1 << Random(8)));
        break;
    default: // rubbish behind it, a byte of the page headers
        bytes += QByteArray(Random(5000), static_cast<char>(Random(256)));
        bytes[(Random(3) * 4096) + Random(12)] = static_cast<char>(Random(256));
    }
    return bytes;
}

struct SChildStart {
    bool bAlive = false;   ///< it got through
    int nValue = 0;        ///< of the first key, -1 by default
    bool bStored = false;  ///< it could store a value
    int nMilliseconds = 0; ///< until the settings were loaded
};

/// A start on what is in the file now.
SChildStart StartInChild()
{
    CReport report;
    Wait(Fork([&] {
        alarm(c_nHangSeconds);
        QElapsedTimer timer;
        timer.start();
        CSettingCtrl ctrl(nullptr);
        report.Send(static_cast<int>(timer.elapsed()));
        report.Send(CSettingManager::GetInt(KeyOf(0), -1));
        report.Send(ctrl.UpdateParameter(QStringLiteral("NEW"), 1));
    }));
    const QVector<int> reports = report.ReadAll();
    if (reports.size() != 3)
        return {};
    return {true, reports[1], reports[2] != 0, reports[0]};
}

void DamagedFiles(int nRounds)
{
    CHome home;
    Wait(Fork([] {
        CSettingCtrl ctrl(nullptr);
        for (int i = 0; i < 100; ++i)
            ctrl.UpdateParameter(QStringLiteral("FILLER_%1").arg(i), QString(i, QLatin1Char('x')));
    }));
    Expect(StoreInChild(KeyOf(0), 5), "the value to damage was not stored");
    const QByteArray whole = home.ReadFile();
    Expect(whole.size() >= 3 * 4096, "the file to damage is too small");
    int nDefault = 0, nRead = 0, nOther = 0, nDied = 0, nSlow = 0, nSlowest = 0;
    for (int i = 0; i < nRounds; ++i) {
        home.WriteFile(Damaged(whole, i));
        const SChildStart start = StartInChild();
        nSlowest = qMax(nSlowest, start.nMilliseconds);
        nSlow += start.nMilliseconds > c_nStartLimitMs ? 1 : 0;
        ++(!start.bAlive ? nDied : start.nValue == -1 ? nDefault : start.nValue == 5 ? nRead : nOther);
        home.RemoveJournals();
    }
    std::printf("damaged files           %5d: %d starts with the default, %d could still read the value, %d "
                "read what the damage made of it; died %d, slower than 2 s %d (slowest %d ms)\n",
                nRounds, nDefault, nRead, nOther, nDied, nSlow, nSlowest);
    Expect(nDied == 0 && nSlow == 0, "damaged files");
}

void SpecialFiles()
{
    const std::pair<const char*, std::function<bool(const char*)>> kinds[] = {
        {"a folder", [](const char* p) { return mkdir(p, 0755) == 0; }},
        {"a FIFO", [](const char* p) { return mkfifo(p, 0644) == 0; }},
        {"a link to itself", [](const char* p) { return symlink(p, p) == 0; }},
        {"a link to /dev/full", [](const char* p) { return symlink("/dev/full", p) == 0; }},
        {"a link to /dev/zero", [](const char* p) { return symlink("/dev/zero", p) == 0; }},
    };
    for (const auto& [pName, make] : kinds) {
        CHome home;
        Expect(make(home.File().toUtf8().constData()), "special file could not be made");
        const SChildStart start = StartInChild();
        std::printf("the file is %-20s: %s, %d ms\n", pName,
                    !start.bAlive   ? "DIED"
                    : start.bStored ? "starts, stores"
                                    : "starts, refuses to store",
                    start.nMilliseconds);
        Expect(start.bAlive && start.nValue == -1 && start.nMilliseconds <= c_nStartLimitMs, pName);
    }
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const int nScale = argc > 1 && std::strcmp(argv[1], "--long") == 0 ? 10 : 1;
    KillWhileWriting(100 * nScale);
    KillFirstStart(50 * nScale);
    PairsOfFirstStarts(20 * nScale);
    FullDiskByLimit();
    FullDiskByMount();
    ReadOnlyHome();
    DamagedFiles(100 * nScale);
    SpecialFiles();
    std::printf("%s\n", g_nFailures ? "SOMETHING WAS LOST" : "nothing was lost");
    return g_nFailures ? 1 : 0;
}
