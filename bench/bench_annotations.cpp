// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Painting 1,000 and 10,000 annotations, all of them or one in a hundred visible, and deselecting 10,000 with
// the paint that follows. The peer paints the same with a plain QPainter, object by object, including those
// off the screen. The steps of gestures among 10,000 visible ones, each with the events and the paints that
// it leads to, need a display of 1920 x 1080 (XRUN_SCREEN); their limit is a frame of 8 ms.
#include "bench/BenchSupport.h"

#include "tests/support/ViewReference.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QMouseEvent>

namespace
{
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

/// A view of objects without an image: of each hundred, the first nVisiblePercent lie on the screen.
struct SScene {
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D view{&model, &geometry, &tools, 0, nullptr};
    QImage target{kWidth, kHeight, QImage::Format_RGB32};

    /// The image's width decides the scale, and so whether Qt treats pens of one widget pixel as thin.
    SScene(int nCount, int nVisiblePercent, bool bNames, int nImageWidth = kWidth)
    {
        view.resize(kWidth, kHeight);
        auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
        pImage->Create(nImageWidth, nImageWidth * 9 / 16, 1, 8, Vantor::Algorithms::EImageType::Interleaved,
                       4);
        view.render(&target);
        model.SetImages({pImage});
        CImageView2DGeometryModel::ObjectList objects;
        for (int i = 0; i < nCount; ++i) {
            const double dblAway = i % 100 < nVisiblePercent ? 0.0 : 5000.0;
            auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
            const double k = double(nImageWidth) / kWidth;
            const double x = k * (20 + (i * 37) % 1800), y = k * (40 + (i * 53) % 980 + dblAway);
            const double w = k * 60, h = k * 40;
            if (i % 2)
                pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(x, y, w, h));
            else
                pObject->SetData(std::make_shared<Vantor::Geometry::CEllipse>(x, y, w, h));
            pObject->SetDisplayName(bNames);
            objects.push_back(std::move(pObject));
        }
        geometry.RestoreObjects(objects);
    }

    void Paint()
    {
        QPainter painter(&target);
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    }
};

void Annotations(benchmark::State& state)
{
    const auto nCount = static_cast<int>(state.range(0));
    const auto nWidth = static_cast<int>(state.range(3));
    SScene scene(nCount, static_cast<int>(state.range(1)), state.range(2) != 0, nWidth);
    const ViewReference reference(scene.view.size(), scene.view.GetViewPort(),
                                  QRect(0, 0, nWidth, nWidth * 9 / 16));
    const auto objects = scene.geometry.GetObjects();
    VantorBench::Compare(
        state, [&] { scene.Paint(); },
        [&] {
            scene.target.fill(QColor(120, 120, 120));
            reference.PaintObjects(scene.target, objects);
        });
    state.counters["us_each"] = state.counters["ours_ms"] * 1e3 / nCount;
}

void UnSelectAll(benchmark::State& state)
{
    SScene scene(10000, 0, false);
    const auto objects = scene.geometry.GetObjects();
    std::vector<double> vctSeconds;
    for (auto _ : state) {
        for (const auto& pObject : objects)
            pObject->SetSelected(true);
        scene.Paint();
        vctSeconds.push_back(VantorBench::SecondsOf([&] {
            scene.geometry.UnSelectedAll();
            scene.Paint();
        }));
        state.SetIterationTime(vctSeconds.back());
    }
    const double dblPaint = VantorBench::SecondsOf([&] { scene.Paint(); });
    state.counters["ours_ms"] = VantorBench::MedianOf(vctSeconds) * 1e3;
    state.counters["paint_ms"] = dblPaint * 1e3;
}

constexpr double kFrameLimit = 8.0; // milliseconds

/// The scene on the screen, edited by mouse events.
struct SGestures : SScene {
    CImageView2DCtrl ctrl{&model, &geometry, &tools, &view, nullptr, nullptr, nullptr};

    SGestures(bool bNames, int nImageWidth) : SScene(10000, 100, bNames, nImageWidth)
    {
        view.show();
        while (!view.isActiveWindow()) {
            view.activateWindow();
            QApplication::processEvents();
        }
        Finish();
    }

    static void Finish()
    {
        for (int i = 0; i < 3; ++i)
            QApplication::sendPostedEvents();
    }

    void Send(QEvent::Type type, const QPoint& pos, bool bDown)
    {
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, pos, view.mapToGlobal(pos), button, bDown ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(&view, &event);
    }
    void Press(const QPoint& pos) { Send(QEvent::MouseButtonPress, pos, true); }
    void Move(const QPoint& pos, bool bDown) { Send(QEvent::MouseMove, pos, bDown); }
    void Release(const QPoint& pos) { Send(QEvent::MouseButtonRelease, pos, false); }
};

/// Moves the mouse by a few pixels for each frame.
void Steps(benchmark::State& state, SGestures& scene, const QPoint& start, bool bDown)
{
    std::vector<double> vctSeconds;
    int n = 0;
    for (auto _ : state) {
        const QPoint pos = start + QPoint(3 + 4 * (n % 10), 2 + 3 * (n % 10));
        ++n;
        vctSeconds.push_back(VantorBench::SecondsOf([&] {
            scene.Move(pos, bDown);
            SGestures::Finish();
        }));
        state.SetIterationTime(vctSeconds.back());
        while (!CLogModel::GetInstance()->IsEmpty())
            CLogModel::GetInstance()->slot_OnTimer();
    }
    const double dblStep = VantorBench::MedianOf(vctSeconds) * 1e3;
    state.counters["frame_ms"] = dblStep;
    state.counters["x_limit"] = dblStep / kFrameLimit;
}

void DragOne(benchmark::State& state)
{
    SGestures scene(state.range(0) != 0, static_cast<int>(state.range(1)));
    const auto pObject = scene.geometry.GetAt(5000);
    const QPoint inside = scene.view.MapToWidget(pObject->GetBoundary().center()).toPoint();
    pObject->SetSelected(true);
    scene.Move(inside, false);
    scene.Press(inside);
    scene.Move(inside + QPoint(1, 1), true);
    SGestures::Finish();
    Steps(state, scene, inside, true);
    scene.Release(inside);
}

void Hover(benchmark::State& state)
{
    SGestures scene(state.range(0) != 0, static_cast<int>(state.range(1)));
    Steps(state, scene, QPoint(500, 400), false);
}

/// With everything selected, so that the band changes nothing but itself.
void RubberBand(benchmark::State& state)
{
    SGestures scene(state.range(0) != 0, static_cast<int>(state.range(1)));
    for (const auto& pObject : scene.geometry.GetObjects())
        pObject->SetSelected(true);
    const QPoint corner(2, 2);
    scene.Move(corner, false);
    scene.Press(corner);
    scene.Move(QPoint(1800, 900), true);
    SGestures::Finish();
    Steps(state, scene, QPoint(1800, 900), true);
    scene.Release(corner);
}

void WaitingSegment(benchmark::State& state)
{
    SGestures scene(state.range(0) != 0, static_cast<int>(state.range(1)));
    scene.tools.SetViewMode(EImageView2DMode_Drawing_Polygon);
    scene.Press(QPoint(2, 2));
    scene.Release(QPoint(2, 2));
    scene.Move(QPoint(1800, 900), false);
    SGestures::Finish();
    Steps(state, scene, QPoint(1800, 900), false);
}
} // namespace

BENCHMARK(Annotations)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"count", "visible", "names", "width"})
    ->ArgsProduct({{1000, 10000}, {1, 100}, {0, 1}, {kWidth, 3000}})
    ->Iterations(5);
#define GESTURE(name)                                                                                        \
    BENCHMARK(name)                                                                                          \
        ->UseManualTime()                                                                                    \
        ->Unit(benchmark::kMillisecond)                                                                      \
        ->ArgNames({"names", "width"})                                                                       \
        ->ArgsProduct({{0, 1}, {kWidth, 3000}})                                                              \
        ->Iterations(31)
GESTURE(DragOne);
GESTURE(Hover);
GESTURE(RubberBand);
GESTURE(WaitingSegment);
BENCHMARK(UnSelectAll)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
