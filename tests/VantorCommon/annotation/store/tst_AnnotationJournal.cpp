// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// SCenterOptions::bAnnotationJournal and AnnotationRecovery.
#include "KilledChild.h"
#include "StoreBench.h"

#include <tests/support/LogRecorder.h>
#include <tests/support/TestMain.h>

#include <QDir>
#include <ctime>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

using namespace Vantor::Annotations;

namespace
{
constexpr const char* kScript = "--script";

QStringList Files()
{
    return QDir(AnnotationRecovery::GetFolder())
        .entryList({QStringLiteral("*.jsonl")}, QDir::Files, QDir::Name);
}

QString OnlyFile()
{
    const QStringList lstFiles = Files();
    return lstFiles.size() == 1 ? AnnotationRecovery::GetFolder() + QLatin1Char('/') + lstFiles[0]
                                : QString();
}

QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void SetContent(const QString& strPath, const QByteArray& bytes)
{
    QFile file(strPath);
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(bytes);
}

/// A viewer of three pages, each with its own annotations, that has the keyboard focus of a window.
struct SessionBench : StoreBench {
    explicit SessionBench(QWidget& window, bool bJournal) : StoreBench(bJournal)
    {
        SCenterOptions sOptions;
        sOptions.bAnnotationJournal = bJournal;
        sOptions.bAnnotationsPerImage = true;
        ctrl.SetOptions(sOptions);
        std::vector<std::shared_ptr<Vantor::Algorithms::CImage>> vctPages;
        for (int i = 0; i < 3; ++i) {
            vctPages.push_back(MakeTestImage(200, 150, 1));
            vctPages.back()->SetFolder(L"/folder");
            vctPages.back()->SetName(L"a.pdf");
        }
        images.SetImages(vctPages);
        view.setParent(&window);
        view.setGeometry(0, 0, 200, 150);
        view.show();
        view.setFocus();
    }

    enum EDone { EDone_Paged, EDone_Undone, EDone_Redone, EDone_Drawn, EDone_Dragged, EDone_Other };

    /// One step of a script that is the same for the same random numbers: what people do in a session.
    EDone SessionStep(std::mt19937& random)
    {
        const auto upTo = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        const int nWhat = upTo(20);
        QPointF from(upTo(1200) / 7.0, upTo(900) / 7.0), to(upTo(1200) / 7.0, upTo(900) / 7.0);
        if (nWhat < 3) {
            ctrl.slot_SelectImage(upTo(3));
            return EDone_Paged;
        }
        if (nWhat < 6)
            return ctrl.Undo() ? EDone_Undone : EDone_Other;
        if (nWhat < 8)
            return ctrl.Redo() ? EDone_Redone : EDone_Other;
        if (nWhat < 10) {
            ctrl.slot_DrawRectangleStart(from);
            ctrl.slot_DrawRectangleDoing(from, to);
            ctrl.slot_DrawRectangleEnd(from, to);
            return EDone_Drawn;
        }
        if (nWhat < 13) {
            ctrl.slot_CheckResizeRotate(from);
            ctrl.slot_SelectMovingStart(from);
            ctrl.slot_SelectMovingDoing(from, to);
            ctrl.slot_SelectMovingEnd(from, to);
            return EDone_Dragged;
        }
        RandomStep(random);
        return EDone_Other;
    }
};

/// What the child of a kill does: random steps without an end, each told when it is finished.
int RunScript(unsigned nSeed)
{
    QWidget window;
    window.resize(200, 150);
    window.show();
    window.activateWindow();
    SessionBench bench(window, true);
    while (!bench.view.hasFocus())
        QCoreApplication::processEvents();
    std::mt19937 random(nSeed);
    for (int i = 1;; ++i) {
        bench.SessionStep(random);
        if (!KilledChild::Tell(i))
            return 0;
        if (i % 50 == 0)
            QCoreApplication::processEvents();
    }
}
} // namespace

/// Those that can be painted here, then those that cannot: they keep their places only roughly.
SDocument Sorted(SDocument document)
{
    for (SPage& page : document.pages)
        std::stable_partition(page.objects.begin(), page.objects.end(),
                              [](const SObject& object) { return object.raw.empty(); });
    return document;
}

class tst_AnnotationJournal : public QObject
{
    Q_OBJECT

private:
    /// Leaves a journal behind as a process does that ends without saying so.
    static QByteArray Abandoned(const std::function<void(StoreBench&)>& work)
    {
        QByteArray bytes;
        StoreBench bench(true);
        work(bench);
        QCoreApplication::processEvents();
        bytes = Content(OnlyFile());
        bench.store().SetSaved(); // deletes it
        return bytes;
    }
    static QString Leave(const QByteArray& bytes, const char* szName = "1-1-0.jsonl")
    {
        QDir().mkpath(AnnotationRecovery::GetFolder());
        const QString strPath = AnnotationRecovery::GetFolder() + QLatin1Char('/') + QLatin1String(szName);
        SetContent(strPath, bytes);
        return strPath;
    }
    static StoreBench::Object Point(double x) { return StoreBench::MakeObject("point", {x, 1}); }

    std::unique_ptr<QTemporaryDir> m_pHome;

private Q_SLOTS:
    void init()
    {
        m_pHome = std::make_unique<QTemporaryDir>();
        qputenv("XDG_STATE_HOME", m_pHome->path().toUtf8());
        QCOMPARE(AnnotationRecovery::GetFolder(), m_pHome->path() + QLatin1String("/vantor/journal"));
    }

    void withoutTheOptionNothingIsWritten()
    {
        StoreBench bench;
        bench.store().Paste({Point(1)}, {});
        QCoreApplication::processEvents();
        QVERIFY(!QFile::exists(AnnotationRecovery::GetFolder()));
    }

    void aViewerThatIsOnlyLookedAtLeavesNoFile()
    {
        StoreBench bench(true);
        bench.ctrl.LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
        QVERIFY(Files().isEmpty());
    }

    void aStepIsInTheFileWhenItIsFinished()
    {
        StoreBench bench(true);
        bench.store().Paste({Point(1)}, {});
        QCOMPARE(Files().size(), 1);
        const int nLines = Content(OnlyFile()).count('\n');
        QCOMPARE(nLines, 2);
        struct stat status = {};
        QCOMPARE(::stat(OnlyFile().toUtf8().constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0600U);
        bench.store().Paste({Point(1), Point(2)}, {});
        QCOMPARE(Content(OnlyFile()).count('\n'), nLines + 1);
    }

    void whatALivingProcessHoldsIsNotOffered()
    {
        StoreBench bench(true);
        bench.store().Paste({Point(1)}, {});
        const QString strPath = OnlyFile();
        QVERIFY(AnnotationRecovery::Find().empty());
        AnnotationRecovery::Discard(strPath);
        QCOMPARE(OnlyFile(), strPath);
    }

    void savedOrUndoneWorkLeavesNoFile()
    {
        {
            StoreBench bench(true);
            bench.store().Paste({Point(1)}, {});
            bench.store().SetSaved();
            QVERIFY(Files().isEmpty());
            bench.store().Paste({Point(1)}, {});
            bench.ctrl.LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
            QVERIFY(Files().isEmpty());
        }
        QVERIFY(Files().isEmpty());
    }

    void unsavedWorkOutlivesItsViewer()
    {
        SDocument document;
        {
            StoreBench bench(true);
            bench.ctrl.LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
            bench.store().Paste({Point(1), Point(2)}, {});
            bench.store().Rename(bench.geometry.GetAt(0), QStringLiteral("a \"b\" ,\"document\":{"));
            document = bench.store().TakeDocument();
        }
        const auto vctFound = AnnotationRecovery::Find();
        QCOMPARE(vctFound.size(), std::size_t(1));
        QCOMPARE(vctFound[0].lstImages,
                 QStringList{QDir::cleanPath(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"))});
        QCOMPARE(vctFound[0].nSteps, 2);
        QCOMPARE(vctFound[0].nObjects, 2);
        SDocument back;
        const SReport report = StoreBench::ReadJournal(vctFound[0].strJournal, back);
        QVERIFY(report.failure.empty() && report.remarks.empty());
        QVERIFY(SameDocument(back, document));

        StoreBench other(true);
        other.store().Apply(back);
        QVERIFY(other.store().HasUnsaved());
        QVERIFY(SameDocument(other.store().TakeDocument(), document));
        AnnotationRecovery::Discard(vctFound[0].strJournal);
        QCOMPARE(Files().size(), 1); // that of the other
    }

    void whatIsUndoneBackToTheSavedStateIsNotOffered()
    {
        QByteArray saved;
        const QByteArray unsaved = Abandoned([&](StoreBench& bench) {
            bench.view.show();
            bench.view.activateWindow();
            bench.view.setFocus();
            QTRY_VERIFY(bench.view.hasFocus());
            bench.store().Paste({Point(1)}, {});
            bench.store().SetSaved();
            bench.store().Paste({Point(2)}, {});
            QVERIFY(bench.ctrl.Undo());
            saved = Content(OnlyFile());
            QVERIFY(bench.ctrl.Undo());
        });
        const QString strPath = Leave(unsaved);
        QCOMPARE(AnnotationRecovery::Find().size(), std::size_t(1));
        SDocument back;
        StoreBench::ReadJournal(strPath, back);
        QVERIFY(back.pages.at(0).objects.empty());
        Leave(saved);
        QVERIFY(AnnotationRecovery::Find().empty());
        QVERIFY(Files().isEmpty());
    }

    void everyRandomStepIsToldByTheJournal()
    {
        StoreBench bench(true);
        StoreBench::Document document = StoreBench::Many(5);
        StoreBench::Object raw;
        raw.raw = "{\"kind\":7}";
        document.pages[0].objects.insert(document.pages[0].objects.begin() + 2, raw);
        document.pages[0].objects[0].unknown = "{\"later\":-0.0}";
        bench.store().Apply(document);
        bench.store().SetSaved();
        std::mt19937 random(5);
        int nFiles = 0;
        for (int i = 0; i < 400; ++i) {
            bench.RandomStep(random);
            if (i == 200)
                bench.geometry.ClearObject();
            QCoreApplication::processEvents();
            if (i % 10 != 0 || OnlyFile().isEmpty())
                continue;
            ++nFiles;
            SDocument back;
            QVERIFY(StoreBench::ReadJournal(OnlyFile(), back).failure.empty());
            QVERIFY(SameDocument(Sorted(back), Sorted(bench.store().TakeDocument())));
        }
        QVERIFY(nFiles > 10);
    }

    void aChangeOfTheOrderTellsOnlyWhatMoves_data()
    {
        QTest::addColumn<int>("moved");
        QTest::addColumn<bool>("isShort");
        QTest::newRow("one by one place") << 1 << true;
        QTest::newRow("twenty") << 20 << true;
        QTest::newRow("so many that the whole order is shorter") << 200 << false;
    }
    void aChangeOfTheOrderTellsOnlyWhatMoves()
    {
        QFETCH(int, moved);
        QFETCH(bool, isShort);
        StoreBench bench(true);
        bench.store().Apply(StoreBench::Many(1000));
        bench.store().SetSaved();
        bench.store().Paste({Point(1)}, {});
        const auto vctObjects = bench.geometry.GetObjects();
        CImageView2DGeometryModel::ObjectList vctMoved;
        for (int i = 0; i < moved; ++i)
            vctMoved.push_back(vctObjects[static_cast<std::size_t>(900 - 3 * i)]);
        if (moved == 1)
            bench.store().Raise(vctMoved);
        else
            bench.store().MoveTo(vctMoved, 100);
        QCoreApplication::processEvents();
        const QByteArray line = Content(OnlyFile()).split('\n').at(2);
        QCOMPARE(line.contains("\"order\""), !isShort);
        QVERIFY(!isShort || line.size() < 600 * moved);
        SDocument back;
        QVERIFY(StoreBench::ReadJournal(OnlyFile(), back).failure.empty());
        QVERIFY(SameDocument(back, bench.store().TakeDocument()));
    }

    void anObjectThatComesBackBesideOneOfItsIdIsTold()
    {
        StoreBench bench(true);
        const auto pObject = bench.store().Paste({Point(1)}, {}).at(0);
        const SDocument document = bench.store().TakeDocument();
        bench.geometry.DeleteObject(pObject);
        bench.store().Apply(document);
        bench.geometry.RestoreObjects({pObject});
        QCoreApplication::processEvents();
        SDocument back;
        QVERIFY(StoreBench::ReadJournal(OnlyFile(), back).failure.empty());
        QCOMPARE(back.pages.at(0).objects.size(), std::size_t(2));
        QVERIFY(SameDocument(back, bench.store().TakeDocument()));
    }

    void aChangeWithoutAStepIsWrittenSoon()
    {
        StoreBench bench(true);
        bench.geometry.AddObject(ShapeKinds::OfKey(QStringLiteral("point"))->read({{1, 2}, {}}));
        QVERIFY(Files().isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(Files().size(), 1);
    }

    void aDamagedJournalComesBackUpToTheDamage()
    {
        const QByteArray bytes = Abandoned([](StoreBench& bench) {
            for (int i = 0; i < 5; ++i)
                bench.store().Paste({Point(i)}, {});
        });
        const QList<QByteArray> lstLines = bytes.split('\n');
        QCOMPARE(lstLines.size(), 7); // the header, five steps, nothing
        const int nFourth = bytes.indexOf(lstLines[4]);
        for (int nAt :
             {nFourth, nFourth + 3, nFourth + lstLines[4].size() / 2, nFourth + lstLines[4].size() - 1}) {
            QByteArray damaged = bytes;
            damaged[nAt] = damaged[nAt] == 'x' ? 'y' : 'x';
            for (const QByteArray& wrong : {damaged, bytes.left(nAt + 1)}) {
                const QString strPath = Leave(wrong);
                SDocument back;
                const SReport report = StoreBench::ReadJournal(strPath, back);
                QVERIFY(report.failure.empty());
                QCOMPARE(back.pages.at(0).objects.size(), std::size_t(3));
                // A line without an end is no damage: its step was never finished.
                QCOMPARE(report.remarks.size(), std::size_t(wrong == damaged ? 1 : 0));
                if (wrong == damaged)
                    QVERIFY(report.remarks[0].text.find("step 3;") != std::string::npos);
            }
        }
        for (const QByteArray& wrong : {QByteArray(), QByteArray("x\n"), bytes.left(20)}) {
            const QString strPath = Leave(wrong);
            SDocument back;
            QVERIFY(!StoreBench::ReadJournal(strPath, back).failure.empty());
            QVERIFY(AnnotationRecovery::Find().empty());
            QVERIFY(!QFile::exists(strPath));
        }
    }

    void onlyTheTwentyNewestOfAMonthAreKept()
    {
        const QByteArray bytes = Abandoned([](StoreBench& bench) { bench.store().Paste({Point(1)}, {}); });
        const std::time_t now = std::time(nullptr);
        for (int i = 0; i < 25; ++i) {
            const QString strPath = Leave(bytes, qPrintable(QStringLiteral("%1-1-0.jsonl").arg(i)));
            const utimbuf times{now - 60 * i, now - 60 * i};
            QCOMPARE(::utime(strPath.toUtf8().constData(), &times), 0);
        }
        const QString strOld = Leave(bytes, "99-1-0.jsonl");
        const utimbuf times{now - 31 * 24 * 3600, now - 31 * 24 * 3600};
        QCOMPARE(::utime(strOld.toUtf8().constData(), &times), 0);
        const auto vctFound = AnnotationRecovery::Find();
        QCOMPARE(vctFound.size(), std::size_t(20));
        QVERIFY(vctFound[0].strJournal.endsWith(QLatin1String("/0-1-0.jsonl")));
        QVERIFY(vctFound[19].strJournal.endsWith(QLatin1String("/19-1-0.jsonl")));
        QCOMPARE(Files().size(), 20);
    }

    void aLongJournalIsMadeShort()
    {
        StoreBench bench(true);
        bench.store().Paste({Point(1)}, {});
        const QString strPath = OnlyFile();
        qint64 nLongest = 0;
        bool bShrunk = false;
        for (int i = 0; i < 3000 && !bShrunk; ++i) {
            bench.store().Rename(bench.geometry.GetAt(0), QStringLiteral("name %1").arg(i));
            QCoreApplication::processEvents();
            const qint64 nSize = QFileInfo(strPath).size();
            bShrunk = nSize < nLongest;
            nLongest = std::max(nLongest, nSize);
        }
        QVERIFY(bShrunk);
        QVERIFY(nLongest > 64 * 1024);
        QVERIFY(AnnotationRecovery::Find().empty()); // still held
        bench.store().Rename(bench.geometry.GetAt(0), QStringLiteral("last"));
        QTRY_COMPARE(OnlyFile(), strPath);
        SDocument back;
        QVERIFY(StoreBench::ReadJournal(strPath, back).remarks.empty());
        QVERIFY(SameDocument(back, bench.store().TakeDocument()));
    }

    void aStepAmongTenThousandCostsLittleMore()
    {
        double dblTimes[2] = {};
        for (int nJournal : {0, 1}) {
            StoreBench bench(nJournal == 1);
            bench.store().Apply(StoreBench::Many(10000));
            bench.store().SetSaved();
            bench.store().Paste({Point(1)}, {}); // makes the file
            const auto pObject = bench.geometry.GetAt(5000);
            constexpr int kSteps = 200;
            const std::clock_t begin = std::clock();
            for (int i = 0; i < kSteps; ++i)
                bench.store().SetShape(pObject, {{i + 0.5, 1.25, 3, 4}, {}});
            dblTimes[nJournal] = 1000.0 * double(std::clock() - begin) / CLOCKS_PER_SEC / kSteps;
        }
        qInfo("a step takes %.3f ms without and %.3f ms with the journal", dblTimes[0], dblTimes[1]);
        QVERIFY(dblTimes[1] - dblTimes[0] < 2.0); // without optimisation
    }

    void aFolderThatCannotBeWrittenIsToldOnceAndStopsNothing()
    {
        SetContent(m_pHome->filePath(QStringLiteral("vantor")), "a file in the way");
        StoreBench bench(true);
        LogRecorder log;
        bench.store().Paste({Point(1)}, {});
        bench.store().Paste({Point(1)}, {});
        QCOMPARE(bench.geometry.Size(), 2);
        QCOMPARE(log.Take().filter(QStringLiteral("journal")).size(), 1);
        // What was missed is made good as soon as that is possible.
        QVERIFY(QFile::remove(m_pHome->filePath(QStringLiteral("vantor"))));
        bench.store().Paste({Point(1)}, {});
        SDocument back;
        QVERIFY(StoreBench::ReadJournal(OnlyFile(), back).failure.empty());
        QVERIFY(SameDocument(back, bench.store().TakeDocument()));
    }

    /// VANTOR_KILLS: how many.
    void noFinishedStepIsLostByAKill()
    {
        const int nKills = qEnvironmentVariableIntValue("VANTOR_KILLS") > 0
                               ? qEnvironmentVariableIntValue("VANTOR_KILLS")
                               : 100;
        QWidget window;
        window.resize(200, 150);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        std::mt19937 random(77);
        int nSteps = 0, nOpen = 0;
        std::map<int, int> done;
        for (int i = 0; i < nKills; ++i) {
            QDir(AnnotationRecovery::GetFolder()).removeRecursively();
            const unsigned nSeed = random();
            const int nDone =
                KilledChild::Run({kScript, QByteArray::number(nSeed)}, static_cast<int>(random() % 60000U));
            SessionBench bench(window, false);
            QTRY_VERIFY(bench.view.hasFocus());
            std::mt19937 script(nSeed);
            for (int k = 0; k < nDone; ++k)
                ++done[bench.SessionStep(script)];
            const SDocument expected = bench.store().TakeDocument();
            const auto vctFound = AnnotationRecovery::Find();
            SDocument back;
            if (vctFound.empty()) { // nothing has changed yet, or everything is undone
                back.pages.resize(3);
                for (int k = 0; k < 3; ++k)
                    back.pages[static_cast<std::size_t>(k)].page = k;
            } else {
                const SReport report = StoreBench::ReadJournal(vctFound[0].strJournal, back);
                QVERIFY(report.failure.empty());
                QVERIFY2(report.remarks.empty(), "a torn line");
            }
            // The step that was being made may be there or not.
            const bool bNow = SameDocument(back, expected, false);
            if (!bNow)
                bench.SessionStep(script);
            QVERIFY2(bNow || SameDocument(back, bench.store().TakeDocument(), false),
                     qPrintable(QStringLiteral("kill %1 after step %2").arg(i).arg(nDone)));
            nOpen += bNow ? 0 : 1;
            nSteps += nDone;
        }
        qInfo("%d kills, %d finished steps, %d times the step behind them was there too", nKills, nSteps,
              nOpen);
        qInfo("pages %d, undo %d, redo %d, drawn %d, dragged %d, others %d", done[SessionBench::EDone_Paged],
              done[SessionBench::EDone_Undone], done[SessionBench::EDone_Redone],
              done[SessionBench::EDone_Drawn], done[SessionBench::EDone_Dragged],
              done[SessionBench::EDone_Other]);
        QVERIFY(nSteps > nKills);
        for (int eDone = SessionBench::EDone_Paged; eDone <= SessionBench::EDone_Other; ++eDone)
            QVERIFY(done[eDone] > 0);
    }
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    if (argc > 2 && qstrcmp(argv[1], kScript) == 0)
        return RunScript(static_cast<unsigned>(std::stoul(argv[2])));
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.xcb.warning=false"));
    tst_AnnotationJournal test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_AnnotationJournal.moc"
