// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Documents that attack the program that reads them, and hosts and programs that are killed: CPDFReader with
// vantor-pdf. VANTOR_KILLS=1000 kills it more often.
#include "tests/support/ChildProcesses.h"
#include "tests/support/HostilePdf.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include <sys/wait.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr double kLimitSeconds = 1.0;
/// What a busy machine may take beyond the limit.
constexpr int kSlackMs = 5000;
const QString kTooSlow = QStringLiteral("It took longer than the time limit.");
const QString kEnded = QStringLiteral("The program that reads documents ended unexpectedly.");

QByteArray Deflated(const QByteArray& bytes)
{
    return qCompress(bytes, 9).mid(4); // without Qt's own length
}

/// A stream of 32 MB of these bytes, drawn a thousand times one after the other.
QByteArray Inflating(const QByteArray& start, const QByteArray& part)
{
    QByteArray contents = "[5 0 R";
    for (int i = 0; i < 1000; ++i)
        contents += " 6 0 R";
    return TwoPages(
        contents + "]", QByteArray(),
        {Stream(start), Stream(Deflated(part.repeated((32 << 20) / part.size())), "/Filter /FlateDecode")});
}

/// A tree of fields in which each has the next one twice.
QByteArray DoublingFields()
{
    constexpr int kDepth = 40;
    const QByteArray kWidget = "/Type /Annot /Subtype /Widget /Rect [0 0 5 5] >>";
    QList<QByteArray> lstFields{Stream("")};
    for (int i = 0; i < kDepth; ++i) {
        const QByteArray next = QByteArray::number(7 + i) + " 0 R";
        lstFields << "<< /T (a) /FT /Tx /Parent " + QByteArray::number(5 + i) + " 0 R " +
                         (i + 1 < kDepth ? "/Kids [" + next + " " + next + "] >>" : kWidget);
    }
    return TwoPages("5 0 R", "/Annots [45 0 R]", lstFields, "/AcroForm << /Fields [6 0 R] >>");
}

int KillsToMake()
{
    bool bNumber = false;
    const int nKills = qEnvironmentVariableIntValue("VANTOR_KILLS", &bNumber);
    return bNumber ? nKills : 200;
}
} // namespace

class tst_PdfWorker : public QObject
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
        CImage::SetDecodeLimit(m_nLimit);
        QCOMPARE(ChildrenOf(::getpid()).size(), 0);
        QCOMPARE(CountOpenFiles(), m_nFiles);
    }

    void aHostileDocumentEndsWithinItsBoundAndTheNextOneOpens_data()
    {
        QTest::addColumn<QByteArray>("pdf");
        QTest::addColumn<QStringList>("reasons");
        QTest::addColumn<bool>("whole"); // or one page of it only
        QTest::newRow("a stream that inflates for ever")
            << Inflating("", " ") << QStringList{kTooSlow} << false;
        QTest::newRow("forms that double forty times") << DoublingForms() << QStringList{kTooSlow} << false;
        QTest::newRow("fields that double forty times") << DoublingFields() << QStringList{kTooSlow} << true;
#ifndef __SANITIZE_ADDRESS__ // it takes terabytes of addresses, so they are not bounded
        // A fast machine meets the bound of memory, a slow one that of time.
        QTest::newRow("a list that takes all memory")
            << Inflating("[ ", "1 ") << QStringList{kEnded, kTooSlow} << false;
#endif
    }

    void aHostileDocumentEndsWithinItsBoundAndTheNextOneOpens()
    {
        QFETCH(QByteArray, pdf);
        QFETCH(QStringList, reasons);
        QFETCH(bool, whole);
        CImage::SetDecodeLimit(std::size_t(64) << 20);
        CPDFReader reader;
        reader.SetTimeLimit(kLimitSeconds);
        CImage image;
        QElapsedTimer timer;
        timer.start();
        const bool bRead = Read(reader, pdf) == 0;
        QVERIFY(!bRead || reader.RenderPage(0, &image) != 0);
        QVERIFY2(timer.elapsed() < 2000 * kLimitSeconds + kSlackMs,
                 qPrintable(QString::number(timer.elapsed())));
        const QString strReason = QString::fromStdString(reader.GetFailureReason());
        QVERIFY2(reasons.contains(strReason), qPrintable(strReason));
        QCOMPARE(image.GetWidth(), 0);
        QCOMPARE(ChildrenOf(::getpid()).size(), 0);
        reader.SetTimeLimit(10.0);
        if (!whole)
            QCOMPARE(reader.RenderPage(1, &image), 0);
        QCOMPARE(Read(reader, MakeOnePagePdf("/MediaBox [0 0 10 10]")), 0);
        QCOMPARE(reader.RenderPage(0, &image), 0);
        QCOMPARE(reader.GetFailureReason(), std::string());
    }

    void aPageAsLargeAsTheDecodeLimitAllowsFitsTheMemory()
    {
        constexpr int kSide = 7700;
        CImage::SetDecodeLimit(std::size_t(7) * kSide * kSide);
        CPDFReader reader;
        QCOMPARE(Read(reader, MakeOnePagePdf("/MediaBox [0 0 7700 7700]", "1 0 0 rg 0 0 10 10 re f")), 0);
        CImage image;
        QCOMPARE(reader.RenderPage(0, &image), 0);
        QCOMPARE(image.GetPixel(5, kSide - 5)[1], static_cast<unsigned char>(0));
    }

    void theTimeLimitIsThatOfTheReader()
    {
        CPDFReader reader;
        QCOMPARE(Read(reader, DoublingForms()), 0);
        for (const double seconds : {0.3, 1.5}) {
            reader.SetTimeLimit(seconds);
            reader.SetTimeLimit(-1.0); // ignored
            CImage image;
            QElapsedTimer timer;
            timer.start();
            QVERIFY(reader.RenderPage(0, &image) != 0);
            QVERIFY(timer.elapsed() >= static_cast<qint64>(seconds * 1000.0));
        }
    }

    void aPageThatIsCancelledEndsAtOnce()
    {
        CPDFReader reader;
        QCOMPARE(Read(reader, DoublingForms()), 0);
        std::thread other([&reader] { reader.Cancel(); });
        CImage image;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(reader.RenderPage(0, &image) != 0);
        QVERIFY(timer.elapsed() < kSlackMs);
        other.join();
        QCOMPARE(reader.GetFailureReason(), std::string("It was cancelled."));
        QCOMPARE(reader.RenderPage(1, &image), 0);
    }

    void aReaderOutlivesTheThreadThatOpenedTheDocument()
    {
        CPDFReader reader;
        int nRead = -1;
        std::thread([&] { nRead = Read(reader, MakeOnePagePdf("/MediaBox [0 0 10 10]")); }).join();
        QCOMPARE(nRead, 0);
        const auto before = ChildrenOf(::getpid());
        CImage image;
        QCOMPARE(reader.RenderPage(0, &image), 0);
        QCOMPARE(ChildrenOf(::getpid()), before); // the same process
    }

    void aHostThatIsKilledTakesItsBusyProcessAlong()
    {
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        const pid_t nHost = ::fork();
        if (nHost == 0) {
            CPDFReader reader;
            CImage image;
            const char cRead = Read(reader, DoublingForms()) == 0 ? 'y' : 'n';
            if (::write(ends[1], &cRead, 1) == 1)
                reader.RenderPage(0, &image);
            ::_exit(0);
        }
        char cRead = 'n';
        QCOMPARE(::read(ends[0], &cRead, 1), ssize_t(1));
        QCOMPARE(cRead, 'y');
        const auto vctWorkers = ChildrenOf(nHost);
        QCOMPARE(vctWorkers.size(), 1);
        ::kill(nHost, SIGKILL);
        QCOMPARE(::waitpid(nHost, nullptr, 0), nHost);
        QTRY_VERIFY(!IsRunning(vctWorkers[0]));
        ::close(ends[0]);
        ::close(ends[1]);
    }

    void killsAtRandomMomentsCostThePageInWorkAndLeaveNothing()
    {
        const int nKills = KillsToMake();
        CPDFReader reader;
        QCOMPARE(reader.Read(
                     TestDataPath(QStringLiteral("pdf/pdfium_hello_world_2_pages.pdf")).toStdWString(), L""),
                 0);
        CImage expected[2];
        for (int page = 0; page < 2; ++page)
            QCOMPARE(reader.RenderPage(page, &expected[page]), 0);
        std::atomic<int> nDone{0};
        std::thread killer([&nDone, nKills] {
            std::mt19937 random(5);
            while (nDone < nKills) {
                std::this_thread::sleep_for(std::chrono::microseconds(random() % 60000));
                for (const pid_t nWorker : ChildrenOf(::getpid()))
                    nDone += ::kill(nWorker, SIGKILL) == 0 ? 1 : 0;
            }
        });
        int nLost = 0;
        int nRendered = 0;
        int nWrong = 0;
        for (; nDone < nKills; ++nRendered) {
            CImage image;
            if (reader.RenderPage(nRendered % 2, &image) != 0) {
                ++nLost;
                nWrong += QString::fromStdString(reader.GetFailureReason()) == kEnded ? 0 : 1;
            } else if (!SamePixels(image, expected[nRendered % 2])) {
                ++nWrong;
            }
        }
        killer.join();
        QCOMPARE(nWrong, 0);
        QVERIFY2(nLost <= nDone && nLost < nRendered,
                 qPrintable(QStringLiteral("%1 of %2").arg(nLost).arg(nRendered)));
        CImage image;
        QCOMPARE(reader.RenderPage(1, &image), 0);
        QVERIFY(ChildrenOf(::getpid()).size() == 1);
        QCOMPARE(CountOpenFiles(), m_nFiles + 4);
    }

private:
    int Read(CPDFReader& reader, const QByteArray& pdf)
    {
        const QString strPath = m_folder.filePath(QStringLiteral("document.pdf"));
        QFile file(strPath);
        if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size())
            return -1;
        file.close();
        return reader.Read(strPath.toStdWString(), std::wstring());
    }

    const std::size_t m_nLimit = CImage::GetDecodeLimit();
    QTemporaryDir m_folder;
    int m_nFiles = 0;
};

VANTOR_CORE_TEST_MAIN(tst_PdfWorker)
#include "tst_PdfWorker.moc"
