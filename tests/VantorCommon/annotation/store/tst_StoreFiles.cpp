// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Saving and loading by CAnnotationStore.
#include "StoreBench.h"

#include <Vantor/image/CImage.h>
#include <tests/support/TestMain.h>

#include <QSignalSpy>

using namespace Vantor::Annotations;
Q_DECLARE_METATYPE(std::vector<double>)

class tst_StoreFiles : public QObject
{
    Q_OBJECT

private:
    using Reports = QList<QPair<QString, SReport>>;

    /// Waits for the end of a save or a load.
    template <class Signal> static SReport Wait(CAnnotationStore& store, Signal signal)
    {
        SReport report{"nothing was told", {}};
        bool bTold = false;
        QObject context;
        connect(&store, signal, &context, [&](const QString&, const SReport& told) {
            report = told;
            bTold = true;
        });
        [&] { QTRY_VERIFY(bTold); }();
        return report;
    }
    static SReport Saved(StoreBench& bench) { return Wait(bench.store(), &CAnnotationStore::signal_Saved); }
    static SReport Loaded(StoreBench& bench) { return Wait(bench.store(), &CAnnotationStore::signal_Loaded); }

    QTemporaryDir m_folder;
    QString Path(const char* szName) const { return m_folder.filePath(QLatin1String(szName)); }

private Q_SLOTS:
    void whatIsSavedIsLoadedByAnotherViewer()
    {
        StoreBench bench;
        std::mt19937 random(1);
        for (int i = 0; i < 200; ++i)
            bench.RandomStep(random);
        QVERIFY(bench.geometry.Size() > 5 && bench.store().HasUnsaved());
        bench.store().Save(Path("a.vantor.json"));
        QCOMPARE(Saved(bench).failure, std::string());
        QVERIFY(!bench.store().HasUnsaved());

        StoreBench other;
        other.store().Load(Path("a.vantor.json"));
        QCOMPARE(Loaded(other).failure, std::string());
        QVERIFY(!other.store().HasUnsaved());
        QVERIFY(SameDocument(other.store().TakeDocument(), bench.store().TakeDocument()));
    }

    void aStepDuringASaveStaysUnsaved()
    {
        StoreBench bench;
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Save(Path("b.vantor.json"));
        bench.store().Paste({StoreBench::MakeObject("point", {2, 2})}, {});
        QCOMPARE(Saved(bench).failure, std::string());
        QVERIFY(bench.store().HasUnsaved());
    }

    void aSaveThatFailsTellsWhyAndStaysUnsaved()
    {
        StoreBench bench;
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Save(Path("no/such/folder.vantor.json"));
        QVERIFY(!Saved(bench).failure.empty());
        QVERIFY(bench.store().HasUnsaved());
    }

    void aDamagedFileLeavesTheAnnotationsAlone()
    {
        QFile file(Path("c.vantor.json"));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("{\"format\":\"vantor-annotations\",\"version\":1,\"pages\":[");
        file.close();
        StoreBench bench;
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Load(file.fileName());
        QVERIFY(!Loaded(bench).failure.empty());
        QCOMPARE(bench.geometry.Size(), 1);
        QVERIFY(bench.store().HasUnsaved());
        bench.store().Save(file.fileName());
        QVERIFY(!Saved(bench).failure.empty());
    }

    void annotationsThatComeTooLateAreDropped()
    {
        StoreBench bench;
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Save(Path("d.vantor.json"));
        QCOMPARE(Saved(bench).failure, std::string());
        bench.store().Load(Path("d.vantor.json"));
        bench.ctrl.LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
        QVERIFY(!Loaded(bench).failure.empty());
        QCOMPARE(bench.geometry.Size(), 0);
    }

    void whatAnotherWindowHasSavedMeanwhileIsReplacedOnlyOnRequest()
    {
        const QString strPath = Path("two.vantor.json");
        const QString strOwn = QLatin1String(kOwnFormat);
        StoreBench first, second;
        const auto save = [&](StoreBench& bench, double x) {
            bench.store().Paste({StoreBench::MakeObject("point", {x, 1})}, {});
            bench.store().Save(strPath, strOwn, EAnnotationsReplace_Known);
            return Saved(bench);
        };
        QCOMPARE(save(first, 1).failure, std::string());
        second.store().Load(strPath);
        QCOMPARE(Loaded(second).failure, std::string());
        QCOMPARE(save(first, 2).failure, std::string()); // its own file, twice
        const SReport refused = save(second, 3);
        QVERIFY(refused.conflict && second.store().HasUnsaved());
        SDocument document;
        QCOMPARE(Load(strPath.toStdString(), {}, {}, document).failure, std::string());
        QCOMPARE(document.pages.at(0).objects.size(), std::size_t(2));
        second.store().Save(strPath);
        QCOMPARE(Saved(second).failure, std::string());
        QVERIFY(save(first, 4).conflict); // now the other one is the later
    }

    void twoSavesOfOneStoreInARowAreNoConflict()
    {
        const QString strPath = Path("row.vantor.json");
        StoreBench bench;
        int nSaved = 0;
        connect(&bench.store(), &CAnnotationStore::signal_Saved, this,
                [&](const QString&, const SReport& report) { nSaved += report.failure.empty() ? 1 : 0; });
        for (int i = 0; i < 3; ++i) {
            bench.store().Paste({StoreBench::MakeObject("point", {double(i), 1})}, {});
            bench.store().Save(strPath, QLatin1String(kOwnFormat), EAnnotationsReplace_Known);
        }
        QTRY_COMPARE(nSaved, 3);
    }

    void aFileThatCameTooLateIsNotKnown()
    {
        const QString strPath = Path("late.vantor.json");
        StoreBench bench;
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Save(strPath);
        QCOMPARE(Saved(bench).failure, std::string());
        StoreBench other;
        other.store().Load(strPath);
        other.ctrl.LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
        QVERIFY(!Loaded(other).failure.empty());
        other.store().Save(strPath, QLatin1String(kOwnFormat), EAnnotationsReplace_Known);
        QVERIFY(Saved(other).conflict);
    }

    void theSidecarStandsBesideTheImageAndKnowsIt()
    {
        StoreBench bench;
        QCOMPARE(bench.store().GetSidecarPath(), QString());
        QVERIFY(QFile::copy(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"), Path("e.png")));
        bench.ctrl.LoadFile(Path("e.png"));
        QCOMPARE(bench.store().GetSidecarPath(), Path("e.png.vantor.json"));
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Save(bench.store().GetSidecarPath());
        QCOMPARE(Saved(bench).failure, std::string());
        SDocument document;
        QCOMPARE(Vantor::Annotations::Load(Path("e.png.vantor.json").toStdString(), {}, {}, document).failure,
                 std::string());
        QCOMPARE(document.source.name, std::string("e.png"));
        QCOMPARE(document.source.sha256.size(), std::size_t(64));
        QVERIFY(!document.saved.empty());
        QVERIFY(!document.generator.empty());
    }

    void annotationsOfAnotherVersionOfThePictureAreShownAndTold()
    {
        QVERIFY(QFile::copy(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"), Path("v.png")));
        StoreBench bench;
        bench.ctrl.LoadFile(Path("v.png"));
        bench.store().Paste({StoreBench::MakeObject("point", {1, 1})}, {});
        bench.store().Save(bench.store().GetSidecarPath());
        QCOMPARE(Saved(bench).failure, std::string());
        const auto load = [&] {
            StoreBench other;
            other.ctrl.LoadFile(Path("v.png"));
            other.store().Load(other.store().GetSidecarPath());
            const SReport report = Loaded(other);
            [&] { QCOMPARE(other.geometry.Size(), 1); }();
            return report.remarks;
        };
        QVERIFY(load().empty());
        QFile file(Path("v.png"));
        QVERIFY(file.open(QFile::Append) && file.write("x") == 1);
        file.close();
        const auto remarks = load();
        QCOMPARE(remarks.size(), std::size_t(1));
        QVERIFY(remarks[0].text.find("another version of this picture") != std::string::npos);
    }

    void annotationsOfAnImageOfAnotherSize_data()
    {
        QTest::addColumn<int>("nAnswer");
        QTest::addColumn<std::vector<double>>("vctNumbers");
        QTest::addColumn<bool>("bUnsaved");
        using N = std::vector<double>;
        QTest::newRow("nobody is asked") << -1 << N{10, 20} << false;
        QTest::newRow("keep") << int(EOtherSize_Keep) << N{10, 20} << false;
        QTest::newRow("scale") << int(EOtherSize_Scale) << N{20, 10} << true;
        QTest::newRow("leave") << int(EOtherSize_Leave) << N{} << false;
    }
    void annotationsOfAnImageOfAnotherSize()
    {
        QFETCH(int, nAnswer);
        QFETCH(std::vector<double>, vctNumbers);
        QFETCH(bool, bUnsaved);
        const QString strPath = Path("size.vantor.json");
        auto document = StoreBench::Many(0);
        document.pages[0].objects = {StoreBench::MakeObject("point", {10, 20})};
        document.pages[0].width = 100;
        document.pages[0].height = 300;
        QCOMPARE(Save(document, strPath.toStdString(), kOwnFormat, {}).failure, std::string());
        StoreBench bench; // 200 x 150
        int nAsked = 0;
        if (nAnswer >= 0)
            bench.store().SetAskSize([&](const SPage& page, const QSize& size) {
                ++nAsked;
                [&] {
                    QCOMPARE(QSize(page.width, page.height), QSize(100, 300));
                    QCOMPARE(size, QSize(200, 150));
                }();
                return EOtherSize(nAnswer);
            });
        bench.store().Load(strPath);
        const SReport report = Loaded(bench);
        QCOMPARE(report.failure, std::string());
        QCOMPARE(nAsked, nAnswer >= 0 ? 1 : 0);
        QCOMPARE(report.remarks.size(), std::size_t(nAnswer < 0 ? 1 : 0));
        const auto page = bench.store().TakeDocument().pages.at(0);
        QCOMPARE(page.objects.empty() ? std::vector<double>() : page.objects[0].numbers, vctNumbers);
        QCOMPARE(bench.store().HasUnsaved(), bUnsaved);
    }

    void pagesOfAnotherResolutionAreScaledAndNobodyIsAsked()
    {
        const QString strPath = Path("dpi.vantor.json");
        {
            StoreBench bench; // a page of 200 x 150
            bench.images.GetCurrentImage()->SetPageResolution(144);
            bench.store().Paste({StoreBench::MakeObject("point", {10, 20})}, {});
            bench.store().Save(strPath);
            QCOMPARE(Saved(bench).failure, std::string());
        }
        StoreBench bench;
        bench.images.GetCurrentImage()->SetPageResolution(72);
        bool bAsked = false;
        bench.store().SetAskSize([&](const SPage&, const QSize&) {
            bAsked = true;
            return EOtherSize_Keep;
        });
        bench.store().Load(strPath);
        QCOMPARE(Loaded(bench).failure, std::string());
        const SPage page = bench.store().TakeDocument().pages.at(0);
        QCOMPARE(page.objects.at(0).numbers, (std::vector<double>{5, 10}));
        QCOMPARE(page.dpi, 72.0);
        QCOMPARE(page.width, 200);
        QVERIFY(!bAsked && !bench.store().HasUnsaved());
    }

    void aStoreThatGoesWhileSomebodyIsAskedShowsNothing()
    {
        const QString strPath = Path("gone.vantor.json");
        auto document = StoreBench::Many(1);
        document.pages[0].width = 100;
        document.pages[0].height = 300;
        QCOMPARE(Save(document, strPath.toStdString(), kOwnFormat, {}).failure, std::string());
        auto pBench = std::make_unique<StoreBench>();
        bool bAsked = false;
        pBench->store().SetAskSize([&](const SPage&, const QSize&) {
            bAsked = true;
            pBench.reset();
            return EOtherSize_Scale;
        });
        pBench->store().Load(strPath);
        QTRY_VERIFY(bAsked);
    }

    void aStoreThatGoesHasWrittenItsFile()
    {
        {
            StoreBench bench;
            bench.store().Apply(StoreBench::Many(2000));
            bench.store().Save(Path("f.vantor.json"));
        }
        StoreBench other;
        other.store().Load(Path("f.vantor.json"));
        QCOMPARE(Loaded(other).failure, std::string());
        QCOMPARE(other.geometry.Size(), 2000);
    }

    void aHundredThousandAnnotationsAreShownInASecond()
    {
        StoreBench bench;
        const auto document = StoreBench::Many(100000);
        QElapsedTimer timer;
        timer.start();
        bench.store().Apply(document);
        const qint64 nTime = timer.elapsed();
        qInfo("applied in %lld ms", nTime);
        QCOMPARE(bench.geometry.Size(), 100000);
        QVERIFY(nTime < 10000); // without optimisation, on a busy machine
    }
};

VANTOR_TEST_MAIN(tst_StoreFiles)
#include "tst_StoreFiles.moc"
