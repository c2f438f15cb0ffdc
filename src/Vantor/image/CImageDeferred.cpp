// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CImage's pixels that come when they are needed.
#include <Vantor/image/CImage.h>

#include <Vantor/CProgress.h>
#include <Vantor/image/ImagePixels_p.h>
#include <Vantor/image/file/DecodeBounds_p.h>

#include <chrono>
#include <cstring>
#include <new>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
/// How often a thread that waits for another one looks whether it is to end.
constexpr std::chrono::milliseconds kPatience{50};
constexpr int kWhite = 255;
} // namespace

CPixelSource::~CPixelSource() = default;

int CImage::Defer(int width, int height, int channels, std::shared_ptr<CPixelSource> source)
try {
    auto pPixels = std::make_unique<SPixels>();
    if (!source || !pPixels->SetFormat(width, height, channels, 8, kRowAlignment))
        return 1;
    pPixels->pDeferred = std::make_unique<SDeferred>();
    pPixels->pDeferred->pSource = std::move(source);
    m_pPixels = std::move(pPixels);
    return 0;
} catch (const std::bad_alloc&) {
    return 1;
}

bool CImage::IsDeferred() const
{
    return m_pPixels->pDeferred && !m_pPixels->pDeferred->bChanged.load(std::memory_order_relaxed);
}

bool CImage::HasPixels() const
{
    if (!m_pPixels->pDeferred)
        return m_pPixels->pData != nullptr;
    return m_pPixels->pDeferred->bReady.load(std::memory_order_acquire);
}

bool CImage::DropPixels()
{
    if (!IsDeferred() || !HasPixels())
        return false;
    m_pPixels->pDeferred->bReady.store(false, std::memory_order_relaxed);
    FreePixels(std::move(m_pPixels->pData));
    SPixels none;
    m_pPixels->TakePixels(none);
    return true;
}

/// Until the pixels are there, a note might still come.
const std::vector<std::string>& CImage::GetNotes() const
{
    static const std::vector<std::string> s_none;
    return m_pPixels->pDeferred && !HasPixels() ? s_none : m_pPixels->vctNotes;
}

bool CImage::SPixels::NeedToChange()
{
    if (pDeferred && !pDeferred->bChanged.load(std::memory_order_relaxed))
        pDeferred->bChanged.store(true, std::memory_order_relaxed);
    return Need();
}

/// The format stays as it is: other threads may read it.
void CImage::SPixels::TakePixels(SPixels& made)
{
    pData = std::move(made.pData);
    vctRows.swap(made.vctRows);
    vctColumnOffsets.swap(made.vctColumnOffsets);
}

/// An image that could not be made is not tried again.
bool CImage::SPixels::Fetch()
try {
    std::unique_lock<std::timed_mutex> lock(pDeferred->mutex, std::defer_lock);
    while (!lock.try_lock_for(kPatience))
        if (CProgress::IsThreadCancelled())
            return false;
    if (pDeferred->bReady.load(std::memory_order_relaxed))
        return true;
    CImage made;
    std::string strReason;
    CPixelSource::EMade eMade = CPixelSource::EMade_Failed;
    if (!pDeferred->bFailed)
        eMade = pDeferred->pSource->Make(made, strReason);
    if (eMade == CPixelSource::EMade_Nothing)
        return false;
    const bool bFits = made.GetWidth() == nWidth && made.GetHeight() == nHeight &&
                       made.GetChannel() == nChannels && made.GetStride() == nStride &&
                       made.GetBitDepth() == nBitDepth;
    if (eMade == CPixelSource::EMade_Failed || !bFits) {
        if (made.Create(nWidth, nHeight, nChannels, nBitDepth, eType, nRowAlignment) != 0)
            return false;
        std::memset(made.m_pPixels->pData.get(), kWhite, made.m_pPixels->Bytes());
        if (!pDeferred->bFailed)
            vctNotes = {strReason.empty() ? "The pixels have another size." : strReason};
        pDeferred->bFailed = true;
    } else {
        vctNotes.swap(made.m_pPixels->vctNotes);
    }
    TakePixels(*made.m_pPixels);
    pDeferred->bReady.store(true, std::memory_order_release);
    return true;
} catch (const std::bad_alloc&) {
    return false;
}

} // namespace Vantor::Algorithms
