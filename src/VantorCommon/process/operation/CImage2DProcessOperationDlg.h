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

/// The dialog of a tool that consists of an operation: a row for each parameter, with an editor that fits its
/// kind. It neither owns nor changes the model. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOperationDlg : public CImage2DProcessBaseDlg
{
    Q_OBJECT

public:
    /// Shows the operation's title and the model's values; the parent owns the dialog.
    CImage2DProcessOperationDlg(const CImage2DProcessOperationModel& model, QWidget* pParent);
    ~CImage2DProcessOperationDlg() override;

    /// Replaces the value shown in that row; ignores a row that does not exist.
    void ShowValue(int nRow, const QVariant& varValue);
    /// Shows the progress of a run in the section "Message", at once, even while the thread is busy.
    /// @param dblDone  0 to 1, clamped
    void ShowProgress(double dblDone);

Q_SIGNALS:
    /// A person or a program has edited the value in that row: it may be anything.
    void signal_ChangeValue(int nRow, const QVariant& varValue);

private:
    QStandardItemModel* m_pRows = nullptr;
};
