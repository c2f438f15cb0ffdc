// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Gives every file of some folders to the readers of images and documents, each in a process of its own, and
// prints a table of what became of them, then a line for each that offends. Files that begin like a PDF
// document go to the reader of documents, all others to the reader of images. Exit status 1 when a file
// offends.
//
//   read_files [--list] FILE|FOLDER...    --list prints a line for every file
//   read_files --here FILE...             reads in this process, once, and prints digests (for valgrind)
//   read_files --unwritten                prints the digest of memory that nobody wrote (for valgrind)
#include "FileReading.h"

#include <tests/support/TestPdf.h>

#include <QCoreApplication>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryFile>
#include <QVector>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace
{
constexpr qint64 kMiB = 1 << 20;
constexpr qint64 kMaxPeak = 1024 * kMiB + 64 * kMiB;
constexpr qint64 kMaxImageMicroseconds = 2000000;
constexpr qint64 kMaxPageMicroseconds = 10000000;
constexpr qint64 kSmallFile = 2048;
constexpr qint64 kMaxPeakOfSmall = 32 * kMiB;
constexpr qint64 kMaxMicrosecondsOfSmall = 50000;

using Question = std::function<bool(const SReading&)>;

struct SRow {
    const char* pText;
    bool bOffence; ///< whether a file that answers yes is one too many
    Question ask;
};

bool IsSlow(const SReading& reading)
{
    return reading.eOutcome == EOutcome::OverTime ||
           reading.nCpuMicroseconds > (reading.bDocument ? kMaxPageMicroseconds : kMaxImageMicroseconds);
}

bool Is(const SReading& reading, EOutcome eOutcome)
{
    return reading.eOutcome == eOutcome;
}

const SRow kRows[] = {
    {"files", false, [](const SReading&) { return true; }},
    {"loaded", false, [](const SReading& r) { return Is(r, EOutcome::Loaded); }},
    {"refused with a reason", false, [](const SReading& r) { return Is(r, EOutcome::Refused); }},
    {"crashed", true, [](const SReading& r) { return Is(r, EOutcome::Crashed); }},
    {"result and reason at odds", true, [](const SReading& r) { return Is(r, EOutcome::AtOdds); }},
    {"over 2 s, or 10 s a page", true, IsSlow},
    {"over 1 GiB + 64 MiB", true, [](const SReading& r) { return r.nPeakBytes > kMaxPeak; }},
    {"up to 2 KiB that take over 32 MiB", true,
     [](const SReading& r) { return r.nFileBytes <= kSmallFile && r.nPeakBytes > kMaxPeakOfSmall; }},
    {"up to 2 KiB that take over 50 ms", true,
     [](const SReading& r) {
         return r.nFileBytes <= kSmallFile && r.nCpuMicroseconds > kMaxMicrosecondsOfSmall;
     }},
    {"differ between fill patterns", true, [](const SReading& r) { return r.bDiffers; }},
    {"wrote on standard error", true, [](const SReading& r) { return r.nNoiseBytes > 0; }},
};

QStringList FilesBelow(const QStringList& lstPlaces)
{
    QStringList lstFiles;
    for (const QString& strPlace : lstPlaces) {
        if (!QFileInfo(strPlace).isDir()) {
            lstFiles << strPlace;
            continue;
        }
        QDirIterator it(strPlace, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            lstFiles << it.next();
    }
    lstFiles.sort();
    return lstFiles;
}

void PrintLine(const char* pMark, const SReading& reading)
{
    std::printf("%-34s %8.1f ms %7.1f MiB  %s  %s\n", pMark,
                static_cast<double>(reading.nCpuMicroseconds) / 1e3,
                static_cast<double>(reading.nPeakBytes) / kMiB, qUtf8Printable(reading.strPath),
                qUtf8Printable(reading.strReason));
}

void WarmUp()
{
    QTemporaryFile file;
    if (!file.open() || file.write(MakeOnePagePdf("/MediaBox [0 0 10 10]")) < 0 || !file.flush())
        qFatal("no temporary file");
    MeasureStart(file.fileName());
}

/// @return how many files offend
int PrintTable(const QVector<SReading>& vctReadings)
{
    std::printf("%-36s %9s %9s\n", "", "images", "documents");
    for (const SRow& row : kRows) {
        int nImages = 0;
        int nDocuments = 0;
        for (const SReading& reading : vctReadings) {
            if (row.ask(reading))
                ++(reading.bDocument ? nDocuments : nImages);
        }
        std::printf("%-36s %9d %9d\n", row.pText, nImages, nDocuments);
    }
    int nOffenders = 0;
    for (const SReading& reading : vctReadings) {
        const auto pRow = std::find_if(std::begin(kRows), std::end(kRows), [&reading](const SRow& row) {
            return row.bOffence && row.ask(reading);
        });
        if (pRow == std::end(kRows))
            continue;
        ++nOffenders;
        PrintLine(pRow->pText, reading);
    }
    return nOffenders;
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QStringList lstPlaces = QCoreApplication::arguments().mid(1);
    const bool bHere = lstPlaces.removeAll(QStringLiteral("--here")) > 0;
    const bool bList = lstPlaces.removeAll(QStringLiteral("--list")) > 0;
    if (lstPlaces == QStringList{QStringLiteral("--unwritten")}) {
        ReadUnwritten();
        return 0;
    }
    const QStringList lstFiles = FilesBelow(lstPlaces);
    if (lstFiles.isEmpty()) {
        std::fprintf(stderr, "usage: read_files [--list | --here] FILE|FOLDER...\n");
        return 2;
    }
    if (bHere) {
        std::for_each(lstFiles.begin(), lstFiles.end(), ReadHere);
        return 0;
    }
    WarmUp();
    QVector<SReading> vctReadings;
    for (const QString& strFile : lstFiles) {
        vctReadings << ReadApart(strFile);
        if (bList)
            PrintLine(vctReadings.last().eOutcome == EOutcome::Loaded ? "loaded" : "not loaded",
                      vctReadings.last());
    }
    return PrintTable(vctReadings) == 0 ? 0 : 1;
}
