// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/Export.h>

#include <memory>
#include <string>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

namespace Vantor::Utils
{

class CPDFReader;

/// The pages of a document as deferred images, which are rendered when their pixels are needed, with the
/// pixels that CPDFReader::RenderPage gives. Any thread.
///
/// The images share the document, which is closed with the last of them. While several threads need pages,
/// two processes render them, which stay until then, and a third one while these are slow. A page is rendered
/// within the reader's time limit or fails, and its note is then "Page 3 of 7 cannot be rendered." and why; a
/// thread whose progress is cancelled does not wait for it.
class VANTOR_EXPORT CPDFPages
{
public:
    /// More pages than these are left out, as are those behind so many in a row that have no size.
    static constexpr int kMaxPages = 100000;
    static constexpr int kMaxUnknown = 16; ///< in a row

    CPDFPages() = delete;

    /// Makes an image for each page, without name and folder. It asks for the size of each page and tells the
    /// progress of its thread; cancelled, it returns none. A page whose size nobody can tell, or that is
    /// larger than the limits, is an A4 sheet.
    /// @param pReader     with a document, resolutions and time limit set; null or without: no images
    /// @param strFailure  why pages were left out, a sentence in English; empty when none were
    static std::vector<std::shared_ptr<Algorithms::CImage>> Make(std::unique_ptr<CPDFReader> pReader,
                                                                 std::string& strFailure);
};

} // namespace Vantor::Utils
