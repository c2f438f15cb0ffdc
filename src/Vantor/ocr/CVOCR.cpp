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
/// Mean confidence in percent below which a page may stand on its head.
constexpr int kDoubtful = 70;

/// A language and where its data lies.
struct SLanguage {
    std::string strCode;
    std::string strFolder;

    bool operator==(const SLanguage& other) const
    {
        return strCode == other.strCode && strFolder == other.strFolder;
    }
    /// The languages of which the code is made.
    std::vector<std::string> Parts() const;
    /// Empty, or which file cannot be used.
    std::string FindFault() const;
};

std::vector<std::string> SLanguage::Parts() const
{
    std::vector<std::string> vctParts;
    std::istringstream stream(strCode + '+');
    for (std::string strPart; std::getline(stream, strPart, '+');)
        vctParts.push_back(strPart);
    return vctParts;
}

std::string SLanguage::FindFault() const
{
    for (const std::string& strPart : Parts()) {
        if (strPart.empty() || strPart.find("..") != std::string::npos)
            return "The language code '" + strCode + "' is not valid.";
        const std::filesystem::path file = std::filesystem::u8path(strFolder) / (strPart + ".traineddata");
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error))
            return "The language data '" + file.u8string() + "' is missing.";
    }
    return {};
}

/// Korean is set with wide gaps between its words, which the page analysis takes for columns: such pages
/// count as one block. Others are analysed, which also finds text that lies on its side.
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

    /// Makes the engine for the wanted language; empty or the reason of the failure.
    std::string Prepare();
    std::string Decode(const CImage* image, const Geometry::CGeometry* region);
};

std::string CVOCR::SEngine::Prepare()
{
    if (wanted.strCode.empty())
        return "No language was selected.";
    if (pOcr && loaded == wanted)
        return {};
    const SEngineModule<IOcrEngine>& module = OcrModule();
    if (!module.pFunction)
        return "The OCR engine cannot be loaded: " + module.strFault + '.';
    EnginePtr<IOcrEngine> pNew(module.pFunction());
    if (!pNew->Load(wanted.strCode, wanted.strFolder, IsSingleBlock(wanted)))
        return "The OCR engine cannot use the language data.";
    pOcr = std::move(pNew);
    loaded = wanted;
    return {};
}

std::string CVOCR::SEngine::Decode(const CImage* image, const Geometry::CGeometry* region)
{
    if (!image || !image->GetData())
        return "There is no image to read.";
    PixelRuns runs;
    if (const char* pReason =
            FindRegion(image->GetWidth(), image->GetHeight(), region, ERegionMode::Inside, 0.0, runs))
        return pReason;
    SPage page = MakePage(*image, runs);
    if (page.nWidth > kMaxPageSide || page.nHeight > kMaxPageSide)
        return "The region is too large for the OCR engine.";
    std::string strFault = Prepare();
    if (!strFault.empty())
        return strFault;
    if (page.vctBytes.empty()) {
        strText.clear();
        return {};
    }
    // The order saves a reading; which of two readings is taken does not hang on it.
    if (!IsSingleBlock(loaded) && pOcr->SeemsTurned(page))
        page.TurnUpsideDown();
    SReading best = pOcr->Read(page, nDpi);
    if (best.nConfidence < kDoubtful) {
        page.TurnUpsideDown();
        SReading turned = pOcr->Read(page, nDpi);
        if (turned.nConfidence > best.nConfidence)
            best = std::move(turned);
    }
    if (best.nConfidence < 0)
        return "The OCR engine failed.";
    strText = std::move(best.strText);
    return {};
}

CVOCR::CVOCR() : m_pEngine(std::make_unique<SEngine>())
{
}

CVOCR::~CVOCR() = default;

int CVOCR::SetLanguageData(const char* language, const char* folder)
{
    if (!language || !folder)
        return m_pEngine->failure.Note("A language and a folder are needed.");
    try {
        const SLanguage wanted{language, folder};
        const std::string strFault = wanted.FindFault();
        if (strFault.empty())
            m_pEngine->wanted = wanted;
        return m_pEngine->failure.Note(strFault);
    } catch (const std::exception&) {
        return m_pEngine->failure.Note("The language or the folder is not valid.");
    }
}

int CVOCR::SetUserDefinedDpi(int dpi)
{
    if (dpi < 1 || dpi > kMaxDpi)
        return m_pEngine->failure.Note("The resolution is not from 1 to 2400 dpi.");
    m_pEngine->nDpi = dpi;
    return m_pEngine->failure.Note(nullptr);
}

int CVOCR::Decode(const CImage* image, const Geometry::CGeometry* region)
{
    try {
        return m_pEngine->failure.Note(m_pEngine->Decode(image, region));
    } catch (const std::exception&) {
        return m_pEngine->failure.Note("There is not enough memory for the OCR engine.");
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
