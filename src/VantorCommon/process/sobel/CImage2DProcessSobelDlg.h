// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>

#include <QPointer>
#include <QVector>

class CImage2DProcessSobelModel;
class QModelIndex;
class QStandardItemModel;

/// The dialog of the Sobel tool: one parameter, the type. The model is not owned and may be null. GUI thread
/// only.
class VANTORCOMMON_EXPORT CImage2DProcessSobelDlg : public CImage2DProcessBaseDlg
{
    Q_OBJECT

public:
    /// Shows the model's type; the parent owns the dialog. Without a model no edit is announced.
    CImage2DProcessSobelDlg(CImage2DProcessSobelModel* pModel, QWidget* pParent);
    ~CImage2DProcessSobelDlg() override;

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
    QPointer<CImage2DProcessSobelModel> m_pModel;
};
