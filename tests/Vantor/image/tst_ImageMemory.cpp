// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/Messages.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/ImageMemory.h>

#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::MemoryToLoad;

namespace
{
int g_nMessages = 0;

/// Of the pixels, without what fills up the rows: an image on its side has other rows.
quint64 BytesOf(const CImage& image)
{
    return static_cast<quint64>(image.GetWidth()) * static_cast<quint64>(image.GetHeight()) *
           static_cast<quint64>(image.GetChannel());
}
} // namespace

class tst_ImageMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileThatLoadsTakesItsPixelsAndAtMostTwiceTheLimitMore()
    {
        int nLoaded = 0;
        for (const char* pFolder : {"png", "jpeg", "tiff", "bmp", "gif"}) {
            QDirIterator files(TestDataPath(QString::fromLatin1(pFolder)), QDir::Files,
                               QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const std::wstring strPath = files.next().toStdWString();
                const quint64 nMemory = MemoryToLoad(strPath);
                CImage image;
                if (image.Load(strPath) != 0)
                    continue;
                ++nLoaded;
                QVERIFY2(nMemory >= BytesOf(image), qPrintable(files.filePath()));
                QVERIFY2(nMemory <= BytesOf(image) + 2 * CImage::GetDecodeLimit(),
                         qPrintable(files.filePath()));
            }
        }
        QVERIFY2(nLoaded > 50, qPrintable(QString::number(nLoaded)));
    }

    void aTurnedPictureNeedsItsCopyToo()
    {
        const auto ofFile = [](const char* pName) {
            const std::wstring strPath = TestDataPath(QString::fromLatin1(pName)).toStdWString();
            CImage image;
            return image.Load(strPath) == 0
                       ? static_cast<double>(MemoryToLoad(strPath)) / static_cast<double>(BytesOf(image))
                       : 0.0;
        };
        QCOMPARE(ofFile("jpeg/hopper.jpg"), 1.0);
        QCOMPARE(ofFile("jpeg/hopper_orientation_2.jpg"), 2.0);
    }

    void whatIsNotLoadedNeedsNothing()
    {
        const QTemporaryDir folder;
        const std::wstring strPath = folder.filePath(QStringLiteral("a.png")).toStdWString();
        QCOMPARE(MakeTestImage(40, 30, 3)->Save(strPath), 0);
        CImage::SetDecodeLimit(1000);
        const quint64 nBeyond = MemoryToLoad(strPath);
        CImage::SetDecodeLimit(std::size_t(1) << 30);
        QCOMPARE(nBeyond, quint64(0));
        QCOMPARE(MemoryToLoad(folder.path().toStdWString()), quint64(0));
        QCOMPARE(MemoryToLoad(L"/nowhere/a.png"), quint64(0));
        QCOMPARE(MemoryToLoad(TestDataPath(QStringLiteral("pdf/11-pages.pdf")).toStdWString()), quint64(0));
    }

    void loadingWorksAndReportsAsBefore()
    {
        const std::wstring strPath = TestDataPath(QStringLiteral("png/bricks-color.png")).toStdWString();
        CImage before;
        QCOMPARE(before.Load(strPath), 0);
        QVERIFY(MemoryToLoad(strPath) > 0);
        CImage after;
        QCOMPARE(after.Load(strPath), 0);
        QVERIFY(SamePixels(after, before));
    }

    void messagesComeFromLoadingAlone()
    {
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.tif"));
        QCOMPARE(MakeTestImage(40, 30, 3)->Save(strPath.toStdWString()), 0);
        QFile file(strPath);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        const int nDirectory = static_cast<int>(static_cast<unsigned char>(bytes[4])) |
                               static_cast<unsigned char>(bytes[5]) << 8 |
                               static_cast<unsigned char>(bytes[6]) << 16;
        QVERIFY(bytes[0] == 'I' && nDirectory + 6 < bytes.size());
        bytes[nDirectory + 2] = '\x01'; // a tag that nobody knows
        bytes[nDirectory + 3] = '\0';
        QVERIFY(file.seek(0) && file.write(bytes) == bytes.size());
        file.close();
        Vantor::SetMessageSink([](const char*) { ++g_nMessages; });
        MemoryToLoad(strPath.toStdWString());
        QCOMPARE(g_nMessages, 0);
        CImage image;
        image.Load(strPath.toStdWString());
        Vantor::SetMessageSink(nullptr);
        QVERIFY(g_nMessages > 0);
    }
};

VANTOR_CORE_TEST_MAIN(tst_ImageMemory)
#include "tst_ImageMemory.moc"
