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

/// Of its image, that the engine may need at once: the page, its planes and what it looks for in them.
constexpr int kCopies = 3;
} // namespace

/// What a run asks the engine for, and what it gave.
struct CImage2DProcessOCRCtrl::SReading {
    QByteArray code;
    QByteArray folder;
    int nDpi = 0;
    QByteArray text;
    QString strReason; ///< of a failure

    bool Prepare(CVOCR& engine);
    void Read(CVOCR& engine, const SSource& source);
};

/// @return whether the engine took the values
bool CImage2DProcessOCRCtrl::SReading::Prepare(CVOCR& engine)
{
    if (engine.SetLanguageData(code.constData(), folder.constData()) == 0 &&
        engine.SetUserDefinedDpi(nDpi) == 0)
        return true;
    strReason = QString::fromStdString(engine.GetFailureReason());
    return false;
}

void CImage2DProcessOCRCtrl::SReading::Read(CVOCR& engine, const SSource& source)
{
    if (engine.Decode(source.pImage.get(), source.pRegion.get()) == 0)
        text = engine.GetText();
    else
        strReason = QString::fromStdString(engine.GetFailureReason());
}

CImage2DProcessOCRCtrl::CImage2DProcessOCRCtrl(CImage2DProcessOCRModel* pModel, CImage2DProcessOCRDlg* pDlg)
    : CImage2DProcessToolCtrl(pModel, pDlg), m_pDlg(pDlg), m_pModel(pModel),
      m_pEngine(std::make_shared<CVOCR>())
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

void CImage2DProcessOCRCtrl::slot_RunOCR()
{
    slot_Run();
}

void CImage2DProcessOCRCtrl::Run()
{
    const SSource source = TakeSource();
    if (!source.pImage)
        return;
    SReading reading;
    reading.code = m_pModel->GetLanguageCode().toUtf8();
    reading.folder = m_pModel->GetLanguagePath().toUtf8();
    reading.nDpi = m_pModel->GetUserDefinedDpi();
    if (IsBackground())
        return StartJob(source, kCopies, [=, pEngine = m_pEngine](const SSource& taken) {
            SReading read = reading;
            if (read.Prepare(*pEngine))
                read.Read(*pEngine, taken);
            return [=] { ShowReading(read); };
        });
    if (!reading.Prepare(*m_pEngine))
        return Fail(reading.strReason);
    StartProcess();
    reading.Read(*m_pEngine, source);
    ShowReading(reading);
}

void CImage2DProcessOCRCtrl::ShowReading(const SReading& reading)
{
    if (!reading.strReason.isEmpty())
        return Fail(reading.strReason);
    EndProcess();
    if (m_pDlg)
        m_pDlg->SetResultText(QString::fromUtf8(reading.text));
    CLogger::Write(NORMAL, "Run OCR OK %s", reading.text.constData());
}
