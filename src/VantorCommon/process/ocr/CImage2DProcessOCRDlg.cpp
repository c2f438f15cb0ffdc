// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>

#include <VantorCommon/process/ocr/CImage2DProcessOCRDlgParameterDelegate.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>

#include <QGroupBox>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTextEdit>
#include <QVBoxLayout>

namespace
{
constexpr int kResultStretch = 32;
}

CImage2DProcessOCRDlg::CImage2DProcessOCRDlg(CImage2DProcessOCRModel* pModel, QWidget* pParent)
    : CImage2DProcessBaseDlg(pParent), m_pModel(pModel)
{
    setWindowTitle(QStringLiteral("OCR"));
    SetupParameter();
    SetupResult();
    SetupButton();
}

CImage2DProcessOCRDlg::~CImage2DProcessOCRDlg() = default;

void CImage2DProcessOCRDlg::SetupParameter()
{
    std::vector<SParameter> vctRows{{QStringLiteral("Language code"), {}},
                                    {QStringLiteral("Language Data Path"), {}},
                                    {QStringLiteral("User Defined Dpi"), {}}};
    if (m_pModel) {
        vctRows[0].strValue = m_pModel->GetLanguageCode();
        vctRows[1].strValue = m_pModel->GetLanguagePath();
        vctRows[2].strValue = QString::number(m_pModel->GetUserDefinedDpi());
    }
    m_pParameterModel = AddParameterTree(vctRows, new CImage2DProcessOCRDlgParameterDelegate(this));
    connect(m_pParameterModel, &QStandardItemModel::dataChanged, this,
            &CImage2DProcessOCRDlg::slot_DataChanged);
}

void CImage2DProcessOCRDlg::SetupResult()
{
    m_pResult = new QTextEdit;
    m_pResult->setTabChangesFocus(true);
    m_pResult->setAccessibleName(ResultGroup()->title());
    auto* pLayout = new QVBoxLayout(ResultGroup());
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pResult, kResultStretch);
}

void CImage2DProcessOCRDlg::SetupButton()
{
    QPushButton* pButton = AddRunButton();
    pButton->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    connect(pButton, &QPushButton::clicked, this, &CImage2DProcessOCRDlg::signal_Run);
}

void CImage2DProcessOCRDlg::SetResultText(const QString& strText)
{
    m_pResult->setPlainText(strText);
}

void CImage2DProcessOCRDlg::slot_DataChanged(const QModelIndex& topLeft, const QModelIndex&,
                                             const QVector<int>&)
{
    const QStandardItem* pItem = m_pParameterModel->itemFromIndex(topLeft);
    if (m_pModel && pItem)
        Q_EMIT signal_ChangeData(topLeft.row(), pItem->data(Qt::DisplayRole).toString());
}
