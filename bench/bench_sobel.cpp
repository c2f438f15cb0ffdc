// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CImage::SobelX, SobelY and SobelXY in place against OpenCV's steps to the same bytes, after a comparison of
// the results; the limit is a memcpy of the same bytes into a warm buffer.
#include "bench/FilterSubject.h"

#include <opencv2/imgproc.hpp>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;
using VantorBench::SFilterSubject;

namespace
{
/// The peer's steps; it keeps its buffers between the rounds.
struct SPeer {
    cv::Mat x, y, xFloat, yFloat, length, target;

    void Gradient(const cv::Mat& mat, int dx, int dy)
    {
        cv::Sobel(mat, x, CV_16S, dx, dy, 3, 1.0, 0.0, cv::BORDER_REPLICATE);
        cv::convertScaleAbs(x, target);
    }
    void Length(const cv::Mat& mat)
    {
        cv::Sobel(mat, xFloat, CV_32F, 1, 0, 3, 1.0, 0.0, cv::BORDER_REPLICATE);
        cv::Sobel(mat, yFloat, CV_32F, 0, 1, 3, 1.0, 0.0, cv::BORDER_REPLICATE);
        cv::magnitude(xFloat, yFloat, length);
        length.convertTo(target, CV_8U);
    }
};

template <class Ours, class Peer> void Run(benchmark::State& state, const Ours& ours, const Peer& peer)
{
    SFilterSubject subject(state);
    SPeer buffers;
    ours(subject.copy);
    peer(buffers, subject.mat);
    if (!subject.IsEqual(state, subject.copy, buffers.target))
        return;
    VantorBench::Compare(
        state, [&] { ours(subject.image); }, [&] { peer(buffers, subject.mat); }, [&] { subject.Memcpy(); });
}

void SobelX(benchmark::State& state)
{
    Run(
        state, [](CImage& image) { image.SobelX(nullptr, ERegionMode::Inside, 0.0); },
        [](SPeer& peer, const cv::Mat& mat) { peer.Gradient(mat, 1, 0); });
}

void SobelY(benchmark::State& state)
{
    Run(
        state, [](CImage& image) { image.SobelY(nullptr, ERegionMode::Inside, 0.0); },
        [](SPeer& peer, const cv::Mat& mat) { peer.Gradient(mat, 0, 1); });
}

void SobelXY(benchmark::State& state)
{
    Run(
        state, [](CImage& image) { image.SobelXY(nullptr, ERegionMode::Inside, 0.0); },
        [](SPeer& peer, const cv::Mat& mat) { peer.Length(mat); });
}
} // namespace

BENCHMARK(SobelX)->Apply(VantorBench::Camera);
BENCHMARK(SobelY)->Apply(VantorBench::Camera);
BENCHMARK(SobelXY)->Apply(VantorBench::Camera);
BENCHMARK_MAIN();
