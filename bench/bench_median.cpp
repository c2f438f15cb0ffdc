// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CImage::MedianFilter against OpenCV, after a comparison of the results; the limit is a memcpy of the same
// bytes into a warm buffer. One thread means one processor for the process.
#include "bench/FilterSubject.h"

#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPolygon.h>

#include <opencv2/imgproc.hpp>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CLine;
using Vantor::Geometry::CPoint;
using Vantor::Geometry::CPolygon;
using VantorBench::SFilterSubject;

namespace
{
void Filter(CImage& image, int radius, const CPolygon* region = nullptr)
{
    image.MedianFilter(radius, radius, region, ERegionMode::Inside, 0.0);
}

bool IsLikeThePeer(benchmark::State& state, const SFilterSubject& subject, int radius)
{
    CImage ours;
    ours.CopyFrom(&subject.image);
    Filter(ours, radius);
    cv::Mat peer;
    cv::medianBlur(subject.mat, peer, 2 * radius + 1);
    return subject.IsEqual(state, ours, peer);
}

void InPlace(benchmark::State& state)
{
    SFilterSubject subject(state);
    if (!IsLikeThePeer(state, subject, 1))
        return;
    VantorBench::Compare(
        state, [&] { Filter(subject.image, 1); }, [&] { cv::medianBlur(subject.mat, subject.mat, 3); },
        [&] { subject.Memcpy(); });
}

/// The peer writes into another image; filtering in place would have to copy it back.
void AgainstAnotherTarget(benchmark::State& state)
{
    SFilterSubject subject(state);
    cv::Mat target;
    VantorBench::Compare(
        state, [&] { Filter(subject.image, 1); }, [&] { cv::medianBlur(subject.mat, target, 3); },
        [&] { subject.Memcpy(); });
}

void WithTheCopy(benchmark::State& state)
{
    SFilterSubject subject(state);
    VantorBench::Compare(
        state,
        [&] {
            CImage copy;
            copy.CopyFrom(&subject.image);
            Filter(copy, 1);
        },
        [&] {
            cv::Mat copy = subject.mat.clone();
            cv::medianBlur(copy, copy, 3);
        },
        [&] { subject.Memcpy(); });
}

/// A polygon that fills about half of its bounding box, which is the image.
void InPolygon(benchmark::State& state)
{
    SFilterSubject subject(state);
    const int w = subject.mat.cols;
    const int h = subject.mat.rows;
    const std::vector<cv::Point> vctPoints = {{0, h / 2},         {w / 3, 0}, {w, h / 4},
                                              {w * 3 / 5, h / 2}, {w, h},     {w / 4, h * 4 / 5}};
    CPolygon polygon;
    for (std::size_t i = 0; i < vctPoints.size(); ++i) {
        const cv::Point& a = vctPoints[i];
        const cv::Point& b = vctPoints[(i + 1) % vctPoints.size()];
        polygon.AddEdge(CLine(CPoint<double>(a.x, a.y), CPoint<double>(b.x, b.y)));
    }
    cv::Mat target;
    VantorBench::Compare(
        state, [&] { Filter(subject.image, 1, &polygon); },
        [&] {
            cv::Mat mask = cv::Mat::zeros(subject.mat.size(), CV_8U);
            cv::fillPoly(mask, std::vector<std::vector<cv::Point>>{vctPoints}, cv::Scalar(255));
            cv::medianBlur(subject.mat, target, 3);
            target.copyTo(subject.mat, mask);
        },
        [&] { subject.Memcpy(); });
}

/// Makes the same copy before each round, because the time depends a little on the pixels.
template <int Radius> void Window(benchmark::State& state)
{
    SFilterSubject subject(state);
    if (!IsLikeThePeer(state, subject, Radius))
        return;
    cv::Mat target;
    VantorBench::Compare(
        state,
        [&] {
            subject.copy.CopyFrom(&subject.image);
            Filter(subject.copy, Radius);
        },
        [&] { cv::medianBlur(subject.mat, target, 2 * Radius + 1); }, [&] { subject.Memcpy(); });
}
void Window5x5(benchmark::State& state)
{
    Window<2>(state);
}
void Window15x15(benchmark::State& state)
{
    Window<7>(state);
}
void Window101x101(benchmark::State& state)
{
    Window<50>(state);
}

void FourMegapixels(benchmark::internal::Benchmark* bench)
{
    VantorBench::FilterSizes(bench, 2400, 1800);
}
} // namespace

BENCHMARK(InPlace)->Apply(VantorBench::Camera)->Apply(VantorBench::HundredMegapixels);
BENCHMARK(AgainstAnotherTarget)->Apply(VantorBench::Camera);
BENCHMARK(WithTheCopy)->Apply(VantorBench::Camera);
BENCHMARK(InPolygon)->Apply(VantorBench::Camera);
BENCHMARK(Window5x5)->Apply(FourMegapixels);
BENCHMARK(Window15x15)->Apply(FourMegapixels);
BENCHMARK(Window101x101)->Apply(FourMegapixels);
BENCHMARK_MAIN();
