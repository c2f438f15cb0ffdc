// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/Export.h>

#include <QByteArray>
#include <QImage>
#include <memory>
#include <vector>

class CImageView2DDrawableObject;

namespace Vantor::Algorithms
{
class CImage;
}

/// Paints annotations into images, pixel for pixel as a 2D view of exactly that size shows them, with handles
/// and labels, but none as selected. GUI thread only.
namespace BurnIn
{
/// The annotations in the order of their geometry model.
using ObjectList = std::vector<std::shared_ptr<CImageView2DDrawableObject>>;

/// @param image       of 8 bits a sample; transparent pixels stay transparent
/// @param vctObjects  the annotations to paint; invisible ones are left out
/// @param bOwnColors  see SCenterOptions::bOwnColors
/// @return RGB32, or ARGB32_Premultiplied for four channels; null for an empty image or lack of memory
VANTORCOMMON_EXPORT QImage Paint(const Vantor::Algorithms::CImage& image, const ObjectList& vctObjects,
                                 bool bOwnColors);
/// The same as an image of four channels if the source has four, otherwise of three; null after a failure.
VANTORCOMMON_EXPORT std::shared_ptr<Vantor::Algorithms::CImage>
ToImage(const Vantor::Algorithms::CImage& image, const ObjectList& vctObjects, bool bOwnColors);
/// The same as a PDF document of one page: the image without loss, the annotations as lines and letters; one
/// pixel of the image is one of the screen. Empty after a failure.
VANTORCOMMON_EXPORT QByteArray ToPdf(const Vantor::Algorithms::CImage& image, const ObjectList& vctObjects,
                                     bool bOwnColors);
} // namespace BurnIn
