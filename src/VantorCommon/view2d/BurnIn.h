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

/// Images with their annotations painted over them, pixel for pixel as a 2D view of exactly that size shows
/// them, handles and labels included, but none as selected. GUI thread only.
namespace BurnIn
{
/// The annotations in the order of their geometry model.
using ObjectList = std::vector<std::shared_ptr<CImageView2DDrawableObject>>;

/// @param image       of 8 bits a sample; transparent pixels stay transparent
/// @param vctObjects  what is painted, invisible ones left out
/// @param bOwnColors  see SCenterOptions::bOwnColors
/// @return RGB32, or ARGB32_Premultiplied for four channels; null for an empty image or lack of memory
VANTORCOMMON_EXPORT QImage Paint(const Vantor::Algorithms::CImage& image, const ObjectList& vctObjects,
                                 bool bOwnColors);
/// The same as an image of three channels, or of four where that one has four; null after a failure.
VANTORCOMMON_EXPORT std::shared_ptr<Vantor::Algorithms::CImage>
ToImage(const Vantor::Algorithms::CImage& image, const ObjectList& vctObjects, bool bOwnColors);
/// The same as a PDF document of one page: the image without loss, the annotations as lines and letters, one
/// pixel of the image being one of the screen. Empty after a failure.
VANTORCOMMON_EXPORT QByteArray ToPdf(const Vantor::Algorithms::CImage& image, const ObjectList& vctObjects,
                                     bool bOwnColors);
} // namespace BurnIn
