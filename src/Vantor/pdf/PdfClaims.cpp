// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/PdfClaims_p.h>

#include <Vantor/pdf/PdfCursor_p.h>

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace Vantor::Utils
{

namespace
{
/// So many object numbers are always allowed: a page cut out of a large document may keep its numbers.
constexpr qint64 kFreeObjects = 500000;
/// Objects packed into a compressed stream take few bytes each.
constexpr qint64 kBytesPerObject = 8;
/// The format's own limit.
constexpr qint64 kMaxObjects = 8388607;
constexpr const char* kTable = "xref";
constexpr const char* kTrailer = "trailer";

int LengthOf(const char* pText)
{
    return static_cast<int>(std::strlen(pText));
}

/// The largest object count among "first count" pairs; it skips entries of an xref table ("offset generation
/// n").
qint64 LargestPart(CPdfCursor cursor)
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

/// The object count that the /Index at this slash claims.
qint64 ClaimOfIndex(const QByteArray& pdf, int nSlash)
{
    CPdfCursor cursor(pdf, nSlash + 1);
    return cursor.ReadName() == "Index" && cursor.Skip('[') ? LargestPart(cursor) : 0;
}

/// Looks for /Size among the entries of trailers and of streams; cross-reference streams are such. In any
/// other dictionary /Size is the length of an attached file. Where the syntax is broken, and the renderer may
/// see another end of the dictionary, every large /Size counts as a claim.
class CSizeClaims
{
public:
    CSizeClaims(const QByteArray& pdf, qint64 nMax) : m_pdf(pdf), m_nMax(nMax), m_nLeft(pdf.size()) {}

    bool AnyAboveMax() { return AnyInStreams() || (m_bLarge && AnyInTrailers()); }

private:
    bool AnyInStreams()
    {
        for (int nPos = m_pdf.indexOf('/'); nPos >= 0; nPos = m_pdf.indexOf('/', nPos + 1)) {
            CPdfCursor cursor(m_pdf, nPos + 1);
            qint64 nSize = 0;
            if (cursor.ReadName() != "Size" || !cursor.ReadNumber(nSize) || nSize <= m_nMax)
                continue;
            m_bLarge = true;
            if (!EndsElsewhere(cursor))
                return true;
        }
        return false;
    }
    /// Whether the dictionary ends within another one, or as an object without a stream.
    bool EndsElsewhere(CPdfCursor cursor)
    {
        if (!SkipEntries(cursor, nullptr))
            return false;
        const char cNext = cursor.Peek();
        return cNext == '/' || cNext == '>' || cursor.ReadWord() == "endobj";
    }
    bool AnyInTrailers()
    {
        for (int nPos = m_pdf.indexOf(kTrailer); nPos >= 0; nPos = m_pdf.indexOf(kTrailer, nPos + 1)) {
            CPdfCursor cursor(m_pdf, nPos + LengthOf(kTrailer));
            qint64 nSize = 0;
            const bool bDictionary = cursor.Skip('<') && cursor.SkipNext('<');
            if (bDictionary ? !SkipEntries(cursor, &nSize) || nSize > m_nMax : cursor.Peek() == '%')
                return true;
        }
        return false;
    }
    /// All of them together may cover the document once, which is enough when they do not overlap.
    bool SkipEntries(CPdfCursor& cursor, qint64* pSize)
    {
        const int nStart = cursor.GetPosition();
        const bool bKept = cursor.SkipEntries(pSize);
        m_nLeft -= cursor.GetPosition() - nStart;
        return bKept && m_nLeft >= 0;
    }

    const QByteArray& m_pdf;
    qint64 m_nMax;
    qint64 m_nLeft; ///< bytes that may still be read
    bool m_bLarge = false;
};

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
    skipBack(IsPdfSpace);
    if (!skipBack(IsPdfDigit) || !skipBack(IsPdfSpace) || !skipBack(IsPdfDigit))
        return 0;
    qint64 nNumber = 0;
    CPdfCursor(pdf, nPos).ReadNumber(nNumber);
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
        return LargestPart(CPdfCursor(all, nPos + LengthOf(kTable)));
    };
    return AnyClaimAbove(pdf, "/", nMax, ClaimOfIndex) || AnyClaimAbove(pdf, kTable, nMax, claimOfTable) ||
           AnyClaimAbove(pdf, "obj", nMax, NumberOfObject) || CSizeClaims(pdf, nMax).AnyAboveMax();
}

} // namespace Vantor::Utils
