// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/settings/CSettingManager.h>

#include <VantorCommon/settings/CSettingModel.h>

bool CSettingManager::Set(const QString& strKey, const QVariant& value)
{
    CSettingModel::GetInstance()->Set(strKey, value);
    return true;
}

int CSettingManager::GetInt(const QString& strKey, int nDefault)
{
    const QVariant value = CSettingModel::GetInstance()->Get(strKey);
    bool bOk = false;
    const int nValue = value.toInt(&bOk);
    return value.isNull() || !bOk ? nDefault : nValue;
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
