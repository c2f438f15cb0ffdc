// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

/// Progress of long work: a value from 0 to a maximum. Nothing checks one against the other. GUI thread only.
class VANTORCOMMON_EXPORT CStatusBarModel : public CBaseModel
{
    Q_OBJECT

public:
    /// The Qt parent, if any, owns the model.
    explicit CStatusBarModel(QObject* parent = nullptr);

    int GetMaxRange() const; ///< 100 at first
    int GetValue() const;    ///< 0 at first

    /// @{
    /// Emits only when the value differs from the stored one.
    void SetMaxRange(int nMaxRange);
    void SetValue(int nValue);
    /// @}

Q_SIGNALS:
    void signal_MaxRangeChanged(); ///< the maximum has changed
    void signal_ValueChanged();    ///< the value has changed

private:
    int m_nMaxRange = 100;
    int m_nValue = 0;
};
