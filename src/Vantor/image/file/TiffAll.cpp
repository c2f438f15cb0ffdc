// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The pages of a TIFF file behind the first.
#include <Vantor/CProgress.h>
#include <Vantor/Messages_p.h>
#include <Vantor/file/SharedFile_p.h>
#include <Vantor/image/CImage.h>
#include <Vantor/image/CPixelSource.h>
#include <Vantor/image/ImageMetadata_p.h>
#include <Vantor/image/file/OtherImages_p.h>
#include <Vantor/image/file/TiffHandle_p.h>
#include <Vantor/image/file/TiffLoad_p.h>
#include <Vantor/image/file/TiffPages_p.h>

#include <algorithm>
#include <utility>

namespace Vantor::Algorithms
{

namespace
{
/// Deliberate: what the directories say is read up to this much for every file, and some times its length.
/// Those that share no bytes need less than its length.
constexpr qint64 kFreeHeadBytes = 16 << 20;
constexpr qint64 kHeadReadings = 4;

class CTiffPageSource : public CPixelSource
{
public:
    /// @param strTitle  such as "Page 3 of 7"
    CTiffPageSource(std::shared_ptr<const CSharedFile> pFile, quint64 nOffset, std::string strTitle)
        : m_pFile(std::move(pFile)), m_nOffset(nOffset), m_strTitle(std::move(strTitle))
    {
    }
    EMade Make(CImage& image, std::string& strReason) override;

private:
    const std::shared_ptr<const CSharedFile> m_pFile;
    const quint64 m_nOffset; ///< of the directory
    const std::string m_strTitle;
};

CPixelSource::EMade CTiffPageSource::Make(CImage& image, std::string& strReason)
{
    CSharedFileReader reader(m_pFile);
    const TiffHandle tiff = OpenTiff(reader, kReadTiffHead);
    const bool bFound = tiff && TIFFSetSubDirectory(tiff.get(), m_nOffset) == 1;
    SFound found;
    const CResult result = LoadTiffPage(bFound ? tiff.get() : nullptr,
                                        static_cast<std::uint64_t>(m_pFile->GetSize()), image, found);
    if (result.IsSuccess())
        return EMade_Done;
    if (CProgress::IsThreadCancelled())
        return EMade_Nothing;
    strReason = m_strTitle + " cannot be read. " + result.GetReason();
    return EMade_Failed;
}

/// The size and what is said of a page; those of the first image for a page that cannot be read.
STiffPage PageAt(TIFF* pTiff, quint64 nOffset, const SImagesOfFile& images)
{
    STiffPage page;
    if (TIFFSetSubDirectory(pTiff, nOffset) == 1 &&
        TellTiffPage(pTiff, static_cast<std::uint64_t>(images.pFile->GetSize()), page))
        return page;
    const CImage& first = *images.vctImages.front();
    page.nWidth = first.GetWidth();
    page.nHeight = first.GetHeight();
    page.nChannels = first.GetChannel();
    return page;
}

void AddPage(STiffPage page, quint64 nOffset, const std::string& strTitle, SImagesOfFile& images)
{
    auto pImage = std::make_shared<CImage>();
    if (pImage->Defer(page.nWidth, page.nHeight, page.nChannels,
                      std::make_shared<CTiffPageSource>(images.pFile, nOffset, strTitle)) != 0)
        throw std::bad_alloc();
    SFound found;
    found.metadata = std::move(page.metadata);
    if (const auto pMetadata = MetadataOf(found))
        pImage->SetMetadata(*pMetadata);
    images.vctImages.push_back(std::move(pImage));
}
} // namespace

void AddTiffPages(SImagesOfFile& images)
{
    const CNoMessages silence; // who loads a page hears of it
    CSharedFileReader reader(images.pFile);
    const STiffPages pages = FindTiffPages(reader);
    const std::size_t nPages = pages.vctOffsets.size();
    const std::size_t nEnd = std::min(nPages, static_cast<std::size_t>(images.nMost));
    reader.SetBytesLeft(kFreeHeadBytes + kHeadReadings * images.pFile->GetSize());
    const TiffHandle tiff = reader.seek(0) ? OpenTiff(reader, kReadTiffHead) : nullptr;
    for (std::size_t i = 1; tiff && i < nEnd; ++i) {
        if (!CProgress::Tell(static_cast<double>(i) / static_cast<double>(nEnd)))
            return;
        STiffPage page = PageAt(tiff.get(), pages.vctOffsets[i], images);
        if (reader.IsSpent())
            break;
        const std::string strTitle = "Page " + std::to_string(i + 1) + " of " + std::to_string(nPages);
        AddPage(std::move(page), pages.vctOffsets[i], strTitle, images);
    }
    if (pages.bMore || images.vctImages.size() < nPages)
        images.strLeftOut = "Only the first " + std::to_string(images.vctImages.size()) + " of " +
                            (pages.bMore ? "more than " : "") + std::to_string(nPages) +
                            " pages were loaded.";
}

} // namespace Vantor::Algorithms
