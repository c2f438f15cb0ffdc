// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>
#include <VantorCommon/shell/mvc/CBaseModel.h>

#include <QString>

/// The state of the OCR tool: language, folder of the language data and resolution. It checks nothing; the
/// engine checks the values when it runs. It emits no signals, but each call of a setter writes one line to
/// the log. GUI thread only.
class VANTORCOMMON_EXPORT CImage2DProcessOCRModel : public CBaseModel
{
public:
    CImage2DProcessOCRModel();
    ~CImage2DProcessOCRModel() override;

    /// @{
    /// One language, or several joined by '+', such as "eng+vie"; "eng" at first.
    void SetLanguageCode(const QString& strCode);
    QString GetLanguageCode() const { return m_strCode; }
    /// @}

    /// @{
    /// The folder of the languages' trained data; at first the one set when the library was built.
    void SetLanguagePath(const QString& strPath);
    QString GetLanguagePath() const { return m_strPath; }
    /// @}

    /// @{
    /// The dots per inch that the engine assumes; 144 at first.
    void SetUserDefinedDpi(int nDpi);
    int GetUserDefinedDpi() const { return m_nDpi; }
    /// @}

private:
    QString m_strCode;
    QString m_strPath;
    int m_nDpi;
};
