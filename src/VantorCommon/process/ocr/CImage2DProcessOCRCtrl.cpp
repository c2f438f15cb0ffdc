// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRCtrl.h>

#include <Vantor/ocr/CVOCR.h>
#include <VantorCommon/log/CLogger.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRDlg.h>
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>

using Vantor::Algorithms::CVOCR;

namespace
{
enum ECode { ECode_LanguageCode = 0, ECode_LanguagePath = 1, ECode_UserDefinedDpi = 2 };
}

CImage2DProcessOCRCtrl::CImage2DProcessOCRCtrl(CImage2DProcessOCRModel* pModel, CImage2DProcessOCRDlg* pDlg)
    : CImage2DProcessToolCtrl(pModel, pDlg), m_pDlg(pDlg), m_pModel(pModel),
      m_pEngine(std::make_unique<CVOCR>())
{
}

CImage2DProcessOCRCtrl::~CImage2DProcessOCRCtrl() = default;

void CImage2DProcessOCRCtrl::ChangeData(int nCode, const QString& strValue)
{
    switch (nCode) {
    case ECode_LanguageCode:
        return m_pModel->SetLanguageCode(strValue);
    case ECode_LanguagePath:
        return m_pModel->SetLanguagePath(strValue);
    case ECode_UserDefinedDpi:
        return m_pModel->SetUserDefinedDpi(strValue.toInt());
    }
}

bool CImage2DProcessOCRCtrl::PrepareEngine()
{
    const QByteArray code = m_pModel->GetLanguageCode().toUtf8();
    const QByteArray folder = m_pModel->GetLanguagePath().toUtf8();
    return m_pEngine->SetLanguageData(code.constData(), folder.constData()) == 0 &&
           m_pEngine->SetUserDefinedDpi(m_pModel->GetUserDefinedDpi()) == 0;
}

void CImage2DProcessOCRCtrl::slot_RunOCR()
{
    slot_Run();
}

void CImage2DProcessOCRCtrl::Run()
{
    const SSource source = TakeSource();
    if (!source.pImage)
        return;
    const auto fail = [this] { Fail(QString::fromStdString(m_pEngine->GetFailureReason())); };
    if (!PrepareEngine())
        return fail();
    StartProcess();
    if (m_pEngine->Decode(source.pImage.get(), source.pRegion.get()) != 0)
        return fail();
    EndProcess();
    m_pDlg->SetResultText(QString::fromUtf8(m_pEngine->GetText()));
    CLogger::Write(NORMAL, "Run OCR OK %s", m_pEngine->GetText());
}
