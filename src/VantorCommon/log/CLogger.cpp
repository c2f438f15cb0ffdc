// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/log/CLogger.h>

#include <VantorCommon/log/CLogModel.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace
{
constexpr int c_nBufferBytes = 1024;
} // namespace

void CLogger::Write(ELogLevel level, const char* format, ...)
{
    CLogModel* pModel = CLogModel::GetInstance();
    if (!pModel || !format)
        return;

    char buffer[c_nBufferBytes];
    va_list arguments;
    va_start(arguments, format);
    const int nWanted = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);

    const char* pText = nWanted < 0 ? format : buffer;
    const int nBytes = static_cast<int>(
        std::min<std::size_t>(nWanted < 0 ? std::strlen(format) : nWanted, c_nBufferBytes - 1));
    // In UTC this is no more than a reading of the clock; the model makes the local time of it later.
    const QDateTime dtNow = QDateTime::currentDateTimeUtc();
    pModel->AddMessage(level, QString::fromUtf8(pText, nBytes), dtNow);
}
