// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfClaims_p.h>

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace Vantor::Utils
{

namespace
{
/// The first object numbers are free: a page cut out of a large document may keep its numbers.
constexpr qint64 kFreeObjects = 500000;
/// Objects packed into a compressed stream take few bytes each.
constexpr qint64 kBytesPerObject = 8;
/// The format's own limit.
constexpr qint64 kMaxObjects = 8388607;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsSpace(char c)
{
    return c == '\0' || c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

bool EndsName(char c)
{
    return IsSpace(c) || std::strchr("()<>[]{}/%", c) != nullptr;
}

/// Reads forwards through a document.
class CCursor
{
public:
    CCursor(const QByteArray& pdf, int nPos) : m_p(pdf.constData() + nPos), m_pEnd(pdf.constEnd()) {}

    /// The next character that is no space, 0 at the end.
    char Peek()
    {
        while (m_p < m_pEnd && IsSpace(*m_p))
            ++m_p;
        return m_p < m_pEnd ? *m_p : '\0';
    }
    bool Skip(char c)
    {
        if (Peek() != c)
            return false;
        ++m_p;
        return true;
    }
    /// A whole number; what is larger than any count becomes a number larger than any count.
    bool ReadNumber(qint64& nValue)
    {
        Skip('+');
        if (!IsDigit(Peek()))
            return false;
        for (nValue = 0; m_p < m_pEnd && IsDigit(*m_p); ++m_p)
            nValue = std::min(nValue * 10 + (*m_p - '0'), kMaxObjects * 2);
        return true;
    }
    /// The rest of a name behind its slash, its #xx spelled out.
    QByteArray ReadName()
    {
        const char* pStart = m_p;
        while (m_p < m_pEnd && !EndsName(*m_p))
            ++m_p;
        return QByteArray::fromPercentEncoding(QByteArray(pStart, static_cast<int>(m_p - pStart)), '#');
    }

private:
    const char* m_p;
    const char* m_pEnd;
};

/// The largest object count among "first count" pairs; entries of an xref table ("offset generation n") are
/// passed over.
qint64 LargestPart(CCursor cursor)
{
    qint64 nLargest = 0;
    qint64 nFirst = 0;
    qint64 nCount = 0;
    while (cursor.ReadNumber(nFirst) && cursor.ReadNumber(nCount)) {
        if (!cursor.Skip('n') && !cursor.Skip('f'))
            nLargest = std::max(nLargest, nFirst + nCount);
    }
    return nLargest;
}

/// What /Size and /Index at this slash promise.
qint64 ClaimOfName(const QByteArray& pdf, int nSlash)
{
    CCursor cursor(pdf, nSlash + 1);
    const QByteArray name = cursor.ReadName();
    qint64 nSize = 0;
    if (name == "Size")
        return cursor.ReadNumber(nSize) ? nSize : 0;
    return name == "Index" && cursor.Skip('[') ? LargestPart(cursor) : 0;
}

/// The number N of "N generation obj" that ends before this "obj".
qint64 NumberOfObject(const QByteArray& pdf, int nObj)
{
    int nPos = nObj;
    const auto skipBack = [&pdf, &nPos](bool (*matches)(char)) {
        const int nBefore = nPos;
        while (nPos > 0 && matches(pdf[nPos - 1]))
            --nPos;
        return nPos < nBefore;
    };
    skipBack(IsSpace);
    if (!skipBack(IsDigit) || !skipBack(IsSpace) || !skipBack(IsDigit))
        return 0;
    qint64 nNumber = 0;
    CCursor(pdf, nPos).ReadNumber(nNumber);
    return nNumber;
}

template <class Claim> bool AnyClaimAbove(const QByteArray& pdf, const char* pText, qint64 nMax, Claim claim)
{
    for (int nPos = pdf.indexOf(pText); nPos >= 0; nPos = pdf.indexOf(pText, nPos + 1)) {
        if (claim(pdf, nPos) > nMax)
            return true;
    }
    return false;
}
} // namespace

bool ClaimsTooManyObjects(const QByteArray& pdf)
{
    const qint64 nMax = std::min(kFreeObjects + pdf.size() / kBytesPerObject, kMaxObjects);
    const auto claimOfTable = [](const QByteArray& all, int nPos) {
        return LargestPart(CCursor(all, nPos + static_cast<int>(std::strlen("xref"))));
    };
    return AnyClaimAbove(pdf, "/", nMax, ClaimOfName) || AnyClaimAbove(pdf, "xref", nMax, claimOfTable) ||
           AnyClaimAbove(pdf, "obj", nMax, NumberOfObject);
}

} // namespace Vantor::Utils
