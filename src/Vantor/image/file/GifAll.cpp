// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The frames of a GIF file behind the first, as they are shown.
#include <Vantor/CProgress.h>
#include <Vantor/file/SharedFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/CPixelSource.h>
#include <Vantor/image/file/DecodeBounds_p.h>
#include <Vantor/image/file/GifFrames_p.h>
#include <Vantor/image/file/GifLoad_p.h>
#include <Vantor/image/file/OtherImages_p.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>
#include <mutex>
#include <new>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
using ScreenPtr = std::shared_ptr<const CImage>;

/// The memory for screens from which later ones are made; one is kept in every case.
constexpr std::size_t kMostScreenBytes = 64U << 20;
constexpr std::size_t kMostScreens = 64;

/// Makes the pixels of all frames. A frame is painted on what those before it have left, so some of these
/// screens are kept, and the search for one begins at the nearest. Any thread; threads do not wait for each
/// other.
class CGifScreens
{
public:
    /// @param first  of the size of the screen
    CGifScreens(std::shared_ptr<const CSharedFile> pFile, std::vector<SGifFrame> frames, const CImage& first);

    /// The screen while a frame is shown, with four channels.
    /// @param nMissing  receives how many pixels of that frame the file lacks
    /// @return false when the thread's progress is cancelled
    bool Compose(std::size_t nFrame, CImage& screen, qint64& nMissing);

private:
    std::size_t StartAt(std::size_t nFrame, CImage& screen);
    void Keep(std::size_t nFrame, ScreenPtr pScreen);

    const std::shared_ptr<const CSharedFile> m_pFile;
    const std::vector<SGifFrame> m_frames;
    const int m_nWidth;
    const int m_nHeight;
    std::size_t m_nStep = 1;                 ///< every so many frames a screen is kept
    std::mutex m_mutex;                      ///< guards what follows
    std::map<std::size_t, ScreenPtr> m_kept; ///< what the frames before this one have left
    std::size_t m_nLatest = 0;               ///< the last one that was kept
};

CGifScreens::CGifScreens(std::shared_ptr<const CSharedFile> pFile, std::vector<SGifFrame> frames,
                         const CImage& first)
    : m_pFile(std::move(pFile)), m_frames(std::move(frames)), m_nWidth(first.GetWidth()),
      m_nHeight(first.GetHeight())
{
    const std::size_t nScreen = static_cast<std::size_t>(m_nWidth) * static_cast<std::size_t>(m_nHeight) * 4;
    const std::size_t nScreens = std::clamp<std::size_t>(kMostScreenBytes / nScreen, 1, kMostScreens);
    m_nStep = m_frames.size() / nScreens + 1;
}

void CopyPixels(const CImage& from, CImage& to)
{
    for (int y = 0; y < to.GetHeight(); ++y)
        std::memcpy(to.GetRows()[y], from.GetRows()[y], static_cast<std::size_t>(to.GetWidth()) * 4);
}

void Create(CImage& screen, int nWidth, int nHeight, int nChannels)
{
    if (screen.Create(nWidth, nHeight, nChannels, 8, EImageType::Interleaved, kRowAlignment) != 0)
        throw std::bad_alloc();
}

/// The part of a frame that lies on the screen becomes transparent.
void Clear(const SGifFrame& frame, CImage& screen)
{
    const int nColumns = std::min(frame.nWidth, screen.GetWidth() - frame.nLeft);
    const int nEnd = std::min(frame.nTop + frame.nHeight, screen.GetHeight());
    for (int y = frame.nTop; y < nEnd && nColumns > 0; ++y)
        std::memset(screen.GetPixel(frame.nLeft, y), 0, static_cast<std::size_t>(nColumns) * 4);
}

/// Makes the screen before a frame out of the nearest one that is kept.
/// @return which one that is
std::size_t CGifScreens::StartAt(std::size_t nFrame, CImage& screen)
{
    Create(screen, m_nWidth, m_nHeight, 4);
    std::pair<std::size_t, ScreenPtr> start;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto behind = m_kept.upper_bound(nFrame);
        if (behind != m_kept.begin())
            start = *std::prev(behind);
    }
    if (start.second)
        CopyPixels(*start.second, screen);
    return start.first;
}

/// The latest of the others gives way.
void CGifScreens::Keep(std::size_t nFrame, ScreenPtr pScreen)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_nLatest % m_nStep != 0)
        m_kept.erase(m_nLatest);
    m_nLatest = nFrame;
    m_kept.emplace(nFrame, std::move(pScreen));
}

bool CGifScreens::Compose(std::size_t nFrame, CImage& screen, qint64& nMissing)
{
    CSharedFileReader reader(m_pFile);
    for (std::size_t i = StartAt(nFrame, screen); i < nFrame; ++i) {
        const SGifFrame& frame = m_frames[i];
        // What is cleared or restored afterwards need not be painted.
        if (frame.eDisposal == EGifDisposal::Keep)
            PaintGifFrame(reader, frame, screen);
        else if (frame.eDisposal == EGifDisposal::Clear)
            Clear(frame, screen);
        if (CProgress::IsThreadCancelled())
            return false;
        if (i + 1 == nFrame || (i + 1) % m_nStep == 0) {
            const auto pKept = std::make_shared<CImage>();
            if (pKept->CopyFrom(&screen) == 0)
                Keep(i + 1, pKept);
        }
    }
    nMissing = PaintGifFrame(reader, m_frames[nFrame], screen);
    return !CProgress::IsThreadCancelled();
}

/// What is known of a frame; its number counts from 0.
std::string NoteOf(const SGifFrame& frame, std::size_t nFrame, std::size_t nFrames)
{
    std::string strDelay = std::to_string(frame.nDelay / 100) + '.' + std::to_string(frame.nDelay / 10 % 10);
    if (frame.nDelay % 10 != 0)
        strDelay += std::to_string(frame.nDelay % 10);
    return "Frame " + std::to_string(nFrame + 1) + " of " + std::to_string(nFrames) +
           (frame.nDelay > 0 ? ", shown for " + strDelay + " s." : ".");
}

class CGifFrameSource : public CPixelSource
{
public:
    /// @param nChannels  3 for a frame without transparency, or 4
    CGifFrameSource(std::shared_ptr<CGifScreens> pScreens, std::size_t nFrame, int nChannels,
                    std::string strNote)
        : m_pScreens(std::move(pScreens)), m_nFrame(nFrame), m_nChannels(nChannels),
          m_strNote(std::move(strNote))
    {
    }
    EMade Make(CImage& image, std::string& strReason) override;

private:
    const std::shared_ptr<CGifScreens> m_pScreens;
    const std::size_t m_nFrame;
    const int m_nChannels;
    const std::string m_strNote;
};

void DropAlpha(const CImage& from, CImage& to)
{
    for (int y = 0; y < to.GetHeight(); ++y) {
        const unsigned char* pFrom = from.GetRows()[y];
        unsigned char* pTo = to.GetRows()[y];
        for (int x = 0; x < to.GetWidth(); ++x, pFrom += 4, pTo += 3)
            std::memcpy(pTo, pFrom, 3);
    }
}

CPixelSource::EMade CGifFrameSource::Make(CImage& image, std::string&)
{
    CImage composed;
    CImage& screen = m_nChannels == 4 ? image : composed;
    qint64 nMissing = 0;
    if (!m_pScreens->Compose(m_nFrame, screen, nMissing))
        return EMade_Nothing;
    if (m_nChannels == 3) {
        Create(image, screen.GetWidth(), screen.GetHeight(), 3);
        DropAlpha(screen, image);
    }
    Notes notes{m_strNote};
    if (nMissing > 0)
        notes.push_back("The file is incomplete: " + std::to_string(nMissing) +
                        " pixels of the frame are missing.");
    image.SetNotes(std::move(notes));
    return EMade_Done;
}

/// The frames of a file, up to the bounds.
std::vector<SGifFrame> FramesOf(SImagesOfFile& images)
{
    CSharedFileReader reader(images.pFile);
    CGifFrames walk(reader);
    std::vector<SGifFrame> frames;
    SGifFrame frame;
    qint64 nPixelsLeft = kMaxGifPixelsPerByte * reader.size();
    bool bMore = false;
    while (!bMore && walk.Next(frame)) {
        nPixelsLeft -= static_cast<qint64>(frame.nWidth) * frame.nHeight;
        bMore =
            frames.size() == static_cast<std::size_t>(images.nMost) || (nPixelsLeft < 0 && !frames.empty());
        if (!bMore)
            frames.push_back(frame);
        CProgress::Tell(static_cast<double>(reader.pos()) / static_cast<double>(reader.size()));
    }
    if (bMore || walk.IsTooLong())
        images.strLeftOut = "Only the first " + std::to_string(frames.size()) + " frames were loaded" +
                            (nPixelsLeft < 0 ? "; the GIF file is too short for more." : ".");
    return frames;
}
} // namespace

void AddGifFrames(SImagesOfFile& images)
{
    CImage& first = *images.vctImages.front();
    const std::vector<SGifFrame> frames = FramesOf(images);
    if (frames.size() < 2)
        return;
    Notes notes = first.GetNotes();
    notes.insert(notes.begin(), NoteOf(frames.front(), 0, frames.size()));
    first.SetNotes(std::move(notes));
    const auto pScreens = std::make_shared<CGifScreens>(images.pFile, frames, first);
    bool bOpaque = first.GetChannel() == 3 && frames.front().eDisposal == EGifDisposal::Keep;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        const int nChannels = bOpaque ? 3 : 4;
        auto pImage = std::make_shared<CImage>();
        auto pSource =
            std::make_shared<CGifFrameSource>(pScreens, i, nChannels, NoteOf(frames[i], i, frames.size()));
        if (pImage->Defer(first.GetWidth(), first.GetHeight(), nChannels, std::move(pSource)) != 0)
            throw std::bad_alloc();
        images.vctImages.push_back(std::move(pImage));
        bOpaque = bOpaque && frames[i].eDisposal != EGifDisposal::Clear;
    }
}

} // namespace Vantor::Algorithms
