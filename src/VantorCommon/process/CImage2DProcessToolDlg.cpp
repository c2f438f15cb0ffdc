// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/CImage2DProcessToolDlg.h>

#include <QStandardItemModel>
#include <QTreeView>

CImage2DProcessToolDlg::CImage2DProcessToolDlg(const QString& strTitle, QObject* pModel, QWidget* pParent)
    : CImage2DProcessBaseDlg(pParent), m_pToolModel(pModel)
{
    setWindowTitle(strTitle);
}

CImage2DProcessToolDlg::~CImage2DProcessToolDlg() = default;

void CImage2DProcessToolDlg::SetupParameter(const std::vector<SParameter>& vctRows,
                                            QAbstractItemDelegate* pDelegate)
{
    m_pParameterModel = AddParameterTree(vctRows, pDelegate);
    connect(m_pParameterModel, &QStandardItemModel::dataChanged, this,
            &CImage2DProcessToolDlg::slot_DataChanged);
}

void CImage2DProcessToolDlg::SetDelegate(QAbstractItemDelegate* pDelegate)
{
    findChild<QTreeView*>()->setItemDelegateForColumn(1, pDelegate);
}

void CImage2DProcessToolDlg::SetParameter(int nRow, const QString& strValue)
{
    if (QStandardItem* pItem = m_pParameterModel ? m_pParameterModel->item(nRow, 1) : nullptr)
        pItem->setText(strValue);
}

void CImage2DProcessToolDlg::SetupResult()
{
}

QPushButton* CImage2DProcessToolDlg::SetupButton()
{
    return AddRunButton();
}

void CImage2DProcessToolDlg::slot_DataChanged(const QModelIndex& topLeft, const QModelIndex&,
                                              const QVector<int>&)
{
    const QStandardItem* pItem = m_pParameterModel ? m_pParameterModel->itemFromIndex(topLeft) : nullptr;
    if (m_pToolModel && pItem)
        Q_EMIT signal_ChangeData(topLeft.row(), pItem->data(Qt::DisplayRole).toString());
}
