// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/image/ExpectedFiles.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>

#include <climits>
#include <cmath>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <tiffio.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kAtOnceMilliseconds = 1000;

int LoadFile(CImage& image, const QString& path)
{
    return image.Load(path.toStdWString());
}

int LoadData(CImage& image, const char* name)
{
    return LoadFile(image, TestDataPath(QString::fromLatin1(name)));
}

void WriteFile(const QString& path, const QByteArray& content)
{
    QFile::remove(path); // some file systems flush a file that is written over, which takes its time
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

bool SamePixels(const CImage& a, const CImage& b)
{
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight() || a.GetChannel() != b.GetChannel())
        return false;
    const auto nRow = static_cast<std::size_t>(a.GetWidth() * a.GetChannel());
    for (int y = 0; y < a.GetHeight(); ++y) {
        if (std::memcmp(a.GetRows()[y], b.GetRows()[y], nRow) != 0)
            return false;
    }
    return true;
}

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

/// What a TIFF file of one strip is written with.
struct STiff {
    int nWidth = 1;
    int nHeight = 1;
    int nSamples = 1;
    int nBits = 8;
    int nFormat = SAMPLEFORMAT_UINT;
    int nPhotometric = PHOTOMETRIC_MINISBLACK;
    int nOrientation = ORIENTATION_TOPLEFT;
    int nExtra = -1; ///< kind of the last sample, -1 for none
    int nCompression = COMPRESSION_NONE;
    int nTile = 0; ///< side of a tile, which the image fits into; 0 for a strip
};

template <class T> void WriteTiff(const QString& path, const STiff& what, std::vector<T> samples)
{
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "w");
    QVERIFY(pTiff);
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, what.nWidth);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, what.nHeight);
    TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, what.nSamples);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, what.nBits);
    TIFFSetField(pTiff, TIFFTAG_SAMPLEFORMAT, what.nFormat);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, what.nPhotometric);
    TIFFSetField(pTiff, TIFFTAG_ORIENTATION, what.nOrientation);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    if (what.nExtra >= 0) {
        const auto nExtra = static_cast<uint16_t>(what.nExtra);
        TIFFSetField(pTiff, TIFFTAG_EXTRASAMPLES, 1, &nExtra);
    }
    TIFFSetField(pTiff, TIFFTAG_COMPRESSION, what.nCompression);
    if (what.nPhotometric == PHOTOMETRIC_YCBCR)
        TIFFSetField(pTiff, TIFFTAG_YCBCRSUBSAMPLING, 1, 1);
    if (what.nTile > 0) {
        TIFFSetField(pTiff, TIFFTAG_TILEWIDTH, what.nTile);
        TIFFSetField(pTiff, TIFFTAG_TILELENGTH, what.nTile);
    }
    const auto nBytes = static_cast<tmsize_t>(samples.size() * sizeof(T));
    if (what.nTile > 0)
        TIFFWriteEncodedTile(pTiff, 0, samples.data(), nBytes);
    else
        TIFFWriteEncodedStrip(pTiff, 0, samples.data(), nBytes);
    TIFFClose(pTiff);
}

std::vector<int> PixelOf(const CImage& image, int x, int y)
{
    const unsigned char* p = image.GetPixel(x, y);
    return std::vector<int>(p, p + image.GetChannel());
}

/// The checksum of a PNG chunk.
quint32 Crc32(const QByteArray& bytes)
{
    quint32 nCrc = 0xffffffff;
    for (const char byte : bytes) {
        nCrc ^= static_cast<unsigned char>(byte);
        for (int i = 0; i < 8; ++i)
            nCrc = (nCrc & 1) != 0 ? (nCrc >> 1) ^ 0xedb88320U : nCrc >> 1;
    }
    return ~nCrc;
}

/// The largest address space that this process has had.
long PeakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray content = status.readAll();
    const int nStart = content.indexOf("VmPeak:") + 7;
    const int nEnd = content.indexOf("kB", nStart);
    return content.mid(nStart, nEnd - nStart).trimmed().toLong() / 1024;
}

/// While it lives, what the decoders say about damaged files, to Qt or on standard error, is not shown.
class CQuietDecoders
{
public:
    CQuietDecoders()
        : m_pBefore(qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {})),
          m_nError(::dup(STDERR_FILENO))
    {
        const int nNull = ::open("/dev/null", O_WRONLY);
        ::dup2(nNull, STDERR_FILENO);
        ::close(nNull);
    }
    ~CQuietDecoders()
    {
        ::dup2(m_nError, STDERR_FILENO);
        ::close(m_nError);
        qInstallMessageHandler(m_pBefore);
    }

private:
    QtMessageHandler m_pBefore;
    int m_nError;
};

using Values = std::vector<int>;
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
    void theOrientationTagOfTiffIsApplied();
    void nameAndFolderComeFromThePath();
    void aFailureLeavesTheImageAsItWas();
    void whatIsNoRegularFileFailsAtOnce();
    void thePathIsUtf8InEveryLocale();
    void aPathWithANulFails();
    void theContentDecidesNotTheSuffix();
    void sixteenBitsAreRoundedToEight();
    void fewBitsPerChannelReachWhite();
    void floatsAreClampedToZeroAndOne();
    void signedSamplesBeginAtBlack();
    void straightAlphaStaysAndPremultipliedBecomesStraight();
    void greyWithAlphaBecomesRgba();
    void cmykBecomesRgb();
    void unspecifiedExtraSamplesAreNoAlpha();
    void theDecodeLimitIsKept();
    void aHugeClaimIsRefusedBeforeMemoryIsTaken_data();
    void aHugeClaimIsRefusedBeforeMemoryIsTaken();
    void aTiffWithoutItsStripsIsRefused();
    void everyWidthOfASampleIsScaledToEightBits_data();
    void everyWidthOfASampleIsScaledToEightBits();
    void premultipliedGreyBecomesStraight();
    void anOldColourMapOfEightBitValuesIsReadAsSuch();
    void rareColoursBecomeRgb_data();
    void rareColoursBecomeRgb();
    void aTiffThatNobodyCanReadIsRefused_data();
    void aTiffThatNobodyCanReadIsRefused();
    void damagedSamplesOfATiffAreRefused_data();
    void damagedSamplesOfATiffAreRefused();
    void everyBeginningOfAFileLoadsWholeOrLeavesTheImage_data();
    void everyBeginningOfAFileLoadsWholeOrLeavesTheImage();
    void aChangedByteNeverCostsMoreThanTheLimit_data();
    void aChangedByteNeverCostsMoreThanTheLimit();
    void aFileAtTheRootHasTheRootAsItsFolder();
    void truncatedFilesLoadPartlyOrNotAtAll_data();
    void truncatedFilesLoadPartlyOrNotAtAll();
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

void tst_CImageLoad::theOrientationTagOfTiffIsApplied()
{
    // The picture  1 2 3  as it lies in the file for each orientation.
    //              4 5 6
    const std::vector<std::vector<unsigned char>> stored = {
        {1, 2, 3, 4, 5, 6}, {3, 2, 1, 6, 5, 4}, {6, 5, 4, 3, 2, 1}, {4, 5, 6, 1, 2, 3},
        {1, 4, 2, 5, 3, 6}, {3, 6, 2, 5, 1, 4}, {6, 3, 5, 2, 4, 1}, {4, 1, 5, 2, 6, 3}};
    const QTemporaryDir folder;
    for (int i = 1; i <= 8; ++i) {
        STiff what;
        what.nWidth = i < 5 ? 3 : 2;
        what.nHeight = i < 5 ? 2 : 3;
        what.nOrientation = i;
        const QString path = folder.filePath(QStringLiteral("turned.tif"));
        WriteTiff(path, what, stored[static_cast<std::size_t>(i - 1)]);
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(image.GetWidth(), 3);
        QCOMPARE(image.GetHeight(), 2);
        for (int n = 0; n < 6; ++n)
            QCOMPARE(int(*image.GetPixel(n % 3, n / 3)), n + 1);
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
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 6;
    what.nBits = 16;
    WriteTiff(path, what, std::vector<quint16>{0, 128, 129, 32768, 65406, 65535});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (const auto& [x, nValue] : {std::pair(0, 0), {1, 0}, {2, 1}, {3, 128}, {4, 254}, {5, 255}})
        QCOMPARE(int(*image.GetPixel(x, 0)), nValue);

    const QString png = folder.filePath(QStringLiteral("a.png"));
    QImage deep(2, 1, QImage::Format_Grayscale16);
    reinterpret_cast<quint16*>(deep.scanLine(0))[0] = 128;
    reinterpret_cast<quint16*>(deep.scanLine(0))[1] = 129;
    QVERIFY(deep.save(png));
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

void tst_CImageLoad::floatsAreClampedToZeroAndOne()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 6;
    what.nBits = 32;
    what.nFormat = SAMPLEFORMAT_IEEEFP;
    WriteTiff(path, what, std::vector<float>{-1.0F, 0.0F, 0.5F, 1.0F, 1e30F, NAN});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (const auto& [x, nValue] : {std::pair(0, 0), {1, 0}, {2, 128}, {3, 255}, {4, 255}, {5, 0}})
        QCOMPARE(int(*image.GetPixel(x, 0)), nValue);
}

void tst_CImageLoad::signedSamplesBeginAtBlack()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 3;
    what.nFormat = SAMPLEFORMAT_INT;
    WriteTiff(path, what, std::vector<qint8>{-128, 0, 127});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (const auto& [x, nValue] : {std::pair(0, 0), {1, 128}, {2, 255}})
        QCOMPARE(int(*image.GetPixel(x, 0)), nValue);
}

void tst_CImageLoad::straightAlphaStaysAndPremultipliedBecomesStraight()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 2;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_RGB;
    what.nExtra = EXTRASAMPLE_UNASSALPHA;
    const std::vector<unsigned char> samples = {100, 50, 25, 100, 7, 8, 9, 0};
    WriteTiff(path, what, samples);
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({100, 50, 25, 100}));
    QCOMPARE(PixelOf(image, 1, 0), Values({7, 8, 9, 0}));
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    WriteTiff(path, what, samples);
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({255, 128, 64, 100}));
    QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0, 0}));
}

void tst_CImageLoad::greyWithAlphaBecomesRgba()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nSamples = 2;
    what.nExtra = EXTRASAMPLE_UNASSALPHA;
    WriteTiff(path, what, std::vector<unsigned char>{200, 10});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({200, 200, 200, 10}));
}

void tst_CImageLoad::cmykBecomesRgb()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 2;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_SEPARATED;
    WriteTiff(path, what, std::vector<unsigned char>{255, 0, 51, 0, 0, 0, 0, 255});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({0, 255, 204}));
    QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0}));
}

void tst_CImageLoad::unspecifiedExtraSamplesAreNoAlpha()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nSamples = 4;
    what.nPhotometric = PHOTOMETRIC_RGB;
    what.nExtra = EXTRASAMPLE_UNSPECIFIED;
    WriteTiff(path, what, std::vector<unsigned char>{1, 2, 3, 4});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({1, 2, 3}));
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

void tst_CImageLoad::aHugeClaimIsRefusedBeforeMemoryIsTaken_data()
{
    // 16000 x 16000 pixels, well within the decode limit.
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("claim");
    const QByteArray little("\x80\x3e\0\0\x80\x3e\0\0", 8);
    QTest::newRow("bmp/g_rgb24.bmp") << 18 << little;
    QTest::newRow("bmp/g_pal8.bmp") << 18 << little;
    QTest::newRow("bmp/g_pal8rle.bmp") << 18 << little;
    QTest::newRow("png/basn2c08.png") << 16 << QByteArray("\0\0\x3e\x80\0\0\x3e\x80", 8);
    QTest::newRow("gif/hippopotamus.regular.gif") << 6 << QByteArray("\x80\x3e\x80\x3e", 4);
    QTest::newRow("jpeg/peacock.default.jpeg") << -1 << QByteArray("\x3e\x80\x3e\x80", 4);
    QTest::newRow("jpeg/peacock.progressive.jpeg") << -1 << QByteArray("\x3e\x80\x3e\x80", 4);
}

void tst_CImageLoad::aHugeClaimIsRefusedBeforeMemoryIsTaken()
{
    constexpr int kMostMegabytes = 64;
    constexpr int kPngHeaderEnd = 29;
    QFETCH(int, offset);
    QFETCH(QByteArray, claim);
    QFile from(TestDataPath(QString::fromLatin1(QTest::currentDataTag())));
    QVERIFY(from.open(QIODevice::ReadOnly));
    QByteArray content = from.readAll();
    if (offset < 0) // behind the marker, the length and the depth of a JPEG frame
        offset = std::max(content.indexOf("\xff\xc0"), content.indexOf("\xff\xc2")) + 5;
    content.replace(offset, claim.size(), claim);
    if (from.fileName().endsWith(QStringLiteral("png"))) { // or the header would be refused for its checksum
        QByteArray checksum(4, '\0');
        qToBigEndian(Crc32(content.mid(12, kPngHeaderEnd - 12)), checksum.data());
        content.replace(kPngHeaderEnd, checksum.size(), checksum);
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("claim"));
    WriteFile(path, content);
    CImage warm; // loads what the codec needs once
    QCOMPARE(LoadFile(warm, from.fileName()), 0);
    const long nBefore = PeakMegabytes();
    CImage image;
    QVERIFY(LoadFile(image, path) != 0);
    QVERIFY2(PeakMegabytes() - nBefore < kMostMegabytes,
             QByteArray::number(int(PeakMegabytes() - nBefore)).constData());
}

void tst_CImageLoad::aTiffWithoutItsStripsIsRefused()
{
    // 30000 rows of 30000 pixels, not one of them in the file.
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sparse.tif"));
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "w");
    QVERIFY(pTiff);
    constexpr int kSide = 30000;
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, kSide);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, kSide);
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, kSide);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFWriteDirectory(pTiff);
    TIFFClose(pTiff);
    CImage image;
    QVERIFY(LoadFile(image, path) != 0);
}

void tst_CImageLoad::everyWidthOfASampleIsScaledToEightBits_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("format");
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<QVector<int>>("expected");
    const auto bytes = [](const auto& values) {
        return QByteArray(reinterpret_cast<const char*>(values.data()),
                          static_cast<int>(values.size() * sizeof(values[0])));
    };
    QTest::newRow("32 bits") << 32 << SAMPLEFORMAT_UINT
                             << bytes(std::vector<quint32>{0, 0x80808080U, 0xffffffffU})
                             << QVector<int>{0, 128, 255};
    QTest::newRow("32 bits, signed") << 32 << SAMPLEFORMAT_INT
                                     << bytes(std::vector<qint32>{INT_MIN, 0, INT_MAX})
                                     << QVector<int>{0, 128, 255};
    QTest::newRow("16 bits, signed") << 16 << SAMPLEFORMAT_INT
                                     << bytes(std::vector<qint16>{SHRT_MIN, 0, SHRT_MAX})
                                     << QVector<int>{0, 128, 255};
    QTest::newRow("12 bits") << 12 << SAMPLEFORMAT_UINT << QByteArray("\x00\x08\x00\xff\xf0", 5)
                             << QVector<int>{0, 128, 255};
    QTest::newRow("4 bits, signed") << 4 << SAMPLEFORMAT_INT << QByteArray("\x80\x70", 2)
                                    << QVector<int>{0, 136, 255};
    // -1, 0.5, 1 and no number in 16 bits
    QTest::newRow("half floats") << 16 << SAMPLEFORMAT_IEEEFP
                                 << bytes(std::vector<quint16>{0xbc00, 0x3800, 0x3c00, 0x7e00})
                                 << QVector<int>{0, 128, 255, 0};
    QTest::newRow("doubles") << 64 << SAMPLEFORMAT_IEEEFP
                             << bytes(std::vector<double>{-1.0, 0.5, 1e300, std::nan("")})
                             << QVector<int>{0, 128, 255, 0};
}

void tst_CImageLoad::everyWidthOfASampleIsScaledToEightBits()
{
    QFETCH(int, bits);
    QFETCH(int, format);
    QFETCH(QByteArray, samples);
    QFETCH(QVector<int>, expected);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = expected.size();
    what.nBits = bits;
    what.nFormat = format;
    WriteTiff(path, what, std::vector<char>(samples.begin(), samples.end()));
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    for (int x = 0; x < expected.size(); ++x)
        QCOMPARE(int(*image.GetPixel(x, 0)), expected[x]);
}

void tst_CImageLoad::premultipliedGreyBecomesStraight()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 2;
    what.nSamples = 2;
    what.nExtra = EXTRASAMPLE_ASSOCALPHA;
    WriteTiff(path, what, std::vector<unsigned char>{50, 100, 9, 0});
    CImage image;
    QCOMPARE(LoadFile(image, path), 0);
    QCOMPARE(PixelOf(image, 0, 0), Values({128, 128, 128, 100}));
    QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0, 0}));
}

void tst_CImageLoad::anOldColourMapOfEightBitValuesIsReadAsSuch()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    for (const int nScale : {1, 257}) {
        TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "w");
        QVERIFY(pTiff);
        std::vector<quint16> map(4, 0);
        map[2] = static_cast<quint16>(200 * nScale);
        TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, 4);
        TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, 1);
        TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 2);
        TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_PALETTE);
        TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(pTiff, TIFFTAG_COLORMAP, map.data(), map.data(), map.data());
        unsigned char indexes = 0x1b; // 0 1 2 3
        TIFFWriteEncodedStrip(pTiff, 0, &indexes, 1);
        TIFFClose(pTiff);
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(PixelOf(image, 1, 0), Values({0, 0, 0}));
        QCOMPARE(PixelOf(image, 2, 0), Values({200, 200, 200}));
    }
}

void tst_CImageLoad::rareColoursBecomeRgb_data()
{
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("slack");
    QTest::addColumn<QByteArray>("samples");
    QTest::addColumn<QVector<int>>("expected"); // the grey of each of two pixels
    constexpr int kRounding = 2;
    constexpr int kOtherLight = 40; // the codec leaves white as it looks in the light that it was measured in
    QTest::newRow("L*a*b*") << int(PHOTOMETRIC_CIELAB) << kOtherLight << QByteArray("\xff\0\0\0\0\0", 6)
                            << QVector<int>{255, 0};
    QTest::newRow("luminance and chrominance")
        << int(PHOTOMETRIC_YCBCR) << kRounding << QByteArray("\x96\x80\x80\x14\x80\x80", 6)
        << QVector<int>{150, 20};
}

void tst_CImageLoad::rareColoursBecomeRgb()
{
    QFETCH(int, photometric);
    QFETCH(QByteArray, samples);
    QFETCH(QVector<int>, expected);
    QFETCH(int, slack);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    for (const int nOrientation : {ORIENTATION_TOPLEFT, ORIENTATION_TOPRIGHT}) {
        STiff what;
        what.nWidth = 2;
        what.nSamples = 3;
        what.nPhotometric = photometric;
        what.nOrientation = nOrientation;
        WriteTiff(path, what, std::vector<char>(samples.begin(), samples.end()));
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        QCOMPARE(image.GetChannel(), 3);
        QCOMPARE(image.GetWidth(), 2);
        for (int x = 0; x < 2; ++x) {
            const int nWanted = expected[nOrientation == ORIENTATION_TOPLEFT ? x : 1 - x];
            for (const int nValue : PixelOf(image, x, 0))
                QVERIFY2(std::abs(nValue - nWanted) <= slack, QByteArray::number(nValue).constData());
        }
    }
}

void tst_CImageLoad::aTiffThatNobodyCanReadIsRefused_data()
{
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("samples");
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("format");
    QTest::newRow("integers of 64 bits") << int(PHOTOMETRIC_MINISBLACK) << 1 << 64 << SAMPLEFORMAT_UINT;
    QTest::newRow("floats of 24 bits") << int(PHOTOMETRIC_MINISBLACK) << 1 << 24 << SAMPLEFORMAT_IEEEFP;
    QTest::newRow("complex numbers") << int(PHOTOMETRIC_MINISBLACK) << 1 << 64 << SAMPLEFORMAT_COMPLEXIEEEFP;
    QTest::newRow("two samples for three colours") << int(PHOTOMETRIC_RGB) << 2 << 8 << SAMPLEFORMAT_UINT;
    QTest::newRow("three inks for four") << int(PHOTOMETRIC_SEPARATED) << 3 << 8 << SAMPLEFORMAT_UINT;
    QTest::newRow("sixty-five samples") << int(PHOTOMETRIC_RGB) << 65 << 8 << SAMPLEFORMAT_UINT;
}

void tst_CImageLoad::aTiffThatNobodyCanReadIsRefused()
{
    QFETCH(int, photometric);
    QFETCH(int, samples);
    QFETCH(int, bits);
    QFETCH(int, format);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nSamples = samples;
    what.nBits = bits;
    what.nFormat = format;
    what.nPhotometric = photometric;
    WriteTiff(path, what, std::vector<char>(static_cast<std::size_t>(samples * bits / 8), 0));
    const auto image = MakeTestImage(5, 4, 3);
    QVERIFY(LoadFile(*image, path) != 0);
    QVERIFY(SamePixels(*image, *MakeTestImage(5, 4, 3)));
}

void tst_CImageLoad::damagedSamplesOfATiffAreRefused_data()
{
    QTest::addColumn<int>("photometric");
    QTest::addColumn<int>("tile");
    QTest::newRow("rows") << int(PHOTOMETRIC_RGB) << 0;
    QTest::newRow("tiles") << int(PHOTOMETRIC_RGB) << 16;
    QTest::newRow("rare colours") << int(PHOTOMETRIC_CIELAB) << 0;
}

void tst_CImageLoad::damagedSamplesOfATiffAreRefused()
{
    QFETCH(int, photometric);
    QFETCH(int, tile);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tif"));
    STiff what;
    what.nWidth = 16;
    what.nHeight = 16;
    what.nSamples = 3;
    what.nPhotometric = photometric;
    what.nCompression = COMPRESSION_ADOBE_DEFLATE;
    what.nTile = tile;
    std::vector<unsigned char> samples(16 * 16 * 3);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<unsigned char>(i * i >> 3);
    WriteTiff(path, what, samples);
    const auto image = MakeTestImage(5, 4, 3);
    QCOMPARE(LoadFile(*image, path), 0);
    QCOMPARE(image->GetWidth(), 16);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(40)); // behind the head of the file and of the compressed samples
    file.write(QByteArray(40, '\x55'));
    file.close();
    const auto same = MakeTestImage(5, 4, 3);
    QVERIFY(LoadFile(*same, path) != 0);
    QVERIFY(SamePixels(*same, *MakeTestImage(5, 4, 3)));
}

void tst_CImageLoad::everyBeginningOfAFileLoadsWholeOrLeavesTheImage_data()
{
    QTest::addColumn<QByteArray>("content");
    const QTemporaryDir folder;
    for (const char* pSuffix : {"bmp", "png", "jpg", "gif", "tif"}) {
        const QString path = folder.filePath(QStringLiteral("a.") + QString::fromLatin1(pSuffix));
        QCOMPARE(MakeTestImage(9, 7, 3)->Save(path.toStdWString()), 0);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QTest::newRow(pSuffix) << file.readAll();
    }
    for (const char* pName : {"bmp/g_pal4rle.bmp", "gif/hippopotamus.interlaced.gif", "png/basn2c08.png",
                              "jpeg/peacock.progressive.jpeg", "bmp/q_rgb24png.bmp"}) {
        QFile file(TestDataPath(QString::fromLatin1(pName)));
        QVERIFY2(file.open(QIODevice::ReadOnly), pName);
        QTest::newRow(pName) << file.readAll();
    }
}

void tst_CImageLoad::everyBeginningOfAFileLoadsWholeOrLeavesTheImage()
{
    QFETCH(QByteArray, content);
    constexpr int kHead = 1200; // from here on in steps
    constexpr int kStep = 997;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    CImage whole;
    WriteFile(path, content);
    QCOMPARE(LoadFile(whole, path), 0);
    const CQuietDecoders quiet;
    const auto model = MakeTestImage(5, 4, 3);
    for (int n = 0; n < content.size(); n += n < kHead ? 1 : kStep) {
        WriteFile(path, content.left(n));
        const auto image = MakeTestImage(5, 4, 3);
        const bool bLoaded = LoadFile(*image, path) == 0;
        QVERIFY2(n >= 30 || !bLoaded, QByteArray::number(n).constData()); // no head is that short
        if (bLoaded) {
            QCOMPARE(image->GetWidth(), whole.GetWidth());
            QCOMPARE(image->GetHeight(), whole.GetHeight());
            QCOMPARE(image->GetChannel(), whole.GetChannel());
        } else {
            QVERIFY2(SamePixels(*image, *model), QByteArray::number(n).constData());
        }
    }
}

void tst_CImageLoad::aChangedByteNeverCostsMoreThanTheLimit_data()
{
    everyBeginningOfAFileLoadsWholeOrLeavesTheImage_data();
}

void tst_CImageLoad::aChangedByteNeverCostsMoreThanTheLimit()
{
    QFETCH(QByteArray, content);
    constexpr std::size_t kLimit = std::size_t(4) << 20;
    constexpr int kHead = 300;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    const CQuietDecoders quiet;
    const std::size_t nBefore = CImage::GetDecodeLimit();
    CImage::SetDecodeLimit(kLimit);
    const auto model = MakeTestImage(5, 4, 3);
    QByteArray fault;
    for (int i = 0; i < std::min(content.size(), kHead) && fault.isEmpty(); ++i) {
        for (const char byte : {'\0', '\x01', '\x7f', '\xff'}) {
            QByteArray changed = content;
            changed[i] = byte;
            WriteFile(path, changed);
            const auto image = MakeTestImage(5, 4, 3);
            if (LoadFile(*image, path) != 0 ? !SamePixels(*image, *model)
                                            : static_cast<std::size_t>(image->GetStride()) *
                                                      static_cast<std::size_t>(image->GetHeight()) >
                                                  kLimit)
                fault = "byte " + QByteArray::number(i) + " as " + QByteArray::number(int(byte));
        }
    }
    CImage::SetDecodeLimit(nBefore);
    QVERIFY2(fault.isEmpty(), fault.constData());
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

void tst_CImageLoad::truncatedFilesLoadPartlyOrNotAtAll_data()
{
    QTest::addColumn<bool>("loads");
    QTest::newRow("hippopotamus.interlaced.truncated.gif") << true;
    QTest::newRow("peacock.default.truncated.jpeg") << true;
    QTest::newRow("peacock.progressive.truncated.jpeg") << true;
    QTest::newRow("hippopotamus.regular.truncated.png") << false;
    QTest::newRow("hippopotamus.interlaced.truncated.png") << false;
    QTest::newRow("bmp_shortfile.bmp") << false;
}

void tst_CImageLoad::truncatedFilesLoadPartlyOrNotAtAll()
{
    QFETCH(bool, loads);
    const QByteArray name = QByteArray("broken/") + QTest::currentDataTag();
    if (name.endsWith("jpeg"))
        QTest::ignoreMessage(QtWarningMsg, "Corrupt JPEG data: premature end of data segment");
    CImage image;
    QCOMPARE(LoadData(image, name.constData()) == 0, loads);
}

VANTOR_CORE_TEST_MAIN(tst_CImageLoad)
#include "tst_CImageLoad.moc"
