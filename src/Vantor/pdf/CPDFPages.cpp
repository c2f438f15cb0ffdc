// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/pdf/CPDFPages.h>

#include <Vantor/CProgress.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/CPixelSource.h>
#include <Vantor/pdf/CPDFReader.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <new>
#include <set>
#include <utility>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::CPixelSource;

namespace Vantor::Utils
{

namespace
{
constexpr int kChannels = 3;
/// Two that render ahead, and one for what is asked for meanwhile, while the two are slow.
constexpr std::size_t kMaxReaders = 3;
constexpr std::size_t kUsualReaders = 2;
constexpr std::chrono::milliseconds kSlow{250};
/// How often a thread that waits for a reader looks whether it is to end.
constexpr std::chrono::milliseconds kPatience{50};
constexpr double kSheetWidth = 595.0 / 72.0; // inches, of an A4 page
constexpr double kSheetHeight = 842.0 / 72.0;

/// @param nPage  0 is the first
std::string WhyNot(int nPage, int nPages, const std::string& strReason)
{
    return "Page " + std::to_string(nPage + 1) + " of " + std::to_string(nPages) + " cannot be rendered. " +
           strReason;
}

/// A document and its readers, of which a thread has one for a page. Any thread.
class CDocument
{
public:
    explicit CDocument(std::unique_ptr<CPDFReader> pReader) : m_first(*pReader), m_vctFree{pReader.get()}
    {
        m_vctReaders.reserve(kMaxReaders);
        m_vctReaders.push_back(std::move(pReader));
    }

    CPixelSource::EMade Render(int nPage, CImage& image, std::string& strReason);

private:
    CPDFReader* Take();
    CPDFReader* TakeInTurn(std::unique_lock<std::mutex>& lock, unsigned long nTicket);
    CPDFReader* MakeReader();
    void GiveBack(CPDFReader* pReader);

    const CPDFReader& m_first; ///< stays open, so that the others can be opened like it
    std::mutex m_mutex;        ///< guards what follows
    std::condition_variable m_given;
    std::vector<std::unique_ptr<CPDFReader>> m_vctReaders;
    std::vector<CPDFReader*> m_vctFree;
    std::size_t m_nOpening = 0;
    std::set<unsigned long> m_waiting; ///< tickets: whoever has waited longest is the next
    unsigned long m_nTickets = 0;
};

/// A reader of one's own; null when the thread's progress is cancelled.
CPDFReader* CDocument::Take()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const unsigned long nTicket = m_nTickets++;
    m_waiting.insert(nTicket);
    CPDFReader* pReader = TakeInTurn(lock, nTicket);
    m_waiting.erase(nTicket);
    m_given.notify_all();
    return pReader;
}

/// The mutex is held before and after it.
CPDFReader* CDocument::TakeInTurn(std::unique_lock<std::mutex>& lock, unsigned long nTicket)
{
    bool bMayMake = true;
    const auto slow = std::chrono::steady_clock::now() + kSlow;
    while (!CProgress::IsThreadCancelled()) {
        if (!m_vctFree.empty() && *m_waiting.begin() == nTicket) {
            CPDFReader* pReader = m_vctFree.back();
            m_vctFree.pop_back();
            return pReader;
        }
        const std::size_t nMax = std::chrono::steady_clock::now() < slow ? kUsualReaders : kMaxReaders;
        if (bMayMake && m_vctReaders.size() + m_nOpening < nMax) {
            ++m_nOpening;
            lock.unlock();
            CPDFReader* pReader = MakeReader();
            lock.lock();
            if (pReader)
                return pReader;
            bMayMake = false; // the others have to do
        }
        m_given.wait_for(lock, kPatience);
    }
    return nullptr;
}

/// The document once more; null when that fails. It has been counted as opening.
CPDFReader* CDocument::MakeReader()
{
    std::unique_ptr<CPDFReader> pReader;
    bool bOpen = false;
    try {
        pReader = std::make_unique<CPDFReader>();
        bOpen = pReader->ReadLike(m_first) == CPDFReader::EReadResult_OK;
    } catch (const std::bad_alloc&) {
        bOpen = false; // whoever waits behind this thread gets its turn
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    --m_nOpening;
    if (!bOpen)
        return nullptr;
    m_vctReaders.push_back(std::move(pReader));
    return m_vctReaders.back().get();
}

/// One more than usual ends when another one is free.
void CDocument::GiveBack(CPDFReader* pReader)
{
    std::unique_ptr<CPDFReader> pEnded;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_vctReaders.size() > kUsualReaders && !m_vctFree.empty() && pReader != &m_first) {
        const auto it = std::find_if(m_vctReaders.begin(), m_vctReaders.end(),
                                     [pReader](const auto& pEach) { return pEach.get() == pReader; });
        pEnded = std::move(*it);
        m_vctReaders.erase(it);
        return;
    }
    m_vctFree.push_back(pReader);
    m_given.notify_all();
}

CPixelSource::EMade CDocument::Render(int nPage, CImage& image, std::string& strReason)
{
    CPDFReader* pReader = Take();
    if (!pReader)
        return CPixelSource::EMade_Nothing;
    const bool bRendered = pReader->RenderPage(nPage, &image) == 0;
    if (!bRendered)
        strReason = WhyNot(nPage, m_first.GetPageNumber(), pReader->GetFailureReason());
    GiveBack(pReader);
    if (bRendered)
        return CPixelSource::EMade_Done;
    return CProgress::IsThreadCancelled() ? CPixelSource::EMade_Nothing : CPixelSource::EMade_Failed;
}

/// One page.
class CPageSource : public CPixelSource
{
public:
    CPageSource(std::shared_ptr<CDocument> pDocument, int nPage)
        : m_pDocument(std::move(pDocument)), m_nPage(nPage)
    {
    }
    EMade Make(CImage& image, std::string& strReason) override
    {
        return m_pDocument->Render(m_nPage, image, strReason);
    }

private:
    const std::shared_ptr<CDocument> m_pDocument;
    const int m_nPage;
};

/// A page that has no size of its own; it says why.
class CSheetSource : public CPixelSource
{
public:
    explicit CSheetSource(std::string strReason) : m_strReason(std::move(strReason)) {}
    EMade Make(CImage&, std::string& strReason) override
    {
        strReason = m_strReason;
        return EMade_Failed;
    }

private:
    const std::string m_strReason;
};

struct SPageSize {
    int nWidth = 0; ///< 0: nobody can tell
    int nHeight = 0;
    std::string strReason;
};

/// Up to the limits of CPDFPages; none when the thread's progress is cancelled.
std::vector<SPageSize> SizesOf(CPDFReader& reader)
{
    const int nPages = std::min(reader.GetPageNumber(), CPDFPages::kMaxPages);
    std::vector<SPageSize> vctSizes;
    int nUnknown = 0;
    for (int i = 0; i < nPages && nUnknown < CPDFPages::kMaxUnknown; ++i) {
        SPageSize size;
        const bool bKnown = reader.GetPageSize(i, size.nWidth, size.nHeight) == 0;
        if (!bKnown)
            size.strReason = WhyNot(i, reader.GetPageNumber(), reader.GetFailureReason());
        nUnknown = bKnown ? 0 : nUnknown + 1;
        vctSizes.push_back(std::move(size));
        if (!CProgress::Tell(static_cast<double>(i + 1) / nPages))
            return {};
    }
    return vctSizes;
}

int SheetSide(double inches, double dpi)
{
    constexpr double kMaxSheet = 20000.0;
    return static_cast<int>(std::clamp(std::ceil(inches * dpi), 1.0, kMaxSheet));
}
} // namespace

std::vector<std::shared_ptr<CImage>> CPDFPages::Make(std::unique_ptr<CPDFReader> pReader,
                                                     std::string& strFailure)
{
    strFailure.clear();
    std::vector<std::shared_ptr<CImage>> vctPages;
    if (!pReader)
        return vctPages;
    const std::vector<SPageSize> vctSizes = SizesOf(*pReader);
    if (vctSizes.size() < static_cast<std::size_t>(pReader->GetPageNumber()) && !vctSizes.empty())
        strFailure = "Only the first " + std::to_string(vctSizes.size()) + " of " +
                     std::to_string(pReader->GetPageNumber()) + " pages can be read.";
    const double dDpi = pReader->GetResolutionX();
    const auto pDocument = std::make_shared<CDocument>(std::move(pReader));
    for (std::size_t i = 0; i < vctSizes.size(); ++i) {
        const SPageSize& size = vctSizes[i];
        auto pPage = std::make_shared<CImage>();
        if (size.nWidth > 0)
            pPage->Defer(size.nWidth, size.nHeight, kChannels,
                         std::make_shared<CPageSource>(pDocument, static_cast<int>(i)));
        else
            pPage->Defer(SheetSide(kSheetWidth, dDpi), SheetSide(kSheetHeight, dDpi), kChannels,
                         std::make_shared<CSheetSource>(size.strReason));
        pPage->SetPageResolution(dDpi);
        vctPages.push_back(std::move(pPage));
    }
    return vctPages;
}

} // namespace Vantor::Utils
