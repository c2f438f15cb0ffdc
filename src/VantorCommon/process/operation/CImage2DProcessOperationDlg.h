// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>

#include <QVariant>

class CImage2DProcessOperationModel;
class QModelIndex;
class QStandardItem;
class QStandardItemModel;

/// The dialog of a tool that is made of an operation: a row for each parameter, whose value is edited by what
/// fits its kind. The model is not owned and not changed here. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationDlg : public CImage2DProcessBaseDlg
{
    Q_OBJECT

public:
    /// Shows the operation's title and the model's values; the parent owns the dialog.
    CImage2DProcessOperationDlg(const CImage2DProcessOperationModel& model, QWidget* pParent);
    ~CImage2DProcessOperationDlg() override;

    /// Shows a value in place of the one in that row; a row that is not there is ignored.
    void ShowValue(int nRow, const QVariant& varValue);
    /// Shows how much of a run is done in the section "Message", at once, also while the thread is busy.
    /// @param dblDone  0 to 1, clamped
    void ShowProgress(double dblDone);

Q_SIGNALS:
    /// The value in that row was edited, by a person or by a program: it may be anything.
    void signal_ChangeValue(int nRow, const QVariant& varValue);

private:
    QStandardItemModel* m_pRows = nullptr;
};
