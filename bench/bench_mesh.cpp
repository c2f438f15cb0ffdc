// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The height field of an image of 1, 4 and 16 megapixels, grey and RGB, copy of the image included. The peer
// builds the same mesh with push_back into reserved vectors; the limit is a memset of both buffers, as fresh
// as ours.
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/view3d/CImageView3DModel.h>

#include <cstdlib>
#include <cstring>
#include <memory>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
std::shared_ptr<CImage> MakeSource(int nSide, int nChannels)
{
    auto pImage = std::make_shared<CImage>();
    pImage->Create(nSide, nSide, nChannels, 8, EImageType::Interleaved, 4);
    const std::size_t nBytes = std::size_t(pImage->GetStride()) * std::size_t(nSide);
    for (std::size_t i = 0; i < nBytes; ++i)
        pImage->GetData()[i] = static_cast<unsigned char>(i * 2654435761U >> 7);
    return pImage;
}

void PushBackMesh(const CImage& image, std::vector<float>& vertices, std::vector<unsigned int>& indices)
{
    const int w = image.GetWidth();
    const int h = image.GetHeight();
    const int c = image.GetChannel();
    vertices.reserve(std::size_t(w) * std::size_t(h) * 6);
    for (int r = 0; r < h; ++r)
        for (int x = 0; x < w; ++x) {
            const unsigned char* p = image.GetRows()[r] + image.GetColumnOffsets()[x];
            vertices.push_back(float(x) / float(w));
            vertices.push_back(float(h - 1 - r) / float(h));
            vertices.push_back(__InternalGetGrayValue(p, c) * 0.1F / 255.0F);
            for (int i = 0; i < 3; ++i)
                vertices.push_back(float(p[c == 1 ? 0 : i]) / 255.0F);
        }
    vertices.shrink_to_fit();
    for (int j = 0; j + 1 < h; ++j)
        for (int x = 0; x + 1 < w; ++x) {
            const auto a = static_cast<unsigned int>(j * w + x);
            const unsigned int b = a + static_cast<unsigned int>(w);
            for (const unsigned int n : {b, a + 1, a, b, b + 1, a + 1})
                indices.push_back(n);
        }
}

void Mesh(benchmark::State& state)
{
    const int nSide = static_cast<int>(state.range(0));
    const auto pImage = MakeSource(nSide, static_cast<int>(state.range(1)));
    const std::size_t nPixels = std::size_t(nSide) * std::size_t(nSide);
    CImageView3DModel model;
    std::vector<float> vertices;
    std::vector<unsigned int> indices;
    VantorBench::Compare(
        state,
        [&] {
            model.LoadImage(pImage);
            model.TakeBuffers(vertices, indices);
            vertices = {};
            indices = {};
        },
        [&] {
            CImage copy;
            copy.CopyFrom(pImage.get());
            std::vector<float> peerVertices;
            std::vector<unsigned int> peerIndices;
            PushBackMesh(copy, peerVertices, peerIndices);
            benchmark::DoNotOptimize(peerVertices.data());
            benchmark::DoNotOptimize(peerIndices.data());
        },
        [&] {
            for (int i = 0; i < 2; ++i) {
                void* pBuffer = std::malloc(nPixels * 24);
                std::memset(pBuffer, 1, nPixels * 24);
                benchmark::DoNotOptimize(pBuffer);
                benchmark::ClobberMemory();
                std::free(pBuffer);
            }
        });
}
} // namespace

BENCHMARK(Mesh)->ArgsProduct({{1000, 2000, 4000}, {1, 3}})->UseManualTime()->Iterations(9);

BENCHMARK_MAIN();
