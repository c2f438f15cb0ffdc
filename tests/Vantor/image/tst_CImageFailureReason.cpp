// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/EndChild.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/file/ImageFormats.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <cmath>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERotationMode;
using Vantor::Geometry::CPoint;

namespace
{
std::string WhyNotLoaded(const QString& strPath)
{
    CImage image;
    return image.Load(strPath.toStdWString()) == 0 ? "it was loaded" : image.GetFailureReason();
}

std::string WhyNotSaved(const CImage& image, const QString& strPath)
{
    return image.Save(strPath.toStdWString()) == 0 ? "it was saved" : image.GetFailureReason();
}
} // namespace

/// What CImage says of a failed load, save or rotation.
class tst_CImageFailureReason : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileThatCannotBeOpenedHasItsReason()
    {
        const QString strMissing = m_folder.filePath(QStringLiteral("missing.png"));
        QCOMPARE(WhyNotLoaded(strMissing), std::string("There is no such file."));
        QCOMPARE(WhyNotLoaded(m_folder.path()), std::string("It is not a regular file."));
        const QString strPipe = m_folder.filePath(QStringLiteral("pipe.png"));
        QCOMPARE(::mkfifo(strPipe.toUtf8().constData(), 0600), 0);
        QCOMPARE(WhyNotLoaded(strPipe), std::string("It is not a regular file."));
        QCOMPARE(WhyNotLoaded(strMissing + QChar(0) + QStringLiteral("x")),
                 std::string("There is no such file."));
    }

    void aFileThatIsNoImageHasItsReason()
    {
        QCOMPARE(WhyNotLoaded(Write({})), std::string("The file is empty."));
        QCOMPARE(WhyNotLoaded(Write("words")),
                 std::string("It is not an image in BMP, JPEG, PNG, GIF, TIFF, PPM, PGM or PBM format."));
        QCOMPARE(WhyNotLoaded(Write("\x89PNG\r\n\x1a\n and words")),
                 std::string("The PNG file is damaged, too large or of an unsupported kind."));
        QCOMPARE(WhyNotLoaded(Write("GIF89a")),
                 std::string("The GIF file is damaged, too large or of an unsupported kind."));
    }

    void aFailedLoadKeepsTheImageAndAGoodOneEmptiesTheReason()
    {
        const auto pImage = MakeTestImage(5, 4, 3);
        QVERIFY(pImage->Load(L"/nowhere/at.all") != 0);
        QVERIFY(!pImage->GetFailureReason().empty());
        QCOMPARE(pImage->GetWidth(), 5);
        QCOMPARE(pImage->Load(TestDataPath(QStringLiteral("png/bricks-color.png")).toStdWString()), 0);
        QCOMPARE(pImage->GetFailureReason(), std::string());
    }

    void aFailedSaveHasItsReason()
    {
        const auto pImage = MakeTestImage(5, 4, 3);
        QCOMPARE(WhyNotSaved(*pImage, m_folder.filePath(QStringLiteral("a.txt"))),
                 std::string("The name must end in bmp, jpg, jpeg, png, tif, tiff, ppm, pgm or gif."));
        QCOMPARE(WhyNotSaved(CImage(), m_folder.filePath(QStringLiteral("a.png"))),
                 std::string("There is no image to save."));
        QCOMPARE(WhyNotSaved(*pImage, QStringLiteral("/nowhere/a.png")),
                 std::string("The file or its folder cannot be written."));
        CImage deep;
        QCOMPARE(deep.Create(2, 2, 1, 16, EImageType::Interleaved, 1), 0);
        QCOMPARE(WhyNotSaved(deep, m_folder.filePath(QStringLiteral("a.png"))),
                 std::string("Only images of 8 bits per channel can be saved."));
        QCOMPARE(WhyNotSaved(*pImage, m_folder.filePath(QStringLiteral("good.png"))),
                 std::string("it was saved"));
        QCOMPARE(pImage->GetFailureReason(), std::string());
    }

    void anImageThatAFormatCannotHoldHasItsReason_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("reason");
        QTest::newRow("gif") << 65536 << QStringLiteral("gif")
                             << QStringLiteral("A GIF image is at most 65535 pixels wide and high.");
        QTest::newRow("jpeg") << 65501 << QStringLiteral("jpg")
                              << QStringLiteral("The image cannot be written as a JPEG file: Maximum "
                                                "supported image dimension is 65500 pixels.");
        QTest::newRow("png") << 1000001 << QStringLiteral("png")
                             << QStringLiteral("The image cannot be written as a PNG file: Image width "
                                               "exceeds user limit in IHDR.");
    }
    void anImageThatAFormatCannotHoldHasItsReason()
    {
        QFETCH(int, width);
        QFETCH(QString, suffix);
        QFETCH(QString, reason);
        const QString strPath = m_folder.filePath(QStringLiteral("wide.") + suffix);
        CImage image;
        QCOMPARE(image.Create(width, 1, 1, 8, EImageType::Interleaved, 1), 0);
        QCOMPARE(QString::fromStdString(WhyNotSaved(image, strPath)), reason);
        QVERIFY(!QFileInfo::exists(strPath));
    }

    void aFullDiskIsTheReasonInEveryFormat_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const auto& format : Vantor::Algorithms::GetImageFormats())
            if (format.canSave)
                QTest::newRow(format.name.c_str()) << QString::fromStdString(format.suffixes.front());
    }
    void aFullDiskIsTheReasonInEveryFormat()
    {
        QFETCH(QString, suffix);
        const QString strPath = m_folder.filePath(QStringLiteral("full.") + suffix);
        const auto pImage = MakeTestImage(301, 201, suffix == QLatin1String("pgm") ? 1 : 3);
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit small{1000, before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        const std::string strReason = WhyNotSaved(*pImage, strPath);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &before), 0);
        QCOMPARE(strReason, std::string("The file could not be written whole."));
        QVERIFY(!QFileInfo::exists(strPath));
    }

    void aFailedRotationHasItsReason()
    {
        const auto pImage = MakeTestImage(5, 4, 3);
        const CPoint<double> centre(2.0, 2.0);
        CImage empty;
        QVERIFY(empty.Rotate(centre, 1.0, 0.0, ERotationMode::GrowCanvas) != 0);
        QCOMPARE(empty.GetFailureReason(), std::string("There is no image to rotate."));
        QVERIFY(pImage->Rotate(centre, std::nan(""), 0.0, ERotationMode::GrowCanvas) != 0);
        QCOMPARE(pImage->GetFailureReason(),
                 std::string("A value of the rotation is not finite, or its centre is too far away."));
        QVERIFY(pImage->Rotate(centre, 1.0, 0.0, static_cast<ERotationMode>(77)) != 0);
        QCOMPARE(pImage->GetFailureReason(), std::string("The mode of the rotation is unknown."));
        QCOMPARE(pImage->Rotate(centre, 1.0, 0.0, ERotationMode::GrowCanvas), 0);
        QCOMPARE(pImage->GetFailureReason(), std::string());
    }

    void aRotationBeyondTheLimitHasItsReason()
    {
        const auto pImage = MakeTestImage(1000, 2, 1);
        const std::size_t nLimit = CImage::GetDecodeLimit();
        CImage::SetDecodeLimit(3000);
        const int nResult = pImage->Rotate(CPoint<double>(500.0, 1.0), 0.7, 0.0, ERotationMode::GrowCanvas);
        CImage::SetDecodeLimit(nLimit);
        QVERIFY(nResult != 0);
        QCOMPARE(pImage->GetFailureReason(), std::string("The rotated image would be too large."));
    }

    void aFileThatMustNotBeReadHasItsReason()
    {
        const QString strPath = Write("words");
        QCOMPARE(::chmod(strPath.toUtf8().constData(), 0), 0);
        QCOMPARE(::chmod(m_folder.path().toUtf8().constData(), 0755), 0);
        const pid_t nChild = ::fork();
        if (nChild == 0) {
            constexpr uid_t kNobody = 65534;
            if (::getuid() == 0 && ::setuid(kNobody) != 0) // root may read everything
                EndChild(2);
            EndChild(WhyNotLoaded(strPath) == "Reading the file is not permitted." ? 0 : 1);
        }
        int nStatus = -1;
        ::waitpid(nChild, &nStatus, 0);
        QCOMPARE(nStatus, 0);
        QVERIFY(QFile::remove(strPath));
    }

private:
    QString Write(const QByteArray& bytes)
    {
        const QString strPath = m_folder.filePath(QStringLiteral("file"));
        QFile file(strPath);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a test file");
        return strPath;
    }

    QTemporaryDir m_folder;
};

VANTOR_CORE_TEST_MAIN(tst_CImageFailureReason)
#include "tst_CImageFailureReason.moc"
