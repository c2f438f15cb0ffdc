// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>

#include <VantorCommon/process/ocr/CImage2DProcessOCRDlgParameterDelegate.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

namespace
{
constexpr int kResultStretch = 32;
constexpr int kLanguageRow = 0;
} // namespace

CImage2DProcessOCRDlg::CImage2DProcessOCRDlg(CImage2DProcessOCRModel* pModel, QWidget* pParent)
    : CImage2DProcessToolDlg(QStringLiteral("OCR"), pModel, pParent)
{
    std::vector<SParameter> vctRows{{QStringLiteral("Language code"), {}},
                                    {QStringLiteral("Language Data Path"), {}},
                                    {QStringLiteral("User Defined Dpi"), {}}};
    if (pModel) {
        vctRows[0].strValue = pModel->GetLanguageCode();
        vctRows[1].strValue = pModel->GetLanguagePath();
        vctRows[2].strValue = QString::number(pModel->GetUserDefinedDpi());
    }
    SetupParameter(vctRows, new CImage2DProcessOCRDlgParameterDelegate(this));
    SetupResult();
    SetupButton()->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

CImage2DProcessOCRDlg::~CImage2DProcessOCRDlg() = default;

void CImage2DProcessOCRDlg::SetupResult()
{
    m_pResult = new QTextEdit;
    m_pLastOfResult = m_pResult;
    m_pResult->setTabChangesFocus(true);
    m_pResult->setAccessibleName(ResultGroup()->title());
    auto* pLayout = new QVBoxLayout(ResultGroup());
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pResult, kResultStretch);
}

QString CImage2DProcessOCRDlg::GetResultText() const
{
    return m_pResult->toPlainText();
}

void CImage2DProcessOCRDlg::SetLanguages(const QStringList& lstLanguages)
{
    SetDelegate(new CImage2DProcessOCRDlgParameterDelegate(lstLanguages, this));
}

void CImage2DProcessOCRDlg::SetLanguage(const QString& strLanguage)
{
    SetParameter(kLanguageRow, strLanguage);
}

QPushButton* CImage2DProcessOCRDlg::AddButton(const QString& strText)
{
    auto* pButton = new QPushButton(strText);
    pButton->setAutoDefault(false);
    if (!m_pButtons) {
        m_pButtons = new QHBoxLayout;
        m_pButtons->addStretch();
        static_cast<QVBoxLayout*>(ResultGroup()->layout())->addLayout(m_pButtons);
    }
    m_pButtons->addWidget(pButton);
    setTabOrder(m_pLastOfResult, pButton);
    m_pLastOfResult = pButton;
    return pButton;
}

void CImage2DProcessOCRDlg::SetResultText(const QString& strText)
{
    m_pResult->setPlainText(strText);
}
