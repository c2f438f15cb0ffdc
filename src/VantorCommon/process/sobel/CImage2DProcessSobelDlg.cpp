// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/sobel/CImage2DProcessSobelDlg.h>

#include <VantorCommon/process/sobel/CImage2DProcessSobelDlgParameterDelegate.h>
#include <VantorCommon/process/sobel/CImage2DProcessSobelModel.h>

#include <QPushButton>

CImage2DProcessSobelDlg::CImage2DProcessSobelDlg(CImage2DProcessSobelModel* pModel, QWidget* pParent)
    : CImage2DProcessBaseDlg(pParent), m_pModel(pModel)
{
    setWindowTitle(QStringLiteral("Sobel Filter"));
    SetupParameter();
    SetupResult();
    SetupButton();
}

CImage2DProcessSobelDlg::~CImage2DProcessSobelDlg() = default;

void CImage2DProcessSobelDlg::SetupParameter()
{
    const QString strType = m_pModel ? EnumKey::FromValue(m_pModel->GetType()) : QString();
    m_pParameterModel = AddParameterTree({{QStringLiteral("Type"), strType}},
                                         new CImage2DProcessSobelDlgParameterDelegate(this));
    connect(m_pParameterModel, &QStandardItemModel::dataChanged, this,
            &CImage2DProcessSobelDlg::slot_DataChanged);
}

void CImage2DProcessSobelDlg::SetupResult()
{
    // Deliberate: empty. The result is the image in the viewer.
}

void CImage2DProcessSobelDlg::SetupButton()
{
    connect(AddRunButton(), &QPushButton::clicked, this, &CImage2DProcessSobelDlg::signal_Run);
}

void CImage2DProcessSobelDlg::slot_DataChanged(const QModelIndex& topLeft, const QModelIndex&,
                                               const QVector<int>&)
{
    const QStandardItem* pItem = m_pParameterModel->itemFromIndex(topLeft);
    if (m_pModel && pItem)
        Q_EMIT signal_ChangeData(topLeft.row(), pItem->data(Qt::DisplayRole).toString());
}
