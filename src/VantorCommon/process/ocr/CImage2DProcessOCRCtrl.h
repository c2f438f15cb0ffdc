// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>

class CImage2DProcessOCRDlg;
class CImage2DProcessOCRModel;

namespace Vantor::Algorithms
{
class CVOCR;
}

/// The controller of the OCR tool: Run reads the text of the source image, in the chosen region, into the
/// dialog; the image stays as it is. Neither model nor dialog is owned; the engine is, for it is costly to
/// make. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRCtrl : public CImage2DProcessBaseCtrl
{
    Q_OBJECT

public:
    /// Connects the dialog's signals. Null is allowed for both: then nothing runs.
    CImage2DProcessOCRCtrl(CImage2DProcessOCRModel* pModel, CImage2DProcessOCRDlg* pDlg);
    ~CImage2DProcessOCRCtrl() override;

    /// @{
    /// A run changes nothing that could be undone; false.
    bool Undo() override;
    bool Redo() override;
    /// @}

public Q_SLOTS:
    /// Reads the text into the dialog. A run that fails leaves the last text where it is.
    void slot_RunOCR();
    /// Codes: 0 the language, 1 the folder of its data, 2 the resolution as a decimal number, where what is
    /// none counts as 0. Others are ignored.
    void slot_ChangeData(int nCode, const QString& strValue);

private:
    /// Whether the engine took the model's values; if not, it has the reason.
    [[nodiscard]] bool PrepareEngine();

    QPointer<CImage2DProcessOCRDlg> m_pDlg;
    QPointer<CImage2DProcessOCRModel> m_pModel;
    std::unique_ptr<Vantor::Algorithms::CVOCR> m_pEngine;
};
