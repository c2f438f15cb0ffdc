// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/settings/CSettingManager.h>

#include <VantorCommon/settings/CSettingModel.h>

#include <QDir>
#include <QStandardPaths>
#include <limits>

bool CSettingManager::Set(const QString& strKey, const QVariant& value)
{
    CSettingModel::GetInstance()->Set(strKey, value);
    return true;
}

int CSettingManager::GetInt(const QString& strKey, int nDefault)
{
    const QVariant value = CSettingModel::GetInstance()->Get(strKey);
    bool bOk = false;
    const qlonglong nValue = value.toLongLong(&bOk); // toInt would wrap a larger number and report success
    const bool bIsInt =
        bOk && nValue >= std::numeric_limits<int>::min() && nValue <= std::numeric_limits<int>::max();
    return value.isNull() || !bIsInt ? nDefault : static_cast<int>(nValue);
}

double CSettingManager::GetDouble(const QString& strKey, double dblDefault)
{
    const QVariant value = CSettingModel::GetInstance()->Get(strKey);
    bool bOk = false;
    const double dblValue = value.toDouble(&bOk);
    return value.isNull() || !bOk ? dblDefault : dblValue;
}

QString CSettingManager::GetString(const QString& strKey, const QString& strDefault)
{
    const QVariant value = CSettingModel::GetInstance()->Get(strKey);
    return value.isNull() ? strDefault : value.toString();
}

QString CSettingManager::GetFolder(const QString& strKey)
{
    return GetString(strKey, GetDefaultFolder());
}

QString CSettingManager::GetDefaultFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QDir::separator() +
           QStringLiteral("Vantor");
}
