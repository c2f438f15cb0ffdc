// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <string>

/// Files of journals on the disk. Any thread; errno tells why something failed.
namespace JournalFile
{
/// What a file has behind its name until its first line and its lock are there.
constexpr const char* kNewSuffix = ".new";

/// Makes a file for its owner alone, for appending, and locks it. Makes the folder, too.
/// @return its descriptor, -1 when that fails
int Create(const QString& strPath);
/// Opens a file and locks it. @return -1 when that fails or a living process holds it
int OpenUnheld(const QString& strPath);
bool WriteAll(int nFile, const std::string& bytes);
/// The first bytes of a file; fewer when it is shorter or cannot be read.
std::string Read(const QString& strPath, qint64 nSize);
bool Rename(const QString& strFrom, const QString& strTo);
void Remove(const QString& strPath);
/// Makes the names of the files last.
void SyncFolder();
} // namespace JournalFile
