// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Saving and loading by CAnnotationStore.
#include "StoreBench.h"

#include <tests/support/TestMain.h>

#include <QSignalSpy>

using namespace Vantor::Annotations;

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
