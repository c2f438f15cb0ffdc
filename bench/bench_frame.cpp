// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// One frame of the 2D view at 1080p: fit, 1:1, 8x and 60x, for images of 4, 24 and 100 megapixels. The peer
// is QPainter::drawImage of the same part of the image into the same target (at 60x the view also draws the
// grid and the values). The limit is a memcpy of the target.
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QApplication>
#include <QPainter>
#include <QThreadPool>
#include <QWheelEvent>
#include <cmath>
#include <cstring>

using Vantor::Algorithms::CImage;

namespace
{
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

/// The size of an image of about nMegapixels, 3 : 2.
QSize SizeOf(int nMegapixels)
{
    const int nHeight = static_cast<int>(std::sqrt(nMegapixels * 1e6 / 1.5));
    return QSize(nHeight * 3 / 2, nHeight);
}

std::shared_ptr<CImage> MakeImage(const QSize& size, int nChannels)
{
    auto pImage = std::make_shared<CImage>();
    pImage->Create(size.width(), size.height(), nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 4);
    unsigned int nState = 1;
    for (int y = 0; y < size.height(); ++y)
        for (int i = 0; i < size.width() * nChannels; ++i)
            pImage->GetRows()[y][i] =
                static_cast<unsigned char>((nState = nState * 1664525u + 1013904223u) >> 24);
    return pImage;
}

void Turn(CImageView2D& view, int nDelta)
{
    const QPointF pos(kWidth * 0.5, kHeight * 0.5);
    QWheelEvent event(pos, pos, QPoint(), QPoint(0, nDelta), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&view, &event);
}

/// Widget pixels per image pixel, 0 for the whole image.
void Frame(benchmark::State& state)
{
    const QSize size = SizeOf(static_cast<int>(state.range(0)));
    const double dblScale = static_cast<double>(state.range(1));
    const auto nChannels = static_cast<int>(state.range(2));
    const auto pImage = MakeImage(size, nChannels);
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D view(&model, &geometry, &tools, 0, nullptr);
    QImage target(kWidth, kHeight, QImage::Format_RGB32);
    view.resize(kWidth, kHeight);
    view.render(&target); // delivers the resize
    model.SetImages({pImage});
    while (dblScale > 0.0 && std::abs(view.GetSizePixel() / dblScale - 1.0) > 0.001) {
        const double dblStep = std::clamp(dblScale / view.GetSizePixel() - 1.0, -0.5, 1.0);
        Turn(view, static_cast<int>(std::lround(dblStep * 1000)));
        if (std::lround(dblStep * 1000) == 0)
            break;
    }

    QImage wrapped;
    CUtilManager::ConvertImage(pImage.get(), wrapped, false);
    const QRect viewPort = view.GetViewPort();
    const QRectF source = view.MapToImage(QRectF(view.rect())) & QRectF(wrapped.rect());
    const auto ours = [&] {
        QPainter painter(&target);
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    };
    const auto peer = [&] {
        QPainter painter(&target);
        painter.fillRect(target.rect(), QColor(120, 120, 120));
        painter.setViewport(viewPort);
        painter.setWindow(wrapped.rect());
        painter.drawImage(source, wrapped, source);
    };
    QImage from(target.size(), target.format());
    from.fill(1);
    const auto limit = [&] {
        std::memcpy(target.bits(), std::as_const(from).bits(), static_cast<size_t>(target.sizeInBytes()));
    };
    VantorBench::Compare(state, ours, peer, limit);
    state.counters["scale"] = view.GetSizePixel();
}

void Smooth(benchmark::State& state)
{
    const QSize size = SizeOf(static_cast<int>(state.range(0)));
    const auto nChannels = static_cast<int>(state.range(1));
    const bool bFirst = state.range(2) != 0;
    const auto pImage = MakeImage(size, nChannels);
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D view(&model, &geometry, &tools, 0, nullptr);
    QImage target(kWidth, kHeight, QImage::Format_RGB32);
    view.SetImageLook(true, state.range(3) != 0);
    view.resize(kWidth, kHeight);
    view.render(&target);
    model.SetImages({pImage});
    const auto paint = [&] {
        QPainter painter(&target);
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    };
    const auto settle = [&] {
        paint();
        QThreadPool::globalInstance()->waitForDone();
        QApplication::sendPostedEvents(&CJobs::Get());
        paint();
    };
    settle();
    int nDelta = 1; // hardly another size, but another one
    const auto prepare = [&] {
        QThreadPool::globalInstance()->waitForDone();
        if (bFirst)
            Turn(view, nDelta = -nDelta);
        else
            settle();
    };
    QImage wrapped;
    CUtilManager::ConvertImage(pImage.get(), wrapped, false);
    const auto peer = [&] {
        QPainter painter(&target);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.fillRect(target.rect(), QColor(120, 120, 120));
        painter.drawImage(view.GetViewPort(), wrapped);
    };
    QImage from(target.size(), target.format());
    from.fill(1);
    const auto limit = [&] {
        std::memcpy(target.bits(), std::as_const(from).bits(), static_cast<size_t>(target.sizeInBytes()));
    };
    VantorBench::Compare(state, paint, peer, limit, prepare);
}
} // namespace

BENCHMARK(Frame)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"MP", "scale", "channels"})
    ->ArgsProduct({{4, 24, 100}, {0, 1, 8, 60}, {3}})
    ->ArgsProduct({{24}, {0, 8, 60}, {1, 4}})
    ->Iterations(15);
BENCHMARK(Smooth)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"MP", "channels", "first", "squares"})
    ->ArgsProduct({{4, 24, 100, 400}, {3}, {0, 1}, {0}})
    ->ArgsProduct({{24, 100}, {1, 4}, {0, 1}, {0}})
    ->ArgsProduct({{24}, {4}, {0}, {1}})
    ->Iterations(7);

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
