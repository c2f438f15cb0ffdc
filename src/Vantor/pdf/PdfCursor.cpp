// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfCursor_p.h>

#include <algorithm>
#include <cstring>

namespace Vantor::Utils
{

namespace
{
constexpr int kMaxDepth = 32;

bool EndsName(char c)
{
    return IsPdfSpace(c) || std::strchr("()<>[]{}/%", c) != nullptr;
}

bool IsPartOfNumber(char c)
{
    return IsPdfDigit(c) || c == '+' || c == '-' || c == '.';
}

bool IsHexDigit(char c)
{
    return IsPdfDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
} // namespace

bool IsPdfDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsPdfSpace(char c)
{
    return c == '\0' || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

CPdfCursor::CPdfCursor(const QByteArray& pdf, int nPos)
    : m_pStart(pdf.constData()), m_p(m_pStart + nPos), m_pEnd(pdf.constEnd())
{
}

char CPdfCursor::Peek()
{
    while (m_p < m_pEnd && IsPdfSpace(*m_p))
        ++m_p;
    return m_p < m_pEnd ? *m_p : '\0';
}

bool CPdfCursor::Skip(char c)
{
    Peek();
    return SkipNext(c);
}

bool CPdfCursor::SkipNext(char c)
{
    if (m_p == m_pEnd || *m_p != c)
        return false;
    ++m_p;
    return true;
}

bool CPdfCursor::ReadNumber(qint64& nValue)
{
    Skip('+');
    if (!IsPdfDigit(Peek()))
        return false;
    for (nValue = 0; m_p < m_pEnd && IsPdfDigit(*m_p); ++m_p)
        nValue = std::min(nValue * 10 + (*m_p - '0'), kMaxNumber);
    return true;
}

QByteArray CPdfCursor::ReadUntilDelimiter()
{
    const char* pStart = m_p;
    while (m_p < m_pEnd && !EndsName(*m_p))
        ++m_p;
    return QByteArray(pStart, static_cast<int>(m_p - pStart));
}

QByteArray CPdfCursor::ReadName()
{
    return QByteArray::fromPercentEncoding(ReadUntilDelimiter(), '#');
}

QByteArray CPdfCursor::ReadWord()
{
    Peek();
    return ReadUntilDelimiter();
}

bool CPdfCursor::SkipEntries(qint64* pLargestSize, int nDepth)
{
    while (Skip('/')) {
        const bool bSize = ReadName() == "Size";
        qint64 nSize = 0;
        if (bSize && pLargestSize && CPdfCursor(*this).ReadNumber(nSize))
            *pLargestSize = std::max(*pLargestSize, nSize);
        if (!SkipValue(nDepth))
            return false;
    }
    return Skip('>') && SkipNext('>');
}

bool CPdfCursor::SkipValue(int nDepth)
{
    if (nDepth > kMaxDepth)
        return false;
    if (Skip('/')) {
        ReadName();
        return true;
    }
    if (Skip('('))
        return SkipString();
    if (Skip('['))
        return SkipElements(nDepth + 1);
    if (Skip('<'))
        return SkipNext('<') ? SkipEntries(nullptr, nDepth + 1) : SkipHex();
    return SkipNumberOrWord();
}

bool CPdfCursor::SkipElements(int nDepth)
{
    while (!Skip(']')) {
        if (!SkipValue(nDepth))
            return false;
    }
    return true;
}

bool CPdfCursor::SkipString()
{
    int nOpen = 1;
    for (; m_p < m_pEnd && nOpen > 0; ++m_p) {
        if (*m_p == '\\' && m_p + 1 < m_pEnd)
            ++m_p;
        else if (*m_p == '(')
            ++nOpen;
        else if (*m_p == ')')
            --nOpen;
    }
    return nOpen == 0;
}

bool CPdfCursor::SkipHex()
{
    while (IsHexDigit(Peek()))
        ++m_p;
    return Skip('>');
}

/// A number, a reference such as "5 0 R", true, false or null.
bool CPdfCursor::SkipNumberOrWord()
{
    const QByteArray word = ReadWord();
    if (word == "true" || word == "false" || word == "null")
        return true;
    if (word.isEmpty() || !std::all_of(word.begin(), word.end(), IsPartOfNumber))
        return false;
    CPdfCursor rest = *this;
    qint64 nGeneration = 0;
    if (rest.ReadNumber(nGeneration) && rest.ReadWord() == "R")
        *this = rest;
    return true;
}

} // namespace Vantor::Utils
