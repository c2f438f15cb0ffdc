// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageFiles.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/file/ImageFormats.h>

#include <QCryptographicHash>
#include <QDir>
#include <QMap>

using namespace ImageFiles;

namespace
{
QByteArray DigestOf(const CImage& image)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const int nSize : {image.GetWidth(), image.GetHeight(), image.GetChannel(), image.GetBitDepth()})
        hash.addData(reinterpret_cast<const char*>(&nSize), sizeof nSize);
    const int nRow = image.GetWidth() * image.GetChannel() * (image.GetBitDepth() / 8);
    for (int y = 0; y < image.GetHeight(); ++y)
        hash.addData(reinterpret_cast<const char*>(image.GetRows()[y]), nRow);
    return hash.result().toHex().left(32);
}

/// The digests by the names of the files.
QMap<QString, QByteArray> ReadTable()
{
    QMap<QString, QByteArray> digests;
    QFile file(QStringLiteral(VANTOR_PIXEL_DIGESTS));
    if (!file.open(QIODevice::ReadOnly))
        return digests;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (!line.startsWith('#'))
            digests.insert(QString::fromUtf8(line.mid(33)), line.left(32));
    }
    return digests;
}
} // namespace

/// The pixels of all files of the test data, held against a table: a change of a reader changes none of them
/// unnoticed.
class tst_PixelDigests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFileHasThePixelsOfTheTable()
    {
        const QMap<QString, QByteArray> digests = ReadTable();
        QVERIFY(digests.size() > 150);
        for (auto it = digests.begin(); it != digests.end(); ++it) {
            CImage image;
            QVERIFY2(LoadFile(image, TestDataPath(it.key())) == 0, qPrintable(it.key()));
            QVERIFY2(DigestOf(image) == it.value(),
                     qPrintable(it.key() + QLatin1Char(' ') + QString::fromLatin1(DigestOf(image))));
        }
    }

    void theTableHasEveryWholeFile()
    {
        const QMap<QString, QByteArray> digests = ReadTable();
        for (const auto& format : Vantor::Algorithms::GetImageFormats()) {
            const QString strFolder = QString::fromStdString(format.name).toLower();
            for (const QString& strName : QDir(TestDataPath(strFolder)).entryList(QDir::Files))
                QVERIFY2(digests.contains(strFolder + QLatin1Char('/') + strName), qPrintable(strName));
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_PixelDigests)
#include "tst_PixelDigests.moc"
