// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/shell/center/CCenterModel.h>

#include <VantorCommon/log/CLogger.h>

CCenterModel::CCenterModel(QObject* parent) : CBaseModel(parent)
{
}

CCenterModel::~CCenterModel() = default;

void CCenterModel::ChangeSize(int nColumn, int nRow)
{
    if (nColumn == m_nColumn && nRow == m_nRow)
        return;
    m_nColumn = nColumn;
    m_nRow = nRow;
    CLogger::Write(NORMAL, "ChangeSize(%d, %d)", nColumn, nRow);
    Q_EMIT signal_ChangedSize();
}
