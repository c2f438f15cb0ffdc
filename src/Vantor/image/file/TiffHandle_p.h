// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <memory>

#include <tiffio.h>

class QIODevice;

namespace Vantor::Algorithms
{

struct STiffCloser {
    void operator()(TIFF* pTiff) const { TIFFClose(pTiff); }
};
using TiffHandle = std::unique_ptr<TIFF, STiffCloser>;

/// Not mapped into memory, because a file may shrink under the mapping.
constexpr const char* kReadTiff = "rm";
/// The same, with no directory read at first.
constexpr const char* kReadTiffHead = "rmh";

/// Opens a TIFF file on a device that outlives the handle. The codec's first message goes to the
/// message sink, and no single piece of its memory is larger than the decode limit. Null when it is no TIFF
/// file.
TiffHandle OpenTiff(QIODevice& device, const char* mode);

} // namespace Vantor::Algorithms
