// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/TestImages.h"

#include <Vantor/image/CImage.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QtTest/QtTest>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

/// What the tests of reading files share.
namespace ImageFiles
{
using Vantor::Algorithms::CImage;

inline int LoadFile(CImage& image, const QString& path)
{
    return image.Load(path.toStdWString());
}

inline int LoadData(CImage& image, const char* name)
{
    return LoadFile(image, TestDataPath(QString::fromLatin1(name)));
}

inline void WriteFile(const QString& path, const QByteArray& content)
{
    QFile::remove(path); // some file systems flush a file that is written over, which takes its time
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

inline std::vector<int> PixelOf(const CImage& image, int x, int y)
{
    const unsigned char* p = image.GetPixel(x, y);
    return std::vector<int>(p, p + image.GetChannel());
}

/// The checksum of a PNG chunk.
inline quint32 Crc32(const QByteArray& bytes)
{
    quint32 nCrc = 0xffffffff;
    for (const char byte : bytes) {
        nCrc ^= static_cast<unsigned char>(byte);
        for (int i = 0; i < 8; ++i)
            nCrc = (nCrc & 1) != 0 ? (nCrc >> 1) ^ 0xedb88320U : nCrc >> 1;
    }
    return ~nCrc;
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
} // namespace ImageFiles
