// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// MeasureRegions on one thread. The limit is a memcpy of the image's bytes into a warm buffer; the peer is
// OpenCV's meanStdDev, with a mask where there is a region, and its calcHist of every channel where there is
// a histogram. Moments are more than the peer's: extremes, centre of mass, and two greys of colours.
//
// FindComponents, which makes a polygon of each; the peer is OpenCV's inRange and
// connectedComponentsWithStats, which makes an image of labels.
#include "bench/FilterSubject.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/measure/Components.h>
#include <Vantor/measure/RegionStatistics.h>

#include <opencv2/imgproc.hpp>

#include <cmath>
#include <memory>

using namespace Vantor::Algorithms;
using namespace Vantor::Geometry;
using VantorBench::SFilterSubject;

namespace
{
/// The peer's statistics of the same pixels.
struct SPeer {
    cv::Mat mask;
    cv::Scalar mean, deviation;
    cv::Mat histogram;

    void Moments(const cv::Mat& image) { cv::meanStdDev(image, mean, deviation, mask); }
    void Histogram(const cv::Mat& image)
    {
        const int nBins = 256;
        const float arrRange[] = {0, 256};
        const float* pRange = arrRange;
        for (int c = 0; c < image.channels(); ++c)
            cv::calcHist(&image, 1, &c, mask, histogram, 1, &nBins, &pRange);
    }
    void Set(const CGeometry& shape, const cv::Mat& image)
    {
        mask = cv::Mat::zeros(image.rows, image.cols, CV_8U);
        for (const SPixelRun& run : shape.GetPixelRuns(image.cols, image.rows))
            mask.row(run.nRow).colRange(run.nBegin, run.nEnd).setTo(255);
    }
};

bool IsClose(double a, double b)
{
    return std::abs(a - b) < 1e-6 * std::max(1.0, std::abs(b));
}

/// Compares the mean of every channel, then measures.
void Run(benchmark::State& state, const CGeometry* region, EStatistics what)
{
    SFilterSubject subject(state);
    SPeer peer;
    if (region)
        peer.Set(*region, subject.mat);
    peer.Moments(subject.mat);
    const SRegionStatistics is = MeasureRegion(subject.image, region, what);
    for (int c = 0; c < subject.image.GetChannel(); ++c) {
        if (!is.failure.empty() || !IsClose(is.channels[static_cast<std::size_t>(c)].mean, peer.mean[c]))
            state.SkipWithError("the results differ");
    }
    VantorBench::Compare(
        state, [&] { MeasureRegion(subject.image, region, what); },
        [&] {
            peer.Moments(subject.mat);
            if (what == EStatistics::Full)
                peer.Histogram(subject.mat);
        },
        [&] { subject.Memcpy(); });
    state.counters["ns_pixel"] = state.counters["ours_ms"] * 1e6 / static_cast<double>(is.count);
}

/// A star of five points, which covers about half its box.
std::shared_ptr<CPolygon> MakeStar(double width, double height)
{
    CPointList corners;
    for (int i = 0; i < 10; ++i) {
        const double radius = i % 2 == 0 ? 0.5 : 0.37;
        const double angle = i * 0.6283185307179586;
        corners.Add(CPoint<double>(width * (0.5 + radius * std::sin(angle)),
                                   height * (0.5 - radius * std::cos(angle))));
    }
    auto star = std::make_shared<CPolygon>();
    star->SetPoints(corners);
    return star;
}

void WholeMoments(benchmark::State& state)
{
    Run(state, nullptr, EStatistics::Moments);
}

void WholeFull(benchmark::State& state)
{
    Run(state, nullptr, EStatistics::Full);
}

void PolygonMoments(benchmark::State& state)
{
    const auto star = MakeStar(static_cast<double>(state.range(1)), static_cast<double>(state.range(2)));
    Run(state, star.get(), EStatistics::Moments);
}

void PolygonFull(benchmark::State& state)
{
    const auto star = MakeStar(static_cast<double>(state.range(1)), static_cast<double>(state.range(2)));
    Run(state, star.get(), EStatistics::Full);
}

/// 10,000 regions in boxes of 20 x 20; the peer finds mean and deviation of the boxes. The limit is to find
/// the pixels of the regions. x_wanted: by a microsecond for each and two nanoseconds for each pixel.
void Small(benchmark::State& state, const std::shared_ptr<CGeometry>& shape, EStatistics what)
{
    SFilterSubject subject(state);
    std::vector<std::shared_ptr<CGeometry>> shapes;
    std::vector<const CGeometry*> regions;
    std::vector<cv::Rect> boxes;
    for (int i = 0; i < 10000; ++i) {
        const int nX = i % 100 * 59, nY = i / 100 * 39;
        shapes.push_back(shape->Clone());
        shapes.back()->MoveTopLeftTo(CPoint<double>(nX + 0.3, nY + 0.3));
        regions.push_back(shapes.back().get());
        boxes.emplace_back(nX, nY, 20, 20);
    }
    std::uint64_t nPixels = 0;
    for (const SRegionStatistics& is : MeasureRegions(subject.image, regions, what))
        nPixels += is.count;
    VantorBench::Compare(
        state, [&] { MeasureRegions(subject.image, regions, what); },
        [&] {
            cv::Scalar mean, deviation;
            for (const cv::Rect& box : boxes)
                cv::meanStdDev(subject.mat(box), mean, deviation);
        },
        [&] {
            for (const CGeometry* pRegion : regions)
                benchmark::DoNotOptimize(pRegion->GetPixelRuns(6000, 4000).data());
        });
    const double wanted = 10000 * 1e-3 + static_cast<double>(nPixels) * 2e-6; // ms
    state.counters["pixels_each"] = static_cast<double>(nPixels) / 10000;
    state.counters["x_wanted"] = state.counters["ours_ms"] / wanted;
}

void SmallBoxes(benchmark::State& state)
{
    Small(state, std::make_shared<CRectangle>(0, 0, 20, 20), EStatistics::Moments);
}

void SmallBoxesFull(benchmark::State& state)
{
    Small(state, std::make_shared<CRectangle>(0, 0, 20, 20), EStatistics::Full);
}

void SmallStars(benchmark::State& state)
{
    Small(state, MakeStar(20, 20), EStatistics::Moments);
}

/// Finds what is white. The peer counts the same components and pixels.
void Components(benchmark::State& state, const SFilterSubject& subject)
{
    SComponentOptions options;
    options.most = 24000000;
    cv::Mat mask, labels, statistics, centroids;
    const auto peer = [&] {
        cv::inRange(subject.mat, cv::Scalar(128), cv::Scalar(255), mask);
        return cv::connectedComponentsWithStats(mask, labels, statistics, centroids, 8, CV_32S) - 1;
    };
    const SComponents is = FindComponents(subject.image, nullptr, options);
    std::uint64_t nPixels = 0;
    for (const SComponent& component : is.found)
        nPixels += component.count;
    if (static_cast<int>(is.found.size()) != peer() ||
        nPixels != static_cast<std::uint64_t>(cv::countNonZero(mask)))
        state.SkipWithError("the results differ");
    VantorBench::Compare(
        state, [&] { FindComponents(subject.image, nullptr, options); }, [&] { peer(); },
        [&] { std::memcpy(mask.data, subject.mat.data, subject.nBytes); });
    state.counters["components"] = static_cast<double>(is.found.size());
}

/// 9,600 discs with radii up to 22 pixels.
void ComponentsOfDiscs(benchmark::State& state)
{
    SFilterSubject subject(state);
    for (int y = 0; y < 4000; ++y) {
        for (int x = 0; x < 6000; ++x) {
            const int nX = x % 50 - 25, nY = y % 50 - 25;
            const int nRadius = 3 + (x / 50 * 7 + y / 50 * 13) % 20;
            *subject.image.GetPixel(x, y) = nX * nX + nY * nY < nRadius * nRadius ? 200 : 30;
        }
    }
    std::memcpy(subject.mat.data, subject.image.GetData(), subject.nBytes);
    Components(state, subject);
}

/// Slopes with noise, where they cross the threshold.
void ComponentsOfSlopes(benchmark::State& state)
{
    const SFilterSubject subject(state);
    Components(state, subject);
}

/// Nothing but noise, of which a tenth is white: the most components there can be, about.
void ComponentsOfNoise(benchmark::State& state)
{
    SFilterSubject subject(state);
    unsigned nNoise = 1;
    for (std::size_t i = 0; i < subject.nBytes; ++i) {
        nNoise = nNoise * 1664525u + 1013904223u;
        subject.image.GetData()[i] = nNoise >> 24 < 230 ? 0 : 255;
    }
    std::memcpy(subject.mat.data, subject.image.GetData(), subject.nBytes);
    Components(state, subject);
}

/// 24 megapixels, one thread.
void OneThreadGrey(benchmark::internal::Benchmark* bench)
{
    bench->Args({1, 6000, 4000, 1})
        ->ArgNames({"channels", "width", "height", "threads"})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(0.2);
}
void OneThread(benchmark::internal::Benchmark* bench)
{
    OneThreadGrey(bench);
    bench->Args({3, 6000, 4000, 1});
}
} // namespace

BENCHMARK(WholeMoments)->Apply(OneThread);
BENCHMARK(WholeFull)->Apply(OneThread);
BENCHMARK(PolygonMoments)->Apply(OneThread);
BENCHMARK(PolygonFull)->Apply(OneThread);
BENCHMARK(SmallBoxes)->Apply(OneThread);
BENCHMARK(SmallBoxesFull)->Apply(OneThread);
BENCHMARK(SmallStars)->Apply(OneThread);
BENCHMARK(ComponentsOfDiscs)->Apply(OneThreadGrey);
BENCHMARK(ComponentsOfSlopes)->Apply(OneThreadGrey);
BENCHMARK(ComponentsOfNoise)->Apply(OneThreadGrey);
BENCHMARK_MAIN();
