// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The size of the centre's grid. GUI thread only.
class VANTORCOMMON_EXPORT CCenterModel : public CBaseModel
{
    Q_OBJECT

public:
    explicit CCenterModel(QObject* parent = nullptr);
    ~CCenterModel() override;

    /// Any values are stored; what cannot be laid out shows no viewer or changes nothing.
    void ChangeSize(int nColumn, int nRow);
    int GetColumn() const { return m_nColumn; }
    int GetRow() const { return m_nRow; }

Q_SIGNALS:
    void signal_ChangedSize();

private:
    int m_nColumn = 1;
    int m_nRow = 1;
};
