// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QString>

/// The state of the OCR tool: language, folder of the language data and resolution. Nothing is checked here,
/// the engine does that when it runs. It announces no change, but each call of a setter writes one line to
/// the log. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRModel : public CBaseModel
{
public:
    CImage2DProcessOCRModel();
    ~CImage2DProcessOCRModel() override;

    /// @{
    /// One language, or several joined by '+', such as "eng+vie"; "eng" at the start.
    void SetLanguageCode(const QString& strCode);
    QString GetLanguageCode() const { return m_strCode; }
    /// @}

    /// @{
    /// Where the trained data of the languages lies; at the start where the library was built to look for it.
    void SetLanguagePath(const QString& strPath);
    QString GetLanguagePath() const { return m_strPath; }
    /// @}

    /// @{
    /// Dots per inch that the engine is to assume; 144 at the start.
    void SetUserDefinedDpi(int nDpi);
    int GetUserDefinedDpi() const { return m_nDpi; }
    /// @}

private:
    QString m_strCode;
    QString m_strPath;
    int m_nDpi;
};
