// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>

class QObject;

/// The desktop's program for files and folders.
namespace FileManager
{
/// Shows the folder of a file, with the file selected where the desktop can do that. Returns at once.
/// @param pContext  while it exists, a desktop that does not answer is asked for the folder alone
void Show(const QString& strFile, QObject* pContext);
} // namespace FileManager
