// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Copying an image: CImage::CopyFrom against cv::Mat::clone; the limit is a memcpy of the same bytes into a
// warm buffer. Warm: the previous copy was dropped, so its buffer can be used again. Cold: all copies are
// kept, so that each needs fresh memory.
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>

#include <opencv2/core.hpp>

#include <cstring>
#include <memory>
#include <vector>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kWidth = 6000;
constexpr int kColdRounds = 8;

struct SSubject {
    CImage image;
    cv::Mat mat;
    std::vector<unsigned char> vctTarget;
    std::size_t nBytes = 0;

    explicit SSubject(const benchmark::State& state)
    {
        const int nChannels = static_cast<int>(state.range(0));
        const int nHeight = static_cast<int>(state.range(1) * 1000000 / kWidth);
        image.Create(kWidth, nHeight, nChannels, 8, EImageType::Interleaved, 1);
        nBytes = static_cast<std::size_t>(image.GetStride()) * static_cast<std::size_t>(nHeight);
        std::memset(image.GetData(), 77, nBytes);
        mat = cv::Mat(nHeight, kWidth, CV_8UC(nChannels), cv::Scalar::all(77));
        vctTarget.assign(nBytes, 1);
    }
    void Memcpy() { std::memcpy(vctTarget.data(), image.GetData(), nBytes); }
};

void CopyWarm(benchmark::State& state)
{
    SSubject subject(state);
    VantorBench::Compare(
        state, [&] { CImage().CopyFrom(&subject.image); },
        [&] { benchmark::DoNotOptimize(subject.mat.clone().data); }, [&] { subject.Memcpy(); });
}

void CopyCold(benchmark::State& state)
{
    SSubject subject(state);
    std::vector<std::unique_ptr<CImage>> vctImages;
    std::vector<cv::Mat> vctMats;
    VantorBench::Compare(
        state,
        [&] {
            vctImages.push_back(std::make_unique<CImage>());
            vctImages.back()->CopyFrom(&subject.image);
        },
        [&] { vctMats.push_back(subject.mat.clone()); }, [&] { subject.Memcpy(); });
}
} // namespace

BENCHMARK(CopyWarm)->ArgNames({"channels", "MP"})->ArgsProduct({{1, 3, 4}, {24, 100}})->UseManualTime();
BENCHMARK(CopyCold)
    ->ArgNames({"channels", "MP"})
    ->ArgsProduct({{1, 3, 4}, {24}})
    ->Iterations(kColdRounds)
    ->UseManualTime();
BENCHMARK_MAIN();
