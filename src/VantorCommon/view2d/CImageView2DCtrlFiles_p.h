// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/view2d/CImageView2DCtrlContext_p.h>

#include <QString>
#include <memory>
#include <vector>

class CImageView2DCtrlImages;

namespace Vantor::Algorithms
{
class CImage;
}

namespace Vantor::Utils
{
class CPDFReader;
}

/// Loads the images and documents of a 2D controller and saves its images; the controller's signals report
/// success and failure. Controller and view may be deleted while a dialog is open: then it does nothing more.
class CImageView2DCtrlFiles
{
public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    CImageView2DCtrlFiles(const SImageView2DCtrlContext& context, CImageView2DCtrlImages& images)
        : m_context(context), m_images(images)
    {
    }

    /// Replaces the list by an image or the pages of a document.
    void Load(const QString& strPath);
    /// The image in a list of one; an empty list if it cannot be loaded.
    std::vector<ImagePtr> LoadImage(const QString& strPath);
    /// One image per page; blocks while it asks for a password.
    std::vector<ImagePtr> LoadPDF(const QString& strPath);
    /// Appends the images of a file, the first of which becomes current.
    void Add(const QString& strPath);
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

private:
    bool IsDocument(const QString& strPath) const;
    std::vector<ImagePtr> LoadAny(const QString& strPath);
    bool ReadDocument(Vantor::Utils::CPDFReader& reader, const QString& strPath);
    void ReplaceImages(const std::vector<ImagePtr>& vctImages, const QString& strPath);
    void Fail(const QString& strWhat, const QString& strReason);

    const SImageView2DCtrlContext& m_context;
    CImageView2DCtrlImages& m_images;
};
