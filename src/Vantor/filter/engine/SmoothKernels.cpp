// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// OpenCV behind the interface of the smoothing kernels.
#include <Vantor/EngineModule_p.h>
#include <Vantor/filter/SmoothKernels_p.h>

#include <opencv2/imgproc.hpp>

namespace Vantor::Algorithms
{

namespace
{
cv::Mat Wrap(const SPixelBlock& block)
{
    return cv::Mat(block.nHeight, block.nWidth, CV_8UC(block.nChannels),
                   const_cast<unsigned char*>(block.pData), block.nStride);
}

cv::Size WindowOf(int radius)
{
    return cv::Size(2 * radius + 1, 2 * radius + 1);
}

/// In floating point: for 8-bit samples OpenCV uses an 8-bit kernel, which errs by up to 3 in wide windows.
bool Gaussian(const SPixelBlock& from, double sigma, int radius, float* to)
{
    try {
        cv::Mat result(from.nHeight, from.nWidth, CV_32FC(from.nChannels), to);
        cv::Mat samples;
        Wrap(from).convertTo(samples, CV_32F);
        cv::GaussianBlur(samples, result, WindowOf(radius), sigma, sigma, cv::BORDER_REPLICATE);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool WindowSum(const SPixelBlock& from, int radius, int* to)
{
    try {
        cv::Mat result(from.nHeight, from.nWidth, CV_32SC(from.nChannels), to);
        cv::boxFilter(Wrap(from), result, CV_32S, WindowOf(radius), cv::Point(-1, -1), false,
                      cv::BORDER_REPLICATE);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

const SSmoothKernels kKernels = {Gaussian, WindowSum};
} // namespace

} // namespace Vantor::Algorithms

VANTOR_ENGINE_FUNCTION const Vantor::Algorithms::SSmoothKernels* VantorGetSmoothKernels()
{
    return &Vantor::Algorithms::kKernels;
}
