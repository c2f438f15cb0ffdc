// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QPointer>
#include <QWidget>

class CStatusBarModel;
class QProgressBar;

/// A progress bar that follows a model, which is not owned and may be null. Deliberate: the bar does not show
/// the values that the model has at the start, only the changes. GUI thread only.
class VANTORCOMMON_EXPORT CStatusBarView : public QWidget
{
    Q_OBJECT

public:
    /// Follows the model from now on.
    explicit CStatusBarView(CStatusBarModel* pModel, QWidget* parent = nullptr);
    ~CStatusBarView() override;

public Q_SLOTS:
    /// The bar goes from 0 to the model's maximum.
    void slot_ChangeMaxRange();
    /// The bar shows the model's value; one outside its range is not shown.
    void slot_ChangeValue();

private:
    QPointer<CStatusBarModel> m_pModel;
    QPointer<QProgressBar> m_pProgressBar;
};
