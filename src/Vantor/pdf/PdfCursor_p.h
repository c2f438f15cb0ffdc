// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QByteArray>

namespace Vantor::Utils
{

bool IsPdfDigit(char c);
bool IsPdfSpace(char c);

/// Reads forwards through a document that outlives it.
class CPdfCursor
{
public:
    /// Larger numbers are read as this value, which exceeds every possible count.
    static constexpr qint64 kMaxNumber = 1 << 30;

    CPdfCursor(const QByteArray& pdf, int nPos);

    int GetPosition() const { return static_cast<int>(m_p - m_pStart); }
    /// The next character that is no space, 0 at the end.
    char Peek();
    /// Goes behind that character if it is this one.
    bool Skip(char c);
    /// The same without spaces before it.
    bool SkipNext(char c);
    bool ReadNumber(qint64& nValue);
    /// The rest of a name after its slash, with its #xx decoded.
    QByteArray ReadName();
    /// What stands before the next space or delimiter, such as "endobj".
    QByteArray ReadWord();

    /// Skips the entries of a dictionary and the brackets that end it. It is strict, because lenient readers
    /// differ in what they make of anything else: false for broken syntax, for comments and for too deep
    /// nesting.
    /// @param pLargestSize  receives the largest number of a /Size among them, unless it is null
    bool SkipEntries(qint64* pLargestSize, int nDepth = 0);

private:
    QByteArray ReadUntilDelimiter();
    bool SkipValue(int nDepth);
    bool SkipElements(int nDepth);
    bool SkipString();
    bool SkipHex();
    bool SkipNumberOrWord();

    const char* m_pStart;
    const char* m_p;
    const char* m_pEnd;
};

} // namespace Vantor::Utils
