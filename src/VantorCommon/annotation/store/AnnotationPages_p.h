// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QString>
#include <map>
#include <memory>
#include <vector>

/// The annotations of one image or page of a list.
struct SAnnotatedPage {
    int nId = 0; ///< for life: an image that replaces another has its page
    std::shared_ptr<Vantor::Algorithms::CImage> pImage;
    QString strFile; ///< path of the file that it was read from; something unique without one
    /// What a file says of it beside its objects, see AnnotationDocument::Unpack; its page is that in the
    /// file.
    Vantor::Annotations::SPage file;
    CImageView2DGeometryModel::ObjectList vctObjects; ///< while another page is shown
};

/// The pages of a list of images, which follow it: for SCenterOptions::bAnnotationsPerImage. GUI thread only.
class CAnnotationPages
{
public:
    using Pages = std::vector<SAnnotatedPage>;

    /// Takes over the list. @return those that have left it
    Pages Follow(const CImageView2DModel& model);
    /// Forgets all pages and takes over the list with new ones.
    void Restart(const CImageView2DModel& model);
    Pages& All() { return m_vctPages; }
    const Pages& All() const { return m_vctPages; }
    /// The index in the list; -1 when the page is gone.
    int IndexOf(int nId) const;
    /// Null when the page is gone.
    SAnnotatedPage* Find(int nId);

private:
    SAnnotatedPage MakePage(const std::shared_ptr<Vantor::Algorithms::CImage>& pImage);

    Pages m_vctPages;
    std::map<QString, int> m_mapPages; ///< how many there have been of a file
    int m_nNextId = 1;
};
