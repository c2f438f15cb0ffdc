// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>
#include <VantorCommon/view2d/CImageView2DCtrlOpenings_p.h>

#include <QString>
#include <memory>
#include <vector>

class CImageView2DCtrlImages;
class QUrl;

namespace Vantor::Algorithms
{
class CImage;
}

/// Loads the images and documents of a 2D controller and saves its images; the controller's signals report
/// success and failure. Controller and view may be deleted while a dialog is open: then it does nothing more.
/// With SCenterOptions::bBackground loading, adding, pasting and saving are jobs.
class CImageView2DCtrlFiles
{
public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    CImageView2DCtrlFiles(const SImageView2DCtrlContext& context, CImageView2DCtrlImages& images);

    /// Replaces the list by an image or the pages of a document.
    void Load(const QString& strPath);
    /// The image in a list of one; an empty list if it cannot be loaded.
    std::vector<ImagePtr> LoadImage(const QString& strPath);
    /// One image per page; blocks while it asks for a password.
    std::vector<ImagePtr> LoadPDF(const QString& strPath);
    /// Appends the images of a file, the first of which becomes current.
    void Add(const QString& strPath);
    /// Appends the image in a file that the clipboard names.
    void Paste(const QUrl& url);
    /// Saves the current image in the format of the suffix.
    void Save(const QString& strPath);

    /// @{
    /// The same for files that the user chooses in a dialog; blocks meanwhile.
    void AskAndLoad();
    void AskAndLoadImage();
    void AskAndLoadPdf();
    void AskAndAdd();
    void AskAndSave();
    /// @}

    /// Gives up the files that have not been shown.
    void CancelJobs();

private:
    ImageFileLoad::EReader Reader() const;
    bool AskPassword(ImageFileLoad::SRequest& request) const;
    void Tell(const ImageFileLoad::SRequest& request, const ImageFileLoad::SLoaded& loaded);
    std::vector<ImagePtr> Read(ImageFileLoad::SRequest request);
    void Open(SOpening opening);
    void Show(const SOpening& opening, const std::vector<ImagePtr>& vctImages);
    bool ShowLater(SOpening& opening, const ImageFileLoad::SLoaded& loaded);
    void Replace(const std::vector<ImagePtr>& vctImages, const QString& strPath);
    void Append(const std::vector<ImagePtr>& vctImages, const QString& strPath);
    void PushAll(const std::vector<ImagePtr>& vctImages);
    void TellSaved(const Vantor::Algorithms::CImage& image, const QString& strPath, const QString& strReason);

    const SImageView2DCtrlContext& m_context;
    CImageView2DCtrlImages& m_images;
    CImageView2DCtrlOpenings m_openings;
};
