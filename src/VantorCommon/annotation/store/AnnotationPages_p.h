// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/annotation/Annotations.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QString>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

/// A page by its file and its identifier; of the only set of a list: empty, and -1.
using PageKey = std::pair<QString, int>;

/// The annotations of one image or page of a list.
struct SAnnotatedPage {
    int nId = 0; ///< for life: an image that replaces another has its page
    /// The image. A deferred one is not held: nobody but the list keeps the pixels of a page.
    std::weak_ptr<Vantor::Algorithms::CImage> pWatched;
    std::shared_ptr<Vantor::Algorithms::CImage> pHeld; ///< the same, or null
    QString strImage;                                  ///< its path, also when it is gone
    QString strFile; ///< path of its file; without one something unique, which IsFile tells from a path
    /// What a file says of it beside its objects, see AnnotationDocument::Unpack; its page is that in the
    /// file.
    Vantor::Annotations::SPage file;
    CImageView2DGeometryModel::ObjectList vctObjects; ///< while another page is shown

    /// The image; null when it is gone.
    std::shared_ptr<Vantor::Algorithms::CImage> Image() const { return pWatched.lock(); }
    PageKey Key() const { return {strFile, nId}; }
    void Watch(const std::shared_ptr<Vantor::Algorithms::CImage>& pImage);
    bool IsFile() const { return !strFile.startsWith(QLatin1Char('#')); }
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
    /// Those that have a page.
    std::set<QString> Files() const;
    /// Makes it a page of another file, behind those that are there.
    void Move(SAnnotatedPage& page, const QString& strPath);
    /// @{
    /// Absolute and without detours, as SAnnotatedPage has it; empty for an image without a file.
    static QString CleanPath(const QString& strPath);
    static QString PathOf(const std::shared_ptr<Vantor::Algorithms::CImage>& pImage);
    /// @}
    /// The index in the list; -1 when the page is gone.
    int IndexOf(int nId) const;
    /// Null when the page is gone.
    SAnnotatedPage* Find(int nId);
    const SAnnotatedPage* Find(int nId) const { return const_cast<CAnnotationPages*>(this)->Find(nId); }

private:
    void ForgetCounts();
    SAnnotatedPage MakePage(const std::shared_ptr<Vantor::Algorithms::CImage>& pImage);

    Pages m_vctPages;
    std::map<QString, int> m_mapPages; ///< how many there have been of a file that is there
    int m_nNextId = 1;
};
