// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/pdf/PdfProtocol_p.h>

#include <cmath>
#include <cstring>
#include <limits>

using namespace Vantor::Utils;

namespace
{
SPdfRequest Request(EPdfRequest eKind)
{
    SPdfRequest request;
    request.eKind = eKind;
    request.nNumber = 9;
    return request;
}

SPdfAnswer Answer(int nResult, int nPages, double width = 0.0, double height = 0.0)
{
    SPdfAnswer answer;
    answer.nNumber = 9;
    answer.nResult = nResult;
    answer.nPages = nPages;
    answer.dWidth = width;
    answer.dHeight = height;
    return answer;
}

bool IsTaken(EPdfRequest eKind, const SPdfAnswer& answer)
{
    SPdfAnswer read;
    return ReadPdfAnswer(&answer, sizeof answer, Request(eKind), read) &&
           std::memcmp(&read, &answer, sizeof answer) == 0;
}
} // namespace

class tst_PdfProtocol : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersToOpenHavePagesOrAFailure()
    {
        for (const int nPages : {1, 300, 8388607})
            QVERIFY(IsTaken(EPdfRequest::Open, Answer(0, nPages)));
        for (const int nPages :
             {0, -1, 8388608, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
            QVERIFY(!IsTaken(EPdfRequest::Open, Answer(0, nPages)));
        for (const int nResult : {2, 3, 4}) {
            QVERIFY(IsTaken(EPdfRequest::Open, Answer(nResult, 0)));
            QVERIFY(!IsTaken(EPdfRequest::Open, Answer(nResult, 1)));
        }
        for (const int nResult : {1, 5, -1})
            QVERIFY(!IsTaken(EPdfRequest::Open, Answer(nResult, 0)));
        QVERIFY(!IsTaken(EPdfRequest::Open, Answer(0, 1, 1.0)));
        QVERIFY(!IsTaken(EPdfRequest::Open, Answer(0, 1, 0.0, 1.0)));
    }

    void aPageSizeIsTwoLengths()
    {
        for (const double length : {0.0, 0.5, 612.0, 1e300}) {
            QVERIFY(IsTaken(EPdfRequest::PageSize, Answer(0, 0, length, 1.0)));
            QVERIFY(IsTaken(EPdfRequest::PageSize, Answer(0, 0, 1.0, length)));
        }
        const double inf = std::numeric_limits<double>::infinity();
        for (const double length : {-0.5, -1e300, inf, -inf, std::nan("")}) {
            QVERIFY(!IsTaken(EPdfRequest::PageSize, Answer(0, 0, length, 1.0)));
            QVERIFY(!IsTaken(EPdfRequest::PageSize, Answer(0, 0, 1.0, length)));
        }
        QVERIFY(!IsTaken(EPdfRequest::PageSize, Answer(1, 0)));
        QVERIFY(!IsTaken(EPdfRequest::PageSize, Answer(0, 1)));
    }

    void aRenderingSucceedsOrNot()
    {
        QVERIFY(IsTaken(EPdfRequest::Render, Answer(0, 0)));
        QVERIFY(IsTaken(EPdfRequest::Render, Answer(1, 0)));
        for (const SPdfAnswer& answer :
             {Answer(2, 0), Answer(-1, 0), Answer(0, 1), Answer(0, 0, 1.0), Answer(0, 0, 0.0, 1.0)})
            QVERIFY(!IsTaken(EPdfRequest::Render, answer));
    }

    void onlyTheAnswerToThisRequestCounts()
    {
        for (const EPdfRequest eKind : {EPdfRequest::Open, EPdfRequest::PageSize, EPdfRequest::Render}) {
            const SPdfAnswer right = Answer(0, eKind == EPdfRequest::Open ? 1 : 0);
            QVERIFY(IsTaken(eKind, right));
            SPdfAnswer wrong = right;
            wrong.nNumber = 8;
            QVERIFY(!IsTaken(eKind, wrong));
            wrong = right;
            ++wrong.nProtocol;
            QVERIFY(!IsTaken(eKind, wrong));
            char packet[2 * sizeof right] = {};
            std::memcpy(packet, &right, sizeof right);
            for (std::size_t nBytes = 0; nBytes <= sizeof packet; ++nBytes) {
                SPdfAnswer read;
                QCOMPARE(ReadPdfAnswer(packet, nBytes, Request(eKind), read), nBytes == sizeof right);
            }
        }
    }

    void aRequestIsAsLongAsItsPassword()
    {
        char packet[sizeof(SPdfRequest) + 1100] = {};
        SPdfRequest read;
        for (const std::uint32_t nPassword : {0u, 5u, 1024u, 1025u}) {
            SPdfRequest request = Request(EPdfRequest::Open);
            request.nPasswordBytes = nPassword;
            std::memcpy(packet, &request, sizeof request);
            for (std::size_t nBytes = 0; nBytes <= sizeof packet; ++nBytes)
                QCOMPARE(ReadPdfRequest(packet, nBytes, read),
                         nPassword <= 1024 && nBytes == sizeof request + nPassword);
        }
        for (const std::uint32_t nKind : {0u, 4u, 0xffffffffu}) {
            SPdfRequest request = Request(static_cast<EPdfRequest>(nKind));
            QVERIFY(!ReadPdfRequest(&request, sizeof request, read));
        }
        SPdfRequest request = Request(EPdfRequest::Render);
        ++request.nProtocol;
        QVERIFY(!ReadPdfRequest(&request, sizeof request, read));
    }
};

VANTOR_CORE_TEST_MAIN(tst_PdfProtocol)
#include "tst_PdfProtocol.moc"
