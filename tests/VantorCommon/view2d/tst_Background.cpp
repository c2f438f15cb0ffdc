// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/CenterFixture.h"
#include "tests/support/Centre.h"
#include "tests/support/RandomMoments.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QMimeData>
#include <QThreadPool>
#include <QUrl>
#include <limits>
#include <random>

using Vantor::Algorithms::CImage;

namespace
{
constexpr qint64 kHugeColumns = 1000000;
constexpr qint64 kHugeRows = 350000;
const QString kLocked = QStringLiteral("pdf/enc-R3,V2,U=view,O=master.pdf");

/// A viewer of the centre with the option on, whose image is 200 x 150.
class CBench
{
public:
    CBench()
    {
        SCenterOptions sOptions;
        sOptions.bBackground = true;
        sOptions.bKeepOnFailedLoad = true;
        f.center->SetOptions(sOptions);
        QObject::connect(Ctrl(), &CImageView2DCtrl::signal_Failed, &receiver,
                         [this](const QString& strLine) { lstFailed << strLine; });
    }

    CImageView2DCtrl* Ctrl() const { return f.Ctrl(0)->Get2DCtrl(); }
    CImageView2DModel* Model() const { return Ctrl()->GetImageModel(); }
    void Finish() const { CJobs::Get().Finish(Ctrl()); }
    QString Path(const char* pName) const { return f.folder.filePath(QLatin1String(pName)); }
    /// A file with an image of that width and 20 rows.
    QString MakeFile(const char* pName, int nWidth) const
    {
        const QString strPath = Path(pName);
        return MakeTestImage(nWidth, 20, 3)->Save(strPath.toStdWString()) == 0 ? strPath : QString();
    }
    QList<int> Widths() const
    {
        QList<int> lstWidths;
        for (int i = 0; i < Model()->GetImageCount(); ++i)
            lstWidths << Model()->GetImage(i)->GetWidth();
        return lstWidths;
    }

    CenterFixture f{1, 1};
    QObject receiver;
    QStringList lstFailed;
};

/// A file of a picture that takes a terabyte, of which the disk has only the head.
QString MakeHugeFile(const QTemporaryDir& folder)
{
    QByteArray head("BM");
    const auto add = [&head](quint32 nValue, int nBytes) {
        for (int i = 0; i < nBytes; ++i)
            head.append(static_cast<char>(nValue >> (8 * i)));
    };
    for (const quint32 nValue : {0u, 0u, 54u, 40u, quint32(kHugeColumns), quint32(kHugeRows)})
        add(nValue, 4);
    add(1, 2);
    add(24, 2);
    head.append(QByteArray(24, '\0'));
    QFile file(folder.filePath(QStringLiteral("huge.bmp")));
    const bool bMade = file.open(QIODevice::WriteOnly) && file.write(head) == head.size() &&
                       file.resize(54 + kHugeRows * kHugeColumns * 3);
    return bMade ? file.fileName() : QString();
}

bool IsSavedAs(const CImage& image, const QString& strPath)
{
    CImage loaded;
    return loaded.Load(strPath.toStdWString()) == 0 && SamePixels(image, loaded);
}
} // namespace

/// What the 2D controller does beside the GUI thread, with SCenterOptions::bBackground.
class tst_Background : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(CJobs::Get().GetJobs().empty());
        QVERIFY(CMVCManager::m_vctItems.empty());
    }

    void aSaveIsToldWhenItIsDone()
    {
        CBench b;
        QSignalSpy saved(b.Ctrl(), &CImageView2DCtrl::signal_FileSaved);
        QSignalSpy which(b.Ctrl(), &CImageView2DCtrl::signal_ImageSaved);
        const auto pImage = b.Ctrl()->GetCurrentImgage();
        b.Ctrl()->SaveFile(b.Path("a.png"));
        QCOMPARE(saved.size(), 0);
        QCOMPARE(CJobs::Get().GetJobs().at(0)->GetTitle(), QStringLiteral("Save a.png"));
        b.Model()->SetImages({});
        QTRY_COMPARE(saved.size(), 1);
        QCOMPARE(saved[0][0].toString(), b.Path("a.png"));
        QCOMPARE(which.size(), 1);
        QCOMPARE(which[0][1].toUInt(), pImage->GetUID());
        QVERIFY(IsSavedAs(*pImage, b.Path("a.png")));
    }

    void aSaveThatFailsIsTold()
    {
        CBench b;
        b.Ctrl()->SaveFile(QStringLiteral("/nowhere/a.png"));
        QVERIFY(b.lstFailed.isEmpty());
        b.Finish();
        QCOMPARE(b.lstFailed,
                 QStringList{QStringLiteral("Cannot save image /nowhere/a.png. The file or its folder "
                                            "cannot be written.")});
    }

    void theNewerOfTwoSavesOfAFileWins()
    {
        CBench b;
        for (int i = 0; i < 20; ++i) {
            b.Ctrl()->SetCurrentImage(MakeTestImage(300, 200, 3, i));
            b.Ctrl()->SaveFile(b.Path("a.png"));
        }
        b.Finish();
        QVERIFY(IsSavedAs(*MakeTestImage(300, 200, 3, 19), b.Path("a.png")));
    }

    void aSaveIsFinishedAlthoughItsViewerGoes()
    {
        QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.png"));
        const auto pImage = MakeTestImage(1500, 1500, 3);
        {
            CBench b;
            b.Ctrl()->SetCurrentImage(pImage);
            b.Ctrl()->SaveFile(strPath);
        }
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(IsSavedAs(*pImage, strPath));
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{QStringLiteral("a.png")});
    }

    void aCancelledSaveLeavesTheOldFile_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const char* pSuffix : {"png", "jpg", "tif", "bmp", "gif"})
            QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
    }
    void aCancelledSaveLeavesTheOldFile()
    {
        QFETCH(QString, suffix);
        CBench b;
        QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.") + suffix);
        QVERIFY(MakeTestImage(30, 20, 1)->Save(strPath.toStdWString()) == 0);
        QFile file(strPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();
        QSignalSpy saved(b.Ctrl(), &CImageView2DCtrl::signal_FileSaved);
        b.Ctrl()->SetCurrentImage(MakeTestImage(1500, 1500, 3));
        b.Ctrl()->SaveFile(strPath);
        QTRY_VERIFY(CJobs::Get().GetJobs().empty() ||
                    CJobs::Get().GetJobs().at(0)->GetProgress().GetDone() > 0.0);
        RandomMoments::CancelAll();
        b.Finish();
        if (saved.isEmpty()) { // it was not too late
            QFile after(strPath);
            QVERIFY(after.open(QIODevice::ReadOnly));
            QCOMPARE(after.readAll(), before);
        }
        QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(),
                 1);
        QVERIFY(b.lstFailed.isEmpty());
    }

    void filesAreShownInTheOrderInWhichTheyWereAskedFor()
    {
        CBench b;
        b.f.Ctrl(0)->LoadFile(b.MakeFile("large.png", 4000));
        for (int i = 1; i <= 8; ++i)
            b.f.Ctrl(0)->AddImage(b.MakeFile(qPrintable(QStringLiteral("%1.png").arg(i)), i));
        QCOMPARE(b.Widths(), QList<int>{200});
        b.Finish();
        QCOMPARE(b.Widths(), (QList<int>{4000, 1, 2, 3, 4, 5, 6, 7, 8}));
    }

    void aNewerLoadTakesThePlaceOfTheOlder()
    {
        CBench b;
        QSignalSpy opened(b.Ctrl(), &CImageView2DCtrl::signal_FileOpened);
        b.f.Ctrl(0)->LoadFile(b.MakeFile("a.png", 11));
        b.f.Ctrl(0)->AddImage(b.MakeFile("b.png", 12));
        b.f.Ctrl(0)->LoadFile(b.MakeFile("c.png", 13));
        b.f.Ctrl(0)->AddImage(b.MakeFile("d.png", 14));
        b.Finish();
        QCOMPARE(b.Widths(), (QList<int>{13, 14}));
        QCOMPARE(opened.size(), 2);
    }

    void stepsThatAreTakenDuringALoadAreNotLost()
    {
        CBench b;
        b.f.Ctrl(0)->LoadFile(b.MakeFile("a.png", 11));
        b.f.Ctrl(0)->ChangeCurrentImage(MakeTestImage(77, 20, 3));
        b.Finish();
        QCOMPARE(b.Widths(), (QList<int>{77, 11}));
        QCOMPARE(b.Model()->GetCurrentIndex(), 1);
    }

    void aCancelledLoadLeavesTheList()
    {
        CBench b;
        const auto pImage = b.Ctrl()->GetCurrentImgage();
        b.f.Ctrl(0)->LoadFile(b.MakeFile("a.png", 4000));
        b.f.Ctrl(0)->AddImage(b.MakeFile("b.png", 12));
        QCOMPARE(CJobs::Get().GetJobs().at(0)->GetTitle(), QStringLiteral("Open a.png"));
        CJobs::Get().Cancel(CJobs::Get().GetJobs().at(0));
        b.Finish();
        QCOMPARE(b.Widths(), (QList<int>{200, 12}));
        QCOMPARE(b.Model()->GetImage(0), pImage);
        QVERIFY(b.lstFailed.isEmpty());
    }

    void whatCannotBeOpenedIsTold()
    {
        CBench b;
        b.f.Ctrl(0)->LoadFile(QStringLiteral("/nowhere/a.png"));
        b.f.Ctrl(0)->LoadFile(QStringLiteral("/nowhere/a.pdf"));
        b.Finish();
        QCOMPARE(b.lstFailed, QStringList{QStringLiteral("Cannot load pdf file /nowhere/a.pdf. The file is "
                                                         "missing, no regular file, or must not be read.")});
        QCOMPARE(b.Widths(), QList<int>{200});
    }

    void aPastedFileIsReadBesideTheWindow()
    {
        CBench b;
        QSignalSpy opened(b.Ctrl(), &CImageView2DCtrl::signal_FileOpened);
        auto* pData = new QMimeData;
        pData->setUrls({QUrl::fromLocalFile(b.MakeFile("large.png", 4000)),
                        QUrl(QStringLiteral("http://localhost/a.png")),
                        QUrl::fromLocalFile(b.MakeFile("b.png", 12))});
        QApplication::clipboard()->setMimeData(pData);
        b.Ctrl()->slot_Paste();
        QCOMPARE(b.Widths(), QList<int>{200});
        QCOMPARE(CJobs::Get().GetJobs().at(0)->GetTitle(), QStringLiteral("Open large.png"));
        b.Finish();
        QCOMPARE(b.Widths(), (QList<int>{200, 4000, 12}));
        QCOMPARE(b.lstFailed,
                 QStringList{QStringLiteral("Cannot paste http://localhost/a.png. There is no such file.")});
        QVERIFY(opened.isEmpty()); // as without the option
    }

    void aFileThatNeedsMoreMemoryThanThereIsIsAskedAbout()
    {
        CBench b;
        const QString strHuge = MakeHugeFile(b.f.folder);
        const std::size_t nLimit = CImage::GetDecodeLimit();
        CImage::SetDecodeLimit(std::numeric_limits<std::size_t>::max() / 4);
        QStringList lstAsked;
        CJobs::Get().SetMemoryQuestion([&](const QString& strTitle, qint64 nNeeded, qint64 nFree) {
            lstAsked << strTitle;
            return nNeeded <= nFree || nNeeded < kHugeRows * 3000000LL;
        });
        b.f.Ctrl(0)->AddImage(b.MakeFile("a.png", 11));
        b.f.Ctrl(0)->AddImage(strHuge);
        b.f.Ctrl(0)->AddImage(b.MakeFile("b.png", 12));
        b.Finish();
        CJobs::Get().SetMemoryQuestion({});
        CImage::SetDecodeLimit(nLimit);
        QCOMPARE(lstAsked, QStringList{QStringLiteral("Open huge.bmp")});
        QCOMPARE(b.Widths(), (QList<int>{200, 11, 12}));
        QVERIFY(b.lstFailed.isEmpty());
    }

    void whatIsGivenUpDuringTheQuestionIsNotOpened()
    {
        CBench b;
        const QString strHuge = MakeHugeFile(b.f.folder);
        const QString strSmall = b.MakeFile("a.png", 11);
        const std::size_t nLimit = CImage::GetDecodeLimit();
        CImage::SetDecodeLimit(std::numeric_limits<std::size_t>::max() / 4);
        CJobs::Get().SetMemoryQuestion([&](const QString&, qint64, qint64) {
            b.f.Ctrl(0)->LoadFile(strSmall);
            return true;
        });
        b.f.Ctrl(0)->AddImage(strHuge);
        b.Finish();
        CJobs::Get().SetMemoryQuestion({});
        CImage::SetDecodeLimit(nLimit);
        QCOMPARE(b.Widths(), QList<int>{11});
    }

    void thePasswordOfADocumentIsAskedFor()
    {
        CBench b;
        DialogDriver driver({[](QDialog* pDialog) {
            auto* pInput = qobject_cast<QInputDialog*>(pDialog);
            QVERIFY(pInput);
            pInput->setTextValue(QStringLiteral("view"));
            pInput->accept();
        }});
        b.f.Ctrl(0)->LoadFile(TestDataPath(kLocked));
        b.f.Ctrl(0)->AddImage(b.MakeFile("a.png", 11));
        QTRY_COMPARE(b.Model()->GetImageCount(), 31);
        QCOMPARE(driver.Count(), 1);
        QCOMPARE(b.Widths().last(), 11);
    }

    void twoTurnsAreHalfATurn()
    {
        CBench b;
        const auto pBefore = b.Ctrl()->GetCurrentImgage();
        b.Ctrl()->RotateRight();
        b.Ctrl()->RotateRight();
        QCOMPARE(b.Ctrl()->GetCurrentImgage(), pBefore);
        b.Finish();
        const auto pAfter = b.Ctrl()->GetCurrentImgage();
        QCOMPARE(pAfter->GetWidth(), pBefore->GetWidth());
        QCOMPARE(pAfter->GetPixel(0, 0)[0], pBefore->GetPixel(199, 149)[0]);
        b.f.View(0)->setFocus();
        QTRY_VERIFY(b.Ctrl()->Undo());
        QVERIFY(b.Ctrl()->Undo());
        QCOMPARE(b.Ctrl()->GetCurrentImgage(), pBefore);
    }

    void aTurnedImageThatIsNotShownAnyMoreIsDroppedWithAWord()
    {
        CBench b;
        const auto pOther = MakeTestImage(77, 20, 3);
        b.Ctrl()->RotateRight();
        b.Model()->SetImages({pOther});
        b.Finish();
        QCOMPARE(b.Ctrl()->GetCurrentImgage(), pOther);
        QCOMPARE(b.lstFailed,
                 QStringList{QStringLiteral("Cannot rotate the image. Another image is shown by now.")});
    }

    void aCancelledTurnLetsTheNextOneBegin()
    {
        CBench b;
        b.Ctrl()->RotateRight();
        b.Ctrl()->RotateLeft();
        RandomMoments::CancelAll();
        b.Finish();
        QCOMPARE(b.Widths(), QList<int>{150});
        QCOMPARE(b.Ctrl()->GetCurrentImgage()->GetPixel(0, 0)[0],
                 TestImageByte(199, 0, 0, 0)); // turned to the left alone
    }

    void withoutTheOptionWhatRunsIsGivenUp()
    {
        CBench b;
        b.f.Ctrl(0)->AddImage(b.MakeFile("a.png", 4000));
        b.Ctrl()->RotateRight();
        b.Ctrl()->RotateRight();
        b.f.center->SetOptions({});
        b.Finish();
        QCOMPARE(b.Widths(), QList<int>{200});
    }

    void aThousandCancellationsLoseNothing()
    {
        CBench b;
        std::mt19937 random(7);
        const QString strFile = b.MakeFile("a.png", 60);
        const QString strTarget = b.Path("target.png");
        QVERIFY(MakeTestImage(10, 10, 3)->Save(strTarget.toStdWString()) == 0);
        for (int i = 0; i < 1000; ++i) {
            switch (random() % 3) {
            case 0:
                b.f.Ctrl(0)->LoadFile(strFile);
                break;
            case 1:
                b.Ctrl()->SaveFile(strTarget);
                break;
            default:
                b.Ctrl()->RotateRight();
            }
            for (unsigned n = random() % 300; n > 0; --n)
                QThread::yieldCurrentThread();
            if (random() % 2)
                QCoreApplication::processEvents();
            RandomMoments::CancelAll();
            CImage target;
            QCOMPARE(target.Load(strTarget.toStdWString()), 0);
        }
        b.Finish();
        QCOMPARE(b.Model()->GetImageCount(), 1);
        QVERIFY(b.Ctrl()->GetCurrentImgage());
        b.Ctrl()->RotateRight(); // goes on after all of it
        const auto pBefore = b.Ctrl()->GetCurrentImgage();
        b.Finish();
        QVERIFY(b.Ctrl()->GetCurrentImgage() != pBefore);
    }

    void viewersMayGoWhileJobsRun()
    {
        QTemporaryDir folder;
        const QString strTarget = folder.filePath(QStringLiteral("a.png"));
        for (int i = 0; i < 10; ++i) {
            CBench b;
            b.f.Ctrl(0)->AddImage(b.MakeFile("a.png", 500));
            b.Ctrl()->RotateRight();
            b.Ctrl()->SaveFile(strTarget);
            if (i % 2)
                QCoreApplication::processEvents();
        }
        QThreadPool::globalInstance()->waitForDone();
        CImage target;
        QCOMPARE(target.Load(strTarget.toStdWString()), 0);
    }
};

VANTOR_TEST_MAIN(tst_Background)
#include "tst_Background.moc"
