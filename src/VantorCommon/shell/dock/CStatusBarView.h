// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QWidget>

class CStatusBarModel;
class QProgressBar;

/// A progress bar that follows a model, which is not owned and may be null. Deliberate: the bar does not show
/// the model's initial values, only changes. GUI thread only.
class VANTORCOMMON_EXPORT CStatusBarView : public QWidget
{
    Q_OBJECT

public:
    /// Starts to follow the model.
    explicit CStatusBarView(CStatusBarModel* pModel, QWidget* parent = nullptr);
    ~CStatusBarView() override;

public Q_SLOTS:
    /// Sets the bar's range, 0 to the model's maximum.
    void slot_ChangeMaxRange();
    /// Shows the model's value, unless it is outside the bar's range.
    void slot_ChangeValue();

private:
    QPointer<CStatusBarModel> m_pModel;
    QPointer<QProgressBar> m_pProgressBar;
};
