// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>

#include <QPointer>
#include <QVector>

class QModelIndex;

/// The base of the dialogs of the median, the Sobel and the OCR tool: their parameters are texts, and every
/// edit emits a signal with its row. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessToolDlg : public CImage2DProcessBaseDlg
{
    Q_OBJECT

public:
    ~CImage2DProcessToolDlg() override;

Q_SIGNALS:
    /// A cell of the parameter tree has a new text; the code is its row.
    void signal_ChangeData(int nCode, const QString& strValue);

public Q_SLOTS:
    /// Emits the new text. Deliberate: ignores the column, so a new label counts as a new value.
    void slot_DataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                          const QVector<int>& roles);

protected:
    /// Starts with empty sections.
    /// @param strTitle  title of the window
    /// @param pModel    the state of the tool, not owned; without it edits emit nothing
    /// @param pParent   owns the dialog
    CImage2DProcessToolDlg(const QString& strTitle, QObject* pModel, QWidget* pParent);

    /// Fills "Parameter", see AddParameterTree.
    void SetupParameter(const std::vector<SParameter>& vctRows, QAbstractItemDelegate* pDelegate);
    /// Edits the values with another delegate, which the caller owns; it outlives the tree.
    void SetDelegate(QAbstractItemDelegate* pDelegate);
    /// Changes the value of a row, as if the user had.
    void SetParameter(int nRow, const QString& strValue);
    /// Deliberate: leaves "Result" empty. The result is the image in the viewer.
    void SetupResult();
    /// Fills "Button": AddRunButton.
    QPushButton* SetupButton();

private:
    QStandardItemModel* m_pParameterModel = nullptr;
    QPointer<QObject> m_pToolModel;
};
