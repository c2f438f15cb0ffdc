// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/EngineModule_p.h>
#include <Vantor/ocr/OcrEngine_p.h>

#include <allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>

#include <cstddef>
#include <memory>

/// From the OpenMP runtime of GNU, which the engine uses; only one compiler comes with its header.
extern "C" void omp_set_max_active_levels(int levels);
extern "C" int omp_get_max_active_levels();

namespace Vantor::Algorithms
{

namespace
{
constexpr int kInk = 128; ///< samples below it are ink
constexpr double kPercent = 100.0;
constexpr float kSureOfTurn = 10.0f; ///< for pixOrientDetect, which suggests 8

/// Prevents the engine's OpenMP threads, which make it several times slower, for the time of a call.
class COneThread
{
public:
    COneThread() : m_nLevels(omp_get_max_active_levels()) { omp_set_max_active_levels(0); }
    ~COneThread() { omp_set_max_active_levels(m_nLevels); }
    COneThread(const COneThread&) = delete;
    COneThread& operator=(const COneThread&) = delete;

private:
    int m_nLevels;
};

std::string Trimmed(const char* text)
{
    std::string strText = text ? text : "";
    strText.erase(strText.find_last_not_of(" \n\r\t\f") + 1);
    return strText;
}

/// Connects a progress, which may be null, with what the engine asks between the words.
void Watch(tesseract::ETEXT_DESC& monitor, CProgress* pProgress)
{
    monitor.cancel_this = pProgress;
    monitor.cancel = [](void* pThis, int) {
        return pThis && static_cast<const CProgress*>(pThis)->IsCancelled();
    };
    monitor.progress_callback2 = [](tesseract::ETEXT_DESC* pMonitor, int, int, int, int) {
        if (pMonitor->cancel_this)
            static_cast<CProgress*>(pMonitor->cancel_this)->SetDone(pMonitor->progress / kPercent);
        return true;
    };
}

/// IOcrEngine over Tesseract and its imaging library.
class COcrEngine : public IOcrEngine
{
public:
    CResult Load(const std::string& strLanguage, const std::string& strFolder, bool bSingleBlock) override;
    bool SeemsTurned(const SPage& page) override;
    SReading Read(const SPage& page, int nDpi, CProgress* pProgress) override;

private:
    tesseract::TessBaseAPI m_api;
};

CResult COcrEngine::Load(const std::string& strLanguage, const std::string& strFolder, bool bSingleBlock)
{
    const COneThread oneThread;
    // Without this the engine comments on every page on standard error.
    m_api.SetVariable("debug_file", "/dev/null");
    if (m_api.Init(strFolder.c_str(), strLanguage.c_str()) != 0)
        return CResult::Failure("The OCR engine cannot use the language data.");
    m_api.SetPageSegMode(bSingleBlock ? tesseract::PSM_SINGLE_BLOCK : tesseract::PSM_AUTO);
    return CResult::Success();
}

bool COcrEngine::SeemsTurned(const SPage& page)
{
    PIX* pInk = pixCreate(page.nWidth, page.nHeight, 1);
    if (!pInk)
        return false;
    const std::size_t nPixel = static_cast<std::size_t>(page.nChannels);
    const unsigned char* pSample = page.vctBytes.data() + page.nChannels / 2; // grey, or green
    for (int y = 0; y < page.nHeight; ++y) {
        l_uint32* pLine = pixGetData(pInk) + static_cast<std::ptrdiff_t>(y) * pixGetWpl(pInk);
        for (int x = 0; x < page.nWidth; ++x, pSample += nPixel) {
            if (*pSample < kInk)
                SET_DATA_BIT(pLine, x);
        }
    }
    float fUp = 0.0f;
    float fLeft = 0.0f;
    const bool bFound = pixOrientDetect(pInk, &fUp, &fLeft, 0, 0) == 0;
    pixDestroy(&pInk);
    return bFound && (fUp < -kSureOfTurn || fLeft > kSureOfTurn);
}

SReading COcrEngine::Read(const SPage& page, int nDpi, CProgress* pProgress)
{
    const COneThread oneThread;
    tesseract::ETEXT_DESC monitor;
    Watch(monitor, pProgress);
    SReading reading;
    m_api.SetImage(page.vctBytes.data(), page.nWidth, page.nHeight, page.nChannels,
                   page.nWidth * page.nChannels);
    m_api.SetSourceResolution(nDpi);
    if (m_api.Recognize(&monitor) == 0) {
        const std::unique_ptr<char[]> pText(m_api.GetUTF8Text());
        reading.strText = Trimmed(pText.get());
        reading.nConfidence = m_api.MeanTextConf();
    }
    m_api.Clear();
    return reading;
}
} // namespace

VANTOR_ENGINE_FUNCTION IOcrEngine* VantorMakeOcrEngine()
{
    // Messages of the imaging library about a small or empty page do not belong on the user's terminal.
    setMsgSeverity(L_SEVERITY_NONE);
    return new COcrEngine;
}

} // namespace Vantor::Algorithms
