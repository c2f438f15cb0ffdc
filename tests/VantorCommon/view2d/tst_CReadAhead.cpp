// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CReadAhead.h>
#include <tests/support/TestImages.h>
#include <tests/support/TestMain.h>

#include <QSignalSpy>
#include <QTemporaryDir>

using Vantor::Algorithms::CImage;

namespace
{
const QString kPhoto = TestDataPath(QStringLiteral("png/bricks-color.png"));

/// A folder with copies of the photo.
struct Folder {
    QString Add(const char* pName) const
    {
        const QString strPath = folder.filePath(QLatin1String(pName));
        return QFile::copy(kPhoto, strPath) ? strPath : QString();
    }
    QTemporaryDir folder;
};
} // namespace

class tst_CReadAhead : public QObject
{
    Q_OBJECT

private:
    static void WantAndWait(const QStringList& lstPaths)
    {
        QSignalSpy done(&CReadAhead::Get(), &CReadAhead::signal_Done);
        CReadAhead::Get().Want(lstPaths);
        QTRY_COMPARE(done.size(), 1);
    }

private Q_SLOTS:
    void cleanup()
    {
        CReadAhead::Get().SetLimit(CReadAhead::kDefaultLimit);
        WantAndWait({});
    }

    void whatIsWantedIsThereOnceAsIfItWereLoaded()
    {
        const Folder files;
        const QString strPath = files.Add("a.png");
        WantAndWait({strPath, QString()});
        QVERIFY(CReadAhead::Get().GetUsed() > 0);
        const auto pImage = CReadAhead::Get().Take(strPath);
        QVERIFY(pImage);
        CImage loaded;
        QCOMPARE(loaded.Load(strPath.toStdWString()), 0);
        QVERIFY(SamePixels(*pImage, loaded));
        QCOMPARE(CReadAhead::Get().GetUsed(), qint64(0));
        QVERIFY(!CReadAhead::Get().Take(strPath));
    }

    void whatIsNotWantedAnyMoreIsForgotten()
    {
        const Folder files;
        const QString strA = files.Add("a.png"), strB = files.Add("b.png");
        WantAndWait({strA, strB});
        const qint64 nBoth = CReadAhead::Get().GetUsed();
        WantAndWait({strB});
        QCOMPARE(CReadAhead::Get().GetUsed() * 2, nBoth);
        QVERIFY(!CReadAhead::Get().Take(strA));
        QVERIFY(CReadAhead::Get().Take(strB));
    }

    void aFileThatWasChangedIsReadAnew()
    {
        const Folder files;
        const QString strPath = files.Add("a.png");
        WantAndWait({strPath});
        QFile file(strPath);
        QVERIFY(file.open(QFile::Append));
        file.write("x");
        file.close();
        QVERIFY(!CReadAhead::Get().Take(strPath));
        QCOMPARE(CReadAhead::Get().GetUsed(), qint64(0));
    }

    void theMemoryOfWhatWaitsIsLimited()
    {
        const Folder files;
        const QString strA = files.Add("a.png"), strB = files.Add("b.png");
        WantAndWait({strA});
        const qint64 nOne = CReadAhead::Get().GetUsed();
        CReadAhead::Get().SetLimit(2 * nOne - 1);
        WantAndWait({strA, strB});
        QCOMPARE(CReadAhead::Get().GetUsed(), nOne);
        QVERIFY(CReadAhead::Get().Take(strA));
    }

    void whatCannotBeReadAndDocumentsAreSilentlyLeftOut()
    {
        const QTemporaryDir folder;
        const QString strBroken = folder.filePath(QStringLiteral("broken.png"));
        QFile file(strBroken);
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("no image");
        file.close();
        WantAndWait({strBroken, folder.filePath(QStringLiteral("none.png")),
                     TestDataPath(QStringLiteral("pdf/11-pages.pdf"))});
        QCOMPARE(CReadAhead::Get().GetUsed(), qint64(0));
    }

    void aControllerShowsWhatWasReadAhead_data()
    {
        QTest::addColumn<bool>("waits");
        QTest::newRow("read") << true;
        QTest::newRow("being read") << false;
    }
    void aControllerShowsWhatWasReadAhead()
    {
        QFETCH(bool, waits);
        const Folder files;
        const QString strPath = files.Add("a.png");
        CImageView2DModel images;
        CImageView2DGeometryModel geometry;
        CImageView2DToolModel tools;
        CImageView2D view(&images, &geometry, &tools, 0, nullptr);
        CImageView2DCtrl ctrl(&images, &geometry, &tools, &view, nullptr, nullptr, nullptr);
        SCenterOptions sOptions;
        sOptions.bBackground = true;
        ctrl.SetOptions(sOptions);
        if (waits)
            WantAndWait({strPath});
        else
            CReadAhead::Get().Want({strPath});
        QSignalSpy opened(&ctrl, &CImageView2DCtrl::signal_FileOpened);
        ctrl.LoadFile(strPath);
        QCOMPARE(CReadAhead::Get().GetUsed(), qint64(0));
        QTRY_COMPARE(opened.size(), 1);
        QCOMPARE(images.GetImageCount(), 1);
        CImage loaded;
        QCOMPARE(loaded.Load(strPath.toStdWString()), 0);
        QVERIFY(SamePixels(*images.GetImage(0), loaded));
    }
};

VANTOR_TEST_MAIN(tst_CReadAhead)
#include "tst_CReadAhead.moc"
