// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>
#include <cstddef>

class QVariant;

/// The key of a setting as a constant, from a text of ASCII.
template <std::size_t N> constexpr QLatin1String SettingKey(const char (&szKey)[N])
{
    return QLatin1String(szKey, static_cast<int>(N - 1));
}

/// Static access to the settings of the process (CSettingModel), each read with the caller's own default.
/// GUI thread only.
class VANTORCOMMON_EXPORT CSettingManager
{
public:
    /// @{
    /// The keys of the library's own settings: the folders of "settings.data" and of the log, and the
    /// resolution of PDF pages in dots per inch. Deliberate: the dialog stores other keys than the loader of
    /// documents reads, so the boxes of the dialog do not change how a page looks.
    static constexpr QLatin1String kConfigFolder = SettingKey("GENERAL_PROGRAM_CONFIG_DIR");
    static constexpr QLatin1String kLogFolder = SettingKey("GENERAL_LOG_DIR");
    static constexpr QLatin1String kDialogResolutionX = SettingKey("GENERAL_PDF_RESOLUTION_X");
    static constexpr QLatin1String kDialogResolutionY = SettingKey("GENERAL_PDF_RESOLUTION_Y");
    static constexpr QLatin1String kLoaderResolutionX = SettingKey("PDF_RESOLUTION_X");
    static constexpr QLatin1String kLoaderResolutionY = SettingKey("PDF_RESOLUTION_Y");
    /// The folder in which the first dialog for opening files starts; the later ones start where the one
    /// before ended. Never set: the folder of the process.
    static constexpr QLatin1String kStartFolder = SettingKey("GENERAL_START_FOLDER");
    /// @}

    CSettingManager() = delete;

    /// Stores the value under the key, for everybody; always true.
    static bool Set(const QString& strKey, const QVariant& value);

    /// The default if the key was never set, holds a null value, or one that is no number in the range of
    /// int.
    static int GetInt(const QString& strKey, int nDefault);

    /// The default if the key was never set, holds a null value, or one that does not convert to a double.
    static double GetDouble(const QString& strKey, double dblDefault);

    /// The default if the key was never set or holds a null value. Any other value is turned into its text,
    /// which is empty for a value that has none.
    static QString GetString(const QString& strKey, const QString& strDefault);

    /// The folder of a setting, which need not exist; the default folder if the key was never set.
    static QString GetFolder(const QString& strKey);

    /// The folder "Vantor" of the user's documents, which need not exist.
    static QString GetDefaultFolder();
};
