// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// This file is compiled once for each instruction set, see filter/engine/RowKernels.cpp. Its loops are plain:
// the compiler makes the vectors.
#undef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Vantor/measure/engine/SplitKernels.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include <Vantor/measure/PixelSums_p.h>
#include <Vantor/measure/engine/SplitKernels_p.h>

HWY_BEFORE_NAMESPACE();
namespace Vantor::Algorithms
{
namespace HWY_NAMESPACE
{

/// A grey of the colours whose three planes are given.
template <int Grey, class T> void MakeGrey(const T* colors, std::size_t count, T* HWY_RESTRICT grey)
{
    constexpr SGreyWeights kWeights = kGreys[Grey];
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t nSum = kWeights.nRed * colors[i] + kWeights.nGreen * colors[kSplitPixels + i] +
                                   kWeights.nBlue * colors[2 * kSplitPixels + i];
        grey[i] = static_cast<T>((nSum + kWeights.Sum() / 2) / kWeights.Sum());
    }
}

template <class T, int Channels>
void SplitSamples(const T* HWY_RESTRICT samples, std::size_t count, T* HWY_RESTRICT planes)
{
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t c = 0; c < Channels; ++c)
            planes[c * kSplitPixels + i] = samples[i * Channels + c];
    }
    if constexpr (Channels >= 3) {
        MakeGrey<0>(planes, count, planes + Channels * kSplitPixels);
        MakeGrey<1>(planes, count, planes + (Channels + 1) * kSplitPixels);
    }
}

template <class T> void SplitChannels(const void* samples, std::size_t count, int channels, void* planes)
{
    const T* pSamples = static_cast<const T*>(samples);
    T* pPlanes = static_cast<T*>(planes);
    if (channels == 1)
        SplitSamples<T, 1>(pSamples, count, pPlanes);
    else if (channels == 2)
        SplitSamples<T, 2>(pSamples, count, pPlanes);
    else if (channels == 3)
        SplitSamples<T, 3>(pSamples, count, pPlanes);
    else
        SplitSamples<T, 4>(pSamples, count, pPlanes);
}

void SplitOfAnyDepth(const void* samples, std::size_t count, int channels, int bits, void* planes)
{
    if (bits == 8)
        SplitChannels<std::uint8_t>(samples, count, channels, planes);
    else
        SplitChannels<std::uint16_t>(samples, count, channels, planes);
}

} // namespace HWY_NAMESPACE
} // namespace Vantor::Algorithms
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace Vantor::Algorithms
{

namespace
{
HWY_EXPORT(SplitOfAnyDepth);
} // namespace

void SplitPixels(const void* samples, std::size_t count, int channels, int bits, void* planes)
{
    HWY_DYNAMIC_DISPATCH(SplitOfAnyDepth)(samples, count, channels, bits, planes);
}

} // namespace Vantor::Algorithms
#endif
