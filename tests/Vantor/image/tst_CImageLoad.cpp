// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/image/ExpectedFiles.h"
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <cmath>
#include <cstring>
#include <vector>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace ImageFiles;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kAtOnceMilliseconds = 1000;

double MeanDifference(const CImage& a, const CImage& b)
{
    double dSum = 0.0;
    const int nRow = a.GetWidth() * a.GetChannel();
    for (int y = 0; y < a.GetHeight(); ++y) {
        for (int i = 0; i < nRow; ++i)
            dSum += std::abs(a.GetRows()[y][i] - b.GetRows()[y][i]);
    }
    return dSum / (static_cast<double>(nRow) * a.GetHeight());
}
} // namespace

class tst_CImageLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFileLoadsWithItsSizeAndChannels_data();
    void everyFileLoadsWithItsSizeAndChannels();
    void theSamePictureIsEqualInEveryFormat_data();
    void theSamePictureIsEqualInEveryFormat();
    void theEightOrientationsShowTheSamePicture();
    void anOrientationIsExact_data();
    void anOrientationIsExact();
    void nameAndFolderComeFromThePath();
    void aFailureLeavesTheImageAsItWas();
    void whatIsNoRegularFileFailsAtOnce();
    void thePathIsUtf8InEveryLocale();
    void aPathWithANulFails();
    void theContentDecidesNotTheSuffix();
    void sixteenBitsAreRoundedToEight();
    void fewBitsPerChannelReachWhite();
    void theOldestBmpOfTwentyFourBitsIsRead();
    void theDecodeLimitIsKept();
    void aFileAtTheRootHasTheRootAsItsFolder();
    void samplesOfFewBitsAreRounded();
    void whatIsNoRegularFileLeavesNoDescriptorOpen();
};

void tst_CImageLoad::everyFileLoadsWithItsSizeAndChannels_data()
{
    QTest::addColumn<int>("index");
    int nIndex = 0;
    for (const SExpectedFile& file : kExpectedFiles)
        QTest::newRow(file.pName) << nIndex++;
}

void tst_CImageLoad::everyFileLoadsWithItsSizeAndChannels()
{
    QFETCH(int, index);
    const SExpectedFile& file = kExpectedFiles[index];
    CImage image;
    QCOMPARE(LoadData(image, file.pName), 0);
    QCOMPARE(image.GetWidth(), file.nWidth);
    QCOMPARE(image.GetHeight(), file.nHeight);
    QCOMPARE(image.GetChannel(), file.nChannels);
    QCOMPARE(image.GetBitDepth(), 8);
}

void tst_CImageLoad::theSamePictureIsEqualInEveryFormat_data()
{
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char* pTag, const char* pNames) {
        QTest::newRow(pTag) << QString::fromLatin1(pNames).split(QLatin1Char(' '));
    };
    row("colour", "bmp/bricks-color.bmp png/bricks-color.png tiff/bricks-color.tiff");
    row("grey", "bmp/bricks-gray.bmp png/bricks-gray.png tiff/bricks-gray.tiff");
    row("hibiscus", "png/hibiscus.regular.png tiff/hibiscus.regular.tiff");
    row("hippopotamus", "bmp/hippopotamus.bmp png/hippopotamus.regular.png png/hippopotamus.interlaced.png "
                        "tiff/hippopotamus.tiff");
    row("hippopotamus of 256 colours", "gif/hippopotamus.regular.gif gif/hippopotamus.interlaced.gif");
    row("thumbnail", "bmp/pjw-thumbnail.bmp png/pjw-thumbnail.png");
    row("palettes of 8 bits", "bmp/g_pal8.bmp bmp/g_pal8-0.bmp bmp/g_pal8os2.bmp bmp/g_pal8rle.bmp "
                              "bmp/g_pal8topdown.bmp bmp/g_pal8v4.bmp bmp/g_pal8v5.bmp bmp/q_pal8os2v2.bmp "
                              "bmp/q_pal8oversizepal.bmp");
    row("palettes of 4 bits", "bmp/g_pal4.bmp bmp/g_pal4rle.bmp");
    row("full colours", "bmp/g_rgb24.bmp bmp/g_rgb24pal.bmp bmp/g_rgb32.bmp bmp/g_rgb32bf.bmp "
                        "bmp/g_rgb32bfdef.bmp bmp/q_rgb24largepal.bmp bmp/q_rgb24png.bmp");
}

void tst_CImageLoad::theSamePictureIsEqualInEveryFormat()
{
    QFETCH(QStringList, names);
    CImage first;
    QCOMPARE(LoadData(first, names[0].toLatin1().constData()), 0);
    for (const QString& name : names.mid(1)) {
        CImage other;
        QCOMPARE(LoadData(other, name.toLatin1().constData()), 0);
        QVERIFY2(SamePixels(first, other), qPrintable(name));
    }
}

void tst_CImageLoad::theEightOrientationsShowTheSamePicture()
{
    constexpr double kCompressionNoise = 6.0;
    CImage upright;
    QCOMPARE(LoadData(upright, "jpeg/hopper.jpg"), 0);
    for (int i = 2; i <= 8; ++i) {
        CImage turned;
        const QByteArray name = "jpeg/hopper_orientation_" + QByteArray::number(i) + ".jpg";
        QCOMPARE(LoadData(turned, name.constData()), 0);
        const double dDifference = MeanDifference(upright, turned);
        QVERIFY2(dDifference < kCompressionNoise, (name + QByteArray::number(dDifference)).constData());
    }
}

void tst_CImageLoad::anOrientationIsExact_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("grey") << QStringLiteral("jpeg/bricks-gray.jpeg");
    QTest::newRow("colour") << QStringLiteral("jpeg/bricks-color.jpeg");
}

void tst_CImageLoad::anOrientationIsExact()
{
    QFETCH(QString, name);
    CImage stored;
    QCOMPARE(LoadFile(stored, TestDataPath(name)), 0);
    QFile file(TestDataPath(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("turned.jpg"));
    const int nLastX = stored.GetWidth() - 1;
    const int nLastY = stored.GetHeight() - 1;
    for (int i = 1; i <= 8; ++i) {
        const QByteArray exif("\xff\xe1\0\x22"
                              "Exif\0\0II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0_\0\0\0\0\0\0\0",
                              36);
        QByteArray turned = content;
        turned.insert(2, QByteArray(exif).replace(exif.indexOf('_'), 1, QByteArray(1, static_cast<char>(i))));
        WriteFile(path, turned);
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(image.GetWidth(), i < 5 ? nLastX + 1 : nLastY + 1);
        // Where the pixel (u, v) of the file is shown.
        for (int v = 0; v <= nLastY; ++v) {
            for (int u = 0; u <= nLastX; ++u) {
                const int nX[] = {u, nLastX - u, nLastX - u, u, v, nLastY - v, nLastY - v, v};
                const int nY[] = {v, v, nLastY - v, nLastY - v, u, u, nLastX - u, nLastX - u};
                if (std::memcmp(image.GetPixel(nX[i - 1], nY[i - 1]), stored.GetPixel(u, v),
                                static_cast<std::size_t>(stored.GetChannel())) != 0)
                    QFAIL(qPrintable(QStringLiteral("orientation %1 at %2, %3").arg(i).arg(u).arg(v)));
            }
        }
    }
}

void tst_CImageLoad::nameAndFolderComeFromThePath()
{
    CImage image;
    const QString path = TestDataPath(QStringLiteral("png/basn2c08.png"));
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(QString::fromStdWString(image.GetName()), QStringLiteral("basn2c08.png"));
    QCOMPARE(QString::fromStdWString(image.GetFolder()), TestDataPath(QStringLiteral("png")));
}

void tst_CImageLoad::aFailureLeavesTheImageAsItWas()
{
    const auto image = MakeTestImage(5, 4, 3);
    const auto copy = MakeTestImage(5, 4, 3);
    image->SetName(L"name");
    image->SetFolder(L"folder");
    QVERIFY(LoadData(*image, "broken/xhdn0g08.png/") != 0);
    QVERIFY(LoadData(*image, "broken/bmp_shortfile.bmp") != 0);
    QVERIFY(LoadData(*image, "no such file.png") != 0);
    QVERIFY(LoadData(*image, "LICENCES.md") != 0);
    QVERIFY(SamePixels(*image, *copy));
    QVERIFY(image->GetName() == L"name");
    QVERIFY(image->GetFolder() == L"folder");
}

void tst_CImageLoad::whatIsNoRegularFileFailsAtOnce()
{
    const QTemporaryDir folder;
    const QByteArray fifo = folder.filePath(QStringLiteral("fifo.png")).toUtf8();
    QCOMPARE(::mkfifo(fifo.constData(), 0600), 0);
    const QByteArray socketPath = folder.filePath(QStringLiteral("socket.png")).toUtf8();
    const int nSocket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    QVERIFY(static_cast<std::size_t>(socketPath.size()) < sizeof(address.sun_path));
    std::memcpy(address.sun_path, socketPath.constData(), static_cast<std::size_t>(socketPath.size()));
    QCOMPARE(::bind(nSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);

    QElapsedTimer timer;
    timer.start();
    CImage image;
    for (const QByteArray& path : {fifo, socketPath, QByteArray("/dev/zero"), QByteArray("/dev/null"),
                                   folder.path().toUtf8(), QByteArray("/nowhere/at/all.png"), QByteArray()})
        QVERIFY2(LoadFile(image, QString::fromUtf8(path)) != 0, path.constData());
    QVERIFY(timer.elapsed() < kAtOnceMilliseconds);
    ::close(nSocket);
}

void tst_CImageLoad::thePathIsUtf8InEveryLocale()
{
    const QTemporaryDir folder;
    const QByteArray name =
        folder.path().toUtf8() + "/b\xc3\xa9 \xed\x95\x9c\xea\xb8\x80 \xf0\x9f\x98\x80.png";
    QCOMPARE(
        ::symlink(TestDataPath(QStringLiteral("png/basn2c08.png")).toUtf8().constData(), name.constData()),
        0);
    const QByteArray before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C");
    CImage image;
    QCOMPARE(image.Load(QString::fromUtf8(name).toStdWString()), 0);
    QCOMPARE(QString::fromStdWString(image.GetName()).toUtf8(), name.mid(folder.path().toUtf8().size() + 1));
    std::setlocale(LC_ALL, before.constData());
}

void tst_CImageLoad::aPathWithANulFails()
{
    CImage image;
    const std::wstring path = TestDataPath(QStringLiteral("png/basn2c08.png")).toStdWString();
    QVERIFY(image.Load(path + L'\0' + L".png") != 0);
}

void tst_CImageLoad::theContentDecidesNotTheSuffix()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.jpg"));
    QVERIFY(QFile::copy(TestDataPath(QStringLiteral("bmp/g_rgb24.bmp")), path));
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(image.GetWidth(), 127);
}

void tst_CImageLoad::sixteenBitsAreRoundedToEight()
{
    const QTemporaryDir folder;
    const QString png = folder.filePath(QStringLiteral("a.png"));
    QImage deep(2, 1, QImage::Format_Grayscale16);
    reinterpret_cast<quint16*>(deep.scanLine(0))[0] = 128;
    reinterpret_cast<quint16*>(deep.scanLine(0))[1] = 129;
    QVERIFY(deep.save(png));
    CImage image;
    QCOMPARE(LoadFile(image, png), 0);
    QCOMPARE(image.GetChannel(), 1);
    QCOMPARE(int(*image.GetPixel(0, 0)), 0);
    QCOMPARE(int(*image.GetPixel(1, 0)), 1);
}

void tst_CImageLoad::fewBitsPerChannelReachWhite()
{
    for (const char* pName :
         {"bmp/g_rgb16.bmp", "bmp/g_rgb16-565.bmp", "bmp/q_rgb32-111110.bmp", "bmp/q_rgba16-4444.bmp"}) {
        CImage image;
        CImage full;
        QCOMPARE(LoadData(image, pName), 0);
        QCOMPARE(LoadData(full, "bmp/g_rgb24.bmp"), 0);
        int nMost = 0;
        for (int x = 0; x < 127; ++x) {
            for (int y = 0; y < 64; ++y) {
                for (int c = 0; c < 3; ++c)
                    nMost = std::max(nMost, int(image.GetPixel(x, y)[c]));
            }
        }
        QVERIFY2(nMost == 255, pName);
        QVERIFY2(std::abs(image.GetPixel(60, 30)[0] - full.GetPixel(60, 30)[0]) <= 17, pName);
    }
}

void tst_CImageLoad::theOldestBmpOfTwentyFourBitsIsRead()
{
    // A header of twelve bytes, two pixels of blue, green and red.
    const QByteArray content("BM\x22\0\0\0\0\0\0\0\x1a\0\0\0"
                             "\x0c\0\0\0\x02\0\x01\0\x01\0\x18\0"
                             "\x03\x02\x01\x06\x05\x04\0\0",
                             34);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bmp"));
    WriteFile(path, content);
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(image.GetWidth(), 2);
    QCOMPARE(image.GetHeight(), 1);
    QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({1, 2, 3}));
    QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({4, 5, 6}));
}

void tst_CImageLoad::theDecodeLimitIsKept()
{
    const std::size_t nBefore = CImage::GetDecodeLimit();
    const QStringList names = {QStringLiteral("bmp/bricks-color.bmp"), QStringLiteral("png/bricks-color.png"),
                               QStringLiteral("tiff/bricks-color.tiff"),
                               QStringLiteral("jpeg/bricks-color.jpeg"),
                               QStringLiteral("gif/bricks-dither.gif")};
    for (const QString& name : names) {
        CImage image;
        CImage::SetDecodeLimit(160 * 120 * 3 - 1);
        const int nRefused = LoadFile(image, TestDataPath(name));
        CImage::SetDecodeLimit(160 * 120 * 4);
        const int nLoaded = LoadFile(image, TestDataPath(name));
        CImage::SetDecodeLimit(nBefore);
        QVERIFY2(nRefused != 0, qPrintable(name));
        QVERIFY2(nLoaded == 0, qPrintable(name));
    }
}

void tst_CImageLoad::aFileAtTheRootHasTheRootAsItsFolder()
{
    if (::access("/", W_OK) != 0)
        QSKIP("The root folder cannot be written here.");
    const QString path = QStringLiteral("/vantor-test-%1.png").arg(::getpid());
    QVERIFY(QFile::copy(TestDataPath(QStringLiteral("png/basn2c08.png")), path));
    CImage image;
    const int nLoaded = LoadFile(image, path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(nLoaded, 0);
    QVERIFY(image.GetFolder() == L"/");
    QCOMPARE(QString::fromStdWString(image.GetName()), path.mid(1));
}

void tst_CImageLoad::samplesOfFewBitsAreRounded()
{
    // Five, six and five bits: every value of red and blue from 0 to 31, and of green from 0 to 63.
    constexpr int kWidth = 64;
    QByteArray content("BM\xc2\0\0\0\0\0\0\0\x42\0\0\0"
                       "\x28\0\0\0\x40\0\0\0\x01\0\0\0\x01\0\x10\0\x03\0\0\0"
                       "\x80\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"
                       "\0\xf8\0\0\xe0\x07\0\0\x1f\0\0\0",
                       66);
    for (int x = 0; x < kWidth; ++x) {
        const int nPixel = (x / 2) << 11 | x << 5 | x / 2;
        content.append(char(nPixel & 0xff)).append(char(nPixel >> 8));
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bmp"));
    WriteFile(path, content);
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(image.GetWidth(), kWidth);
    for (int x = 0; x < kWidth; ++x) {
        const int nFive = int(std::lround((x / 2) * 255.0 / 31.0));
        const int nSix = int(std::lround(x * 255.0 / 63.0));
        QCOMPARE(PixelOf(image, x, 0), std::vector<int>({nFive, nSix, nFive}));
    }
}

void tst_CImageLoad::whatIsNoRegularFileLeavesNoDescriptorOpen()
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("pipe.png"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto lowestFree = [] {
        const int nHandle = ::dup(STDIN_FILENO);
        ::close(nHandle);
        return nHandle;
    };
    const int nBefore = lowestFree();
    CImage image;
    for (const QString& path : {folder.path(), pipe}) {
        QVERIFY(LoadFile(image, path) != 0);
        QCOMPARE(lowestFree(), nBefore);
    }
}

VANTOR_CORE_TEST_MAIN(tst_CImageLoad)
#include "tst_CImageLoad.moc"
