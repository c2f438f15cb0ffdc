// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/process/ocr/OcrBench.h"
#include "tests/VantorCommon/process/operation/OperationBench.h"
#include "tests/support/RandomMoments.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/process/operation/CImage2DProcessOperationCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QThread>
#include <QThreadPool>
#include <atomic>
#include <random>

using Vantor::Algorithms::CImage;
using Vantor::Geometry::CGeometry;

namespace
{
SCenterOptions Background()
{
    SCenterOptions sOptions;
    sOptions.bBackground = true;
    return sOptions;
}

/// What a tool tells.
template <class Ctrl> struct SSpies {
    explicit SSpies(Ctrl* pCtrl)
        : started(pCtrl, &CImage2DProcessBaseCtrl::signal_Started),
          ended(pCtrl, &CImage2DProcessBaseCtrl::signal_Ended),
          failed(pCtrl, &CImage2DProcessBaseCtrl::signal_Failed)
    {
    }
    QSignalSpy started;
    QSignalSpy ended;
    QSignalSpy failed;
};

/// An operation that goes on until it is cancelled.
SProcessOperation Endless(std::atomic<bool>& bLeft)
{
    return {QStringLiteral("Endless"),
            {},
            [&bLeft](CImage&, const CGeometry*, const ProcessValues&, const ProcessProgress& progress) {
                struct SLeft {
                    std::atomic<bool>& bLeft;
                    ~SLeft() { bLeft = true; }
                } left{bLeft};
                for (;;)
                    progress(0.5);
                return QString();
            }};
}
} // namespace

/// Runs of the tools beside the GUI thread, with SCenterOptions::bBackground.
class tst_BackgroundRuns : public QObject
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

    void aRunShowsItsResultLaterAsOneStep()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        SSpies<MedianTool::Ctrl> spies(&bench.ctrl);
        const auto pBefore = bench.Image();
        CImage expected;
        QCOMPARE(expected.CopyFrom(pBefore.get()), 0);
        QCOMPARE(expected.MedianFilter(1, 1, nullptr, Vantor::Algorithms::ERegionMode::Inside, 0.0), 0);
        bench.parts.ClickRun();
        QCOMPARE(bench.Image(), pBefore);
        QCOMPARE(spies.started.size(), 1);
        QCOMPARE(spies.ended.size(), 0);
        QCOMPARE(CJobs::Get().GetJobs().at(0)->GetTitle(), bench.dlg.windowTitle());
        QTRY_COMPARE(spies.ended.size(), 1);
        QVERIFY(SamePixels(*bench.Image(), expected));
        bench.PressUndo();
        QCOMPARE(bench.Image(), pBefore);
        QVERIFY(spies.failed.isEmpty());
    }

    void theRegionIsThatOfTheBeginning()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        bench.DrawRegion();
        const auto pBefore = bench.Image();
        const auto objects = bench.fixture.Viewer(0)->Get2DDrawableObjects();
        const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(objects.at(0));
        CImage expected;
        QCOMPARE(expected.CopyFrom(pBefore.get()), 0);
        QCOMPARE(expected.MedianFilter(1, 1, pShape->GetData().get(), Vantor::Algorithms::ERegionMode::Inside,
                                       0.0),
                 0);
        bench.parts.ClickRun();
        pShape->MoveTopLeftTo(QPointF(0.0, 0.0));
        CJobs::Get().Finish(&bench.ctrl);
        QVERIFY(SamePixels(*bench.Image(), expected));
    }

    void aNewerRunTakesThePlaceOfTheOlder()
    {
        ToolBench<SobelTool> bench;
        bench.ctrl.SetOptions(Background());
        bench.SetImage(MakeTestImage(3000, 2000, 3));
        SSpies<SobelTool::Ctrl> spies(&bench.ctrl);
        const auto pBefore = bench.Image();
        CImage expected;
        QCOMPARE(expected.CopyFrom(pBefore.get()), 0);
        bench.model.SetType(EImage2DProcessSobelX);
        bench.ctrl.slot_Run();
        bench.model.SetType(EImage2DProcessSobelY);
        bench.ctrl.slot_Run();
        QCOMPARE(expected.SobelY(nullptr, Vantor::Algorithms::ERegionMode::Inside, 0.0), 0);
        CJobs::Get().Finish(&bench.ctrl);
        QVERIFY(SamePixels(*bench.Image(), expected));
        QCOMPARE(spies.started.size(), 2);
        QCOMPARE(spies.ended.size(), 2);
        QVERIFY(spies.failed.isEmpty());
    }

    void theResultForAnImageThatIsNotShownAnyMoreIsDroppedWithAWord()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        SSpies<MedianTool::Ctrl> spies(&bench.ctrl);
        bench.ctrl.slot_Run();
        const auto pOther = MakeTestImage(40, 30, 3);
        bench.SetImage(pOther);
        CJobs::Get().Finish(&bench.ctrl);
        QCOMPARE(bench.Image(), pOther);
        QCOMPARE(spies.ended.size(), 1);
        QCOMPARE(spies.failed.size(), 1);
        QCOMPARE(spies.failed[0][0].toString(),
                 QStringLiteral("Another image is shown by now; the result was dropped."));
    }

    void aCancelledRunLeavesEverythingAsItWas()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        bench.SetImage(MakeTestImage(3000, 2000, 3));
        SSpies<MedianTool::Ctrl> spies(&bench.ctrl);
        const auto pBefore = bench.Image();
        bench.ctrl.slot_Run();
        RandomMoments::CancelAll();
        QTRY_COMPARE(spies.ended.size(), 1);
        QCOMPARE(bench.Image(), pBefore);
        QVERIFY(spies.failed.isEmpty());
    }

    void aRunThatFailsSaysWhy()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        auto pDeep = std::make_shared<CImage>();
        QCOMPARE(pDeep->Create(10, 10, 1, 16, Vantor::Algorithms::EImageType::Interleaved, 1), 0);
        bench.SetImage(pDeep);
        SSpies<MedianTool::Ctrl> spies(&bench.ctrl);
        bench.ctrl.slot_Run();
        CJobs::Get().Finish(&bench.ctrl);
        QCOMPARE(spies.failed.size(), 1);
        QCOMPARE(spies.failed[0][0].toString(),
                 QStringLiteral("Only images of 8 bits per channel can be filtered."));
        QCOMPARE(spies.ended.size(), 1);
        QCOMPARE(bench.Image(), pDeep);
    }

    void withoutTheOptionARunIsDoneWhenTheCallReturns()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        bench.ctrl.SetOptions({});
        const auto pBefore = bench.Image();
        bench.ctrl.slot_Run();
        QVERIFY(bench.Image() != pBefore);
    }

    void anOperationIsLeftByItsProgressWhenItIsCancelled()
    {
        std::atomic<bool> bLeft{false};
        OperationBench bench(Endless(bLeft));
        bench.fixture.center->SetOptions(Background());
        const auto pBefore = bench.Image();
        QSignalSpy ended(bench.fixture.center.get(), &CCenterCtrl::signal_ProcessEnded);
        QSignalSpy failed(bench.fixture.center.get(), &CCenterCtrl::signal_ProcessFailed);
        bench.parts->ClickRun();
        QTRY_COMPARE(CJobs::Get().GetJobs().at(0)->GetProgress().GetDone(), 0.5);
        QVERIFY(!bLeft);
        RandomMoments::CancelAll();
        QTRY_COMPARE(ended.size(), 1);
        QVERIFY(bLeft);
        QVERIFY(failed.isEmpty());
        QCOMPARE(bench.Image(), pBefore);
    }

    void anOperationMadeAfterTheOptionWasSetRunsBesideTheGuiThread()
    {
        OperationBench first(QStringLiteral("Invert"));
        first.fixture.center->SetOptions(Background());
        QThread* pThread = nullptr;
        const int nTool = first.fixture.center->RegisterOperation(
            {QStringLiteral("Where"),
             {},
             [&pThread](CImage&, const CGeometry*, const ProcessValues&, const ProcessProgress&) {
                 pThread = QThread::currentThread();
                 return QString();
             }});
        first.OpenTool(nTool);
        QSignalSpy ended(first.fixture.center.get(), &CCenterCtrl::signal_ProcessEnded);
        first.parts->ClickRun();
        QTRY_COMPARE(ended.size(), 1);
        QVERIFY(pThread && pThread != thread());
    }

    void theProgramMayCloseWhileAToolRuns()
    {
        for (int i = 0; i < 10; ++i) {
            std::atomic<bool> bLeft{false};
            {
                OperationBench bench(Endless(bLeft));
                bench.fixture.center->SetOptions(Background());
                bench.parts->ClickRun();
                if (i % 2)
                    QCoreApplication::processEvents();
            }
            QThreadPool::globalInstance()->waitForDone();
        }
    }

    void aThousandCancelledRunsLeaveTheImage()
    {
        ToolBench<MedianTool> bench;
        bench.ctrl.SetOptions(Background());
        SSpies<MedianTool::Ctrl> spies(&bench.ctrl);
        std::mt19937 random(7);
        for (int i = 0; i < 1000; ++i) {
            bench.ctrl.slot_Run();
            for (unsigned n = random() % 300; n > 0; --n)
                QThread::yieldCurrentThread();
            if (random() % 2)
                QCoreApplication::processEvents();
            RandomMoments::CancelAll();
        }
        CJobs::Get().Finish(&bench.ctrl);
        QCOMPARE(spies.started.size(), 1000);
        QCOMPARE(spies.ended.size(), 1000);
        QCOMPARE(bench.Image()->GetWidth(), 200);
    }

    void textIsReadBesideTheGuiThread()
    {
        OcrBench bench;
        bench.ctrl.SetOptions(Background());
        bench.DrawFirstLine();
        bench.parts.ClickRun();
        QVERIFY(bench.Text().isEmpty());
        bench.fixture.Ctrl(0)->ChangeCurrentImage(MakeTestImage(10, 10, 3)); // the text comes all the same
        QTRY_COMPARE_WITH_TIMEOUT(bench.Text(), OcrBench::FirstLine(), 60000);
    }

    void readingsThatAreCancelledAtRandomMomentsLeaveTheEngine()
    {
        const int nTimes = RandomMoments::HowOften("VANTOR_CANCELS", 20);
        OcrBench bench;
        bench.ctrl.SetOptions(Background());
        bench.DrawFirstLine();
        SSpies<OCRTool::Ctrl> spies(&bench.ctrl);
        std::mt19937 random(7);
        for (int i = 0; i < nTimes; ++i) {
            bench.ctrl.slot_Run();
            RandomMoments::Pass(random, 200000);
            RandomMoments::CancelAll();
        }
        CJobs::Get().Finish(&bench.ctrl);
        QCOMPARE(spies.ended.size(), nTimes);
        QVERIFY(spies.failed.isEmpty());
        bench.parts.ClickRun();
        QTRY_COMPARE_WITH_TIMEOUT(bench.Text(), OcrBench::FirstLine(), 60000);
    }

    void readingIsCancelledBetweenTheWords()
    {
        OcrBench bench;
        bench.ctrl.SetOptions(Background());
        SSpies<OCRTool::Ctrl> spies(&bench.ctrl);
        bench.parts.ClickRun();
        const auto pJob = CJobs::Get().GetJobs().at(0);
        QTRY_VERIFY_WITH_TIMEOUT(pJob->GetProgress().GetDone() > 0.0, 60000);
        QVERIFY(pJob->GetProgress().GetDone() < 1.0);
        CJobs::Get().Cancel(pJob);
        QTRY_COMPARE(spies.ended.size(), 1);
        QVERIFY(spies.failed.isEmpty());
        QVERIFY(bench.Text().isEmpty());
        // The engine goes on.
        bench.DrawFirstLine();
        bench.parts.ClickRun();
        QTRY_COMPARE_WITH_TIMEOUT(bench.Text(), OcrBench::FirstLine(), 60000);
    }
};

VANTOR_TEST_MAIN(tst_BackgroundRuns)
#include "tst_BackgroundRuns.moc"
