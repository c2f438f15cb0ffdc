// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Jobs of every kind that are cancelled at random moments, and viewers and centres that close while they run.
// VANTOR_CANCELS and VANTOR_CLOSINGS choose how often each.
#include "tests/support/CenterFixture.h"
#include "tests/support/Centre.h"
#include "tests/support/ChildProcesses.h"
#include "tests/support/RandomMoments.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CPageMemory.h>

#include <QThreadPool>
#include <functional>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;

namespace
{
constexpr int kPatienceMs = 30000; // until processes have ended, on a busy machine
const QString kDocument = TestDataPath(QStringLiteral("pdf/11-pages.pdf"));
const QStringList kSuffixes{QStringLiteral("png"), QStringLiteral("pdf"), QStringLiteral("svg")};

SCenterOptions EverythingBeside()
{
    SCenterOptions sOptions;
    sOptions.bBackground = true;
    sOptions.bDeferredPages = true;
    sOptions.bKeepOnFailedLoad = true;
    return sOptions;
}

/// The files that jobs read and write, which outlive viewers.
struct SFiles {
    SFiles()
    {
        QVERIFY(MakeTestImage(400, 300, 3)->Save(strPicture.toStdWString()) == 0);
        QVERIFY(MakeTestImage(10, 10, 3)->Save(strTarget.toStdWString()) == 0);
    }
    bool IsTargetWhole() const
    {
        CImage target;
        return target.Load(strTarget.toStdWString()) == 0;
    }

    QTemporaryDir folder;
    QString strPicture = folder.filePath(QStringLiteral("a.png"));
    QString strTarget = folder.filePath(QStringLiteral("target.png"));
};

/// Begins a job in a viewer.
using Start = std::function<void(CImageViewerCtrl& viewer, const SFiles& files, unsigned nRandom)>;

void Blur(CImageViewerCtrl& viewer, const SFiles&, unsigned)
{
    viewer.Get2DCtrl()->EditImage(
        QStringLiteral("Blur"), QStringLiteral("It failed."),
        [](CImage& image, SImageChange&) { return image.GaussianBlur(3.0, nullptr, ERegionMode::All, 0.0); });
}

void Page(CImageViewerCtrl& viewer, const SFiles& files, unsigned nRandom)
{
    CImageView2DModel* pModel = viewer.Get2DCtrl()->GetImageModel();
    if (pModel->GetImageCount() < 2 || nRandom % 8 == 0)
        viewer.LoadFile(kDocument);
    else if (nRandom % 8 == 1)
        viewer.LoadFile(files.strPicture);
    else
        pModel->SetCurrentIndex(static_cast<int>(nRandom / 8) % pModel->GetImageCount());
}

std::vector<std::pair<const char*, Start>> Kinds()
{
    return {{"open", [](auto& viewer, const SFiles& files, unsigned) { viewer.LoadFile(files.strPicture); }},
            {"save", [](auto& viewer, const SFiles& files, unsigned) { viewer.SaveFile(files.strTarget); }},
            {"rotate", [](auto& viewer, const SFiles&, unsigned) { viewer.Get2DCtrl()->RotateRight(); }},
            {"filter", Blur},
            {"export",
             [](auto& viewer, const SFiles& files, unsigned nRandom) {
                 PictureExport::Start(
                     *viewer.Get2DCtrl(),
                     files.folder.filePath(QStringLiteral("export.") + kSuffixes[nRandom % 3]), true,
                     [](const QString& strFailure) { QCOMPARE(strFailure, QString()); });
             }},
            {"deferred pages", Page}};
}

/// A viewer that a program has put together by itself, never shown.
struct SLoneViewer {
    SLoneViewer() { ctrl.Get2DCtrl()->SetOptions(EverythingBeside()); }

    QWidget window;
    CToolBoxDockView toolBox{&window};
    CPropertyDockView properties{&window};
    CStatusBarDockView status{&window};
    CImageViewerModel model;
    CImageView2DToolModel tool;
    CImageViewer* pViewer = new CImageViewer(&model, 0, &window);
    CImageViewerCtrl ctrl{pViewer, &model, &tool, &toolBox, &properties, &status};
};

void StartAll(CImageViewerCtrl& viewer, const SFiles& files, std::mt19937& random)
{
    for (const auto& [pName, start] : Kinds())
        start(viewer, files, static_cast<unsigned>(random()));
    RandomMoments::Pass(random, 20000);
}
} // namespace

class tst_CancelledJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(CJobs::Get().GetJobs().empty());
        QVERIFY(CMVCManager::m_vctItems.empty());
        QTRY_COMPARE_WITH_TIMEOUT(ChildrenOf(::getpid()).size(), 0, kPatienceMs);
    }

    void jobsThatAreCancelledAtRandomMomentsLoseNothing_data()
    {
        QTest::addColumn<int>("kind");
        int nKind = 0;
        for (const auto& [pName, start] : Kinds())
            QTest::newRow(pName) << nKind++;
    }
    void jobsThatAreCancelledAtRandomMomentsLoseNothing()
    {
        QFETCH(int, kind);
        const int nTimes = RandomMoments::HowOften("VANTOR_CANCELS", 40);
        const SFiles files;
        CenterFixture f(1, 1);
        f.center->SetOptions(EverythingBeside());
        f.Ctrl(0)->LoadFile(files.strPicture);
        CJobs::Get().Finish(f.Ctrl(0)->Get2DCtrl());
        QStringList lstFailed;
        connect(f.Ctrl(0)->Get2DCtrl(), &CImageView2DCtrl::signal_Failed, this,
                [&](const QString& strLine) { lstFailed << strLine; });
        std::mt19937 random(static_cast<unsigned>(kind));
        for (int i = 0; i < nTimes; ++i) {
            Kinds()[static_cast<std::size_t>(kind)].second(*f.Ctrl(0), files,
                                                           static_cast<unsigned>(random()));
            RandomMoments::Pass(random, 12000);
            RandomMoments::CancelAll();
            QVERIFY(files.IsTargetWhole());
        }
        CJobs::Get().Finish(f.Ctrl(0)->Get2DCtrl());
        QCOMPARE(lstFailed, QStringList());
        QVERIFY(f.Ctrl(0)->Get2DCtrl()->GetCurrentImgage());
        f.Ctrl(0)->LoadFile(kDocument); // all goes on
        CJobs::Get().Finish(f.Ctrl(0)->Get2DCtrl());
        const auto* pModel = f.Ctrl(0)->Get2DCtrl()->GetImageModel();
        QCOMPARE(pModel->GetImageCount(), 11);
        QTRY_VERIFY_WITH_TIMEOUT(pModel->GetImage(10)->HasPixels(), kPatienceMs);
    }

    void aViewerMayCloseWhileItsJobsRun()
    {
        const int nTimes = RandomMoments::HowOften("VANTOR_CLOSINGS", 20);
        const SFiles files;
        std::mt19937 random(7);
        for (int i = 0; i < nTimes; ++i) {
            SLoneViewer lone;
            lone.ctrl.LoadFile(files.strPicture);
            CJobs::Get().Finish(lone.ctrl.Get2DCtrl());
            StartAll(lone.ctrl, files, random);
        }
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(files.IsTargetWhole());
    }

    void aCentreMayCloseWhileItsJobsRun()
    {
        const int nTimes = RandomMoments::HowOften("VANTOR_CLOSINGS", 10);
        const SFiles files;
        std::mt19937 random(11);
        for (int i = 0; i < nTimes; ++i) {
            CenterFixture f(2, 1);
            f.center->SetOptions(EverythingBeside());
            for (const int nView : {0, 1})
                StartAll(*f.Ctrl(nView), files, random);
        }
        QThreadPool::globalInstance()->waitForDone();
        QVERIFY(files.IsTargetWhole());
    }
};

VANTOR_TEST_MAIN(tst_CancelledJobs)
#include "tst_CancelledJobs.moc"
