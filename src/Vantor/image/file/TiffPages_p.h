// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QtGlobal>

#include <string>
#include <vector>

class QIODevice;

namespace Vantor::Algorithms
{

/// The pages of a TIFF file: its first image, and all others that are neither reduced copies nor masks.
struct STiffPages {
    std::vector<quint64> vctOffsets; ///< of their directories in the file
    bool bMore = false;              ///< the file has more directories than are read
};

/// Reads the heads of at most 10,000 directories.
STiffPages FindTiffPages(QIODevice& device);

/// A sentence that the image is the first of several pages of a TIFF file; empty for a single page.
std::string NoteOfPages(QIODevice& device);

} // namespace Vantor::Algorithms
