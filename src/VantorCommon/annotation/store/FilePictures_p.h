// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <map>
#include <memory>

namespace Vantor::Algorithms
{
class CImage;
}

/// Where the picture in the file of an image is: how many steps have turned, flipped or cut it since. Files
/// keep the places on the picture that stands in the file. GUI thread only.
class CFilePictures
{
public:
    using ImagePtr = std::shared_ptr<Vantor::Algorithms::CImage>;

    /// The picture of an image.
    struct SPicture {
        int nWidth = 0;  ///< in pixels
        int nHeight = 0; ///< in pixels
        SPlaneMap map;   ///< from it to the image
    };

    /// An image has come from another one.
    void Follow(const ImagePtr& pBefore, const ImagePtr& pAfter, const SPlaneMap& map);
    /// An image stands in the file now, also for those that have come from the same picture.
    void SetSaved(const ImagePtr& pImage);
    /// Whether one has come from the other, or both from a third one.
    bool AreOfOne(const ImagePtr& pOne, const ImagePtr& pOther) const;
    /// Null when nothing is known of it, or when it is gone.
    ImagePtr ImageOf(unsigned int nUID) const;
    /// An image that nothing is known of is the picture itself.
    SPicture Of(const ImagePtr& pImage) const;

private:
    struct SEntry {
        std::weak_ptr<Vantor::Algorithms::CImage> pImage;
        int nPicture = 0; ///< the same for all that have come from one picture
        SPicture picture;
    };

    const SEntry* Find(const ImagePtr& pImage) const;

    std::map<unsigned int, SEntry> m_entries; ///< by the image's identifier
    int m_nNext = 0;
};
