// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QString>
#include <QVariant>
#include <map>

/// The settings of the process: named values held in memory. One instance, GUI thread only. The settings
/// controller fills it from the database; most readers use CSettingManager, which adds a default to each
/// read.
class VANTORCOMMON_EXPORT CSettingModel : public CBaseModel
{
    Q_OBJECT

public:
    /// The one instance, built on first use and destroyed at process exit.
    static CSettingModel* GetInstance();

    /// The stored value; a null variant for a key that was never set.
    QVariant Get(const QString& strKey) const;

    /// Stores the value and emits signal_UpdateSettingParameter, unless the key already holds an equal one.
    /// Deliberate: equality is that of QVariant, which converts: over a stored "5" the number 5 changes
    /// nothing, not even the type.
    void Set(const QString& strKey, const QVariant& value);

Q_SIGNALS:
    /// The key holds another value now.
    void signal_UpdateSettingParameter(const QString& strKey, const QVariant& value);

private:
    CSettingModel() = default;
    ~CSettingModel() override = default;

    std::map<QString, QVariant> m_mapParameter;
};
