// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/ChildProcesses.h"
#include "tests/support/HostilePdf.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFPages.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <atomic>
#include <csignal>
#include <thread>
#include <utility>

#include <sys/wait.h>

using Vantor::CProgress;
using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFPages;
using Vantor::Utils::CPDFReader;
using Pages = std::vector<std::shared_ptr<CImage>>;

namespace
{
constexpr double kDpi = 72.0;
const QStringList kPasswords{QString(), QStringLiteral("view"), QStringLiteral("user"),
                             QString::fromUtf8("h\xc3\xb4tel")};

/// Null when no password opens it.
std::unique_ptr<CPDFReader> Open(const QString& strPath, double dpi = kDpi)
{
    auto pReader = std::make_unique<CPDFReader>();
    pReader->SetResolutionX(dpi);
    for (const QString& strPassword : kPasswords)
        if (pReader->Read(strPath.toStdWString(), strPassword.toStdWString()) == 0)
            return pReader;
    return nullptr;
}

/// All pages of a document, none left out.
Pages MakePages(std::unique_ptr<CPDFReader> pReader)
{
    std::string strFailure = "nothing was done";
    Pages vctPages = CPDFPages::Make(std::move(pReader), strFailure);
    return strFailure.empty() ? vctPages : Pages();
}

const CImage& Const(const std::shared_ptr<CImage>& pImage)
{
    return *pImage;
}

/// The first byte of a page as a thread gets it that is cancelled at once.
bool GetsNothing(const std::shared_ptr<CImage>& pPage)
{
    CProgress progress;
    std::atomic<bool> bNothing{false};
    std::thread thread([&] {
        const CProgress::CScope scope(&progress);
        bNothing = Const(pPage).GetData() == nullptr;
    });
    progress.Cancel();
    thread.join();
    return bNothing;
}
} // namespace

class tst_CPDFPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QCOMPARE(ChildrenOf(::getpid()).size(), 0); }
    void cleanup() { QCOMPARE(ChildrenOf(::getpid()).size(), 0); }

    void everyPageHasTheSizeAndThePixelsOfItsRendering_data()
    {
        QTest::addColumn<QString>("path");
        for (const char* pFolder : {"pdf", "broken"}) {
            const QDir dir(TestDataPath(QString::fromLatin1(pFolder)));
            for (const QString& strFile : dir.entryList({QStringLiteral("*.pdf")}, QDir::Files))
                QTest::newRow(qPrintable(strFile)) << dir.filePath(strFile);
        }
    }
    void everyPageHasTheSizeAndThePixelsOfItsRendering()
    {
        QFETCH(QString, path);
        const auto pReader = Open(path);
        for (const double dpi : {100.0, 50.5}) {
            const Pages vctPages = MakePages(Open(path, dpi));
            QCOMPARE(static_cast<int>(vctPages.size()), pReader ? pReader->GetPageNumber() : 0);
            for (std::size_t i = 0; i < vctPages.size(); ++i) {
                pReader->SetResolutionX(dpi);
                CImage image;
                const bool bRendered = pReader->RenderPage(static_cast<int>(i), &image) == 0;
                const CImage& page = Const(vctPages[i]);
                QVERIFY(page.IsDeferred() && !page.HasPixels());
                QCOMPARE(page.GetPageResolution(), dpi);
                const QSize before(page.GetWidth(), page.GetHeight());
                QCOMPARE(page.GetStride(), (3 * before.width() + 3) / 4 * 4);
                if (bRendered) {
                    QCOMPARE(before, QSize(image.GetWidth(), image.GetHeight()));
                    QVERIFY(SamePixels(page, image));
                }
                QVERIFY(page.GetData());
                QCOMPARE(page.GetNotes().empty(), bRendered);
                QCOMPARE(page.GetStride() * page.GetHeight(),
                         (3 * before.width() + 3) / 4 * 4 * before.height());
            }
        }
    }

    void severalThreadsGetTheirPagesFromAtMostThreeProcesses()
    {
        const QString strPath = TestDataPath(QStringLiteral("pdf/20-pages.pdf"));
        const auto pReader = Open(strPath);
        Pages vctExpected;
        for (int i = 0; i < pReader->GetPageNumber(); ++i) {
            vctExpected.push_back(std::make_shared<CImage>());
            QCOMPARE(pReader->RenderPage(i, vctExpected.back().get()), 0);
        }
        const Pages vctPages = MakePages(Open(strPath));
        std::atomic<std::size_t> nNext{0};
        std::atomic<int> nGood{0};
        std::vector<std::thread> vctThreads;
        for (int t = 0; t < 6; ++t)
            vctThreads.emplace_back([&] {
                for (std::size_t i = nNext++; i < 3 * vctPages.size(); i = nNext++)
                    if (SamePixels(*vctPages[i % vctPages.size()], *vctExpected[i % vctPages.size()]))
                        ++nGood;
            });
        for (std::thread& thread : vctThreads)
            thread.join();
        QCOMPARE(nGood.load(), static_cast<int>(3 * vctPages.size()));
        const int nProcesses = ChildrenOf(::getpid()).size() - 1; // without the one of pReader
        QVERIFY2(nProcesses >= 1 && nProcesses <= 3, qPrintable(QString::number(nProcesses)));
    }

    void aFileThatIsReplacedOrProtectedChangesNothing()
    {
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.pdf"));
        QVERIFY(QFile::copy(TestDataPath(QStringLiteral("pdf/enc-R3,V2,U=view,O=master.pdf")), strPath));
        const auto pReader = Open(strPath);
        CImage expected;
        QCOMPARE(pReader->RenderPage(0, &expected), 0);
        const Pages vctPages = MakePages(Open(strPath));
        QVERIFY(QFile::remove(strPath));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(Const(vctPages[0]).GetData());
            QVERIFY(vctPages[0]->GetNotes().empty());
            QVERIFY(SamePixels(*vctPages[0], expected));
            QVERIFY(vctPages[0]->DropPixels());
            for (const pid_t nChild : ChildrenOf(::getpid())) {
                ::kill(nChild, SIGKILL);
                siginfo_t info{};
                ::waitid(P_PID, static_cast<id_t>(nChild), &info, WEXITED | WNOWAIT);
            }
        }
        CPDFReader other;
        QCOMPARE(other.ReadLike(*pReader), int(CPDFReader::EReadResult_OK));
        QCOMPARE(other.GetResolutionX(), kDpi);
        CImage image;
        QCOMPARE(other.RenderPage(0, &image), 0);
        QVERIFY(SamePixels(image, expected));
    }

    void aReaderWithoutADocumentHasNoPages()
    {
        QVERIFY(MakePages(nullptr).empty());
        QVERIFY(MakePages(std::make_unique<CPDFReader>()).empty());
        CPDFReader reader;
        QCOMPARE(reader.ReadLike(CPDFReader()), int(CPDFReader::EReadResult_NotAPdf));
        QVERIFY(!reader.GetFailureReason().empty());
        int nWidth = 5;
        int nHeight = 5;
        QVERIFY(reader.GetPageSize(0, nWidth, nHeight) != 0);
        QCOMPARE(QSize(nWidth, nHeight), QSize(0, 0));
    }

    void aPageThatCannotBeRenderedIsWhiteAndTheOthersStand()
    {
        auto pReader = std::make_unique<CPDFReader>();
        QCOMPARE(Read(*pReader, DoublingForms()), 0);
        pReader->SetTimeLimit(0.3);
        const Pages vctPages = MakePages(std::move(pReader));
        QCOMPARE(vctPages.size(), std::size_t(2));
        for (int i = 0; i < 2; ++i) {
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(int(*Const(vctPages[0]).GetPixel(3, 3)), 255);
            QVERIFY(i == 0 || timer.elapsed() < 250); // it is not tried again
            QCOMPARE(vctPages[0]->GetNotes().size(), std::size_t(1));
            QCOMPARE(vctPages[0]->GetNotes()[0],
                     std::string("Page 1 of 2 cannot be rendered. It took longer than the time limit."));
            QVERIFY(vctPages[0]->DropPixels());
        }
        QVERIFY(Const(vctPages[1]).GetData());
        QVERIFY(vctPages[1]->GetNotes().empty());
    }

    void aPageWithoutASizeIsASheet()
    {
        auto pReader = std::make_unique<CPDFReader>();
        QCOMPARE(Read(*pReader, MakeOnePagePdf("/MediaBox [0 0 900000 900000]")), 0);
        const Pages vctPages = MakePages(std::move(pReader));
        QCOMPARE(vctPages.size(), std::size_t(1));
        QCOMPARE(QSize(vctPages[0]->GetWidth(), vctPages[0]->GetHeight()), QSize(595, 842));
        QCOMPARE(int(*Const(vctPages[0]).GetPixel(594, 841)), 255);
        QCOMPARE(vctPages[0]->GetNotes().at(0),
                 std::string("Page 1 of 1 cannot be rendered. The page is empty or larger than the limit."));
    }

    void manyPagesWithoutASizeAreLeftOut()
    {
        QByteArray kids;
        QList<QByteArray> lstPages;
        for (int i = 0; i < 40; ++i) {
            kids += QByteArray::number(3 + i) + " 0 R ";
            lstPages << "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " +
                            QByteArray(i == 3 ? "10 20" : "900000 900000") + "] >>";
        }
        auto pReader = std::make_unique<CPDFReader>();
        QCOMPARE(
            Read(*pReader, MakePdf(QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R >>",
                                                     "<< /Type /Pages /Kids [" + kids + "] /Count 40 >>"} +
                                   lstPages)),
            0);
        std::string strFailure;
        const Pages vctPages = CPDFPages::Make(std::move(pReader), strFailure);
        QCOMPARE(vctPages.size(), std::size_t(4 + CPDFPages::kMaxUnknown));
        QCOMPARE(vctPages[3]->GetHeight(), 20);
        QCOMPARE(strFailure, std::string("Only the first 20 of 40 pages can be read."));
    }

    void aThreadThatIsCancelledDoesNotWaitForAPage()
    {
        auto pReader = std::make_unique<CPDFReader>();
        QCOMPARE(Read(*pReader, DoublingForms()), 0);
        const Pages vctPages = MakePages(std::move(pReader));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(GetsNothing(vctPages[0]));
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed()))); // of ten seconds
        QVERIFY(vctPages[0]->GetNotes().empty() && !vctPages[0]->HasPixels());
        QVERIFY(Const(vctPages[1]).GetData());
        QVERIFY(!GetsNothing(vctPages[1])); // it is there
    }

    void aCancelledMakingHasNoPages()
    {
        CProgress progress;
        QVERIFY(progress.Cancel());
        const CProgress::CScope scope(&progress);
        auto pReader = Open(TestDataPath(QStringLiteral("pdf/11-pages.pdf")));
        QVERIFY(MakePages(std::move(pReader)).empty());
    }

private:
    int Read(CPDFReader& reader, const QByteArray& bytes)
    {
        QFile file(m_folder.filePath(QStringLiteral("a.pdf")));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return -1;
        file.close();
        return reader.Read(file.fileName().toStdWString(), std::wstring());
    }

    const QTemporaryDir m_folder;
};

VANTOR_CORE_TEST_MAIN(tst_CPDFPages)
#include "tst_CPDFPages.moc"
