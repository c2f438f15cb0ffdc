// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The 3D view at work, with a display: the upload of a height field to OpenGL, and the time from pressing 3D
// in a viewer to the first frame with the relief.
//
// Upload: the peer passes the same bytes to two fresh buffers; the limit is a memcpy of them into warm
// memory. FirstFrame: the peer does only what is indispensable, one after the other: the mesh, the upload and
// one frame.
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <QApplication>
#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QSignalBlocker>
#include <QThreadPool>
#include <cstring>
#include <memory>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kWidth = 808;
constexpr int kHeight = 808;
constexpr unsigned char kRed = 200;

std::shared_ptr<CImage> MakeSource(int nSide)
{
    auto pImage = std::make_shared<CImage>();
    pImage->Create(nSide, nSide, 3, 8, EImageType::Interleaved, 4);
    for (int y = 0; y < nSide; ++y)
        for (int x = 0; x < nSide; ++x) {
            unsigned char* p = pImage->GetPixel(x, y);
            p[0] = kRed;
            p[1] = static_cast<unsigned char>(x / 8 + y / 4);
            p[2] = static_cast<unsigned char>(255 - p[1]);
        }
    return pImage;
}

template <typename Condition> void WaitFor(const Condition& condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// A 3D view without a controller, in a window of its own.
struct SScene {
    CImageView3DModel model;
    CImageView3D view{&model, nullptr};

    SScene()
    {
        view.resize(kWidth, kHeight);
        view.show();
        view.grabFramebuffer(); // makes the context, if possible
    }
    void LoadSilently(const std::shared_ptr<CImage>& pImage)
    {
        const QSignalBlocker blocker(&model);
        model.LoadImage(pImage);
    }
    /// Waits for the driver; leaves the context current, as it is while the view paints.
    void Finish()
    {
        view.makeCurrent();
        view.context()->functions()->glFinish();
    }
};

void Upload(benchmark::State& state)
{
    SScene scene;
    if (!scene.view.isValid()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    const auto pImage = MakeSource(static_cast<int>(state.range(0)));
    scene.LoadSilently(pImage);
    const std::vector<float> vertices(scene.model.GetVerticesBuffer(),
                                      scene.model.GetVerticesBuffer() + scene.model.GetVerticesSize());
    const std::vector<unsigned int> indices(scene.model.GetIndicesBuffer(),
                                            scene.model.GetIndicesBuffer() + scene.model.GetIndicesSize());
    const std::size_t nBytes = vertices.size() * sizeof(float);
    std::vector<char> warm(nBytes + indices.size() * sizeof(unsigned int));
    const auto fill = [](QOpenGLBuffer& buffer, const void* pData, std::size_t n) {
        buffer.create();
        buffer.bind();
        buffer.allocate(pData, static_cast<int>(n));
    };
    VantorBench::Compare(
        state,
        [&] {
            scene.view.slot_LoadFinished();
            scene.Finish();
        },
        [&] {
            QOpenGLBuffer vertexBuffer(QOpenGLBuffer::VertexBuffer);
            QOpenGLBuffer indexBuffer(QOpenGLBuffer::IndexBuffer);
            scene.view.makeCurrent();
            fill(vertexBuffer, vertices.data(), nBytes);
            fill(indexBuffer, indices.data(), indices.size() * sizeof(unsigned int));
            scene.Finish();
        },
        [&] {
            std::memcpy(warm.data(), vertices.data(), nBytes);
            std::memcpy(warm.data() + nBytes, indices.data(), warm.size() - nBytes);
        },
        [&] { scene.LoadSilently(pImage); });
}

/// Whether the view's frame shows the relief: its red is that of all images here.
bool ShowsRelief(CImageView3D& view)
{
    std::vector<unsigned char> column(std::size_t(view.height()) * 4);
    view.makeCurrent();
    view.context()->functions()->glReadPixels(view.width() / 2, 0, 1, view.height(), GL_RGBA,
                                              GL_UNSIGNED_BYTE, column.data());
    for (std::size_t i = 0; i < column.size(); i += 4)
        if (column[i] == kRed)
            return true;
    return false;
}

/// Waits from the press to the frame with the relief, through the pool thread and the event loop.
void PressAndWait(CImageViewer& viewer, CImageView3D& view)
{
    bool bShown = false;
    const auto connection =
        QObject::connect(&view, &QOpenGLWidget::frameSwapped, [&] { bShown = bShown || ShowsRelief(view); });
    viewer.slot_Press3D();
    WaitFor([&] { return bShown; });
    QObject::disconnect(connection);
}

void FirstFrame(benchmark::State& state)
{
    const auto pImage = MakeSource(static_cast<int>(state.range(0)));
    SScene scene;
    CImageViewerModel model;
    CImageView2DToolModel tool;
    CImageViewer viewer(&model, 0, nullptr);
    CImageViewerCtrl ctrl(&viewer, &model, &tool, nullptr, nullptr, nullptr);
    auto* pView = viewer.findChild<CImageView3D*>();
    if (!pView || !scene.view.isValid()) {
        state.SkipWithError("no OpenGL");
        return;
    }
    viewer.resize(kWidth, kHeight);
    viewer.show();
    ctrl.ChangeCurrentImage(pImage);
    VantorBench::Compare(
        state, [&] { PressAndWait(viewer, *pView); },
        [&] {
            scene.LoadSilently(pImage);
            scene.view.slot_LoadFinished();
            scene.view.grabFramebuffer();
        },
        {},
        [&] {
            viewer.slot_Press2D();
            QThreadPool::globalInstance()->waitForDone();
            QCoreApplication::processEvents();
        });
}
} // namespace

BENCHMARK(Upload)->ArgName("side")->Arg(1000)->Arg(2000)->Arg(4000)->UseManualTime()->Iterations(9);
BENCHMARK(FirstFrame)->ArgName("side")->Arg(1000)->UseManualTime()->Iterations(9);

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
