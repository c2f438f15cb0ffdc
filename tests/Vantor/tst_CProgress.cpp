// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Also tests how the core uses the progress of its thread.
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>
#include <Vantor/ocr/CVOCR.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <atomic>
#include <functional>
#include <thread>

using Vantor::CProgress;
using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CVOCR;
using Vantor::Algorithms::ERegionMode;
using Vantor::Algorithms::ERotationMode;

using Filter = std::function<int(CImage&)>;
Q_DECLARE_METATYPE(Filter)

namespace
{
const std::string kCancelled = "It was cancelled.";
constexpr ERegionMode kAll = ERegionMode::All;
constexpr double kQuarter = 1.5707963267948966; // radians

QStringList Entries(const QTemporaryDir& folder)
{
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

/// Cancels a progress as soon as some of the work is done, from another thread.
class CCanceller
{
public:
    explicit CCanceller(CProgress& progress)
        : m_thread([&progress, this] {
              while (progress.GetDone() <= 0.0 && !m_bOver)
                  std::this_thread::yield();
              progress.Cancel();
              m_dblDone = progress.GetDone();
          })
    {
    }
    ~CCanceller()
    {
        if (m_thread.joinable())
            End();
    }
    /// The work has ended. @return how much of it was done when it was cancelled
    double End()
    {
        m_bOver = true;
        m_thread.join();
        return m_dblDone;
    }

private:
    std::atomic<bool> m_bOver{false};
    double m_dblDone = 0.0;
    std::thread m_thread;
};
} // namespace

class tst_CProgress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itSaysWhatWasToldLast()
    {
        CProgress progress;
        QCOMPARE(progress.GetDone(), 0.0);
        progress.SetDone(0.75);
        progress.SetDone(0.5);
        QCOMPARE(progress.GetDone(), 0.5);
    }

    void whatIsCancelledMustNotCommit()
    {
        CProgress progress;
        QVERIFY(!progress.IsCancelled());
        QVERIFY(progress.Cancel());
        QVERIFY(progress.Cancel());
        QVERIFY(progress.IsCancelled());
        QVERIFY(!progress.Commit());
    }

    void whatHasCommittedCannotBeCancelled()
    {
        CProgress progress;
        QVERIFY(progress.Commit());
        QVERIFY(progress.Commit());
        QVERIFY(!progress.Cancel());
        QVERIFY(!progress.IsCancelled());
    }

    void exactlyOneOfTwoThreadsDecides()
    {
        for (int i = 0; i < 1000; ++i) {
            CProgress progress;
            bool bCancelled = false;
            std::thread other([&] { bCancelled = progress.Cancel(); });
            const bool bCommitted = progress.Commit();
            other.join();
            QVERIFY(bCancelled != bCommitted);
            QCOMPARE(progress.IsCancelled(), bCancelled);
        }
    }

    void aThreadWithoutProgressGoesOn()
    {
        QVERIFY(!CProgress::OfThread());
        QVERIFY(CProgress::Tell(0.5));
        QVERIFY(!CProgress::IsThreadCancelled());
    }

    void aScopeGivesItsThreadAProgressAndTakesItBack()
    {
        CProgress outer;
        CProgress inner;
        {
            const CProgress::CScope outerScope(&outer);
            {
                const CProgress::CScope innerScope(&inner);
                QCOMPARE(CProgress::OfThread(), &inner);
                QVERIFY(CProgress::Tell(0.25));
            }
            QCOMPARE(CProgress::OfThread(), &outer);
            CProgress* pOther = &outer;
            std::thread([&] { pOther = CProgress::OfThread(); }).join();
            QVERIFY(!pOther);
            QVERIFY(outer.Cancel());
            QVERIFY(CProgress::IsThreadCancelled());
            QVERIFY(!CProgress::Tell(0.125));
        }
        QVERIFY(!CProgress::OfThread());
        QCOMPARE(inner.GetDone(), 0.25);
        QCOMPARE(outer.GetDone(), 0.125);
    }

    void savingTellsHowFarItIsAndCommits_data() { Suffixes(); }
    void savingTellsHowFarItIsAndCommits()
    {
        QFETCH(QString, suffix);
        QTemporaryDir folder;
        CProgress progress;
        const CProgress::CScope scope(&progress);
        QCOMPARE(
            MakeTestImage(50, 40, 3)->Save(folder.filePath(QStringLiteral("a.") + suffix).toStdWString()), 0);
        QVERIFY(progress.GetDone() > 0.9);
        QVERIFY(!progress.Cancel());
        QCOMPARE(Entries(folder), QStringList{QStringLiteral("a.") + suffix});
    }

    void aCancelledSaveLeavesTheOldFile_data() { Suffixes(); }
    void aCancelledSaveLeavesTheOldFile()
    {
        QFETCH(QString, suffix);
        QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.") + suffix);
        QCOMPARE(MakeTestImage(3, 2, 1)->Save(strPath.toStdWString()), 0);
        const qint64 nSize = QFileInfo(strPath).size();
        const auto pImage = MakeTestImage(400, 300, 3);
        CProgress progress;
        progress.Cancel();
        const CProgress::CScope scope(&progress);
        QVERIFY(pImage->Save(strPath.toStdWString()) != 0);
        QCOMPARE(pImage->GetFailureReason(), kCancelled);
        QCOMPARE(QFileInfo(strPath).size(), nSize);
        QCOMPARE(Entries(folder), QStringList{QStringLiteral("a.") + suffix});
    }

    void aSaveThatIsCancelledMidwayLeavesTheOldFile_data() { Suffixes(); }
    void aSaveThatIsCancelledMidwayLeavesTheOldFile()
    {
        QFETCH(QString, suffix);
        QTemporaryDir folder;
        const QString strPath = folder.filePath(QStringLiteral("a.") + suffix);
        QCOMPARE(MakeTestImage(3, 2, 1)->Save(strPath.toStdWString()), 0);
        const qint64 nSize = QFileInfo(strPath).size();
        const auto pImage = MakeTestImage(1200, 1000, 3);
        CProgress progress;
        int nResult = 0;
        {
            const CCanceller canceller(progress);
            const CProgress::CScope scope(&progress);
            nResult = pImage->Save(strPath.toStdWString());
        }
        QCOMPARE(nResult == 0, !progress.IsCancelled());
        QCOMPARE(QFileInfo(strPath).size() == nSize, nResult != 0);
        QCOMPARE(Entries(folder), QStringList{QStringLiteral("a.") + suffix});
    }

    void loadingTellsHowFarItIs_data() { Suffixes(); }
    void loadingTellsHowFarItIs()
    {
        QFETCH(QString, suffix);
        QTemporaryDir folder;
        const std::wstring strPath = folder.filePath(QStringLiteral("a.") + suffix).toStdWString();
        QCOMPARE(MakeTestImage(400, 300, 3)->Save(strPath), 0);
        CProgress progress;
        const CProgress::CScope scope(&progress);
        CImage image;
        QCOMPARE(image.Load(strPath), 0);
        QVERIFY(progress.GetDone() > 0.5 && progress.GetDone() <= 1.0);
        progress.Cancel();
        QVERIFY(image.Load(strPath) != 0);
        QCOMPARE(image.GetFailureReason(), kCancelled);
        QCOMPARE(image.GetWidth(), 400);
    }

    void filtersTellHowFarTheyAreAndCanBeCancelled_data()
    {
        QTest::addColumn<Filter>("filter");
        const auto row = [](const char* pName, Filter filter) { QTest::newRow(pName) << filter; };
        row("median 3x3", [](CImage& image) { return image.MedianFilter(1, 1, nullptr, kAll, 0.0); });
        row("median 15x15", [](CImage& image) { return image.MedianFilter(7, 7, nullptr, kAll, 0.0); });
        row("sobel", [](CImage& image) { return image.SobelXY(nullptr, kAll, 0.0); });
        row("invert", [](CImage& image) { return image.Invert(nullptr, kAll, 0.0); });
        row("blur", [](CImage& image) { return image.GaussianBlur(2.0, nullptr, kAll, 0.0); });
        row("mean", [](CImage& image) { return image.ThresholdByMean(5, 0.0, nullptr, kAll, 0.0); });
    }
    void filtersTellHowFarTheyAreAndCanBeCancelled()
    {
        QFETCH(Filter, filter);
        const auto pImage = MakeTestImage(600, 500, 3);
        CProgress progress;
        {
            const CProgress::CScope scope(&progress);
            QCOMPARE(filter(*pImage), 0);
        }
        QVERIFY(progress.GetDone() > 0.9 && progress.GetDone() <= 1.0);
        CProgress cancelled;
        cancelled.Cancel();
        const auto pSecond = MakeTestImage(600, 500, 3);
        const CProgress::CScope scope(&cancelled);
        QVERIFY(filter(*pSecond) != 0);
        QCOMPARE(pSecond->GetFailureReason(), kCancelled);
    }

    void aTurnTellsHowFarItIsAndCanBeCancelled_data()
    {
        QTest::addColumn<double>("angle");
        QTest::newRow("a quarter") << kQuarter;
        QTest::newRow("a half") << 2 * kQuarter;
        QTest::newRow("three quarters") << 3 * kQuarter;
        QTest::newRow("any angle") << 0.3;
    }
    void aTurnTellsHowFarItIsAndCanBeCancelled()
    {
        QFETCH(double, angle);
        const auto pImage = MakeTestImage(1500, 1200, 3);
        CImage before;
        QCOMPARE(before.CopyFrom(pImage.get()), 0);
        const Vantor::Geometry::CPoint<double> centre(750, 600);
        CProgress cancelled;
        cancelled.Cancel();
        {
            const CProgress::CScope scope(&cancelled);
            QVERIFY(pImage->Rotate(centre, angle, 0.0, ERotationMode::GrowCanvas) != 0);
        }
        QCOMPARE(pImage->GetFailureReason(), kCancelled);
        QVERIFY(SamePixels(*pImage, before));
        CProgress progress;
        const CProgress::CScope scope(&progress);
        QCOMPARE(pImage->Rotate(centre, angle, 0.0, ERotationMode::GrowCanvas), 0);
        QVERIFY(progress.GetDone() > 0.3 && progress.GetDone() <= 1.0);
    }

    void aTurnEndsSoonAfterItIsCancelled_data()
    {
        QTest::addColumn<double>("angle");
        QTest::newRow("a quarter") << kQuarter;
        QTest::newRow("a half") << 2 * kQuarter;
        QTest::newRow("any angle") << 0.3;
    }
    void aTurnEndsSoonAfterItIsCancelled()
    {
        QFETCH(double, angle);
        const auto pImage = MakeTestImage(2500, 2000, 3);
        const Vantor::Geometry::CPoint<double> centre(1250, 1000);
        CProgress progress;
        CCanceller canceller(progress);
        const CProgress::CScope scope(&progress);
        QVERIFY(pImage->Rotate(centre, angle, 0.0, ERotationMode::GrowCanvas) != 0);
        QVERIFY(progress.GetDone() < canceller.End() + 0.5); // any angle goes by few wide strips
    }

    void theSecondThreadOfAFilterIsCancelled_data()
    {
        QTest::addColumn<Filter>("filter");
        QTest::newRow("median 3x3") << Filter(
            [](CImage& image) { return image.MedianFilter(1, 1, nullptr, kAll, 0.0); });
        QTest::newRow("invert") << Filter([](CImage& image) { return image.Invert(nullptr, kAll, 0.0); });
    }
    void theSecondThreadOfAFilterIsCancelled()
    {
        QFETCH(Filter, filter);
        const auto pImage = MakeTestImage(2100, 2000, 3);
        CImage before;
        QCOMPARE(before.CopyFrom(pImage.get()), 0);
        CProgress cancelled;
        cancelled.Cancel();
        const CProgress::CScope scope(&cancelled);
        QVERIFY(filter(*pImage) != 0);
        QVERIFY(SamePixels(*pImage, before)); // neither half was touched
    }

    void aWindowMedianEndsSoonAfterItIsCancelled()
    {
        const auto pImage = MakeTestImage(2000, 500, 3);
        CProgress progress;
        CCanceller canceller(progress);
        const CProgress::CScope scope(&progress);
        QVERIFY(pImage->MedianFilter(7, 7, nullptr, kAll, 0.0) != 0);
        QVERIFY(progress.GetDone() <= canceller.End() + 0.01);
    }

    void readingATextIsCancelled()
    {
        CVOCR engine;
        QCOMPARE(engine.SetLanguageData("eng", VANTOR_TEST_TESSDATA), 0);
        CImage page;
        QCOMPARE(page.Load(TestDataPath(QStringLiteral("ocr/phototest.tif")).toStdWString()), 0);
        CProgress progress;
        {
            CCanceller canceller(progress);
            const CProgress::CScope scope(&progress);
            QVERIFY(engine.Decode(&page, nullptr) != 0);
        }
        QCOMPARE(engine.GetFailureReason(), kCancelled);
        QCOMPARE(engine.GetText(), "");
        QVERIFY(progress.GetDone() > 0.0 && progress.GetDone() < 1.0);
        QCOMPARE(engine.Decode(&page, nullptr), 0);
        QVERIFY(QByteArray(engine.GetText()).startsWith("This is a lot of 12 point text"));
    }

private:
    static void Suffixes()
    {
        QTest::addColumn<QString>("suffix");
        for (const char* pSuffix : {"png", "jpg", "tif", "bmp", "gif"})
            QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
    }
};

VANTOR_CORE_TEST_MAIN(tst_CProgress)
#include "tst_CProgress.moc"
