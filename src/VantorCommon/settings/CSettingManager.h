// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QString>

class QVariant;

/// Static access to the settings of the process (CSettingModel), each read with the caller's own default.
/// GUI thread only.
class VANTORCOMMON_EXPORT CSettingManager
{
public:
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
};
