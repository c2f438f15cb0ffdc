// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Turning an image: CImage::Rotate against OpenCV (cv::rotate for quarter turns, cv::warpAffine for other
// angles); the limit is a memcpy of the same bytes into a warm buffer. Turns to the left and to the right
// alternate, so that the size stays.
#include "bench/BenchSupport.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/image/CImage.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cstring>
#include <vector>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERotationMode;
using Vantor::Geometry::CPoint;

namespace
{
constexpr double kHalfPi = 1.57079632679489661923;

struct SSubject {
    CImage image;
    cv::Mat mat;
    std::vector<unsigned char> vctTarget;
    std::size_t nBytes = 0;

    explicit SSubject(const benchmark::State& state)
    {
        const int nChannels = static_cast<int>(state.range(0));
        const int nWidth = static_cast<int>(state.range(1));
        const int nHeight = static_cast<int>(state.range(2));
        image.Create(nWidth, nHeight, nChannels, 8, EImageType::Interleaved, 1);
        nBytes = static_cast<std::size_t>(image.GetStride()) * static_cast<std::size_t>(nHeight);
        for (std::size_t i = 0; i < nBytes; ++i)
            image.GetData()[i] = static_cast<unsigned char>(i * 37);
        mat = cv::Mat(nHeight, nWidth, CV_8UC(nChannels), image.GetData()).clone();
        vctTarget.assign(nBytes, 1);
    }
    void Rotate(double angle, ERotationMode mode)
    {
        image.Rotate(CPoint<double>(image.GetWidth() * 0.5, image.GetHeight() * 0.5), angle, 0.0, mode);
    }
    void Memcpy() { std::memcpy(vctTarget.data(), mat.data, nBytes); }
};

void QuarterTurn(benchmark::State& state)
{
    SSubject subject(state);
    cv::Mat turned[2];
    bool bLeft = false;
    bool bPeerLeft = false;
    VantorBench::Compare(
        state,
        [&] {
            bLeft = !bLeft;
            subject.Rotate(bLeft ? -kHalfPi : kHalfPi, ERotationMode::GrowCanvas);
        },
        [&] {
            bPeerLeft = !bPeerLeft;
            cv::rotate(subject.mat, turned[bPeerLeft],
                       bPeerLeft ? cv::ROTATE_90_COUNTERCLOCKWISE : cv::ROTATE_90_CLOCKWISE);
        },
        [&] { subject.Memcpy(); });
}

void OtherAngle(benchmark::State& state)
{
    SSubject subject(state);
    const double dblAngle = static_cast<double>(state.range(3)) * kHalfPi / 90.0;
    cv::Mat turned;
    VantorBench::Compare(
        state, [&] { subject.Rotate(dblAngle, ERotationMode::KeepCanvas); },
        [&] {
            const cv::Point2f centre(static_cast<float>(subject.mat.cols) / 2,
                                     static_cast<float>(subject.mat.rows) / 2);
            const cv::Mat map = cv::getRotationMatrix2D(centre, -dblAngle * 90.0 / kHalfPi, 1.0);
            cv::warpAffine(subject.mat, turned, map, subject.mat.size(), cv::INTER_LINEAR);
        },
        [&] { subject.Memcpy(); });
}

// 24 megapixels of a common camera, and a width whose rows map to the same cache sets.
void Sizes(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"channels", "width", "height"});
    for (const int nChannels : {1, 3, 4}) {
        bench->Args({nChannels, 6000, 4000});
        bench->Args({nChannels, 8192, 4096});
    }
}

// Small, medium, and steep: along the columns of the source.
void SizesAndAngles(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"channels", "width", "height", "degrees"});
    for (const int nChannels : {1, 3, 4}) {
        for (const int nDegrees : {2, 17, 45, 85})
            bench->Args({nChannels, 6000, 4000, nDegrees});
        bench->Args({nChannels, 8192, 4096, 85});
    }
}
} // namespace

BENCHMARK(QuarterTurn)->Apply(Sizes)->UseManualTime();
BENCHMARK(OtherAngle)->Apply(SizesAndAngles)->UseManualTime()->Iterations(7);
BENCHMARK_MAIN();
