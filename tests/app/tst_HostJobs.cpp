// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CJobBar.h"
#include "WorkSupport.h"
#include "tests/support/ChildProcesses.h"
#include "tests/support/RandomMoments.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QProgressBar>
#include <QStatusBar>
#include <QThreadPool>

using Vantor::Algorithms::CImage;

namespace
{
const QString kWide = QStringLiteral("1x1");

/// The viewer with what it does beside its window.
class JobHost : public Host
{
public:
    JobHost() { SetBackground(true); }
    CImageView2DModel* Model() const { return CtrlOf(*this, 0)->GetImageModel(); }
    void Finish() const { CJobs::Get().Finish(CtrlOf(*this, 0)); }
};

/// A file that takes a while.
QString MakeLarge(const QTemporaryDir& folder, const char* pName, int nSide)
{
    const QString strPath = folder.filePath(QLatin1String(pName));
    return MakeTestImage(nSide, nSide, 3)->Save(strPath.toStdWString()) == 0 ? strPath : QString();
}
} // namespace

/// What the viewer does beside its window.
class tst_HostJobs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Host::ForgetSettings(); }
    void cleanup()
    {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        Host::ForgetSettings();
    }

    void theViewerTurnsTheOptionOn()
    {
        const CMainWindow window;
        const auto item =
            CMVCManager::FindFirst([](const SMVC& each) { return dynamic_cast<CCenterCtrl*>(each.pCtrl); });
        QVERIFY(dynamic_cast<CCenterCtrl*>(item->pCtrl)->GetOptions().bBackground);
    }

    void filesOfTheCommandLineComeWhileTheWindowLives()
    {
        JobHost host;
        QVERIFY(host.Show());
        QTemporaryDir folder;
        const QString strLarge = MakeLarge(folder, "large.png", 900);
        host.window.StartOpening({strLarge, kPhoto, kPhoto}, kWide);
        QCOMPARE(host.Model()->GetImageCount(), 0);
        QTRY_COMPARE(host.Model()->GetImageCount(), 3);
        QCOMPARE(host.Model()->GetCurrentIndex(), 0);
        QCOMPARE(host.Model()->GetImage(0)->GetWidth(), 900);
        QVERIFY(host.Message().isEmpty());
        // From now on a new image is shown as ever.
        CtrlOf(host, 0)->AddImage(kPhoto);
        QTRY_COMPARE(host.Model()->GetImageCount(), 4);
        QCOMPARE(host.Model()->GetCurrentIndex(), 3);
    }

    void whatRunsStandsInTheStatusBar()
    {
        JobHost host;
        QVERIFY(host.Show());
        auto* pBar = host.window.statusBar()->findChild<CJobBar*>();
        QVERIFY(pBar && pBar->isVisible());
        SJob sJob;
        sJob.strTitle = QStringLiteral("Save a.png");
        const auto pJob = CJobs::Get().Start(&host.window, sJob, [](Vantor::CProgress& progress) {
            while (!progress.IsCancelled())
                QThread::yieldCurrentThread();
            return CJob::Finish();
        });
        QTRY_VERIFY(pBar->findChild<QProgressBar*>() && pBar->findChild<QProgressBar*>()->isVisible());
        CJobs::Get().Cancel(pJob);
        QTRY_VERIFY(!pBar->findChild<QProgressBar*>());
    }

    void aToolRunsBesideTheWindow()
    {
        JobHost host;
        QVERIFY(host.Show({kPhoto}));
        const auto pBefore = CtrlOf(host, 0)->GetCurrentImgage();
        host.Entry("Tools", "Sobel Filter...")->trigger();
        auto* pDlg = host.window.findChild<CImage2DProcessBaseDlg*>();
        Q_EMIT pDlg->signal_Run();
        QCOMPARE(CJobs::Get().GetJobs().size(), std::size_t(1));
        QCOMPARE(CJobs::Get().GetJobs().at(0)->GetTitle(), QStringLiteral("Sobel Filter"));
        QVERIFY(!QApplication::overrideCursor());
        QTRY_VERIFY(CtrlOf(host, 0)->GetCurrentImgage() != pBefore);
        QVERIFY(host.Message().isEmpty());
    }

    void aSavedImageIsTheOneThatWasSaved()
    {
        JobHost host;
        const Pictures pictures;
        QVERIFY(host.Show({pictures.Add(QStringLiteral("a.png")), pictures.Add(QStringLiteral("b.png"))}));
        host.window.ChangeLayout(kWide);
        CtrlOf(host, 0)->RotateRight();
        host.Finish();
        QVERIFY(host.window.isWindowModified());
        host.Entry("File", "Save")->trigger();
        host.Model()->SetCurrentIndex(0);
        host.Finish();
        QVERIFY(!host.window.isWindowModified());
        CImage saved;
        QCOMPARE(saved.Load(pictures.folder.filePath(QStringLiteral("a.png")).toStdWString()), 0);
        QCOMPARE(saved.GetWidth(), 120);
    }

    void thatAnImageIsSavedBeforeTheEndIsWaitedFor()
    {
        const Pictures pictures;
        const QString strPath = pictures.Add(QStringLiteral("a.png"));
        JobHost host;
        QVERIFY(host.Show({strPath}));
        CtrlOf(host, 0)->RotateRight();
        host.Finish();
        const Answers answers(QStringLiteral("Save"));
        QVERIFY(host.window.close());
        QCOMPARE(answers.lstAsked.size(), 1);
        CImage saved;
        QCOMPARE(saved.Load(strPath.toStdWString()), 0);
        QCOMPARE(saved.GetWidth(), 120);
    }

    void theWindowMayCloseWhileItsJobsRun()
    {
        QTemporaryDir folder;
        const QString strLarge = MakeLarge(folder, "large.png", 900);
        const QString strSaved = folder.filePath(QStringLiteral("saved.png"));
        const int nTimes = RandomMoments::HowOften("VANTOR_CLOSINGS", 5);
        std::mt19937 random(7);
        for (int i = 0; i < nTimes; ++i) {
            QFile::remove(strSaved);
            {
                JobHost host;
                QVERIFY(host.Show({kPhoto}));
                CtrlOf(host, 0)->SaveFile(strSaved);
                CtrlOf(host, 0)->RotateRight();
                PictureExport::Start(*CtrlOf(host, 0), folder.filePath(QStringLiteral("export.pdf")), true,
                                     [](const QString&) {});
                host.window.StartOpening({strLarge, kDocument, strLarge, kDocument}, QStringLiteral("2x2"));
                host.Entry("Tools", "Median Filter...")->trigger();
                auto* pTool = host.window.findChild<CImage2DProcessBaseDlg*>();
                Q_EMIT pTool->signal_Run();
                RandomMoments::Pass(random, 30000);
            }
            QThreadPool::globalInstance()->waitForDone();
            CImage saved;
            QCOMPARE(saved.Load(strSaved.toStdWString()), 0);
        }
        QTRY_COMPARE_WITH_TIMEOUT(ChildrenOf(::getpid()).size(), 0, 30000);
    }
};

VANTOR_TEST_MAIN(tst_HostJobs)
#include "tst_HostJobs.moc"
