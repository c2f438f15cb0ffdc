// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/TestPdf.h"

#include <Vantor/image/CImage.h>
#include <Vantor/pdf/CPDFReader.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <array>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Utils::CPDFReader;

namespace
{
constexpr int kHangMs = 2000;

std::wstring Wide(const QString& text)
{
    return text.toStdWString();
}

int ReadData(CPDFReader& reader, const QString& relative, const QString& password = QString())
{
    return reader.Read(Wide(TestDataPath(relative)), Wide(password));
}

bool WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool IsColour(const CImage& image, int x, int y, int red, int green, int blue)
{
    const unsigned char* p = image.GetPixel(x, y);
    return p && p[0] == red && p[1] == green && p[2] == blue;
}

bool IsWhite(const CImage& image, int x, int y)
{
    return IsColour(image, x, y, 255, 255, 255);
}

/// The number of pixels in the box that are not white.
int CountInk(const CImage& image, int left, int top, int right, int bottom)
{
    int nInk = 0;
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            nInk += IsWhite(image, x, y) ? 0 : 1;
    return nInk;
}

/// Everything written to standard error while it lives.
class CStandardError
{
public:
    CStandardError() : m_nSaved(::dup(STDERR_FILENO))
    {
        m_file.open();
        ::dup2(m_file.handle(), STDERR_FILENO);
    }
    ~CStandardError() { Restore(); }
    QByteArray Restore()
    {
        if (m_nSaved < 0)
            return QByteArray();
        std::fflush(stderr);
        ::dup2(m_nSaved, STDERR_FILENO);
        ::close(m_nSaved);
        m_nSaved = -1;
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_nSaved;
};
} // namespace

class tst_CPDFReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_dir.isValid());
        CImage::SetDecodeLimit(m_nLimit);
    }

    void cleanup() { CImage::SetDecodeLimit(m_nLimit); }

    void everyDocumentHasItsPagesAndTheirSize_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QSize>("points");
        const QSize letter(612, 792);
        const QString view = QStringLiteral("view");
        QTest::newRow("11-pages.pdf") << QString() << 11 << letter;
        QTest::newRow("20-pages.pdf") << QStringLiteral("user") << 20 << letter;
        QTest::newRow("V4-aes.pdf") << QString() << 30 << letter;
        QTest::newRow("annotations-rotated-180.pdf") << QString() << 1 << letter;
        QTest::newRow("annotations-rotated-270.pdf") << QString() << 1 << letter.transposed();
        QTest::newRow("annotations-rotated-90.pdf") << QString() << 1 << letter.transposed();
        QTest::newRow("enc-R2,V1,U=view,O=master.pdf") << view << 30 << letter;
        QTest::newRow("enc-R3,V2,U=view,O=master.pdf") << view << 30 << letter;
        QTest::newRow("enc-R3,V2.pdf") << QString() << 30 << letter;
        QTest::newRow("enc-XI-R6,V5,U=view,O=master.pdf") << view << 30 << letter;
        QTest::newRow("inherited-rotate.pdf") << QString() << 1 << letter.transposed();
        QTest::newRow("pdfium_encrypted_hello_world_r2.pdf") << m_hotel << 1 << QSize(200, 200);
        QTest::newRow("pdfium_encrypted_hello_world_r6.pdf") << m_hotel << 1 << QSize(200, 200);
        QTest::newRow("pdfium_hello_world.pdf") << QString() << 1 << QSize(200, 200);
        QTest::newRow("pdfium_hello_world_2_pages.pdf") << QString() << 2 << QSize(200, 200);
        QTest::newRow("pdfium_many_rectangles.pdf") << QString() << 1 << QSize(200, 300);
        QTest::newRow("pdfium_rectangles_multi_pages.pdf") << QString() << 5 << QSize(200, 250);
        QTest::newRow("pdfium_rotated_image.pdf") << QString() << 1 << QSize(200, 200);
        QTest::newRow("pdfium_rotated_text_90.pdf") << QString() << 1 << QSize(200, 200);
    }

    void everyDocumentHasItsPagesAndTheirSize()
    {
        QFETCH(QString, password);
        QFETCH(int, pages);
        QFETCH(QSize, points);
        CPDFReader reader;
        const QString file = QStringLiteral("pdf/") + QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(ReadData(reader, file, password), 0);
        QCOMPARE(reader.GetPageNumber(), pages);
        CImage image;
        for (const int nScale : {1, 2}) {
            reader.SetResolutionX(72.0 * nScale);
            QCOMPARE(reader.RenderPage(0, &image), 0);
            QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), points * nScale);
            QCOMPARE(image.GetChannel(), 3);
            QCOMPARE(image.GetBitDepth(), 8);
        }
        for (int i = 0; i < pages; ++i)
            QCOMPARE(reader.RenderPage(i, &image), 0);
        QVERIFY(reader.RenderPage(pages, &image) != 0);
    }

    void everyDocumentOfTheFolderIsInTheTable()
    {
        const QStringList files = QDir(TestDataPath(QStringLiteral("pdf"))).entryList(QDir::Files);
        QCOMPARE(files.size(), 19);
    }

    void theUsersAndTheOwnersPasswordOpen_data()
    {
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("owner");
        const QString view = QStringLiteral("view");
        const QString master = QStringLiteral("master");
        QTest::newRow("enc-R2,V1,U=view,O=master.pdf") << view << master;
        QTest::newRow("enc-R3,V2,U=view,O=master.pdf") << view << master;
        QTest::newRow("enc-XI-R6,V5,U=view,O=master.pdf") << view << master;
        QTest::newRow("20-pages.pdf") << QStringLiteral("user") << QString();
        QTest::newRow("pdfium_encrypted_hello_world_r2.pdf") << m_hotel << m_age; // Latin-1 inside
        QTest::newRow("pdfium_encrypted_hello_world_r6.pdf") << m_hotel << m_age; // UTF-8 inside
    }

    void theUsersAndTheOwnersPasswordOpen()
    {
        QFETCH(QString, user);
        QFETCH(QString, owner);
        const QString file = QStringLiteral("pdf/") + QString::fromLatin1(QTest::currentDataTag());
        CPDFReader reader;
        for (const QString& wrong : {QString(), QStringLiteral("Wrong"), user.toUpper(), user.left(2),
                                     QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac")}) {
            QCOMPARE(ReadData(reader, file, wrong), 4);
            QCOMPARE(reader.GetPageNumber(), 0);
            CImage image;
            QVERIFY(reader.RenderPage(0, &image) != 0);
        }
        QCOMPARE(ReadData(reader, file, user), 0);
        QVERIFY(reader.GetPageNumber() > 0);
        if (!owner.isEmpty())
            QCOMPARE(ReadData(reader, file, owner), 0);
    }

    void anEmptyPasswordOpensWithoutAskingAndAnyOtherIsIgnored()
    {
        CPDFReader reader;
        for (const char* file : {"pdf/enc-R3,V2.pdf", "pdf/V4-aes.pdf", "pdf/pdfium_hello_world.pdf"}) {
            QCOMPARE(ReadData(reader, QString::fromLatin1(file)), 0);
            QCOMPARE(ReadData(reader, QString::fromLatin1(file), QStringLiteral("anything")), 0);
        }
    }

    void textIsDrawnOnWhitePaperAndSmoothed()
    {
        CPDFReader reader;
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/pdfium_hello_world.pdf")), 0);
        CImage image;
        QCOMPARE(reader.RenderPage(0, &image), 0);
        for (const QPoint& corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 199), QPoint(199, 199)})
            QVERIFY(IsWhite(image, corner.x(), corner.y()));
        // The base lines of the two texts are 50 and 100 points above the lower edge.
        QVERIFY(CountInk(image, 20, 135, 190, 155) > 100);
        QVERIFY(CountInk(image, 20, 85, 190, 105) > 100);
        QCOMPARE(CountInk(image, 0, 0, 200, 80), 0);
        QCOMPARE(CountInk(image, 0, 110, 200, 135), 0);
        QCOMPARE(CountInk(image, 0, 160, 200, 200), 0);
        int nBetween = 0;
        for (int y = 135; y < 155; ++y)
            for (int x = 20; x < 190; ++x)
                nBetween += image.GetPixel(x, y)[0] > 60 && image.GetPixel(x, y)[0] < 200 ? 1 : 0;
        QVERIFY(nBetween > 20);
    }

    void coloursLieInTheOrderRedGreenBlueAtTheirPlace()
    {
        CImage image;
        // A red box at the lower left, a blue one above it.
        QCOMPARE(RenderOnePage("/MediaBox [0 0 100 60]",
                               "1 0 0 rg 10 10 20 20 re f 0 0 1 rg 10 40 20 10 re f", image),
                 0);
        QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), QSize(100, 60));
        QVERIFY(IsColour(image, 20, 40, 255, 0, 0));
        QVERIFY(IsColour(image, 20, 15, 0, 0, 255));
        QVERIFY(IsWhite(image, 5, 40));
        QVERIFY(IsWhite(image, 40, 40));
        QVERIFY(IsWhite(image, 20, 5));
        QVERIFY(IsWhite(image, 20, 55));
    }

    void thePageIsTurnedAsItAsks()
    {
        CImage image;
        const QByteArray box = "1 0 0 rg 0 50 10 10 re f"; // top left of the upright page
        QCOMPARE(RenderOnePage("/MediaBox [0 0 100 60] /Rotate 90", box, image), 0);
        QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), QSize(60, 100));
        QVERIFY(IsColour(image, 55, 5, 255, 0, 0));
        QCOMPARE(RenderOnePage("/MediaBox [0 0 100 60] /Rotate 180", box, image), 0);
        QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), QSize(100, 60));
        QVERIFY(IsColour(image, 95, 55, 255, 0, 0));
    }

    void theSizeIsThatOfTheCropBoxRoundedUp()
    {
        CImage image;
        QCOMPARE(RenderOnePage("/MediaBox [0 0 500 500] /CropBox [0.1 10 200.1 60.2]",
                               "0 1 0 rg 0 10 20 20 re f", image),
                 0);
        QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), QSize(200, 51));
        QVERIFY(IsColour(image, 10, 45, 0, 255, 0));
        QVERIFY(IsWhite(image, 100, 10));
    }

    void theResolutionAlongYFollowsXUntilItIsSet()
    {
        CPDFReader reader;
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/pdfium_many_rectangles.pdf")), 0);
        const auto sizeOf = [&reader] {
            CImage image;
            return reader.RenderPage(0, &image) == 0 ? QSize(image.GetWidth(), image.GetHeight()) : QSize();
        };
        QCOMPARE(sizeOf(), QSize(200, 300));
        reader.SetResolutionX(36.0);
        QCOMPARE(sizeOf(), QSize(100, 150));
        CImage page;
        QVERIFY(reader.RenderPage(0, &page) == 0 && page.GetPageResolution() == 36.0);
        reader.SetResolutionY(144.0);
        QCOMPARE(sizeOf(), QSize(100, 600));
        reader.SetResolutionX(72.0);
        QCOMPARE(sizeOf(), QSize(200, 600));
    }

    void aResolutionThatIsNoNumberAboveZeroIsIgnored()
    {
        CPDFReader reader;
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/pdfium_hello_world.pdf")), 0);
        const double inf = std::numeric_limits<double>::infinity();
        for (const double dpi : {0.0, -72.0, std::nan(""), inf, -inf}) {
            reader.SetResolutionX(dpi);
            reader.SetResolutionY(dpi);
        }
        CImage image;
        QCOMPARE(reader.RenderPage(0, &image), 0);
        QCOMPARE(QSize(image.GetWidth(), image.GetHeight()), QSize(200, 200));
    }

    void aPageTooLargeIsRefusedAtOnceAndTheImageStays_data()
    {
        QTest::addColumn<QByteArray>("box");
        QTest::addColumn<double>("dpi");
        QTest::newRow("a long page") << QByteArray("[0 0 1 1000000000]") << 72.0;
        QTest::newRow("a million points") << QByteArray("[0 0 1000000 1000000]") << 72.0;
        QTest::newRow("beyond every integer") << QByteArray("[0 0 99999999999999 99999999999999]") << 72.0;
        QTest::newRow("a large resolution") << QByteArray("[0 0 100 100]") << 1e6;
        QTest::newRow("a huge resolution") << QByteArray("[0 0 100 100]") << 1e300;
        QTest::newRow("beyond every number") << QByteArray("[0 0 100 100]") << 1.7e308;
        QTest::newRow("a tiny resolution") << QByteArray("[0 0 100 100]") << 1e-300;
    }

    void aPageTooLargeIsRefusedAtOnceAndTheImageStays()
    {
        QFETCH(QByteArray, box);
        QFETCH(double, dpi);
        const auto image = MakeTestImage(5, 4, 3);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(RenderOnePage("/MediaBox " + box, "0 0 10 10 re f", *image, dpi) != 0);
        QVERIFY(timer.elapsed() < kHangMs);
        QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
    }

    void theDecodeLimitHoldsForTheRenderingAndTheImageTogether()
    {
        // Four bytes a pixel while it is drawn, three in the image.
        CImage image;
        CImage::SetDecodeLimit(100 * 100 * 7);
        QCOMPARE(RenderOnePage("/MediaBox [0 0 100 100]", "", image), 0);
        CImage::SetDecodeLimit(100 * 100 * 7 - 1);
        QVERIFY(RenderOnePage("/MediaBox [0 0 100 100]", "", image) != 0);
    }

    void aFileBeyondTheDecodeLimitIsNotRead()
    {
        CPDFReader reader;
        CImage::SetDecodeLimit(100);
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/pdfium_hello_world.pdf")),
                 int(CPDFReader::EReadResult_NoMemory));
        QCOMPARE(reader.GetPageNumber(), 0);
    }

    void pageBoxesWithoutAnAreaNeitherCrashNorHang_data()
    {
        QTest::addColumn<QSize>("size"); // empty: the page is refused
        // Where no box can be read, nor one that is not all zeros, the renderer takes US letter paper.
        const QSize letter(612, 792);
        QTest::newRow("[0 0 0 0]") << letter;
        QTest::newRow("[0 0 nan inf]") << letter;
        QTest::newRow("[]") << letter;
        QTest::newRow("null") << letter;
        QTest::newRow("[0 0 0 100]") << QSize();
        QTest::newRow("[0 0 100 0]") << QSize();
        QTest::newRow("[-99999999999999 0 99999999999999 1]") << QSize();
        QTest::newRow("[10 10 -10 -10]") << QSize(20, 20); // any two opposite corners
        QTest::newRow("[0 0 0.000001 0.000001]") << QSize(1, 1);
    }

    void pageBoxesWithoutAnAreaNeitherCrashNorHang()
    {
        QFETCH(QSize, size);
        const auto image = MakeTestImage(5, 4, 3);
        QElapsedTimer timer;
        timer.start();
        const int nResult =
            RenderOnePage("/MediaBox " + QByteArray(QTest::currentDataTag()), "0 0 10 10 re f", *image);
        QVERIFY(timer.elapsed() < kHangMs);
        QCOMPARE(nResult, size.isEmpty() ? 1 : 0);
        if (size.isEmpty())
            QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
        else
            QCOMPARE(QSize(image->GetWidth(), image->GetHeight()), size);
    }

    void nameAndFolderOfTheImageStay()
    {
        CImage image;
        image.SetName(L"name");
        image.SetFolder(L"folder");
        QCOMPARE(RenderOnePage("/MediaBox [0 0 10 10]", "", image), 0);
        QCOMPARE(image.GetName(), std::wstring(L"name"));
        QCOMPARE(image.GetFolder(), std::wstring(L"folder"));
    }

    void pagesThatDoNotExistAreRefused()
    {
        CPDFReader reader;
        const auto image = MakeTestImage(5, 4, 3);
        QVERIFY(reader.RenderPage(0, image.get()) != 0);
        QCOMPARE(reader.GetPageNumber(), 0);
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/pdfium_hello_world_2_pages.pdf")), 0);
        for (const int page : {-1, 2, INT_MAX, INT_MIN})
            QVERIFY(reader.RenderPage(page, image.get()) != 0);
        QVERIFY(reader.RenderPage(0, nullptr) != 0);
        QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
    }

    void onlyRegularFilesAreOpened()
    {
        const QString fifo = m_dir.filePath(QStringLiteral("fifo.pdf"));
        QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
        QElapsedTimer timer;
        timer.start();
        CPDFReader reader;
        for (const QString& path :
             {fifo, m_dir.path(), QStringLiteral("/dev/zero"), QStringLiteral("/dev/null"),
              m_dir.filePath(QStringLiteral("missing.pdf")), QString()})
            QCOMPARE(reader.Read(Wide(path), std::wstring()), int(CPDFReader::EReadResult_CannotOpen));
        QVERIFY(timer.elapsed() < kHangMs);
    }

    void aPathWithAZeroInsideIsRefused()
    {
        std::wstring path = Wide(TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf")));
        path += std::wstring(L"\0.png", 5);
        CPDFReader reader;
        QCOMPARE(reader.Read(path, std::wstring()), int(CPDFReader::EReadResult_CannotOpen));
    }

    void whatIsNoPdfIsRefused()
    {
        CPDFReader reader;
        for (const QByteArray& bytes : {QByteArray(), QByteArray("%PDF-1.4"), QByteArray(100000, '\xff'),
                                        QByteArray("\x89PNG\r\n\x1a\n")}) {
            QVERIFY(WriteFile(m_dir.filePath(QStringLiteral("other.pdf")), bytes));
            QCOMPARE(reader.Read(Wide(m_dir.filePath(QStringLiteral("other.pdf"))), std::wstring()),
                     int(CPDFReader::EReadResult_NotAPdf));
        }
    }

    void aPathIsUtf8WhateverTheLocale()
    {
        const QByteArray folder = m_dir.path().toUtf8() + "/\xe6\x96\x87 \xc3\xa9\xf0\x9f\x98\x80";
        QCOMPARE(::mkdir(folder.constData(), 0700), 0);
        const QByteArray path = folder + "/\xd0\xb4.pdf";
        FILE* pFile = std::fopen(path.constData(), "wb");
        QVERIFY(pFile);
        const QByteArray pdf = MakeOnePagePdf("/MediaBox [0 0 10 10]");
        std::fwrite(pdf.constData(), 1, static_cast<std::size_t>(pdf.size()), pFile);
        std::fclose(pFile);
        const std::string before = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        CPDFReader reader;
        const int nResult = reader.Read(Wide(QString::fromUtf8(path)), std::wstring());
        std::setlocale(LC_ALL, before.c_str());
        QCOMPARE(nResult, 0);
        QCOMPARE(reader.GetPageNumber(), 1);
        ::unlink(path.constData());
        ::rmdir(folder.constData());
    }

    void readingDropsTheDocumentBeforeEvenWhenItFails()
    {
        CPDFReader reader;
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/11-pages.pdf")), 0);
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/pdfium_hello_world.pdf")), 0);
        QCOMPARE(reader.GetPageNumber(), 1);
        QVERIFY(ReadData(reader, QStringLiteral("pdf/missing.pdf")) != 0);
        QCOMPARE(reader.GetPageNumber(), 0);
    }

    void aDocumentMayVanishOnceItIsRead()
    {
        const QString path = m_dir.filePath(QStringLiteral("vanishing.pdf"));
        QVERIFY(QFile::copy(TestDataPath(QStringLiteral("pdf/11-pages.pdf")), path));
        CPDFReader reader;
        QCOMPARE(reader.Read(Wide(path), std::wstring()), 0);
        QVERIFY(QFile::remove(path));
        CImage image;
        for (int i = 0; i < 11; ++i)
            QCOMPARE(reader.RenderPage(i, &image), 0);
    }

    void brokenDocumentsNeitherCrashNorHangNorComplain_data()
    {
        QTest::addColumn<QString>("path");
        const QDir dir(TestDataPath(QStringLiteral("broken")));
        const QStringList files = dir.entryList({QStringLiteral("*.pdf")}, QDir::Files);
        QCOMPARE(files.size(), 21);
        for (const QString& file : files)
            QTest::newRow(qPrintable(file)) << dir.filePath(file);
    }

    void brokenDocumentsNeitherCrashNorHangNorComplain()
    {
        QFETCH(QString, path);
        CStandardError standardError;
        static int nMessages = 0;
        nMessages = 0;
        const auto pHandler =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++nMessages; });
        QElapsedTimer timer;
        timer.start();
        CPDFReader reader;
        const int nResult = reader.Read(Wide(path), std::wstring());
        const int nPages = reader.GetPageNumber();
        const auto image = MakeTestImage(5, 4, 3);
        int nRendered = 0;
        for (int i = 0; i < nPages; ++i)
            nRendered += reader.RenderPage(i, image.get()) == 0 ? 1 : 0;
        const qint64 nMs = timer.elapsed();
        qInstallMessageHandler(pHandler);
        QCOMPARE(standardError.Restore(), QByteArray());
        QCOMPARE(nMessages, 0);
        QVERIFY2(nMs < kHangMs, qPrintable(QString::number(nMs)));
        QCOMPARE(nPages > 0, nResult == 0);
        if (nRendered == 0)
            QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
    }

    void aDocumentCutAnywhereNeitherCrashesNorHangs()
    {
        QFile file(TestDataPath(QStringLiteral("pdf/annotations-rotated-90.pdf")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray whole = file.readAll();
        const QString path = m_dir.filePath(QStringLiteral("cut.pdf"));
        CImage image;
        for (int nBytes = 0; nBytes < whole.size(); nBytes += 211) {
            QVERIFY(WriteFile(path, whole.left(nBytes)));
            QElapsedTimer timer;
            timer.start();
            CPDFReader reader;
            const int nResult = reader.Read(Wide(path), std::wstring());
            QCOMPARE(reader.GetPageNumber() > 0, nResult == 0);
            reader.RenderPage(0, &image);
            QVERIFY(timer.elapsed() < kHangMs);
        }
    }

    void readersWorkOnSeveralThreads()
    {
        CPDFReader reader;
        CImage expected;
        QCOMPARE(ReadData(reader, QStringLiteral("pdf/11-pages.pdf")), 0);
        QCOMPARE(reader.RenderPage(3, &expected), 0);
        std::array<CImage, 4> images;
        std::vector<std::thread> threads;
        for (CImage& image : images)
            threads.emplace_back([&image] {
                CPDFReader own;
                if (ReadData(own, QStringLiteral("pdf/11-pages.pdf")) == 0)
                    own.RenderPage(3, &image);
            });
        for (std::thread& thread : threads)
            thread.join();
        for (const CImage& image : images)
            QVERIFY(SamePixels(image, expected));
    }

private:
    /// Writes a document of one page and renders it.
    int RenderOnePage(const QByteArray& pageEntries, const QByteArray& drawing, CImage& image,
                      double dpi = 72.0)
    {
        const QString path = m_dir.filePath(QStringLiteral("page.pdf"));
        CPDFReader reader;
        reader.SetResolutionX(dpi);
        if (!WriteFile(path, MakeOnePagePdf(pageEntries, drawing)) ||
            reader.Read(Wide(path), std::wstring()) != 0)
            return -1;
        return reader.RenderPage(0, &image);
    }

    const QString m_hotel = QString::fromUtf8("h\xc3\xb4tel");
    const QString m_age = QString::fromUtf8("\xc3\xa2ge");
    const std::size_t m_nLimit = CImage::GetDecodeLimit();
    QTemporaryDir m_dir;
};

VANTOR_CORE_TEST_MAIN(tst_CPDFReader)
#include "tst_CPDFReader.moc"
