// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/EndChild.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <Vantor/image/file/JpegQuality.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <csignal>
#include <cstring>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
int SaveFile(const CImage& image, const QString& path)
{
    return image.Save(path.toStdWString());
}

QStringList FilesIn(const QTemporaryDir& folder)
{
    return QDir(folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Runs the function in a process of its own, where limits and rights can be changed; what it returns.
template <class TFunction> int InChild(TFunction function)
{
    const pid_t nChild = ::fork();
    if (nChild == 0)
        EndChild(function());
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}
} // namespace

class tst_CImageSave : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsSavedAndLoadedAgainIsEqual_data();
    void whatIsSavedAndLoadedAgainIsEqual();
    void everySmallSizeIsEqualAgain_data();
    void everySmallSizeIsEqualAgain();
    void transparentPixelsKeepTheirColours();
    void greyIsExactInGif();
    void fewColoursAreExactInGifAndManyAreClose();
    void jpegIsCloseAndKeepsTheChannels();
    void twoChannelsAreSavedAsRgba();
    void theSuffixMayBeInAnyCase();
    void anotherSuffixFails();
    void anEmptyOrDeepImageFails();
    void aGifIsNoWiderThanItsHeaderCanSay();
    void anOldFileKeepsItsPermissions();
    void aSymbolicLinkIsFollowed();
    void aPathWithoutAFolderIsInTheCurrentOne();
    void twoChannelsAreSavedInEveryFormat();
    void whatIsNoRegularFileIsNotReplaced();
    void aReadOnlyFolderFailsAndLeavesNothing();
    void aFullDiskFailsAndTheOldFileIsWhole_data();
    void aFullDiskFailsAndTheOldFileIsWhole();
    void afterAKillTheFileIsOldOrNew();
    void jpegHasTheQualityThatIsPromised_data();
    void jpegHasTheQualityThatIsPromised();
    void anOldFileKeepsItsOwnerAndGroup();
};

void tst_CImageSave::whatIsSavedAndLoadedAgainIsEqual_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("width");
    for (const char* pSuffix : {"bmp", "png", "tiff", "tif"}) {
        for (const int nChannels : {1, 3, 4}) {
            for (const int nWidth : {1, 2, 3, 5, 64, 301})
                QTest::addRow("%s, %d channels, width %d", pSuffix, nChannels, nWidth)
                    << QString::fromLatin1(pSuffix) << nChannels << nWidth;
        }
    }
}

void tst_CImageSave::whatIsSavedAndLoadedAgainIsEqual()
{
    QFETCH(QString, suffix);
    QFETCH(int, channels);
    QFETCH(int, width);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.") + suffix);
    const auto image = MakeTestImage(width, 37, channels);
    QCOMPARE(SaveFile(*image, path), 0);
    CImage loaded;
    QCOMPARE(loaded.Load(path.toStdWString()), 0);
    QVERIFY(SamePixels(*image, loaded));
    QCOMPARE(FilesIn(folder).size(), 1);
}

void tst_CImageSave::everySmallSizeIsEqualAgain_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<int>("channels");
    for (const char* pSuffix : {"bmp", "png", "tif"}) {
        for (const int nChannels : {1, 3, 4})
            QTest::addRow("%s, %d channels", pSuffix, nChannels) << QString::fromLatin1(pSuffix) << nChannels;
    }
}

void tst_CImageSave::everySmallSizeIsEqualAgain()
{
    QFETCH(QString, suffix);
    QFETCH(int, channels);
    const QTemporaryDir folder;
    for (int i = 0; i < 16 * 16; ++i) {
        const auto image = MakeTestImage(i % 16 + 1, i / 16 + 1, channels);
        const QString path = folder.filePath(QStringLiteral("%1.%2").arg(i).arg(suffix));
        QCOMPARE(SaveFile(*image, path), 0);
        CImage loaded;
        QVERIFY2(loaded.Load(path.toStdWString()) == 0, qPrintable(path));
        QVERIFY2(SamePixels(*image, loaded), qPrintable(path));
    }
}

void tst_CImageSave::transparentPixelsKeepTheirColours()
{
    const QTemporaryDir folder;
    const auto image = MakeTestImage(16, 16, 4);
    for (int x = 0; x < 16; ++x)
        image->GetPixel(x, 3)[3] = 0;
    for (const char* pName : {"a.bmp", "a.png", "a.tif"}) {
        const QString path = folder.filePath(QString::fromLatin1(pName));
        QCOMPARE(SaveFile(*image, path), 0);
        CImage loaded;
        QCOMPARE(loaded.Load(path.toStdWString()), 0);
        QVERIFY2(SamePixels(*image, loaded), pName);
    }
}

void tst_CImageSave::greyIsExactInGif()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.gif"));
    const auto image = MakeTestImage(300, 20, 1);
    QCOMPARE(SaveFile(*image, path), 0);
    CImage loaded;
    QCOMPARE(loaded.Load(path.toStdWString()), 0);
    QCOMPARE(loaded.GetChannel(), 3);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 300; ++x) {
            for (int c = 0; c < 3; ++c)
                QCOMPARE(loaded.GetPixel(x, y)[c], image->GetPixel(x, y)[0]);
        }
    }
}

void tst_CImageSave::fewColoursAreExactInGifAndManyAreClose()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.gif"));
    const auto few = MakeTestImage(16, 16, 3); // the test pattern has one colour per value of its first byte
    QCOMPARE(SaveFile(*few, path), 0);
    CImage loaded;
    QCOMPARE(loaded.Load(path.toStdWString()), 0);
    QVERIFY(SamePixels(*few, loaded));

    CImage many;
    QCOMPARE(many.Create(64, 64, 3, 8, EImageType::Interleaved, 1), 0);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            many.GetPixel(x, y)[0] = static_cast<unsigned char>(4 * x);
            many.GetPixel(x, y)[1] = static_cast<unsigned char>(4 * y);
        }
    }
    QCOMPARE(SaveFile(many, path), 0);
    QCOMPARE(loaded.Load(path.toStdWString()), 0);
    double dSum = 0.0;
    for (int i = 0; i < 64 * 64; ++i) {
        for (int c = 0; c < 3; ++c)
            dSum += std::abs(many.GetPixel(i % 64, i / 64)[c] - loaded.GetPixel(i % 64, i / 64)[c]);
    }
    constexpr double kCloseEnough = 8.0;
    QVERIFY2(dSum / (64 * 64 * 3) < kCloseEnough, QByteArray::number(dSum / (64 * 64 * 3)).constData());
}

void tst_CImageSave::jpegIsCloseAndKeepsTheChannels()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.jpg"));
    for (const int nChannels : {1, 3, 4}) {
        CImage image;
        QCOMPARE(image.Create(64, 48, nChannels, 8, EImageType::Interleaved, 4), 0);
        for (int y = 0; y < 48; ++y)
            std::memset(image.GetRows()[y], 3 * y, static_cast<std::size_t>(64 * nChannels));
        QCOMPARE(SaveFile(image, path), 0);
        CImage loaded;
        QCOMPARE(loaded.Load(path.toStdWString()), 0);
        QCOMPARE(loaded.GetChannel(), nChannels == 1 ? 1 : 3);
        for (int y = 0; y < 48; ++y)
            QVERIFY(std::abs(loaded.GetPixel(20, y)[0] - 3 * y) <= 4);
    }
}

void tst_CImageSave::twoChannelsAreSavedAsRgba()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    CImage image;
    QCOMPARE(image.Create(3, 2, 2, 8, EImageType::Interleaved, 4), 0);
    image.GetPixel(2, 1)[0] = 90;
    image.GetPixel(2, 1)[1] = 40;
    QCOMPARE(SaveFile(image, path), 0);
    CImage loaded;
    QCOMPARE(loaded.Load(path.toStdWString()), 0);
    QCOMPARE(loaded.GetChannel(), 4);
    const unsigned char* p = loaded.GetPixel(2, 1);
    QCOMPARE(std::vector<int>(p, p + 4), std::vector<int>({90, 90, 90, 40}));
}

void tst_CImageSave::theSuffixMayBeInAnyCase()
{
    const QTemporaryDir folder;
    const auto image = MakeTestImage(8, 8, 3);
    for (const char* pName : {"a.BMP", "a.Jpg", "a.JPEG", "a.pNg", "a.TIF", "a.Tiff", "a.GIF"})
        QVERIFY2(SaveFile(*image, folder.filePath(QString::fromLatin1(pName))) == 0, pName);
}

void tst_CImageSave::anotherSuffixFails()
{
    const QTemporaryDir folder;
    const auto image = MakeTestImage(8, 8, 3);
    for (const char* pName : {"a.webp", "a", "a.", "png", "a.png.txt", ".b/png"})
        QVERIFY2(SaveFile(*image, folder.filePath(QString::fromLatin1(pName))) != 0, pName);
    QVERIFY(SaveFile(*image, QString()) != 0);
    QVERIFY(FilesIn(folder).isEmpty());
}

void tst_CImageSave::anEmptyOrDeepImageFails()
{
    const QTemporaryDir folder;
    CImage image;
    QVERIFY(SaveFile(image, folder.filePath(QStringLiteral("a.png"))) != 0);
    QCOMPARE(image.Create(4, 4, 3, 16, EImageType::Interleaved, 4), 0);
    QVERIFY(SaveFile(image, folder.filePath(QStringLiteral("a.png"))) != 0);
    QVERIFY(FilesIn(folder).isEmpty());
}

void tst_CImageSave::aGifIsNoWiderThanItsHeaderCanSay()
{
    const QTemporaryDir folder;
    CImage image;
    QCOMPARE(image.Create(65536, 1, 1, 8, EImageType::Interleaved, 4), 0);
    QVERIFY(SaveFile(image, folder.filePath(QStringLiteral("a.gif"))) != 0);
    QCOMPARE(image.Create(1, 65536, 1, 8, EImageType::Interleaved, 4), 0);
    QVERIFY(SaveFile(image, folder.filePath(QStringLiteral("a.gif"))) != 0);
    QVERIFY(FilesIn(folder).isEmpty());
    QCOMPARE(image.Create(65535, 1, 1, 8, EImageType::Interleaved, 4), 0);
    QCOMPARE(SaveFile(image, folder.filePath(QStringLiteral("a.gif"))), 0);
}

void tst_CImageSave::anOldFileKeepsItsPermissions()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    const auto image = MakeTestImage(8, 8, 3);
    QCOMPARE(SaveFile(*image, path), 0);
    QCOMPARE(::chmod(path.toUtf8().constData(), 0640), 0);
    QCOMPARE(SaveFile(*image, path), 0);
    struct stat status = {};
    QCOMPARE(::stat(path.toUtf8().constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777U, 0640U);
}

void tst_CImageSave::aSymbolicLinkIsFollowed()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("far")));
    const QString link = folder.filePath(QStringLiteral("a.png"));
    const QString target = folder.filePath(QStringLiteral("far/b.png"));
    QCOMPARE(::symlink("far/b.png", link.toUtf8().constData()), 0);
    for (int i = 0; i < 2; ++i) { // the target is made, then replaced
        QCOMPARE(SaveFile(*MakeTestImage(8 + i, 8, 3), link), 0);
        QVERIFY(QFileInfo(link).isSymLink());
        CImage loaded;
        QCOMPARE(loaded.Load(target.toStdWString()), 0);
        QCOMPARE(loaded.GetWidth(), 8 + i);
    }
    const QString absolute = folder.filePath(QStringLiteral("c.png"));
    QCOMPARE(::symlink(target.toUtf8().constData(), absolute.toUtf8().constData()), 0);
    QCOMPARE(SaveFile(*MakeTestImage(11, 8, 3), absolute), 0);
    QVERIFY(QFileInfo(absolute).isSymLink());
    CImage replaced;
    QCOMPARE(replaced.Load(target.toStdWString()), 0);
    QCOMPARE(replaced.GetWidth(), 11);
    QCOMPARE(::symlink("loop.png", folder.filePath(QStringLiteral("loop.png")).toUtf8().constData()), 0);
    QVERIFY(SaveFile(*MakeTestImage(8, 8, 3), folder.filePath(QStringLiteral("loop.png"))) != 0);
}

void tst_CImageSave::aPathWithoutAFolderIsInTheCurrentOne()
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder.path()));
    const int nSaved = MakeTestImage(8, 8, 3)->Save(L"a.png");
    const int nLinked = ::symlink("a.png", "b.png");
    const int nThroughLink = MakeTestImage(9, 8, 3)->Save(L"b.png");
    CImage loaded;
    const int nLoaded = loaded.Load(L"a.png");
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(nSaved, 0);
    QCOMPARE(nLinked, 0);
    QCOMPARE(nThroughLink, 0);
    QCOMPARE(nLoaded, 0);
    QCOMPARE(loaded.GetWidth(), 9);
    QVERIFY(loaded.GetName() == L"a.png");
    QVERIFY(loaded.GetFolder().empty());
    QCOMPARE(FilesIn(folder), QStringList({QStringLiteral("a.png"), QStringLiteral("b.png")}));
}

void tst_CImageSave::twoChannelsAreSavedInEveryFormat()
{
    const QTemporaryDir folder;
    CImage image;
    QCOMPARE(image.Create(16, 16, 2, 8, EImageType::Interleaved, 4), 0);
    for (int i = 0; i < 16 * 16; ++i) {
        image.GetPixel(i % 16, i / 16)[0] = 200;
        image.GetPixel(i % 16, i / 16)[1] = 255;
    }
    for (const char* pName : {"a.bmp", "a.png", "a.tif", "a.gif", "a.jpg"}) {
        const QString path = folder.filePath(QString::fromLatin1(pName));
        QVERIFY2(SaveFile(image, path) == 0, pName);
        CImage loaded;
        QVERIFY2(loaded.Load(path.toStdWString()) == 0, pName);
        for (int c = 0; c < 3; ++c)
            QVERIFY2(std::abs(loaded.GetPixel(7, 9)[c] - 200) <= 2, pName);
    }
}

void tst_CImageSave::whatIsNoRegularFileIsNotReplaced()
{
    const QTemporaryDir folder;
    const auto image = MakeTestImage(8, 8, 3);
    const QString fifo = folder.filePath(QStringLiteral("a.png"));
    QCOMPARE(::mkfifo(fifo.toUtf8().constData(), 0600), 0);
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("b.png")));
    QVERIFY(SaveFile(*image, fifo) != 0);
    QVERIFY(SaveFile(*image, folder.filePath(QStringLiteral("b.png"))) != 0);
    QVERIFY(SaveFile(*image, folder.filePath(QStringLiteral("none/c.png"))) != 0);
    QCOMPARE(FilesIn(folder).size(), 2);
}

void tst_CImageSave::aReadOnlyFolderFailsAndLeavesNothing()
{
    const QTemporaryDir folder;
    const QByteArray native = folder.path().toUtf8();
    const QString path = folder.filePath(QStringLiteral("a.png"));
    const auto image = MakeTestImage(8, 8, 3);
    QCOMPARE(::chmod(native.constData(), 0555), 0);
    const int nResult = InChild([&] {
        constexpr uid_t kNobody = 65534;
        if (::getuid() == 0 && ::setuid(kNobody) != 0) // root may write everywhere
            return 2;
        return SaveFile(*image, path) != 0 ? 0 : 1;
    });
    QCOMPARE(::chmod(native.constData(), 0755), 0);
    QCOMPARE(nResult, 0);
    QVERIFY(FilesIn(folder).isEmpty());
}

void tst_CImageSave::aFullDiskFailsAndTheOldFileIsWhole_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char* pSuffix : {"bmp", "jpg", "png", "tif", "gif"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
}

void tst_CImageSave::aFullDiskFailsAndTheOldFileIsWhole()
{
    QFETCH(QString, suffix);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.") + suffix);
    QCOMPARE(SaveFile(*MakeTestImage(8, 8, 3), path), 0);
    const QByteArray before = ContentOf(path);
    CImage large;
    QCOMPARE(large.Create(400, 300, 3, 8, EImageType::Interleaved, 4), 0);
    QRandomGenerator random(1);
    for (int i = 0; i < 1200 * 300; ++i)
        large.GetData()[i] = static_cast<unsigned char>(random.generate());
    const int nResult = InChild([&] {
        // A file size limit stops a write as a full disk does.
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{20000, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        return SaveFile(large, path) != 0 ? 0 : 1;
    });
    QCOMPARE(nResult, 0);
    QCOMPARE(FilesIn(folder).size(), 1);
    QCOMPARE(ContentOf(path), before);
}

void tst_CImageSave::afterAKillTheFileIsOldOrNew()
{
    constexpr int kKills = 50;
    constexpr int kMostMicroseconds = 8000;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    const auto first = MakeTestImage(200, 150, 3, 1);
    const auto second = MakeTestImage(200, 150, 3, 2);
    QCOMPARE(SaveFile(*first, path), 0);
    QRandomGenerator random(7);
    int nSaves = 0;
    for (int i = 0; i < kKills; ++i) {
        const pid_t nChild = ::fork();
        if (nChild == 0) {
            for (;;) {
                SaveFile(*second, path);
                SaveFile(*first, path);
            }
        }
        ::usleep(static_cast<useconds_t>(random.bounded(kMostMicroseconds)));
        ::kill(nChild, SIGKILL);
        ::waitpid(nChild, nullptr, 0);
        CImage loaded;
        QCOMPARE(loaded.Load(path.toStdWString()), 0);
        const bool bSecond = SamePixels(loaded, *second);
        QVERIFY(bSecond || SamePixels(loaded, *first));
        nSaves += bSecond ? 1 : 0;
    }
    QVERIFY2(nSaves > 0, "no save came through between the kills");
}

void tst_CImageSave::jpegHasTheQualityThatIsPromised_data()
{
    QTest::addColumn<int>("quality");
    QTest::newRow("at the start") << 0; // which changes nothing
    QTest::newRow("lower") << 60;
    QTest::newRow("too high") << 101;
    QTest::newRow("as before") << 95;
}

void tst_CImageSave::jpegHasTheQualityThatIsPromised()
{
    QFETCH(int, quality);
    Vantor::Algorithms::SetJpegQuality(quality);
    const int nQuality = quality == 60 || quality == 101 ? 60 : 95;
    QCOMPARE(Vantor::Algorithms::GetJpegQuality(), nQuality);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.jpg"));
    QCOMPARE(SaveFile(*MakeTestImage(32, 32, 3), path), 0);
    const QByteArray content = ContentOf(path);
    QList<int> lstCoarsest; // of each table of steps: a length of two bytes, a number, 64 steps
    for (int nAt = content.indexOf("\xff\xdb"); nAt >= 0; nAt = content.indexOf("\xff\xdb", nAt + 69)) {
        QCOMPARE(content.mid(nAt + 2, 2), QByteArray("\0\x43", 2));
        int nCoarsest = 0;
        for (const char step : content.mid(nAt + 5, 64))
            nCoarsest = std::max(nCoarsest, int(static_cast<unsigned char>(step)));
        lstCoarsest << nCoarsest;
    }
    // The coarsest steps of the standard, 121 for brightness and 99 for colour, scaled by 200 - 2 * quality
    // percent.
    const int nScale = 200 - 2 * nQuality;
    QCOMPARE(lstCoarsest, (QList<int>{(121 * nScale + 50) / 100, (99 * nScale + 50) / 100}));
}

void tst_CImageSave::anOldFileKeepsItsOwnerAndGroup()
{
    // Only root can give a file away; everybody can choose among the own groups.
    gid_t groups[64];
    const int nGroups = ::getgroups(64, groups);
    const uid_t nOwner = ::getuid() == 0 ? 12345 : ::getuid();
    const gid_t nGroup = ::getuid() == 0 ? 23456 : nGroups > 0 ? groups[nGroups - 1] : ::getgid();
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    const auto image = MakeTestImage(8, 8, 3);
    QCOMPARE(SaveFile(*image, path), 0);
    QCOMPARE(::chown(path.toUtf8().constData(), nOwner, nGroup), 0);
    QCOMPARE(SaveFile(*image, path), 0);
    struct stat status = {};
    QCOMPARE(::stat(path.toUtf8().constData(), &status), 0);
    QCOMPARE(status.st_uid, nOwner);
    QCOMPARE(status.st_gid, nGroup);
}

VANTOR_CORE_TEST_MAIN(tst_CImageSave)
#include "tst_CImageSave.moc"
