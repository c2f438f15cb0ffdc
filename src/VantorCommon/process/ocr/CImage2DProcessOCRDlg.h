// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/CImage2DProcessToolDlg.h>

class CImage2DProcessOCRModel;
class QHBoxLayout;
class QPushButton;
class QTextEdit;

/// The dialog of the OCR tool: language, folder of the language data and resolution, and the resulting text.
/// The model is not owned and may be null. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRDlg : public CImage2DProcessToolDlg
{
    Q_OBJECT

public:
    /// Shows the model's values; the parent owns the dialog. Without a model edits emit nothing.
    CImage2DProcessOCRDlg(CImage2DProcessOCRModel* pModel, QWidget* pParent);
    ~CImage2DProcessOCRDlg() override;

    /// Replaces the whole text. It is plain text, never interpreted as markup.
    void SetResultText(const QString& strText);
    /// As it is in the dialog, where the user can change it.
    QString GetResultText() const;

    /// Offers other languages than eng, vie and kor; a language can be several, such as "eng+kor".
    void SetLanguages(const QStringList& lstLanguages);
    /// Chooses a language, as if the user had; any text.
    void SetLanguage(const QString& strLanguage);
    /// Appends a button below the text, for what a host does with it. The dialog owns it.
    QPushButton* AddButton(const QString& strText);

private:
    void SetupResult();

    QTextEdit* m_pResult = nullptr;
    QWidget* m_pLastOfResult = nullptr; ///< in the order of the tabulator
    QHBoxLayout* m_pButtons = nullptr;  ///< below the text, from the first button on
};
