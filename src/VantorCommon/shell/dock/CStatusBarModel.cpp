// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/dock/CStatusBarModel.h>

CStatusBarModel::CStatusBarModel(QObject* parent) : CBaseModel(parent)
{
}

int CStatusBarModel::GetMaxRange() const
{
    return m_nMaxRange;
}

int CStatusBarModel::GetValue() const
{
    return m_nValue;
}

void CStatusBarModel::SetMaxRange(int nMaxRange)
{
    if (nMaxRange == m_nMaxRange)
        return;
    m_nMaxRange = nMaxRange;
    Q_EMIT signal_MaxRangeChanged();
}

void CStatusBarModel::SetValue(int nValue)
{
    if (nValue == m_nValue)
        return;
    m_nValue = nValue;
    Q_EMIT signal_ValueChanged();
}
