// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CVOCR::Decode against the engine itself, with one OpenMP thread and prepared before, reading the same
// pixels as a plain run would. The peer of the region gets the cut-out. Needs the language data of
// VANTOR_TESSDATA.
#include "bench/BenchSupport.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <Vantor/ocr/CVOCR.h>

#include <tesseract/baseapi.h>

#include <memory>
#include <string>

extern "C" void omp_set_max_active_levels(int levels);

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CVOCR;
using Vantor::Geometry::CRectangle;

namespace
{
struct SSubject {
    CImage image;
    CVOCR ocr;
    tesseract::TessBaseAPI api;
    bool bReady;

    SSubject(const char* name, const char* language)
    {
        omp_set_max_active_levels(0);
        const std::string strPath = std::string(VANTOR_BENCH_DATA "/ocr/") + name;
        bReady = image.Load(std::wstring(strPath.begin(), strPath.end())) == 0 &&
                 ocr.SetLanguageData(language, VANTOR_BENCH_TESSDATA) == 0 &&
                 api.Init(VANTOR_BENCH_TESSDATA, language) == 0;
        api.SetVariable("debug_file", "/dev/null");
        api.SetPageSegMode(tesseract::PSM_AUTO);
    }
    void RunPeer(const CRectangle& part)
    {
        const int nX = static_cast<int>(part.x());
        const int nY = static_cast<int>(part.y());
        api.SetImage(image.GetPixel(nX, nY), static_cast<int>(part.width()), static_cast<int>(part.height()),
                     image.GetChannel(), image.GetStride());
        api.SetSourceResolution(144);
        api.Recognize(nullptr);
        const std::unique_ptr<char[]> pText(api.GetUTF8Text());
        api.Clear();
    }
};

void Run(benchmark::State& state, const char* name, const char* language, const CRectangle* region)
{
    SSubject subject(name, language);
    if (!subject.bReady) {
        state.SkipWithError("the page or the language data is missing");
        return;
    }
    const CRectangle whole(0.0, 0.0, subject.image.GetWidth(), subject.image.GetHeight());
    VantorBench::Compare(
        state, [&] { subject.ocr.Decode(&subject.image, region); },
        [&] { subject.RunPeer(region ? *region : whole); });
}

void EnglishPage(benchmark::State& state)
{
    Run(state, "udhr_eng_144dpi.png", "eng", nullptr);
}
void VietnamesePage(benchmark::State& state)
{
    Run(state, "udhr_vie_144dpi.png", "vie", nullptr);
}
void KoreanPage(benchmark::State& state)
{
    Run(state, "udhr_kor_144dpi.png", "kor", nullptr);
}
void UpsideDown(benchmark::State& state)
{
    Run(state, "phototest-rotated-180.png", "eng", nullptr);
}
void TwoLines(benchmark::State& state)
{
    const CRectangle lines(20.0, 85.0, 610.0, 73.0);
    Run(state, "phototest.tif", "eng", &lines);
}
} // namespace

BENCHMARK(EnglishPage)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(VietnamesePage)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(KoreanPage)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(UpsideDown)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(TwoLines)->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
