// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace Vantor
{
class CSharedFile;
}

namespace Vantor::Algorithms
{

class CImage;

/// The images of a file: the first one is there with its notes, and its format adds the others, deferred and
/// without name and folder. Formats tell the progress of the thread; cancelled, they may end anywhere.
struct SImagesOfFile {
    std::shared_ptr<const CSharedFile> pFile;
    int nMost = 1; ///< images in the list
    std::vector<std::shared_ptr<CImage>> vctImages;
    std::string strLeftOut; ///< why images were left out, a sentence; empty when none were
};

} // namespace Vantor::Algorithms
