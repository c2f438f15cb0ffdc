// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/operation/CImage2DProcessOperationDlg.h>

#include <VantorCommon/process/operation/CImage2DProcessOperationDelegate.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationModel.h>

#include <QStandardItemModel>
#include <algorithm>

namespace
{
constexpr int kLabelColumn = 0;
constexpr int kValueColumn = 1;
constexpr double kPercent = 100.0;
} // namespace

CImage2DProcessOperationDlg::CImage2DProcessOperationDlg(const CImage2DProcessOperationModel& model,
                                                         QWidget* pParent)
    : CImage2DProcessBaseDlg(pParent)
{
    const SProcessOperation& operation = model.GetOperation();
    setWindowTitle(operation.strTitle);
    std::vector<SParameter> vctRows;
    for (const SProcessParameter& parameter : operation.vctParameters)
        vctRows.push_back({parameter.strLabel, {}});
    m_pRows = AddParameterTree(vctRows, new CImage2DProcessOperationDelegate(operation.vctParameters, this));
    for (int nRow = 0; nRow < m_pRows->rowCount(); ++nRow) {
        const auto nIndex = static_cast<std::size_t>(nRow);
        m_pRows->item(nRow, kLabelColumn)->setEditable(false);
        ShowValue(nRow, operation.vctParameters[nIndex].Shown(model.GetValues()[nIndex]));
    }
    connect(m_pRows, &QStandardItemModel::dataChanged, this, [this](const QModelIndex& cell) {
        if (cell.column() == kValueColumn)
            Q_EMIT signal_ChangeValue(cell.row(), cell.data(Qt::EditRole));
    });
    AddRunButton();
}

CImage2DProcessOperationDlg::~CImage2DProcessOperationDlg() = default;

void CImage2DProcessOperationDlg::ShowValue(int nRow, const QVariant& varValue)
{
    if (QStandardItem* pItem = m_pRows->item(nRow, kValueColumn))
        pItem->setData(varValue, Qt::EditRole);
}

void CImage2DProcessOperationDlg::ShowProgress(double dblDone)
{
    SetMessage(QStringLiteral("%1 %").arg(qRound(std::clamp(dblDone, 0.0, 1.0) * kPercent)));
    repaint();
}
