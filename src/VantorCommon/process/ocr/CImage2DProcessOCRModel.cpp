// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/process/ocr/CImage2DProcessOCRModel.h>

#include <VantorCommon/log/CLogger.h>

namespace
{
constexpr int kDefaultDpi = 144;
}

CImage2DProcessOCRModel::CImage2DProcessOCRModel()
    : m_strCode(QStringLiteral("eng")), m_strPath(QStringLiteral(VANTOR_TESSDATA)), m_nDpi(kDefaultDpi)
{
}

CImage2DProcessOCRModel::~CImage2DProcessOCRModel() = default;

void CImage2DProcessOCRModel::SetLanguageCode(const QString& strCode)
{
    m_strCode = strCode;
    CLogger::Write(NORMAL, "Image2DProcessOCRModel: SetLanguageCode(%s)", strCode.toUtf8().constData());
}

void CImage2DProcessOCRModel::SetLanguagePath(const QString& strPath)
{
    m_strPath = strPath;
    CLogger::Write(NORMAL, "Image2DProcessOCRModel: SetLanguagePath(%s)", strPath.toUtf8().constData());
}

void CImage2DProcessOCRModel::SetUserDefinedDpi(int nDpi)
{
    m_nDpi = nDpi;
    CLogger::Write(NORMAL, "Image2DProcessOCRModel: SetUserDefinedDpi(%d)", nDpi);
}
