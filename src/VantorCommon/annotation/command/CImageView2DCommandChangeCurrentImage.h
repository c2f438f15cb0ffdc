// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/command/CCommand.h>
#include <VantorCommon/annotation/store/SImageChange.h>

#include <memory>
#include <vector>

class CCarriedShapes;
class CImageView2DCtrl;
class CImageView2DDrawableObject;
class CImageView2DModel;

namespace Vantor::Algorithms
{
class CImage;
}

/// Puts another image on the page that is current when the command is made, which drops the annotations.
///
/// With SCenterOptions::bCarryAnnotations they stay, at their places on the new image, if it has come from
/// the old one by a turn, a flip or a cut, or has its size.
///
/// Undo restores the old image on its page, whichever page is current by then, and the dropped annotations
/// with their order and selection. If the page is gone (closed, or another file was loaded), undo and redo do
/// nothing. The command does nothing without a controller, its image model or a new image. The controller is
/// not owned and outlives the command. GUI thread only.
class VANTORCOMMON_EXPORT CImageView2DCommandChangeCurrentImage : public CCommand
{
public:
    /// Images are shared with the model and the other steps.
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// Remembers the controller's current page and image; changes nothing yet. Null is allowed for both.
    CImageView2DCommandChangeCurrentImage(CImageView2DCtrl* pCtrl, ImagePtr pNewImage,
                                          const SImageChange& sChange = SImageChange());
    ~CImageView2DCommandChangeCurrentImage() override;

    void exec() override;
    void undo() override;

private:
    struct SDropped {
        std::shared_ptr<CImageView2DDrawableObject> pObject;
        bool bSelected;
    };

    CImageView2DModel* Model() const;
    void Show(const ImagePtr& pImage);
    bool Carry();
    void KeepAnnotations();
    void RestoreAnnotations();

    CImageView2DCtrl* m_pCtrl;
    ImagePtr m_pNewImage;
    SImageChange m_sChange;
    ImagePtr m_pOldImage;
    bool m_bHadPage = false;
    bool m_bDone = false;
    /// The list before, kept only when there was no current page.
    std::vector<ImagePtr> m_vctPages;
    std::vector<SDropped> m_vctDropped;
    std::unique_ptr<CCarriedShapes> m_pCarried; ///< null when the annotations have gone with the old image
};
