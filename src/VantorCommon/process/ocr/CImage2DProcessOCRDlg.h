// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>

#include <QPointer>
#include <QVector>

class CImage2DProcessOCRModel;
class QModelIndex;
class QStandardItemModel;
class QTextEdit;

/// The dialog of the OCR tool: language, folder of the language data and resolution, and the text that was
/// read. The model is not owned and may be null. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRDlg : public CImage2DProcessBaseDlg
{
    Q_OBJECT

public:
    /// Shows the model's values; the parent owns the dialog. Without a model no edit is announced.
    CImage2DProcessOCRDlg(CImage2DProcessOCRModel* pModel, QWidget* pParent);
    ~CImage2DProcessOCRDlg() override;

    /// Replaces the whole text. Plain text: what was read is never taken for markup.
    void SetResultText(const QString& strText);

Q_SIGNALS:
    /// The button "Run" was clicked.
    void signal_Run();
    /// A cell of the parameter tree has a new text; the code is its row.
    void signal_ChangeData(int nCode, const QString& strValue);

public Q_SLOTS:
    /// Deliberate: the column is not looked at, a new label is announced like a new value.
    void slot_DataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                          const QVector<int>& roles);

private:
    void SetupParameter();
    void SetupResult();
    void SetupButton();

    QStandardItemModel* m_pParameterModel = nullptr;
    QPointer<CImage2DProcessOCRModel> m_pModel;
    QTextEdit* m_pResult = nullptr;
};
