// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

class QString;

/// Ensures that the settings file exists and has its table. It builds a missing or empty file aside, as
/// "settings.data.new", and puts it in place in one step; if several processes start at once, one builds it
/// and the others wait. The next start replaces whatever a killed process left. It does not inspect an
/// existing file or create the folder.
/// @return false if the file could not be made
bool EnsureSettingFile(const QString& strFolder, const QString& strPath);
