// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Uses each engine once and says how it went, for tst_EngineModules: engine_probe IMAGE DOCUMENT TESSDATA
#include "tests/support/TestMain.h" // what the sanitizers need

#include <Vantor/image/CImage.h>
#include <Vantor/ocr/CVOCR.h>
#include <Vantor/pdf/CPDFReader.h>

#include <cstdio>
#include <string>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CVOCR;
using Vantor::Algorithms::ERegionMode;
using Vantor::Utils::CPDFReader;

namespace
{
// They outlive main, and what the modules have made for them with them.
CVOCR g_ocr;
CPDFReader g_reader;

std::wstring Wide(const char* text)
{
    const std::string strText = text;
    return std::wstring(strText.begin(), strText.end());
}
} // namespace

int main(int argc, char* argv[])
{
    CImage image;
    if (argc != 4 || image.Load(Wide(argv[1])) != 0 || g_ocr.SetLanguageData("eng", argv[3]) != 0)
        return 1;
    const int nDecoded = g_ocr.Decode(&image, nullptr);
    std::printf("ocr %d %s\n", nDecoded, g_ocr.GetFailureReason().c_str());
    const int nRead = g_reader.Read(Wide(argv[2]), std::wstring());
    const std::string strReason = g_reader.GetFailureReason();
    CImage page;
    const int nRendered = g_reader.RenderPage(0, &page);
    std::printf("pdf %d %d %s\n", nRead, nRendered, strReason.c_str());
    const int nSobel = image.SobelX(nullptr, ERegionMode::Inside, 0.0);
    std::printf("sobel %d %s\n", nSobel, image.GetFailureReason().c_str());
    const int nWindow = image.MedianFilter(3, 3, nullptr, ERegionMode::Inside, 0.0);
    std::printf("window %d %s\n", nWindow, image.GetFailureReason().c_str());
    return 0;
}
