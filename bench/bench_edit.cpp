// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Editing among 10,000 annotations through the view's own events: the time that the user waits, and the share
// of painting in it. Needs a display. Limits: a second for operations on all, 16 ms for a drag step of one,
// without painting.
#include "BenchSupport.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QMouseEvent>

using VantorBench::SecondsOf;

namespace
{
constexpr int kColumns = 100;
constexpr int kRows = 100;
constexpr int kCell = 8; // image pixels; a shape of 6 x 6 in each cell
constexpr double kAllLimit = 1e3;
constexpr double kStepLimit = 16.0;

/// A view of 808 x 808 with an image of that size, so that one image pixel is one widget pixel.
struct SEditor {
    SEditor()
    {
        const auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
        const int nSize = kColumns * kCell + 8;
        pImage->Create(nSize, nSize, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 4);
        view.resize(nSize, nSize);
        images.SetImages({pImage});
        for (int i = 0; i < kColumns * kRows; ++i) {
            const auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
            pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(
                4 + kCell * (i % kColumns), 4 + kCell * (i / kColumns), 6, 6));
            geometry.AddObject(pObject);
            pObject->SetSelected(false);
        }
        view.show();
        view.activateWindow();
        while (!view.hasFocus()) {
            view.setFocus();
            QApplication::processEvents();
        }
        Paint();
    }

    void Send(QEvent::Type type, const QPoint& pos, bool bDown)
    {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, pos, view.mapToGlobal(pos), button, bDown ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&view, &event);
    }
    void Hover(const QPoint& pos) { Send(QEvent::MouseMove, pos, false); }
    void Press(const QPoint& pos) { Send(QEvent::MouseButtonPress, pos, true); }
    void Move(const QPoint& pos) { Send(QEvent::MouseMove, pos, true); }
    void Release(const QPoint& pos) { Send(QEvent::MouseButtonRelease, pos, false); }
    void Key(int nKey)
    {
        QKeyEvent event(QEvent::KeyPress, nKey, Qt::NoModifier);
        QApplication::sendEvent(&view, &event);
    }
    void Paint() { view.repaint(); }
    /// Drops the log, whose writing is not the editor's time.
    static void DropLog()
    {
        while (!CLogModel::GetInstance()->IsEmpty())
            CLogModel::GetInstance()->slot_OnTimer();
    }

    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tool;
    CImageView2D view{&images, &geometry, &tool, 0, nullptr};
    CImageView2DCtrl ctrl{&images, &geometry, &tool, &view, nullptr, nullptr, nullptr};
};

/// Times one operation on all objects, once with and once without the paint that follows it.
/// @param prepare, tidy bring the editor to the state in which the operation starts, and back; not timed
void Measure(benchmark::State& state, SEditor& editor, double dblLimit, const VantorBench::Callable& prepare,
             const VantorBench::Callable& operation, const VantorBench::Callable& tidy)
{
    std::vector<double> vctWork, vctPaint;
    for (auto _ : state) {
        prepare();
        vctWork.push_back(SecondsOf(operation));
        vctPaint.push_back(SecondsOf([&] { editor.Paint(); }));
        state.SetIterationTime(vctWork.back() + vctPaint.back());
        tidy();
        SEditor::DropLog();
    }
    const double dblWork = VantorBench::MedianOf(vctWork) * 1e3;
    const double dblPaint = VantorBench::MedianOf(vctPaint) * 1e3;
    state.counters["work_ms"] = dblWork;
    state.counters["paint_ms"] = dblPaint;
    state.counters["paint_share"] = dblPaint / (dblWork + dblPaint);
    state.counters["x_limit"] = dblWork / dblLimit;
}

const QPoint kCorner(1, 1);
const QPoint kBeyond(806, 806);
const QPoint kInside(7, 7); // in the middle of the first shape

void BM_RubberBandAll(benchmark::State& state)
{
    SEditor editor;
    // No hovering before, because the corner is within reach of a handle, which the drag would pull.
    Measure(
        state, editor, kAllLimit, [&] { editor.geometry.UnSelectedAll(); },
        [&] {
            editor.Press(kCorner);
            editor.Move(kBeyond);
            editor.Release(kBeyond);
        },
        [] {});
    if (!editor.geometry.GetAt(0)->GetSelected())
        state.SkipWithError("the band selected nothing");
}
BENCHMARK(BM_RubberBandAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

void SelectEvery(SEditor& editor)
{
    for (const auto& pObject : editor.geometry.GetObjects())
        pObject->SetSelected(true);
}

/// Times the press, one move and, separately, the release.
void Drag(benchmark::State& state, bool bAll)
{
    SEditor editor;
    if (bAll)
        SelectEvery(editor);
    editor.Press(kInside);
    editor.Move(kInside + QPoint(1, 0));
    int n = 0;
    Measure(
        state, editor, bAll ? kAllLimit : kStepLimit, [] {},
        [&] { editor.Move(kInside + QPoint(2 + ++n % 5, 0)); }, [] {});
    editor.Release(kInside + QPoint(4, 0));
}

void BM_DragStepOfAll(benchmark::State& state)
{
    Drag(state, true);
}
BENCHMARK(BM_DragStepOfAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

void BM_DragStepOfOne(benchmark::State& state)
{
    Drag(state, false);
}
BENCHMARK(BM_DragStepOfOne)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

void BM_FirstDragStepAndReleaseOfAll(benchmark::State& state)
{
    SEditor editor;
    SelectEvery(editor);
    Measure(
        state, editor, kAllLimit, [] {},
        [&] {
            editor.Press(kInside);
            editor.Move(kInside + QPoint(3, 0));
            editor.Release(kInside + QPoint(3, 0));
        },
        [&] { editor.ctrl.Undo(); });
}
BENCHMARK(BM_FirstDragStepAndReleaseOfAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

void BM_Hover(benchmark::State& state)
{
    SEditor editor;
    int n = 0;
    Measure(
        state, editor, kStepLimit, [] {}, [&] { editor.Hover(QPoint(400 + ++n % 2, 806)); }, [] {});
}
BENCHMARK(BM_Hover)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

void BM_DeleteAll(benchmark::State& state)
{
    SEditor editor;
    Measure(
        state, editor, kAllLimit, [&] { SelectEvery(editor); }, [&] { editor.Key(Qt::Key_Delete); },
        [&] { editor.ctrl.Undo(); });
}
BENCHMARK(BM_DeleteAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_UndoDeleteAll(benchmark::State& state)
{
    SEditor editor;
    Measure(
        state, editor, kAllLimit,
        [&] {
            SelectEvery(editor);
            editor.Key(Qt::Key_Delete);
        },
        [&] { editor.ctrl.Undo(); }, [] {});
    if (editor.geometry.Size() != kColumns * kRows)
        state.SkipWithError("not all came back");
}
BENCHMARK(BM_UndoDeleteAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    auto* pLog = CLogModel::GetInstance();
    QObject::disconnect(pLog, &CLogModel::signal_NewMessage, pLog, &CLogModel::slot_NewMessage);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
