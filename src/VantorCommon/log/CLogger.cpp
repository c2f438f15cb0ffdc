// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/log/CLogger.h>

#include <VantorCommon/log/CLogModel.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace
{
constexpr std::size_t c_nBufferBytes = 1024;
constexpr std::size_t c_nLongestSequence = 4; // bytes of a UTF-8 character

/// How many bytes of a text that was cut after nBytes count: of a character that was cut in two only the
/// first byte stays, which reads as one replacement character.
std::size_t WithoutHalfTail(const char* pText, std::size_t nBytes)
{
    for (std::size_t nTail = 1; nTail < c_nLongestSequence && nTail <= nBytes; ++nTail) {
        const auto byte = static_cast<unsigned char>(pText[nBytes - nTail]);
        if ((byte & 0xC0) == 0x80)
            continue; // not a first byte
        const std::size_t nWanted = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return nTail < nWanted ? nBytes - nTail + 1 : nBytes;
    }
    return nBytes;
}
} // namespace

void CLogger::Write(ELogLevel level, const char* format, ...)
{
    if (!CLogModel::GetInstance() || !format)
        return;

    char buffer[c_nBufferBytes];
    va_list arguments;
    va_start(arguments, format);
    const int nWanted = std::vsnprintf(buffer, sizeof buffer, format, arguments);
    va_end(arguments);

    const char* pText = nWanted < 0 ? format : buffer;
    std::size_t nBytes = nWanted < 0 ? std::strlen(format) : static_cast<std::size_t>(nWanted);
    if (nBytes >= c_nBufferBytes)
        nBytes = WithoutHalfTail(pText, c_nBufferBytes - 1);
    // Reading UTC only reads the clock; the model converts it to local time later.
    const QDateTime dtNow = QDateTime::currentDateTimeUtc();
    // Not through the pointer, because the model may have been destroyed since.
    CLogModel::Post(level, QString::fromUtf8(pText, static_cast<int>(nBytes)), dtNow);
}
