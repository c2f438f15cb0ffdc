// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolCtrl.h>

class CImage2DProcessOCRDlg;
class CImage2DProcessOCRModel;

namespace Vantor::Algorithms
{
class CVOCR;
}

/// The controller of the OCR tool: Run reads the text of the source image, in the chosen region, into the
/// dialog; the image does not change. Neither model nor dialog is owned; the controller keeps its engine,
/// because making one is costly. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRCtrl : public CImage2DProcessToolCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals. Both may be null: then nothing runs.
    CImage2DProcessOCRCtrl(CImage2DProcessOCRModel* pModel, CImage2DProcessOCRDlg* pDlg);
    ~CImage2DProcessOCRCtrl() override;

public Q_SLOTS:
    /// Calls slot_Run.
    void slot_RunOCR();

protected:
    /// Reads the text into the dialog. A failed run keeps the last text.
    void Run() override;
    /// Codes: 0 the language, 1 the folder of its data, 2 the resolution as a decimal number; any other text
    /// counts as 0. Ignores other codes.
    void ChangeData(int nCode, const QString& strValue) override;

private:
    /// Whether the engine accepted the model's values; if not, it has the reason.
    [[nodiscard]] bool PrepareEngine();

    CImage2DProcessOCRDlg* m_pDlg;
    CImage2DProcessOCRModel* m_pModel;
    std::unique_ptr<Vantor::Algorithms::CVOCR> m_pEngine;
};
