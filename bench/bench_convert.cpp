// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Conversion between core and GUI images, 24 megapixels. From the GUI (pasting): the peer converts the whole
// QImage and then copies its rows; the limit is a memcpy of the converted bytes into a warm buffer. To the
// GUI: the peer is QImage::copy of a wrapper; the limit a memcpy of the image.
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CUtilManager.h>

#include <QImage>
#include <cstring>
#include <vector>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kWidth = 6000;
constexpr int kHeight = 4000;

QImage MakeSource(QImage::Format eFormat)
{
    QImage image(kWidth, kHeight, QImage::Format_ARGB32);
    for (int y = 0; y < kHeight; ++y) {
        auto* pRow = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < kWidth; ++x)
            pRow[x] = static_cast<quint32>(x * 2654435761U + static_cast<quint32>(y) * 40503U);
    }
    return image.convertToFormat(eFormat);
}

void PeerFromGui(const QImage& source, CImage& image)
{
    const QImage converted = source.convertToFormat(QImage::Format_RGBA8888);
    image.Create(kWidth, kHeight, 4, 8, EImageType::Interleaved, 4);
    for (int y = 0; y < kHeight; ++y)
        std::memcpy(image.GetRows()[y], converted.constScanLine(y),
                    static_cast<std::size_t>(std::min(source.bytesPerLine(), image.GetStride())));
}

void FromGui(benchmark::State& state)
{
    const QImage source = MakeSource(static_cast<QImage::Format>(state.range(0)));
    const std::vector<unsigned char> vctFrom(std::size_t(kWidth) * kHeight * 4, 1);
    std::vector<unsigned char> vctTo(vctFrom.size(), 2);
    VantorBench::Compare(
        state,
        [&] {
            CImage image;
            CUtilManager::ConvertImage(source, &image);
        },
        [&] {
            CImage image;
            PeerFromGui(source, image);
        },
        [&] { std::memcpy(vctTo.data(), vctFrom.data(), vctTo.size()); });
}

void ToGui(benchmark::State& state)
{
    CImage image;
    image.Create(kWidth, kHeight, static_cast<int>(state.range(0)), 8, EImageType::Interleaved, 4);
    const auto nBytes = static_cast<std::size_t>(image.GetStride()) * kHeight;
    std::memset(image.GetData(), 77, nBytes);
    std::vector<unsigned char> vctTo(nBytes, 2);
    VantorBench::Compare(
        state,
        [&] {
            QImage converted;
            CUtilManager::ConvertImage(&image, converted, true);
        },
        [&] {
            QImage wrapper;
            CUtilManager::ConvertImage(&image, wrapper, false);
            benchmark::DoNotOptimize(wrapper.copy().constBits());
        },
        [&] { std::memcpy(vctTo.data(), image.GetData(), nBytes); });
}
} // namespace

BENCHMARK(FromGui)
    ->ArgName("format")
    ->Arg(QImage::Format_RGB32)
    ->Arg(QImage::Format_ARGB32)
    ->Arg(QImage::Format_ARGB32_Premultiplied)
    ->Arg(QImage::Format_RGB888)
    ->Arg(QImage::Format_RGBA8888)
    ->Arg(QImage::Format_Grayscale8)
    ->UseManualTime();
BENCHMARK(ToGui)->ArgName("channels")->Arg(1)->Arg(3)->Arg(4)->UseManualTime();
BENCHMARK_MAIN();
