// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

class QIODevice;

namespace Vantor::Algorithms
{

class CImage;

/// Loads what CImage::Load loads, from an open random-access device, and sets no name and no folder. The
/// format is told by the content. The image is empty; false on failure, its content is then undefined.
bool LoadImageFrom(QIODevice& device, CImage& image);

} // namespace Vantor::Algorithms
