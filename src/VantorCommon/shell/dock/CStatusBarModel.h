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
    /// The Qt parent, if any, owns the model.
    explicit CStatusBarModel(QObject* parent = nullptr);

    int GetMaxRange() const; ///< 100 at the start
    int GetValue() const;    ///< 0 at the start

    /// @{
    /// Emits only when the value differs from the stored one.
    void SetMaxRange(int nMaxRange);
    void SetValue(int nValue);
    /// @}

Q_SIGNALS:
    void signal_MaxRangeChanged(); ///< the maximum is another one
    void signal_ValueChanged();    ///< the value is another one

private:
    int m_nMaxRange = 100;
    int m_nValue = 0;
};
