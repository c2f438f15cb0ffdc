// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <string>

class QIODevice;

namespace Vantor::Algorithms
{

/// A sentence that the image is the first of several pages of a TIFF file; empty for a single page. Reduced
/// copies and masks are no pages. Reads the heads of at most 10,000 directories.
std::string NoteOfPages(QIODevice& device);

} // namespace Vantor::Algorithms
