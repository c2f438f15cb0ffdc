// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/image/CImage.h>

#include <Vantor/CProgress.h>
#include <Vantor/FailureReason_p.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/ImagePixels_p.h>

#include <atomic>
#include <climits>
#include <cmath>
#include <cstring>
#include <new>
#include <vector>

namespace Vantor::Algorithms
{

namespace
{
constexpr int kMaxChannels = 4;
constexpr int kMaxRowAlignment = 4096;
constexpr long long kMinBytesPerPixelOfTwoChannels = 3;
constexpr const char* kNoCopyMemory = "There is not enough memory for the copy.";
constexpr std::size_t kDefaultDecodeLimit = std::size_t(1) << 30;

std::atomic<std::size_t> g_nDecodeLimit{kDefaultDecodeLimit};

/// Bytes of one row, 0 when it does not fit an int.
int StrideOf(int width, int channels, int bitDepth, int rowAlignment)
{
    long long nBytesPerPixel = static_cast<long long>(channels) * (bitDepth / CHAR_BIT);
    if (channels == 2 && nBytesPerPixel < kMinBytesPerPixelOfTwoChannels)
        nBytesPerPixel = kMinBytesPerPixelOfTwoChannels;
    const long long nBytes = nBytesPerPixel * width;
    const long long nStride = (nBytes + rowAlignment - 1) / rowAlignment * rowAlignment;
    return nStride <= INT_MAX ? static_cast<int>(nStride) : 0;
}
} // namespace

void CImage::SPixels::TakeFormat(const SPixels& model)
{
    nChannels = model.nChannels;
    nBitDepth = model.nBitDepth;
    eType = model.eType;
    nRowAlignment = model.nRowAlignment;
    vctNotes = model.vctNotes;
    pMetadata = model.pMetadata;
}

bool CImage::SPixels::SetFormat(int width, int height, int channels, int bitDepth, int rowAlignment)
{
    if (width < 1 || height < 1 || channels < 1 || channels > kMaxChannels ||
        (bitDepth != 8 && bitDepth != 16) || rowAlignment < 1 || rowAlignment > kMaxRowAlignment)
        return false;
    nWidth = width;
    nHeight = height;
    nChannels = channels;
    nBitDepth = bitDepth;
    nRowAlignment = rowAlignment;
    nStride = StrideOf(width, channels, bitDepth, rowAlignment);
    return nStride != 0;
}

bool CImage::SPixels::Allocate(const unsigned char* content)
{
    nStride = StrideOf(nWidth, nChannels, nBitDepth, nRowAlignment);
    const std::size_t nTableEntries = static_cast<std::size_t>(nWidth) + static_cast<std::size_t>(nHeight);
    if (nStride == 0 || nTableEntries > GetPhysicalMemory() / sizeof(void*))
        return false;
    pData = AllocatePixels(Bytes(), content);
    if (!pData)
        return false;
    vctRows.resize(static_cast<std::size_t>(nHeight));
    for (std::size_t y = 0; y < vctRows.size(); ++y)
        vctRows[y] = pData.get() + y * static_cast<std::size_t>(nStride);
    vctColumnOffsets.resize(static_cast<std::size_t>(nWidth));
    const std::size_t nBytesPerPixel = static_cast<std::size_t>(nChannels * (nBitDepth / CHAR_BIT));
    for (std::size_t x = 0; x < vctColumnOffsets.size(); ++x)
        vctColumnOffsets[x] = x * nBytesPerPixel;
    return true;
}

CImage::CImage() : m_pPixels(std::make_unique<SPixels>()), m_pFailure(std::make_unique<CFailureReason>())
{
}

CImage::~CImage() = default;

int CImage::Create(int width, int height, int channels, int bitDepth, EImageType type, int rowAlignment)
{
    try {
        auto pPixels = std::make_unique<SPixels>();
        if (type != EImageType::Interleaved ||
            !pPixels->SetFormat(width, height, channels, bitDepth, rowAlignment) || !pPixels->Allocate())
            return 1;
        std::memset(pPixels->pData.get(), 0, pPixels->Bytes());
        m_pPixels = std::move(pPixels);
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

int CImage::CreateLike(const CImage& model, int width, int height, int channels)
{
    try {
        const SPixels& from = *model.m_pPixels;
        auto pPixels = std::make_unique<SPixels>();
        pPixels->nWidth = width;
        pPixels->nHeight = height;
        pPixels->TakeFormat(from);
        pPixels->nChannels = channels;
        if (from.pData && !pPixels->Allocate())
            return 1;
        m_pPixels = std::move(pPixels);
        return 0;
    } catch (const std::bad_alloc&) {
        return 1;
    }
}

int CImage::CopyFrom(const CImage* source)
{
    if (!source)
        return m_pFailure->Fail("There is no image to copy.");
    if (source == this)
        return m_pFailure->Succeed();
    try {
        std::wstring strName = source->m_strName;
        std::wstring strFolder = source->m_strFolder;
        SPixels& from = *source->m_pPixels;
        if (!from.Need())
            return m_pFailure->Fail(CProgress::IsThreadCancelled() ? kCancelled : kNoCopyMemory);
        auto pPixels = std::make_unique<SPixels>();
        pPixels->nWidth = from.nWidth;
        pPixels->nHeight = from.nHeight;
        pPixels->TakeFormat(from);
        if (from.pData && !pPixels->Allocate(from.pData.get()))
            return m_pFailure->Fail(kNoCopyMemory);
        m_pPixels = std::move(pPixels);
        m_strName.swap(strName);
        m_strFolder.swap(strFolder);
        m_dPageResolution = source->m_dPageResolution;
        return m_pFailure->Succeed();
    } catch (const std::bad_alloc&) {
        return m_pFailure->Fail(kNoCopyMemory);
    }
}

int CImage::GetWidth() const
{
    return m_pPixels->nWidth;
}

int CImage::GetHeight() const
{
    return m_pPixels->nHeight;
}

int CImage::GetChannel() const
{
    return m_pPixels->nChannels;
}

int CImage::GetBitDepth() const
{
    return m_pPixels->nBitDepth;
}

EImageType CImage::GetImageType() const
{
    return m_pPixels->eType;
}

int CImage::GetStride() const
{
    return m_pPixels->nStride;
}

unsigned char* CImage::GetData()
{
    return m_pPixels->NeedToChange() ? m_pPixels->pData.get() : nullptr;
}

const unsigned char* CImage::GetData() const
{
    return m_pPixels->Need() ? m_pPixels->pData.get() : nullptr;
}

unsigned char** CImage::GetRows()
{
    return m_pPixels->NeedToChange() && !m_pPixels->vctRows.empty() ? m_pPixels->vctRows.data() : nullptr;
}

const unsigned char* const* CImage::GetRows() const
{
    return m_pPixels->Need() && !m_pPixels->vctRows.empty() ? m_pPixels->vctRows.data() : nullptr;
}

const std::size_t* CImage::GetColumnOffsets() const
{
    const bool bAny = m_pPixels->Need() && !m_pPixels->vctColumnOffsets.empty();
    return bAny ? m_pPixels->vctColumnOffsets.data() : nullptr;
}

unsigned char* CImage::GetPixel(int x, int y)
{
    if (!m_pPixels->NeedToChange())
        return nullptr;
    return const_cast<unsigned char*>(static_cast<const CImage*>(this)->GetPixel(x, y));
}

const unsigned char* CImage::GetPixel(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_pPixels->nWidth || y >= m_pPixels->nHeight || !m_pPixels->Need())
        return nullptr;
    return m_pPixels->vctRows[static_cast<std::size_t>(y)] +
           m_pPixels->vctColumnOffsets[static_cast<std::size_t>(x)];
}

void CImage::SetName(const std::wstring& name)
{
    m_strName = name;
}

const std::wstring& CImage::GetName() const
{
    return m_strName;
}

void CImage::SetFolder(const std::wstring& folder)
{
    m_strFolder = folder;
}

const std::wstring& CImage::GetFolder() const
{
    return m_strFolder;
}

void CImage::SetPageResolution(double dpi)
{
    m_dPageResolution = std::isfinite(dpi) && dpi > 0.0 ? dpi : 0.0;
}

double CImage::GetPageResolution() const
{
    return m_dPageResolution;
}

std::string CImage::GetFailureReason() const
{
    return m_pFailure->GetText();
}

void CImage::SetNotes(std::vector<std::string> notes)
{
    m_pPixels->vctNotes = std::move(notes);
}

std::shared_ptr<const SImageMetadata> CImage::GetMetadata() const
{
    static const auto s_pNothing = std::make_shared<const SImageMetadata>();
    return m_pPixels->pMetadata ? m_pPixels->pMetadata : s_pNothing;
}

int CImage::SetMetadata(const SImageMetadata& metadata)
try {
    auto pMetadata = std::make_shared<SImageMetadata>(metadata);
    KeepInRange(*pMetadata);
    m_pPixels->pMetadata = std::move(pMetadata);
    return 0;
} catch (const std::bad_alloc&) {
    return 1;
}

void CImage::SetDecodeLimit(std::size_t bytes)
{
    g_nDecodeLimit.store(bytes, std::memory_order_relaxed);
}

std::size_t CImage::GetDecodeLimit()
{
    return g_nDecodeLimit.load(std::memory_order_relaxed);
}

} // namespace Vantor::Algorithms
