// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/settings/CSettingModel.h>

CSettingModel* CSettingModel::GetInstance()
{
    static CSettingModel instance;
    return &instance;
}

QVariant CSettingModel::Get(const QString& strKey) const
{
    const auto it = m_mapParameter.find(strKey);
    return it == m_mapParameter.end() ? QVariant() : it->second;
}

void CSettingModel::Set(const QString& strKey, const QVariant& value)
{
    const auto it = m_mapParameter.find(strKey);
    if (it != m_mapParameter.end() && it->second == value)
        return;
    m_mapParameter.insert_or_assign(strKey, value);
    Q_EMIT signal_UpdateSettingParameter(strKey, value);
}
