// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/ocr/CVOCR.h>

#include <Vantor/FailureReason_p.h>
#include <Vantor/ocr/Page_p.h>

#include <tesseract/baseapi.h>

#include <exception>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <vector>

/// Of the OpenMP runtime of GNU, which the engine uses: its header comes with one compiler only.
extern "C" void omp_set_max_active_levels(int levels);
extern "C" int omp_get_max_active_levels();

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

/// Holds back the engine's OpenMP threads, which make it several times slower, for the time of a call.
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

struct SReading {
    std::string strText;
    int nConfidence = -1; ///< percent; -1 when the engine has failed
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
tesseract::PageSegMode SegmentationFor(const SLanguage& language)
{
    for (const std::string& strPart : language.Parts()) {
        if (strPart == "kor")
            return tesseract::PSM_SINGLE_BLOCK;
    }
    return tesseract::PSM_AUTO;
}

std::string Trimmed(const char* text)
{
    std::string strText = text ? text : "";
    strText.erase(strText.find_last_not_of(" \n\r\t\f") + 1);
    return strText;
}
} // namespace

struct CVOCR::SEngine {
    CFailureReason failure;
    SLanguage wanted;
    SLanguage loaded;
    int nDpi = kDefaultDpi;
    std::string strText;
    std::unique_ptr<tesseract::TessBaseAPI> pApi;

    /// Makes the engine for the wanted language; null or the reason of the failure.
    const char* Prepare();
    SReading Read(const SPage& page);
    const char* Decode(const CImage* image, const Geometry::CGeometry* region);
};

const char* CVOCR::SEngine::Prepare()
{
    if (wanted.strCode.empty())
        return "No language was selected.";
    if (pApi && loaded == wanted)
        return nullptr;
    auto pNew = std::make_unique<tesseract::TessBaseAPI>();
    // The engine would comment on every page on standard error.
    pNew->SetVariable("debug_file", "/dev/null");
    if (pNew->Init(wanted.strFolder.c_str(), wanted.strCode.c_str()) != 0)
        return "The OCR engine cannot use the language data.";
    pNew->SetPageSegMode(SegmentationFor(wanted));
    pApi = std::move(pNew);
    loaded = wanted;
    return nullptr;
}

SReading CVOCR::SEngine::Read(const SPage& page)
{
    SReading reading;
    pApi->SetImage(page.vctBytes.data(), page.nWidth, page.nHeight, page.nChannels,
                   page.nWidth * page.nChannels);
    pApi->SetSourceResolution(nDpi);
    if (pApi->Recognize(nullptr) == 0) {
        const std::unique_ptr<char[]> pText(pApi->GetUTF8Text());
        reading.strText = Trimmed(pText.get());
        reading.nConfidence = pApi->MeanTextConf();
    }
    pApi->Clear();
    return reading;
}

const char* CVOCR::SEngine::Decode(const CImage* image, const Geometry::CGeometry* region)
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
    const COneThread oneThread;
    if (const char* pReason = Prepare())
        return pReason;
    if (page.vctBytes.empty()) {
        strText.clear();
        return nullptr;
    }
    // The order saves a reading; which of two readings is taken does not hang on it.
    if (pApi->GetPageSegMode() == tesseract::PSM_AUTO && page.SeemsTurned())
        page.TurnUpsideDown();
    SReading best = Read(page);
    if (best.nConfidence < kDoubtful) {
        page.TurnUpsideDown();
        SReading turned = Read(page);
        if (turned.nConfidence > best.nConfidence)
            best = std::move(turned);
    }
    if (best.nConfidence < 0)
        return "The OCR engine failed.";
    strText = std::move(best.strText);
    return nullptr;
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
