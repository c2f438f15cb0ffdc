// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What it costs that annotations last: the journal at each step, saving, opening, and the table that follows.
// Needs a display. The peers of saving and opening are Qt's JSON with the same text, their limits plain calls
// of the system with the same bytes.
#include "BenchSupport.h"

#include <Vantor/annotation/Annotations.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/view/CAnnotationTableModel.h>
#include <VantorCommon/annotation/view/CAnnotationTableView.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <fcntl.h>
#include <numeric>
#include <unistd.h>

using namespace Vantor::Annotations;
using VantorBench::MedianOf;
using VantorBench::SecondsOf;

namespace
{
constexpr int kCount = 10000;
constexpr int kMany = 100000;
constexpr double kStepLimit = 0.2; // milliseconds that the journal may cost
constexpr double kFrame = 16.0;    // milliseconds

/// Rectangles, ellipses and polygons with numbers as dragging leaves them.
SDocument MakeDocument(int nCount)
{
    SDocument document;
    document.pages.emplace_back();
    for (int i = 0; i < nCount; ++i) {
        const double x = i % 1000 + i / 7.0, y = i % 777 + i / 11.0;
        SObject object;
        object.kind = i % 3 == 0 ? "rectangle" : i % 3 == 1 ? "ellipse" : "polygon";
        object.numbers = {x, y, 20 + i / 13.0, 10 + i / 17.0};
        if (i % 3 == 2)
            object.numbers = {x, y, x + 20, y + 1, x + 15, y + 20 / 3.0, x, y + 12};
        document.pages[0].objects.push_back(object);
    }
    return document;
}

/// A 2D controller whose view is not shown, with its store.
struct SEditor {
    explicit SEditor(const SDocument& document, bool bJournal = false)
    {
        const auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
        pImage->Create(2000, 1500, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 4);
        images.SetImages({pImage});
        SCenterOptions sOptions;
        sOptions.bAnnotationJournal = bJournal;
        ctrl.SetOptions(sOptions);
        QObject::connect(&store(), &CAnnotationStore::signal_Saved,
                         [this](const QString&, const SReport& report) {
                             bTold = true;
                             failure = report.failure;
                         });
        QObject::connect(&store(), &CAnnotationStore::signal_Loaded,
                         [this](const QString&, const SReport& report) {
                             bTold = true;
                             failure = report.failure;
                         });
        store().Apply(document);
        store().SetSaved();
    }
    CAnnotationStore& store() { return *ctrl.GetAnnotationStore(); }
    void AwaitFile()
    {
        while (!bTold)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        bTold = false;
    }

    bool bTold = false;
    std::string failure;
    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tool;
    CImageView2D view{&images, &geometry, &tool, 0, nullptr};
    CImageView2DCtrl ctrl{&images, &geometry, &tool, &view, nullptr, nullptr, nullptr};
};

void DropLog()
{
    while (!CLogModel::GetInstance()->IsEmpty())
        CLogModel::GetInstance()->slot_OnTimer();
}

using Step = void (*)(SEditor& editor, int n);

void MoveOne(SEditor& editor, int n)
{
    editor.store().SetShape(editor.geometry.GetAt(3 * (n % 3000)), {{n + 0.5, n / 3.0, 30, 40}, {}});
}
void AddOne(SEditor& editor, int n)
{
    SObject object;
    object.kind = "rectangle";
    object.numbers = {n + 0.5, n / 3.0, 30, 40};
    editor.store().Paste({object}, {});
}
void RenameOne(SEditor& editor, int n)
{
    editor.store().Rename(editor.geometry.GetAt(n % kCount), QString::number(n));
}
void DeleteOne(SEditor& editor, int n)
{
    editor.geometry.UnSelectedAll();
    editor.geometry.GetAt(n % 5000)->SetSelected(true);
    editor.ctrl.DeleteSelectedObjects();
}
void RaiseOne(SEditor& editor, int n)
{
    editor.store().Raise({editor.geometry.GetAt(1 + n % 5000)});
}

/// Steps with and without the journal in turn; the events that they leave behind belong to them.
void BM_StepWithJournal(benchmark::State& state, Step step)
{
    SEditor with(MakeDocument(kCount), true), without(MakeDocument(kCount));
    std::vector<double> vctWith, vctWithout, vctMore;
    int n = 0;
    const auto timed = [&](SEditor& editor) {
        return SecondsOf([&] {
            step(editor, n);
            QCoreApplication::processEvents();
        });
    };
    step(with, n); // makes the file
    step(without, n);
    for (auto _ : state) {
        ++n;
        vctWith.push_back(timed(with));
        vctWithout.push_back(timed(without));
        vctMore.push_back(vctWith.back() - vctWithout.back());
        state.SetIterationTime(vctWith.back());
        DropLog();
    }
    const double dblMean = std::accumulate(vctMore.begin(), vctMore.end(), 0.0) / double(vctMore.size());
    state.counters["with_ms"] = MedianOf(vctWith) * 1e3;
    state.counters["without_ms"] = MedianOf(vctWithout) * 1e3;
    state.counters["more_ms"] = MedianOf(vctMore) * 1e3;
    state.counters["more_mean_ms"] = dblMean * 1e3;
    state.counters["x_limit"] = MedianOf(vctMore) * 1e3 / kStepLimit;
    if (!with.store().HasUnsaved())
        state.SkipWithError("nothing was done");
}
#define STEP(name, count)                                                                                    \
    BENCHMARK_CAPTURE(BM_StepWithJournal, name, name)                                                        \
        ->UseManualTime()                                                                                    \
        ->Unit(benchmark::kMillisecond)                                                                      \
        ->Iterations(count)
STEP(MoveOne, 500);
STEP(AddOne, 500);
STEP(RenameOne, 500);
STEP(DeleteOne, 500);
STEP(RaiseOne, 50);

QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// A file in place of another, with all its bytes on the disk.
void ReplaceFile(const QString& strPath, const QByteArray& bytes)
{
    const QByteArray target = strPath.toUtf8(), fresh = target + ".new";
    const int nFile = ::open(fresh.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (nFile < 0 ||
        ::write(nFile, bytes.constData(), static_cast<std::size_t>(bytes.size())) != bytes.size() ||
        ::fsync(nFile) != 0 || ::close(nFile) != 0 || ::rename(fresh.constData(), target.constData()) != 0)
        qFatal("cannot write");
}

void BM_Save(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString strPath = folder.filePath(QStringLiteral("a.vantor.json"));
    SEditor editor(MakeDocument(kCount));
    std::vector<double> vctCall;
    const auto save = [&] { // over the file that it has saved before, as the viewer does
        vctCall.push_back(SecondsOf([&] {
            editor.store().Save(strPath, QLatin1String(Vantor::Annotations::kOwnFormat),
                                CAnnotationStore::kShown, EAnnotationsReplace_Known);
        }));
        editor.AwaitFile();
    };
    save();
    const QByteArray bytes = Content(strPath);
    const QJsonDocument json = QJsonDocument::fromJson(bytes);
    const QString strOther = folder.filePath(QStringLiteral("other"));
    VantorBench::Compare(
        state, save, [&] { ReplaceFile(strOther, json.toJson(QJsonDocument::Compact)); },
        [&] { ReplaceFile(strOther, bytes); });
    state.counters["gui_ms"] = MedianOf(vctCall) * 1e3;
    state.counters["kilobytes"] = bytes.size() / 1e3;
    if (!editor.failure.empty() || bytes.isEmpty())
        state.SkipWithError("not saved");
}
BENCHMARK(BM_Save)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(21);

void BM_Open(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString strPath = folder.filePath(QStringLiteral("a.vantor.json"));
    {
        SEditor editor(MakeDocument(kMany));
        editor.store().Save(strPath);
        editor.AwaitFile();
    }
    const QByteArray bytes = Content(strPath);
    std::unique_ptr<SEditor> pEditor;
    std::vector<double> vctRead;
    VantorBench::Compare(
        state,
        [&] {
            pEditor->store().Load(strPath);
            pEditor->AwaitFile();
        },
        [&] {
            if (!QJsonDocument::fromJson(Content(strPath)).isObject())
                qFatal("not read");
        },
        [&] { benchmark::DoNotOptimize(Content(strPath)); },
        [&] {
            SDocument document;
            vctRead.push_back(SecondsOf([&] { Load(strPath.toStdString(), {}, {}, document); }));
            pEditor = std::make_unique<SEditor>(SDocument());
            DropLog();
        });
    state.counters["read_ms"] = MedianOf(vctRead) * 1e3;
    state.counters["megabytes"] = bytes.size() / 1e6;
    if (pEditor->geometry.Size() != kMany)
        state.SkipWithError("not all are there");
}
BENCHMARK(BM_Open)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

/// The table on the screen, from the end of a step until its rows are painted anew.
void BM_TableFollows(benchmark::State& state, Step step)
{
    SEditor editor(MakeDocument(kCount));
    CAnnotationTableView table;
    table.resize(500, 700);
    table.show();
    table.GetModel()->SetGeometryModel(&editor.geometry);
    bool bFollowed = false;
    QObject::connect(table.GetModel(), &CAnnotationTableModel::signal_Followed, [&] { bFollowed = true; });
    const auto follow = [&] {
        while (!bFollowed)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
        bFollowed = false;
    };
    follow();
    std::vector<double> vctFollow;
    int n = 0;
    for (auto _ : state) {
        step(editor, ++n);
        vctFollow.push_back(SecondsOf(follow));
        state.SetIterationTime(vctFollow.back());
        DropLog();
    }
    state.counters["ours_ms"] = MedianOf(vctFollow) * 1e3;
    state.counters["worst_ms"] = *std::max_element(vctFollow.begin(), vctFollow.end()) * 1e3;
    state.counters["x_limit"] = MedianOf(vctFollow) * 1e3 / kFrame;
    if (table.GetModel()->rowCount() != editor.geometry.Size())
        state.SkipWithError("the table has other rows");
}
#define FOLLOWS(name)                                                                                        \
    BENCHMARK_CAPTURE(BM_TableFollows, name, name)                                                           \
        ->UseManualTime()                                                                                    \
        ->Unit(benchmark::kMillisecond)                                                                      \
        ->Iterations(50)
FOLLOWS(MoveOne);
FOLLOWS(AddOne);
FOLLOWS(DeleteOne);
FOLLOWS(RaiseOne);
} // namespace

int main(int argc, char* argv[])
{
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", state.path().toUtf8());
    QApplication app(argc, argv);
    auto* pLog = CLogModel::GetInstance();
    QObject::disconnect(pLog, &CLogModel::signal_NewMessage, pLog, &CLogModel::slot_NewMessage);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
