// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolDlg.h>

class CImage2DProcessOCRModel;
class QTextEdit;

/// The dialog of the OCR tool: language, folder of the language data and resolution, and the text that was
/// read. The model is not owned and may be null. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRDlg : public CImage2DProcessToolDlg
{
    Q_OBJECT

public:
    /// Shows the model's values; the parent owns the dialog. Without a model no edit is announced.
    CImage2DProcessOCRDlg(CImage2DProcessOCRModel* pModel, QWidget* pParent);
    ~CImage2DProcessOCRDlg() override;

    /// Replaces the whole text. Plain text: what was read is never taken for markup.
    void SetResultText(const QString& strText);

private:
    void SetupResult();

    QTextEdit* m_pResult = nullptr;
};
