// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

class QString;

/// Makes sure that the settings file is there with its table. One that is missing or empty is built aside, as
/// "settings.data.new", and put in place in one step; of several processes that start at once one builds it
/// and the others wait for it. A process killed meanwhile leaves nothing that the next one does not replace.
/// An existing file is not looked into, the folder is not made.
/// @return false if the file could not be made
bool EnsureSettingFile(const QString& strFolder, const QString& strPath);
