// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/shell/mvc/CBaseModel.h>

/// The size of the centre's grid. GUI thread only.
class VANTORCOMMON_EXPORT CCenterModel : public CBaseModel
{
    Q_OBJECT

public:
    /// One cell; the Qt parent, if any, owns the model.
    explicit CCenterModel(QObject* parent = nullptr);
    ~CCenterModel() override;

    /// Stores any values; an impossible grid shows no viewer or changes nothing. Equal values emit nothing.
    void ChangeSize(int nColumn, int nRow);
    int GetColumn() const { return m_nColumn; } ///< 1 at first
    int GetRow() const { return m_nRow; }       ///< 1 at first

Q_SIGNALS:
    void signal_ChangedSize(); ///< rows or columns have changed

private:
    int m_nColumn = 1;
    int m_nRow = 1;
};
