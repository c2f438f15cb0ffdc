// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/filter/Threshold_p.h>

#include <array>
#include <cstdint>

namespace Vantor::Algorithms
{

namespace
{
constexpr unsigned char kBlack = 0;
constexpr unsigned char kWhite = 255;
} // namespace

void ThresholdRuns(const SFilterJob& job, int value)
{
    ForEachPixel(job, WholeOf(job), [&job, value](unsigned char* pPixel, int, int) {
        SetColors(pPixel, job.nChannels, GreyOf(pPixel, job.nChannels) > value ? kWhite : kBlack);
    });
}

int OtsuValue(const SFilterJob& job)
{
    std::array<std::int64_t, 256> arrCounts{};
    ForEachPixel(job, WholeOf(job), [&](const unsigned char* pPixel, int, int) {
        ++arrCounts[static_cast<std::size_t>(GreyOf(pPixel, job.nChannels))];
    });
    std::int64_t nAll = 0;
    std::int64_t nSumAll = 0;
    for (std::size_t i = 0; i < arrCounts.size(); ++i) {
        nAll += arrCounts[i];
        nSumAll += arrCounts[i] * static_cast<std::int64_t>(i);
    }
    int nBest = 0;
    double dblBest = 0.0;
    std::int64_t nBelow = 0;
    std::int64_t nSumBelow = 0;
    for (std::size_t i = 0; i + 1 < arrCounts.size(); ++i) {
        nBelow += arrCounts[i];
        nSumBelow += arrCounts[i] * static_cast<std::int64_t>(i);
        if (nBelow == 0 || nBelow == nAll)
            continue;
        const double below = static_cast<double>(nBelow);
        const double above = static_cast<double>(nAll - nBelow);
        const double difference =
            static_cast<double>(nSumBelow) / below - static_cast<double>(nSumAll - nSumBelow) / above;
        const double variance = below * above * difference * difference; // between the classes, times nAll^2
        if (variance > dblBest) {
            dblBest = variance;
            nBest = static_cast<int>(i);
        }
    }
    return nBest;
}

} // namespace Vantor::Algorithms
