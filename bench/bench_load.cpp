// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Opening a picture of 24 megapixels: CImage::Load against the raw codec (turbojpeg, libpng), for BMP,
// TIFF, PGM and PPM against reading the file. The files lie in the page cache.
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>

#include <png.h>
#include <tiffio.h>
#include <turbojpeg.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;

namespace
{
constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr int kNoise = 16;

/// The folder of the pictures, removed at the end.
struct SFolder {
    std::filesystem::path path;
    SFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "vantor-bench-XXXXXX").string();
        path = mkdtemp(name.data());
    }
    ~SFolder() { std::filesystem::remove_all(path); }
};

/// The path of a picture of gradients and some noise, saved at the first call.
std::filesystem::path PictureFile(const std::string& name, int nChannels)
{
    static const SFolder folder;
    const std::filesystem::path path = folder.path / (std::to_string(nChannels) + name);
    if (std::filesystem::exists(path))
        return path;
    CImage image;
    image.Create(kWidth, kHeight, nChannels, 8, EImageType::Interleaved, 4);
    std::minstd_rand random(1);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            for (int c = 0; c < nChannels; ++c) {
                const double wave = 100.0 + 60.0 * std::sin(x * 0.004 + c) + 60.0 * std::cos(y * 0.006);
                image.GetPixel(x, y)[c] =
                    static_cast<unsigned char>(wave + static_cast<double>(random() % kNoise));
            }
        }
    }
    if (image.Save(path.wstring()) != 0)
        std::abort();
    return path;
}

std::vector<unsigned char> ReadFile(const std::filesystem::path& path)
{
    std::vector<unsigned char> content(std::filesystem::file_size(path));
    std::ifstream(path, std::ios::binary)
        .read(reinterpret_cast<char*>(content.data()), static_cast<std::streamsize>(content.size()));
    return content;
}

/// A TIFF file without compression.
std::filesystem::path PlainTiffFile(int nChannels)
{
    CImage image;
    image.Load(PictureFile("a.bmp", nChannels).wstring());
    const std::filesystem::path path = PictureFile("a.bmp", nChannels).replace_extension("plain.tif");
    TIFF* pTiff = TIFFOpen(path.c_str(), "w");
    TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, kWidth);
    TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, kHeight);
    TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, nChannels);
    TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, nChannels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(pTiff, 0));
    for (int y = 0; y < kHeight; ++y)
        TIFFWriteScanline(pTiff, image.GetRows()[y], static_cast<std::uint32_t>(y), 0);
    TIFFClose(pTiff);
    return path;
}

void LoadOurs(const std::filesystem::path& path)
{
    CImage image;
    if (image.Load(path.wstring()) != 0)
        std::abort();
    benchmark::DoNotOptimize(image.GetData());
}

void Jpeg(benchmark::State& state)
{
    const int nChannels = static_cast<int>(state.range(0));
    const auto path = PictureFile("a.jpg", nChannels);
    std::vector<unsigned char> pixels(std::size_t(kWidth) * kHeight * static_cast<std::size_t>(nChannels));
    const tjhandle handle = tjInitDecompress();
    VantorBench::Compare(
        state, [&] { LoadOurs(path); },
        [&] {
            const std::vector<unsigned char> content = ReadFile(path);
            tjDecompress2(handle, content.data(), content.size(), pixels.data(), kWidth, 0, kHeight,
                          nChannels == 1 ? TJPF_GRAY : TJPF_RGB, 0);
        });
    tjDestroy(handle);
}

void Png(benchmark::State& state)
{
    const int nChannels = static_cast<int>(state.range(0));
    const auto path = PictureFile("a.png", nChannels);
    std::vector<unsigned char> pixels(std::size_t(kWidth) * kHeight * static_cast<std::size_t>(nChannels));
    VantorBench::Compare(
        state, [&] { LoadOurs(path); },
        [&] {
            png_image png = {};
            png.version = PNG_IMAGE_VERSION;
            png_image_begin_read_from_file(&png, path.c_str());
            png.format = nChannels == 1 ? PNG_FORMAT_GRAY : nChannels == 3 ? PNG_FORMAT_RGB : PNG_FORMAT_RGBA;
            png_image_finish_read(&png, nullptr, pixels.data(), 0, nullptr);
        });
}

void AgainstReading(benchmark::State& state, const std::filesystem::path& path)
{
    std::vector<unsigned char> warm = ReadFile(path);
    VantorBench::Compare(
        state, [&] { LoadOurs(path); },
        [&] {
            std::ifstream(path, std::ios::binary)
                .read(reinterpret_cast<char*>(warm.data()), static_cast<std::streamsize>(warm.size()));
        });
}

void Bmp(benchmark::State& state)
{
    AgainstReading(state, PictureFile("a.bmp", static_cast<int>(state.range(0))));
}

void Pnm(benchmark::State& state)
{
    const int nChannels = static_cast<int>(state.range(0));
    AgainstReading(state, PictureFile(nChannels == 1 ? "a.pgm" : "a.ppm", nChannels));
}

void TiffPlain(benchmark::State& state)
{
    AgainstReading(state, PlainTiffFile(static_cast<int>(state.range(0))));
}

/// A file as CImage::Save writes it, with LZW: the codec takes more of the time than the reading.
void TiffLzw(benchmark::State& state)
{
    AgainstReading(state, PictureFile("a.tif", static_cast<int>(state.range(0))));
}
} // namespace

BENCHMARK(Jpeg)->ArgName("channels")->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Png)->ArgName("channels")->Arg(1)->Arg(3)->Arg(4)->UseManualTime()->Iterations(3);
BENCHMARK(Bmp)->ArgName("channels")->Arg(1)->Arg(3)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Pnm)->ArgName("channels")->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(TiffPlain)->ArgName("channels")->Arg(1)->Arg(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(TiffLzw)->ArgName("channels")->Arg(1)->Arg(3)->UseManualTime()->Iterations(3);
BENCHMARK_MAIN();
