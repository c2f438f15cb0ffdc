// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVariant>
#include <vector>

struct SCenterOptions;

/// What a user can choose once for always. Each setting has its key among the settings of the process, and is
/// read at its place; what the library keeps itself is passed to it by Apply. GUI thread.
class Preferences
{
    Q_DECLARE_TR_FUNCTIONS(Preferences)

public:
    enum EKind { EKind_Number, EKind_Switch, EKind_Text, EKind_Folder };

    struct SRow {
        QString strKey; ///< see HostSettings and CSettingManager
        QString strLabel;
        EKind eKind;
        QVariant varDefault;
        int nMinimum = 0; ///< of a number
        int nMaximum = 0;
        QString strSuffix; ///< behind a number
    };

    Preferences() = delete;

    /// In the order of the dialog.
    static std::vector<SRow> Rows();
    /// @{
    /// The setting of a row, within its bounds; its default if it is not set.
    static int Number(const QString& strKey);
    static QString Text(const QString& strKey);
    static bool IsOn(const QString& strKey) { return Number(strKey) != 0; }
    /// @}
    /// Stores a setting, also where one value belongs under two keys.
    static void Set(const QString& strKey, const QVariant& value);
    /// Passes the memory limits and the quality of JPEG files to the library, and the switches to the
    /// options.
    static void Apply(SCenterOptions& sOptions);
};
