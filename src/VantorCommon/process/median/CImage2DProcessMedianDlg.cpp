// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/median/CImage2DProcessMedianDlg.h>

#include <VantorCommon/process/median/CImage2DProcessMedianDlgParameterDelegate.h>
#include <VantorCommon/process/median/CImage2DProcessMedianModel.h>

#include <QPushButton>

CImage2DProcessMedianDlg::CImage2DProcessMedianDlg(CImage2DProcessMedianModel* pModel, QWidget* pParent)
    : CImage2DProcessBaseDlg(pParent), m_pModel(pModel)
{
    setWindowTitle(QStringLiteral("Median Filter"));
    SetupParameter();
    SetupResult();
    SetupButton();
}

CImage2DProcessMedianDlg::~CImage2DProcessMedianDlg() = default;

void CImage2DProcessMedianDlg::SetupParameter()
{
    const QString strType = m_pModel ? EnumKey::FromValue(m_pModel->GetType()) : QString();
    m_pParameterModel = AddParameterTree({{QStringLiteral("Type"), strType}},
                                         new CImage2DProcessMedianDlgParameterDelegate(this));
    connect(m_pParameterModel, &QStandardItemModel::dataChanged, this,
            &CImage2DProcessMedianDlg::slot_DataChanged);
}

void CImage2DProcessMedianDlg::SetupResult()
{
    // Deliberate: empty. The result is the image in the viewer.
}

void CImage2DProcessMedianDlg::SetupButton()
{
    connect(AddRunButton(), &QPushButton::clicked, this, &CImage2DProcessMedianDlg::signal_Run);
}

void CImage2DProcessMedianDlg::slot_DataChanged(const QModelIndex& topLeft, const QModelIndex&,
                                                const QVector<int>&)
{
    const QStandardItem* pItem = m_pParameterModel->itemFromIndex(topLeft);
    if (m_pModel && pItem)
        Q_EMIT signal_ChangeData(topLeft.row(), pItem->data(Qt::DisplayRole).toString());
}
