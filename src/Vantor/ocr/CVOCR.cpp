// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/ocr/CVOCR.h>

#include <Vantor/EngineModule_p.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/ocr/OcrEngine_p.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kDefaultDpi = 144;
constexpr int kMaxDpi = 2400;
/// The engine refuses larger pages.
constexpr int kMaxPageSide = 32767;
/// Mean confidence in percent below which a page may be upside down.
constexpr int kDoubtful = 70;

/// A language and where its data lies.
struct SLanguage {
    std::string strCode;
    std::string strFolder;

    bool operator==(const SLanguage& other) const
    {
        return strCode == other.strCode && strFolder == other.strFolder;
    }
    /// The languages that the code consists of.
    std::vector<std::string> Parts() const;
    /// Whether the data file of each language exists.
    CResult Check() const;
};

std::vector<std::string> SLanguage::Parts() const
{
    std::vector<std::string> vctParts;
    std::istringstream stream(strCode + '+');
    for (std::string strPart; std::getline(stream, strPart, '+');)
        vctParts.push_back(strPart);
    return vctParts;
}

CResult SLanguage::Check() const
{
    for (const std::string& strPart : Parts()) {
        if (strPart.empty() || strPart.find("..") != std::string::npos)
            return CResult::Failure("The language code '" + strCode + "' is not valid.");
        const std::filesystem::path file = std::filesystem::u8path(strFolder) / (strPart + ".traineddata");
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error))
            return CResult::Failure("The language data '" + file.u8string() + "' is missing.");
    }
    return CResult::Success();
}

/// Korean is set with wide gaps between its words, which the page analysis takes for columns; so such pages
/// count as one block. Other pages are analysed, which also finds text that lies on its side.
bool IsSingleBlock(const SLanguage& language)
{
    const std::vector<std::string> vctParts = language.Parts();
    return std::find(vctParts.begin(), vctParts.end(), "kor") != vctParts.end();
}

const SEngineModule<IOcrEngine>& OcrModule()
{
    static const auto module = LoadEngineModule<IOcrEngine>(kOcrModule, kOcrFunction);
    return module;
}
} // namespace

struct CVOCR::SEngine {
    CFailureReason failure;
    SLanguage wanted;
    SLanguage loaded;
    int nDpi = kDefaultDpi;
    std::string strText;
    EnginePtr<IOcrEngine> pOcr;

    /// Makes the engine for the wanted language.
    CResult Prepare();
    CResult Decode(const CImage* image, const Geometry::CGeometry* region);
};

CResult CVOCR::SEngine::Prepare()
{
    if (wanted.strCode.empty())
        return CResult::Failure("No language was selected.");
    if (pOcr && loaded == wanted)
        return CResult::Success();
    const SEngineModule<IOcrEngine>& module = OcrModule();
    if (!module.result.IsSuccess())
        return CResult::Failure("The OCR engine cannot be loaded: " + module.result.GetReason() + '.');
    EnginePtr<IOcrEngine> pNew(module.pFunction());
    CResult result = pNew->Load(wanted.strCode, wanted.strFolder, IsSingleBlock(wanted));
    if (!result.IsSuccess())
        return result;
    pOcr = std::move(pNew);
    loaded = wanted;
    return CResult::Success();
}

CResult CVOCR::SEngine::Decode(const CImage* image, const Geometry::CGeometry* region)
{
    if (!image || !image->GetData())
        return CResult::Failure("There is no image to read.");
    PixelRuns runs;
    CResult result =
        FindRegion(image->GetWidth(), image->GetHeight(), region, ERegionMode::Inside, 0.0, runs);
    if (!result.IsSuccess())
        return result;
    SPage page = MakePage(*image, runs);
    if (page.nWidth > kMaxPageSide || page.nHeight > kMaxPageSide)
        return CResult::Failure("The region is too large for the OCR engine.");
    result = Prepare();
    if (!result.IsSuccess())
        return result;
    if (page.vctBytes.empty()) {
        strText.clear();
        return result;
    }
    // The order saves a reading; it does not decide which of two readings wins.
    if (!IsSingleBlock(loaded) && pOcr->SeemsTurned(page))
        page.TurnUpsideDown();
    SReading best = pOcr->Read(page, nDpi, CProgress::OfThread());
    if (best.nConfidence < kDoubtful && !CProgress::IsThreadCancelled()) {
        page.TurnUpsideDown();
        SReading turned = pOcr->Read(page, nDpi, CProgress::OfThread());
        if (turned.nConfidence > best.nConfidence)
            best = std::move(turned);
    }
    if (CProgress::IsThreadCancelled())
        return CResult::Failure(kCancelled);
    if (best.nConfidence < 0)
        return CResult::Failure("The OCR engine failed.");
    strText = std::move(best.strText);
    return result;
}

CVOCR::CVOCR() : m_pEngine(std::make_unique<SEngine>())
{
}

CVOCR::~CVOCR() = default;

int CVOCR::SetLanguageData(const char* language, const char* folder)
{
    if (!language || !folder)
        return m_pEngine->failure.Fail("A language and a folder are needed.");
    try {
        const SLanguage wanted{language, folder};
        const CResult result = wanted.Check();
        if (result.IsSuccess())
            m_pEngine->wanted = wanted;
        return m_pEngine->failure.Note(result);
    } catch (const std::exception&) {
        return m_pEngine->failure.Fail("The language or the folder is not valid.");
    }
}

int CVOCR::SetUserDefinedDpi(int dpi)
{
    if (dpi < 1 || dpi > kMaxDpi)
        return m_pEngine->failure.Fail("The resolution is not from 1 to 2400 dpi.");
    m_pEngine->nDpi = dpi;
    return m_pEngine->failure.Succeed();
}

int CVOCR::Decode(const CImage* image, const Geometry::CGeometry* region)
{
    try {
        return m_pEngine->failure.Note(m_pEngine->Decode(image, region));
    } catch (const std::exception&) {
        return m_pEngine->failure.Fail("There is not enough memory for the OCR engine.");
    }
}

const char* CVOCR::GetText() const
{
    return m_pEngine->strText.c_str();
}

std::string CVOCR::GetFailureReason() const
{
    return m_pEngine->failure.GetText();
}

} // namespace Vantor::Algorithms
