// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>
#include <QString>

/// What became of one file that a reader was given.
enum class EOutcome {
    Loaded,
    Refused, ///< with a reason
    AtOdds,  ///< result, pixels and reason contradict each other
    Crashed, ///< ended by a signal or an exit of its own
    OverTime ///< stopped after the time that is allowed
};

/// One file, read twice in a process of its own, with fresh memory filled in two different ways.
struct SReading {
    QString strPath;
    EOutcome eOutcome = EOutcome::Crashed;
    bool bDocument = false;
    bool bDiffers = false; ///< between the two ways to fill memory
    int nPages = 0;        ///< rendered; 1 for an image
    qint64 nFileBytes = 0;
    qint64 nCpuMicroseconds = 0; ///< of the slowest image or page
    qint64 nPeakBytes = 0;       ///< most memory beside what the process had before
    qint64 nNoiseBytes = 0;      ///< written on standard output or standard error
    QString strReason;           ///< of a refusal, or of contradictions
};

/// Reads a file in a child process.
SReading ReadApart(const QString& strPath);

/// Notes what it costs to start the process that reads a document, so that no file is charged with it.
/// @param strPath  a document of one small page
void MeasureStart(const QString& strPath);

/// Reads a file in this process, for tools that look into one. Prints one line with its outcome and a digest
/// of every pixel.
void ReadHere(const QString& strPath);

/// Prints the digest of memory that nobody wrote, to see whether a tool notices.
void ReadUnwritten();
