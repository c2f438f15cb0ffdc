// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What the library makes of a program that goes wrong: fake_pdf in place of vantor-pdf. Also PdfProcess.
#include "tests/support/ChildProcesses.h"
#include "tests/support/TestMain.h"

#include <Vantor/pdf/CPDFReader.h>
#include <Vantor/pdf/PdfClient_p.h>

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include <csignal>
#include <fcntl.h>

using namespace std::chrono_literals;
using Vantor::CFileDescriptor;
using Vantor::CResult;
using Vantor::Utils::CPdfClient;
using Vantor::Utils::CPdfProcess;
using Vantor::Utils::CPDFReader;
using Vantor::Utils::SPdfDrawing;

namespace
{
constexpr std::size_t kMemory = std::size_t(256) << 20;
constexpr int kBadPage = 2;
constexpr int kPages = 5;
constexpr std::chrono::milliseconds kLimit = 500ms;
/// What a busy machine may take beyond the limit.
constexpr int kSlackMs = 5000;

SPdfDrawing Drawing()
{
    return {72.0, 72.0, 5, 3, 16};
}

/// Whether the page can be rendered and is the one that was asked for.
CResult RenderPage(CPdfClient& client, int page)
{
    const CResult result = client.Render(page, Drawing());
    if (!result.IsSuccess())
        return result;
    std::vector<unsigned char> vctPixels(16 * 3, 255);
    const CResult taken = client.TakeDrawing(vctPixels.data());
    const bool bRight =
        std::all_of(vctPixels.begin(), vctPixels.end(), [page](unsigned char c) { return c == page; });
    return taken.IsSuccess() && !bRight ? CResult::Failure("wrong pixels") : taken;
}
} // namespace

class tst_PdfClient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QCOMPARE(ChildrenOf(::getpid()).size(), 0);
        m_nFiles = CountOpenFiles();
    }
    void cleanup()
    {
        QCOMPARE(ChildrenOf(::getpid()).size(), 0);
        QCOMPARE(CountOpenFiles(), m_nFiles);
    }

    void aProgramThatGoesWrongCostsOnePage_data()
    {
        QTest::addColumn<QString>("reason");
        const QString broken = QString::fromLatin1(CPdfProcess::kBroken);
        const QString ended = QString::fromLatin1(CPdfProcess::kEnded);
        const QString slow = QString::fromLatin1(CPdfProcess::kTooSlow);
        for (const char* pHow :
             {"number", "version", "result", "negative", "pages", "nan", "shortened", "longer", "huge"})
            QTest::newRow(pHow) << broken;
        for (const char* pHow : {"killed", "ended", "closed"})
            QTest::newRow(pHow) << ended;
        for (const char* pHow : {"silent", "busy"})
            QTest::newRow(pHow) << slow;
        QTest::newRow("twice") << QString(); // the second one is answered by a fresh process
        QTest::newRow("file") << QString();  // it is not taken
    }

    void aProgramThatGoesWrongCostsOnePage()
    {
        QFETCH(QString, reason);
        CPdfClient client(m_strFake);
        client.SetTimeLimit(kLimit);
        QCOMPARE(client.Open("2 " + QByteArray(QTest::currentDataTag()), kMemory, {}), 0);
        QCOMPARE(client.GetPageNumber(), kPages);
        for (int page = 0; page < kPages; ++page) {
            QElapsedTimer timer;
            timer.start();
            const CResult result = RenderPage(client, page);
            QVERIFY(timer.elapsed() < kLimit.count() + kSlackMs);
            QCOMPARE(QString::fromStdString(result.GetReason()), page == kBadPage ? reason : QString());
            // Once it waits, it has sent everything, also what nobody asked for.
            const pid_t nProcess = ChildrenOf(::getpid()).value(0);
            QTRY_VERIFY(nProcess == 0 || StateOf(nProcess) == 'S');
        }
        QCOMPARE(ChildrenOf(::getpid()).size(), 1);
        QCOMPARE(CountOpenFiles(), m_nFiles + 4); // event, socket, document and pixels
    }

    void aDocumentThatCannotBeOpenedSaysWhy_data()
    {
        QTest::addColumn<QString>("reason");
        for (const char* pHow :
             {"number", "version", "result", "negative", "pages", "nopages", "nan", "shortened", "longer"})
            QTest::newRow(pHow) << QString::fromLatin1(CPdfProcess::kBroken);
        QTest::newRow("killed") << QString::fromLatin1(CPdfProcess::kEnded);
        QTest::newRow("silent") << QString::fromLatin1(CPdfProcess::kTooSlow);
    }

    void aDocumentThatCannotBeOpenedSaysWhy()
    {
        QFETCH(QString, reason);
        CPdfClient client(m_strFake);
        client.SetTimeLimit(kLimit);
        QCOMPARE(client.Open("-1 " + QByteArray(QTest::currentDataTag()), kMemory, {}),
                 int(CPDFReader::EReadResult_NotAPdf));
        QCOMPARE(QString::fromStdString(client.GetOpenFailure()), reason);
        QCOMPARE(client.GetPageNumber(), 0);
        QCOMPARE(ChildrenOf(::getpid()).size(), 0);
        QCOMPARE(client.Open("5 nothing", kMemory, {}), 0);
        QVERIFY(RenderPage(client, 1).IsSuccess());
    }

    void withoutTheProgramThePackageIsNamed()
    {
        CPdfClient client("/no/such/program");
        QCOMPARE(client.Open("5 nothing", kMemory, {}), int(CPDFReader::EReadResult_CannotOpen));
        const QString strReason = QString::fromStdString(client.GetOpenFailure());
        QVERIFY2(
            strReason.endsWith(QStringLiteral("No such file or directory. It is in the package vantor-pdf.")),
            qPrintable(strReason));
    }

    void theProcessInheritsNoOpenFile()
    {
        // Files that are not to be closed when a program is started, as careless libraries leave them.
        const CFileDescriptor one(::open("/dev/null", O_RDONLY));
        const CFileDescriptor two(::dup2(one.Get(), 100));
        CPdfClient client(m_strFake);
        QCOMPARE(client.Open("5 nothing", kMemory, {}), 0);
        double dWidth = 0.0;
        double dHeight = 0.0;
        QVERIFY(client.GetPageSize(0, dWidth, dHeight).IsSuccess());
        QCOMPARE(dWidth, 4.0); // input, output, errors and the socket
    }

    void aProcessThatGoesWhileNobodyAsksCostsNoPage()
    {
        CPdfClient client(m_strFake);
        QCOMPARE(client.Open("5 nothing", kMemory, {}), 0);
        for (int page = 0; page < kPages; ++page) {
            const pid_t nProcess = ChildrenOf(::getpid()).value(0);
            QCOMPARE(::kill(nProcess, SIGKILL), 0);
            QTRY_VERIFY(!IsRunning(nProcess));
            QCOMPARE(QString::fromStdString(RenderPage(client, page).GetReason()), QString());
        }
    }

    void anotherThreadCancelsTheRequestInWork()
    {
        CPdfClient client(m_strFake);
        QCOMPARE(client.Open("2 silent", kMemory, {}), 0);
        QElapsedTimer timer;
        timer.start();
        std::thread other([&client] { client.Cancel(); });
        const CResult result = RenderPage(client, kBadPage);
        other.join();
        QCOMPARE(result.GetReason(), std::string(CPdfProcess::kCancelled));
        QVERIFY(timer.elapsed() < kSlackMs);
        QCOMPARE(QString::fromStdString(RenderPage(client, 3).GetReason()), QString());
    }

    void aCancelledOpeningIsNoDamage()
    {
        CPdfClient client(m_strFake);
        client.Cancel();
        QCOMPARE(client.Open("-1 silent", kMemory, {}), int(CPDFReader::EReadResult_CannotOpen));
        QCOMPARE(client.GetOpenFailure(), std::string(CPdfProcess::kCancelled));
    }

    void aPasswordBeyondTheProtocolIsWrong()
    {
        CPdfClient client(m_strFake);
        QCOMPARE(client.Open("5 nothing", kMemory, std::string(1024, 'x')), 0);
        QCOMPARE(client.Open("5 nothing", kMemory, std::string(1025, 'x')),
                 int(CPDFReader::EReadResult_PasswordRequired));
    }

private:
    const std::string m_strFake = VANTOR_TEST_FAKE_PDF;
    int m_nFiles = 0;
};

VANTOR_CORE_TEST_MAIN(tst_PdfClient)
#include "tst_PdfClient.moc"
