// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

/// Progress of long work: a value between 0 and a maximum. Neither is checked against the other. GUI thread
/// only.
class VANTORCOMMON_EXPORT CStatusBarModel : public CBaseModel
{
    Q_OBJECT

public:
    explicit CStatusBarModel(QObject* parent = nullptr);

    int GetMaxRange() const; ///< 100 at the start
    int GetValue() const;    ///< 0 at the start

    /// Both emit only when the value differs from the stored one.
    void SetMaxRange(int nMaxRange);
    void SetValue(int nValue);

Q_SIGNALS:
    void signal_MaxRangeChanged();
    void signal_ValueChanged();

private:
    int m_nMaxRange = 100;
    int m_nValue = 0;
};
