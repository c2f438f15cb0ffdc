// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>

#include <opencv2/core.hpp>

#include <cstring>
#include <vector>

#include <sched.h>

/// Shared by the benchmarks of filters: an image, the same pixels for the peer, and a target for the limit.
namespace VantorBench
{

/// Lets this process use one processor or all of them, as long as it lives.
class CProcessors
{
public:
    explicit CProcessors(int threads)
    {
        sched_getaffinity(0, sizeof m_before, &m_before);
        cv::setNumThreads(threads);
        if (threads > 1)
            return;
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(sched_getcpu(), &one);
        sched_setaffinity(0, sizeof one, &one);
    }
    ~CProcessors() { sched_setaffinity(0, sizeof m_before, &m_before); }
    CProcessors(const CProcessors&) = delete;
    CProcessors& operator=(const CProcessors&) = delete;

private:
    cpu_set_t m_before;
};

/// Arguments: channels, width, height, threads.
struct SFilterSubject {
    using CImage = Vantor::Algorithms::CImage;

    CProcessors processors;
    CImage image;
    CImage copy;
    cv::Mat mat;
    std::vector<unsigned char> vctTarget;
    std::size_t nBytes = 0;

    explicit SFilterSubject(const benchmark::State& state) : processors(static_cast<int>(state.range(3)))
    {
        const int nChannels = static_cast<int>(state.range(0));
        const int nWidth = static_cast<int>(state.range(1));
        const int nHeight = static_cast<int>(state.range(2));
        image.Create(nWidth, nHeight, nChannels, 8, Vantor::Algorithms::EImageType::Interleaved, 1);
        nBytes = static_cast<std::size_t>(image.GetStride()) * static_cast<std::size_t>(nHeight);
        // Slopes with some noise, like a photograph.
        unsigned nNoise = 1;
        for (std::size_t i = 0; i < nBytes; ++i) {
            nNoise = nNoise * 1664525u + 1013904223u;
            image.GetData()[i] = static_cast<unsigned char>(i / 97 + i / 40001 + (nNoise >> 28));
        }
        copy.CopyFrom(&image);
        mat = cv::Mat(nHeight, nWidth, CV_8UC(nChannels), image.GetData()).clone();
        vctTarget.assign(nBytes, 1);
    }
    void Memcpy() { std::memcpy(vctTarget.data(), mat.data, nBytes); }
    /// Whether the image equals the peer's; if not, the benchmark ends with an error.
    bool IsEqual(benchmark::State& state, const CImage& ours, const cv::Mat& peer) const
    {
        const bool bEqual = std::memcmp(ours.GetData(), peer.data, nBytes) == 0;
        if (!bEqual)
            state.SkipWithError("the results differ");
        return bEqual;
    }
};

inline void FilterSizes(benchmark::internal::Benchmark* bench, int width, int height)
{
    for (const int nThreads : {1, 2}) {
        for (const int nChannels : {1, 3})
            bench->Args({nChannels, width, height, nThreads});
    }
    bench->ArgNames({"channels", "width", "height", "threads"})->UseManualTime();
}

/// 24 megapixels of a common camera.
inline void Camera(benchmark::internal::Benchmark* bench)
{
    FilterSizes(bench, 6000, 4000);
}
inline void HundredMegapixels(benchmark::internal::Benchmark* bench)
{
    FilterSizes(bench, 12000, 8400);
}

} // namespace VantorBench
