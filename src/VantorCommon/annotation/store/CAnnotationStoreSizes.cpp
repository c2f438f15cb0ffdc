// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Annotations that a file has for images of another size or resolution than those that CAnnotationStore
// shows.
#include <VantorCommon/annotation/store/AnnotationStoreState_p.h>

#include <Vantor/image/CImage.h>

#include <algorithm>

using Vantor::Annotations::SDocument;
using Vantor::Annotations::SPage;
using Vantor::Annotations::SRemark;

namespace
{
using Remarks = std::vector<SRemark>;

std::string OtherSizeText(const SPage& page)
{
    return "The annotations were made for an image of " + std::to_string(page.width) + " x " +
           std::to_string(page.height) + " pixels.";
}

void Scale(SPage& page, double x, double y, Remarks& vctRemarks)
{
    const Remarks vctNew = Vantor::Annotations::ScalePage(page, x, y);
    vctRemarks.insert(vctRemarks.end(), vctNew.begin(), vctNew.end());
}
} // namespace

/// The pages of a document that Apply shows for a page, with their images.
std::vector<std::pair<SPage*, CAnnotationStore::SPrivate::ImagePtr>>
CAnnotationStore::SPrivate::PagesInList(SDocument& document, int nId) const
{
    std::vector<std::pair<SPage*, ImagePtr>> vctFound;
    const auto find = [&](int nInFile, const ImagePtr& pImage) {
        for (SPage& page : document.pages)
            if (page.page == nInFile && pImage)
                vctFound.emplace_back(&page, pImage);
    };
    if (!bPages && pImages)
        find(std::max(0, pImages->GetCurrentIndex()), pImages->GetCurrentImage());
    for (const SAnnotatedPage& page : pages.All())
        if (bPages && page.strFile == FileOf(nId))
            find(page.file.page, page.Image());
    return vctFound;
}

/// Takes pages to the resolution of their images, and to their size if somebody wants that.
/// @return EOtherSize_Leave: the document is not to be shown; EOtherSize_Scale: somebody has it scaled
EOtherSize CAnnotationStore::SPrivate::Fit(SDocument& document, int nId, Remarks& vctRemarks) const
{
    const AskSize ask = askSize; // this may be gone when a dialog is closed
    EOtherSize eAnswer = EOtherSize_Keep;
    bool bAsked = false;
    for (const auto& [pPage, pImage] : PagesInList(document, nId)) {
        const double dblDpi = pImage->GetPageResolution();
        if (pPage->dpi > 0.0 && dblDpi > 0.0 && pPage->dpi != dblDpi) {
            Scale(*pPage, dblDpi / pPage->dpi, dblDpi / pPage->dpi, vctRemarks);
            pPage->dpi = dblDpi;
            continue;
        }
        const CFilePictures::SPicture picture = pictures.Of(pImage);
        const QSize size(picture.nWidth, picture.nHeight);
        if (pPage->width <= 0 || pPage->height <= 0 || QSize(pPage->width, pPage->height) == size)
            continue;
        if (!bAsked && !ask)
            vctRemarks.push_back({{}, OtherSizeText(*pPage)});
        else if (!bAsked)
            eAnswer = ask(*pPage, size);
        bAsked = true;
        if (eAnswer == EOtherSize_Leave)
            break;
        if (eAnswer == EOtherSize_Scale)
            Scale(*pPage, size.width() / double(pPage->width), size.height() / double(pPage->height),
                  vctRemarks);
    }
    return eAnswer;
}
