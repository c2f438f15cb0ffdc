// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>

#include <VantorCommon/process/ocr/CImage2DProcessOCRDlgParameterDelegate.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>

#include <QGroupBox>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

namespace
{
constexpr int kResultStretch = 32;
}

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
    m_pResult->setTabChangesFocus(true);
    m_pResult->setAccessibleName(ResultGroup()->title());
    auto* pLayout = new QVBoxLayout(ResultGroup());
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pResult, kResultStretch);
}

void CImage2DProcessOCRDlg::SetResultText(const QString& strText)
{
    m_pResult->setPlainText(strText);
}
